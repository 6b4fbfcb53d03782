#include "base/movefile.h"

#include "base/filefault.h"
#include "base/wholefile.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#endif

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

#ifdef Q_OS_WIN
constexpr int otherDisk = ERROR_NOT_SAME_DEVICE;

// The library's own call copies what it can't rename, and then deletes the file: what its writer
// adds in between would be lost.
bool rename(const QString &from, const QString &to, bool replaces)
{
    for (const QString &path : {from, to})
        waitWhileOpen(path);
    return MoveFileExW(systemName(from).c_str(), systemName(to).c_str(),
                       replaces ? MOVEFILE_REPLACE_EXISTING : 0) != 0;
}
#else
constexpr int otherDisk = EXDEV;

bool rename(const QString &from, const QString &to, bool replaces)
{
    const QByteArray old = QFile::encodeName(from);
    const QByteArray name = QFile::encodeName(to);
    if (replaces)
        return std::rename(old, name) == 0;
    if (renameat2(AT_FDCWD, old, AT_FDCWD, name, RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    if (QFile::exists(to)) { // some shares know only the other call
        errno = EEXIST;
        return false;
    }
    return std::rename(old, name) == 0;
}
#endif

// Whole or not at all, and the file goes only behind it; the library's own call does not look at
// what its last flush gives.
void copyOver(const QString &from, const QString &to)
{
    constexpr qint64 piece = 1 << 20;
    QFile file(from);
    WholeFile copy(to);
    clearFault();
    bool isFine = file.open(QIODevice::ReadOnly);
    while (isFine && !file.atEnd()) {
        copy.write(file.read(piece));
        isFine = file.error() == QFileDevice::NoError;
    }
    if (!isFine)
        throw moveFailure(from, to, filefault(file, lastFault()));
    copy.commit();
    file.close();
    clearFault();
    if (file.remove())
        return;
    const QString why = filefault(file, lastFault());
    QFile::remove(to);
    throw moveFailure(from, to, why);
}

} // namespace

void moveFile(const QString &from, const QString &to, bool replaces)
{
    clearFault();
    if (rename(from, to, replaces))
        return;
    const int fault = lastFault();
    if (!QFile::exists(from))
        throw moveFailure(from, to, u"dosya bulunamadı"_s);
    if (!replaces && QFile::exists(to))
        throw moveFailure(from, to, u"zaten var"_s);
    if (fault == otherDisk)
        return copyOver(from, to);
    throw moveFailure(from, to, filefault(QFile(isOpenElsewhere(from) ? from : to), fault));
}

Failure moveFailure(const QString &from, const QString &to, const QString &why)
{
    return fileFailure(from, u"taşınamadı"_s, u"%1 (%2)"_s.arg(QDir::toNativeSeparators(to), why));
}

} // namespace kervan
