#pragma once

#include "logoxml/document.h"
#include "logoxml/template.h"

#include <QByteArrayList>

#include <span>

namespace kervan {

/// The body of a slip document: each record is a line end and a template behind all records so
/// far, and its filling runs over the whole of that text. So a placeholder word in a value of an
/// earlier record is changed by the filling of a later one.
/// A record without any placeholder word left can never change again and isn't searched.
class AccumulatedBody
{
public:
    AccumulatedBody(const QByteArray &record, QList<QByteArray> placeholders);

    /// Appends a record and fills the whole text with one value per placeholder, in their order. A
    /// record that values swell beyond all measure is a Failure.
    void add(std::span<const QString> values);

    /// The records that are still held, each with its line end in front.
    const QByteArrayList &records() const { return m_records; }

    /// Hands over the leading records that no later filling can change, and holds them no longer.
    void handOver(const TakePiece &take);
    /// Hands over all that are held.
    void handOverAll(const TakePiece &take);

private:
    void handOver(qsizetype count, const TakePiece &take);
    bool holdsPlaceholder(const QByteArray &text) const;

    Sablon m_record;
    QList<QByteArray> m_placeholders;
    QByteArrayList m_records;
    QList<qsizetype> m_changeable; // positions of those that still hold a placeholder word
    qsizetype m_handedOver = 0;
};

} // namespace kervan
