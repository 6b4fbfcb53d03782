#pragma once

#include "support/memory.h"

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <benchmark/benchmark.h>

namespace kervan {

inline double megabytes(const QString &path)
{
    return static_cast<double>(QFile(path).size()) / 1e6;
}

/// What writing costs at the least: a finished document, written again the same safe way.
inline void writeAgain(benchmark::State &state, const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        state.SkipWithError("no document");
    const QByteArray bytes = file.readAll();
    file.close(); // Windows would keep its place for it
    for (auto _ : state) {
        QSaveFile copy(path);
        if (!copy.open(QIODevice::WriteOnly) || copy.write(bytes) != bytes.size() || !copy.commit())
            state.SkipWithError("not written");
    }
}

} // namespace kervan
