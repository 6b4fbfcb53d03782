#pragma once

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <benchmark/benchmark.h>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif
#ifdef Q_OS_LINUX
#include <malloc.h>
#endif

namespace kervan {

inline double megabytes(const QString &path)
{
    return static_cast<double>(QFile(path).size()) / 1e6;
}

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

/// Starts the measure of peakSinceReset() anew, where the system lets it.
inline void resetPeak()
{
#ifdef Q_OS_LINUX
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
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

/// What writing costs at the least: a finished document, written again the same safe way.
inline void writeAgain(benchmark::State &state, const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        state.SkipWithError("no document");
    const QByteArray bytes = file.readAll();
    for (auto _ : state) {
        QSaveFile copy(path);
        if (!copy.open(QIODevice::WriteOnly) || copy.write(bytes) != bytes.size() || !copy.commit())
            state.SkipWithError("not written");
    }
}

} // namespace kervan
