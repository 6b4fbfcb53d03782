#pragma once

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace kervan {

/// How a disk of the system compares names.
#ifdef Q_OS_WIN
constexpr auto caseOfNames = Qt::CaseInsensitive;
#else
constexpr auto caseOfNames = Qt::CaseSensitive;
#endif

/// What tells whether a file is still the same one; of one that isn't there nothing.
struct FileState
{
    qint64 size = 0;
    QDateTime time; ///< of its last change
    bool operator==(const FileState &) const = default;
};

inline FileState stateOf(const QString &path)
{
    const QFileInfo file(path);
    return {file.size(), file.lastModified()};
}

/// Names of a folder's files that fit one of the patterns, the oldest first, as their slips are to
/// be numbered; those of one moment by their names.
inline QStringList oldestFirst(const QDir &folder, const QStringList &patterns)
{
    QFileInfoList files = folder.entryInfoList(patterns, QDir::Files, QDir::Name);
    std::ranges::stable_sort(files, {}, [](const QFileInfo &file) { return file.lastModified(); });
    QStringList names;
    for (const QFileInfo &file : std::as_const(files))
        names << file.fileName();
    return names;
}

} // namespace kervan
