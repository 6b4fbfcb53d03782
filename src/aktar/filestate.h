#pragma once

#include <QDateTime>
#include <QFileInfo>
#include <QString>

namespace kervan {

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

} // namespace kervan
