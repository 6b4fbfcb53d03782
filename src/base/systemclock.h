#pragma once

#include "base/ports.h"

namespace kervan {

/// The machine's clock, in whole seconds: a long save asks it for each field of each card, and the
/// machine takes longer to tell the local time than the save to fill a card.
class SystemClock : public Clock
{
public:
    QDateTime now() const override;

private:
    mutable QDateTime m_now;
    mutable qint64 m_second = -1;
};

} // namespace kervan
