#include "base/systemclock.h"

namespace kervan {

QDateTime SystemClock::now() const
{
    const qint64 second = QDateTime::currentSecsSinceEpoch();
    if (second != m_second) {
        m_second = second;
        m_now = QDateTime::fromSecsSinceEpoch(second);
    }
    return m_now;
}

} // namespace kervan
