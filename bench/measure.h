#pragma once

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <benchmark/benchmark.h>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
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
