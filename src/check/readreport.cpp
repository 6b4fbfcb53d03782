#include "check/readreport.h"

namespace kervan {

void ReadReport::begin(const QString &source)
{
    m_source = source;
    m_entries.clear();
    m_reasons.clear();
    m_reasonPlaces.clear();
    m_total = 0;
}

void ReadReport::add(qint64 line, QStringView record, const QString &reason, const QString &cell)
{
    ++m_total;
    const auto place = m_reasonPlaces.constFind(reason);
    if (place != m_reasonPlaces.cend()) {
        ++m_reasons[*place].second;
    } else {
        m_reasonPlaces.insert(reason, m_reasons.size());
        m_reasons.append({reason, 1});
    }
    if (m_entries.size() < mostEntries)
        m_entries << Entry{line, cell, record.left(recordLength).toString(), reason};
}

QList<std::pair<QString, int>> ReadReport::reasons() const
{
    return m_reasons;
}

} // namespace kervan
