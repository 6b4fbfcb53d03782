#pragma once

#include <QByteArray>
#include <QtEndian>

namespace kervan {

/// The Failure of a file that is cut off or damaged.
[[noreturn]] void failDamaged();

/// The number that stands at the place, its lowest byte first; bytes that end before it are
/// damaged.
template<class Number>
Number numberAt(QByteArrayView bytes, qsizetype at)
{
    if (at < 0 || at + qsizetype(sizeof(Number)) > bytes.size())
        failDamaged();
    return qFromLittleEndian<Number>(bytes.data() + at);
}

} // namespace kervan
