#include "logoxml/accumulated.h"

#include "base/failure.h"

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// A value that holds its own placeholder twice doubles with each record.
constexpr qsizetype largestRecord = 16'000'000;

} // namespace

AccumulatedBody::AccumulatedBody(const QByteArray &record, QList<QByteArray> placeholders)
    : m_record("\r\n" + record, placeholders)
    , m_placeholders(std::move(placeholders))
{
}

void AccumulatedBody::add(std::span<const QString> values)
{
    if (!m_changeable.isEmpty()) {
        const QList<Fill> fills = fillsOf(m_placeholders, values);
        m_changeable.removeIf([&](qsizetype i) {
            m_records[i] = sablondoldur(std::move(m_records[i]), fills);
            if (m_records[i].size() > largestRecord)
                throw Failure(u"%1. kayıt çok büyüdü."_s.arg(m_handedOver + i + 1));
            return !holdsPlaceholder(m_records[i]);
        });
    }
    QByteArray record;
    m_record.doldur(values, record);
    if (m_record.mayChange(values, Sablon::Steps::All) && holdsPlaceholder(record))
        m_changeable.append(m_records.size());
    m_records.append(std::move(record));
}

void AccumulatedBody::handOver(const TakePiece &take)
{
    handOver(m_changeable.isEmpty() ? m_records.size() : m_changeable.first(), take);
}

void AccumulatedBody::handOverAll(const TakePiece &take)
{
    m_changeable.clear();
    handOver(m_records.size(), take);
}

void AccumulatedBody::handOver(qsizetype count, const TakePiece &take)
{
    for (qsizetype i = 0; i < count; ++i)
        take(m_records[i]);
    m_records.remove(0, count);
    for (qsizetype &position : m_changeable)
        position -= count;
    m_handedOver += count;
}

bool AccumulatedBody::holdsPlaceholder(const QByteArray &text) const
{
    return std::ranges::any_of(m_placeholders,
                               [&](const QByteArray &word) { return text.contains(word); });
}

} // namespace kervan
