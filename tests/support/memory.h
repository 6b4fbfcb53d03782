#pragma once

#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif
#ifdef Q_OS_LINUX
#include <malloc.h>
#endif

namespace kervan {

/// The most memory that the process has held so far; 0 where the system does not tell.
inline double peakMegabytes()
{
#ifdef Q_OS_UNIX
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1e3;
#else
    return 0;
#endif
}

/// Starts the measure of peakSinceReset() anew; false where the system does not let it.
inline bool resetPeak()
{
#ifdef Q_OS_LINUX
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write("5") == 1;
#else
    return false;
#endif
}

/// The most memory that the process has held since then; 0 where the system does not tell.
inline double peakSinceReset()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray status = file.readAll();
    const qsizetype at = status.indexOf("VmHWM:");
    return at < 0 ? 0 : status.sliced(at + 6).trimmed().split(' ').first().toDouble() * 1.024e-3;
}

} // namespace kervan
