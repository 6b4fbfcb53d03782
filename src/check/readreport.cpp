#include "check/readreport.h"

namespace kervan {

void ReadReport::begin(const QString &source)
{
    m_source = source;
    m_entries.clear();
    m_reasons.clear();
    m_reasonPlaces.clear();
    m_total = 0;
    m_isCutShort = false;
}

void ReadReport::add(qint64 line, QStringView record, const QString &reason, const QString &cell)
{
    ++m_total;
    count(reason);
    if (hasRoom())
        m_entries << Entry{line, cell, record.left(recordLength).toString(), reason};
}

void ReadReport::count(const QString &reason)
{
    const auto place = m_reasonPlaces.constFind(reason);
    if (place != m_reasonPlaces.cend()) {
        ++m_reasons[*place].second;
    } else if (m_reasons.size() <= mostReasons) {
        // A reason that names a value may be another one at each line.
        const bool isLast = m_reasons.size() == mostReasons;
        m_reasonPlaces.insert(reason, m_reasons.size());
        m_reasons.append({isLast ? QStringLiteral("başka nedenler") : reason, 1});
    } else {
        ++m_reasons.last().second;
    }
}

QList<std::pair<QString, int>> ReadReport::reasons() const
{
    return m_reasons;
}

} // namespace kervan
