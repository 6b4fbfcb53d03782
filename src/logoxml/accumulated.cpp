#include "logoxml/accumulated.h"

#include "base/failure.h"

#include <algorithm>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// A value that holds its own placeholder grows with each record, and doubles if it holds it twice.
constexpr qsizetype largestRecord = 16'000'000;
constexpr qsizetype largestGrowth = 256'000'000; // of all records, beyond their own text
constexpr qsizetype mostSearched = 128'000'000;

unsigned char code(char byte)
{
    return static_cast<unsigned char>(byte);
}

Failure grown(qsizetype record)
{
    return Failure(
        u"%1. kayıt çok büyüdü: değerlerinde şablonun sözcükleri var."_s.arg(record + 1));
}

} // namespace

AccumulatedBody::AccumulatedBody(const QByteArray &record, QList<QByteArray> placeholders,
                                 Values spelling)
    : m_record("\r\n" + record, placeholders, spelling)
    , m_placeholders(std::move(placeholders))
{
    // What a filling looks for: as XML also the marked form of an element, which values bring.
    const QStringList none(m_placeholders.size());
    for (const Fill &fill :
         fillsOf(m_placeholders, {none.data(), std::size_t(none.size())}, spelling))
        m_words << fill.find;
    for (const QByteArray &word : std::as_const(m_words)) {
        for (const char byte : word)
            m_inWords.set(code(byte));
    }
}

void AccumulatedBody::add(std::span<const QString> values)
{
    if (!m_live.isEmpty())
        fillRuns(values);
    QByteArray record;
    m_record.doldur(values, record);
    if (m_record.mayChange(values, Sablon::Steps::All))
        m_records << split(record, m_handedOver + m_records.size());
    else
        m_records << Pieces{{std::move(record)}};
}

void AccumulatedBody::fillRuns(std::span<const QString> values)
{
    ++m_fillings;
    const QList<Fill> fills = fillsOf(m_placeholders, values, m_record.spelling());
    const auto live = std::exchange(m_live, {});
    for (const qsizetype run : live) {
        const QByteArray text = sablondoldur(m_runs[run].text, fills);
        const qsizetype record = m_runs[run].record;
        m_searched += text.size();
        if (text.size() > largestRecord || m_searched > mostSearched)
            throw grown(record);
        Pieces becomes = split(text, record);
        m_runs[run].becomes = std::move(becomes);
        m_runs[run].live = false;
    }
}

AccumulatedBody::Pieces AccumulatedBody::split(const QByteArray &text, qsizetype record)
{
    Pieces pieces;
    qsizetype kept = 0; // where the text begins that no run has taken
    const auto end = text.cend();
    for (auto from = text.cbegin(); from != end;) {
        const auto isInWords = [this](char byte) {
            return m_inWords.test(code(byte));
        };
        from = std::find_if(from, end, isInWords);
        const auto to = std::find_if_not(from, end, isInWords);
        if (holdsPlaceholder({from, to})) {
            const qsizetype at = from - text.cbegin();
            if (at > kept)
                pieces << Piece{text.sliced(kept, at - kept)};
            pieces << Piece{{}, runOf(QByteArray(from, to - from), record)};
            kept = to - text.cbegin();
        }
        from = to;
    }
    if (kept < text.size())
        pieces << Piece{text.sliced(kept)};
    return pieces;
}

qsizetype AccumulatedBody::runOf(const QByteArray &text, qsizetype record)
{
    const auto known = m_live.constFind(text);
    if (known != m_live.cend()) {
        qsizetype &first = m_runs[*known].record;
        first = std::min(first, record);
        return *known;
    }
    m_runs << Run{.text = text, .record = record, .becomes = {}};
    m_live.insert(text, m_runs.size() - 1);
    return m_runs.size() - 1;
}

const QByteArray *AccumulatedBody::textOf(const Piece &piece) const
{
    if (piece.run < 0)
        return &piece.text;
    const Run &run = m_runs[piece.run];
    if (run.live)
        return &run.text;
    return run.fillings == m_fillings ? &run.joined : nullptr;
}

// Runs that stand in each other by the thousand are walked from the innermost outwards, each once.
void AccumulatedBody::join(qsizetype outermost, qsizetype record)
{
    QList<qsizetype> waiting{outermost};
    while (!waiting.isEmpty()) {
        Run &run = m_runs[waiting.last()];
        const auto unknown =
            std::ranges::find_if(run.becomes, [this](const Piece &p) { return !textOf(p); });
        if (unknown != run.becomes.end()) {
            waiting << unknown->run;
            continue;
        }
        run.joined = joined(run.becomes, record);
        run.fillings = m_fillings;
        waiting.removeLast();
    }
}

QByteArray AccumulatedBody::joined(const Pieces &pieces, qsizetype record)
{
    for (const Piece &piece : pieces) {
        if (!textOf(piece))
            join(piece.run, record);
    }
    if (pieces.size() == 1)
        return *textOf(pieces.first()); // shared and not copied
    QByteArray text;
    for (const Piece &piece : pieces) {
        text += *textOf(piece);
        if (piece.run >= 0)
            m_swollen += textOf(piece)->size();
        if (text.size() > largestRecord || m_swollen > largestGrowth)
            throw grown(record);
    }
    return text;
}

QByteArrayList AccumulatedBody::records()
{
    QByteArrayList all;
    m_swollen = 0;
    for (qsizetype i = 0; i < m_records.size(); ++i)
        all << joined(m_records[i], m_handedOver + i);
    return all;
}

void AccumulatedBody::handOver(const TakePiece &take)
{
    qsizetype first = m_handedOver + m_records.size();
    for (const qsizetype run : std::as_const(m_live))
        first = std::min(first, m_runs[run].record);
    handOver(first - m_handedOver, take);
}

void AccumulatedBody::handOverAll(const TakePiece &take)
{
    handOver(m_records.size(), take);
}

void AccumulatedBody::handOver(qsizetype count, const TakePiece &take)
{
    for (qsizetype i = 0; i < count; ++i)
        take(joined(m_records[i], m_handedOver + i));
    m_records.remove(0, count);
    m_handedOver += count;
    if (m_records.isEmpty()) {
        m_runs.clear();
        m_live.clear();
    }
}

bool AccumulatedBody::holdsPlaceholder(QByteArrayView text) const
{
    return std::ranges::any_of(m_words,
                               [&](const QByteArray &word) { return text.contains(word); });
}

} // namespace kervan
