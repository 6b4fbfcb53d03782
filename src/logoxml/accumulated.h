#pragma once

#include "logoxml/document.h"
#include "logoxml/template.h"

#include <QByteArrayList>
#include <QHash>

#include <bitset>
#include <span>

namespace kervan {

/// The body of a slip document: each record is a line end and a template behind all records so
/// far, and its filling runs over the whole of that text. So a placeholder word in a value of an
/// earlier record is changed by the filling of a later one.
///
/// A byte that no placeholder holds is a border: no word is found across it, and no filling removes
/// it. Between two borders a text changes by itself, and equal texts change alike. So a record is
/// kept as what can't change any more and runs that may; equal runs are one, and are filled once.
class AccumulatedBody
{
public:
    AccumulatedBody(const QByteArray &record, QList<QByteArray> placeholders,
                    Values spelling = Values::AsTheyStand);

    /// Appends a record and fills the whole text with one value per placeholder, in their order.
    /// Runs that swell beyond all measure are a Failure.
    void add(std::span<const QString> values);

    /// The records that are still held, each with its line end in front. One that values swell
    /// beyond all measure is a Failure, here and below.
    QByteArrayList records();

    /// Hands over the leading records that no later filling can change, and holds them no longer.
    void handOver(const TakePiece &take);
    /// Hands over all that are held.
    void handOverAll(const TakePiece &take);

private:
    struct Piece
    {
        QByteArray text;
        qsizetype run = -1; // in place of a text, a run by its number
    };
    using Pieces = QList<Piece>;
    struct Run
    {
        QByteArray text;
        qsizetype record;       // the first that holds it
        Pieces becomes;         // by the filling behind it; names only runs made later
        bool live = true;       // it was not yet filled
        QByteArray joined = {}; // what it has become behind so many fillings
        qsizetype fillings = -1;
    };

    void fillRuns(std::span<const QString> values);
    Pieces split(const QByteArray &text, qsizetype record);
    qsizetype runOf(const QByteArray &text, qsizetype record);
    const QByteArray *textOf(const Piece &piece) const; // null where it is to be joined
    void join(qsizetype outermost, qsizetype record);
    QByteArray joined(const Pieces &pieces, qsizetype record);
    void handOver(qsizetype count, const TakePiece &take);
    bool holdsPlaceholder(QByteArrayView text) const;

    Sablon m_record;
    QList<QByteArray> m_placeholders;
    QList<QByteArray> m_words;  // that a filling looks for
    std::bitset<256> m_inWords; // bytes that are no border
    QList<Pieces> m_records;
    QList<Run> m_runs;
    QHash<QByteArray, qsizetype> m_live; // runs by their text
    qsizetype m_handedOver = 0;
    qsizetype m_fillings = 0;
    qsizetype m_searched = 0; // bytes of runs that were filled
    qsizetype m_swollen = 0;  // bytes that runs brought into records
};

} // namespace kervan
