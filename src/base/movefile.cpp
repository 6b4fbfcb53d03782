#include "base/movefile.h"

#include "base/filefault.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#include <cstdio>
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
    if (replaces)
        return std::rename(QFile::encodeName(from).constData(),
                           QFile::encodeName(to).constData()) == 0;
    errno = otherDisk; // the library's own call replaces nothing, and leaves no gap for another
    return false;
}
#endif

} // namespace

void moveFile(const QString &from, const QString &to, bool replaces)
{
    clearFault();
    if (rename(from, to, replaces))
        return;
    const int fault = lastFault();
    const QFile held(isOpenElsewhere(from) ? from : to);
    if (fault != otherDisk)
        throw moveFailure(from, to,
                          !replaces && QFile::exists(to) ? u"zaten var"_s : filefault(held, fault));
    if (replaces)
        QFile::remove(to);
    QFile file(from);
    if (!file.rename(to))
        throw moveFailure(from, to, QFile::exists(to) ? u"zaten var"_s : file.errorString());
}

Failure moveFailure(const QString &from, const QString &to, const QString &why)
{
    return fileFailure(from, u"taşınamadı"_s, u"%1 (%2)"_s.arg(QDir::toNativeSeparators(to), why));
}

} // namespace kervan
