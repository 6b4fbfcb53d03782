#include "app/instancelock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>

#ifdef Q_OS_WIN
#include "base/filefault.h"

#include <windows.h>
#endif

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// What the folder is, however it is called.
QString identityOf(const QString &folder)
{
#ifdef Q_OS_WIN // by a mapped drive, a short name, in other cases of its letters
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE open = CreateFileW(systemName(folder).c_str(), 0, all, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    BY_HANDLE_FILE_INFORMATION info{};
    const bool isTold = open != INVALID_HANDLE_VALUE && GetFileInformationByHandle(open, &info);
    if (open != INVALID_HANDLE_VALUE)
        CloseHandle(open);
    if (isTold)
        return u"%1 %2 %3"_s.arg(info.dwVolumeSerialNumber)
            .arg(info.nFileIndexHigh)
            .arg(info.nFileIndexLow);
    return QDir(folder).canonicalPath().toCaseFolded();
#else
    return QDir(folder).canonicalPath();
#endif
}

QString lockPath(const QString &programFolder)
{
#ifdef Q_OS_WIN // where the other one is the user's own folder, too much in view for a lock
    QString place = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#else
    QString place = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
#endif
    if (place.isEmpty())
        place = QDir::tempPath();
    const QByteArray key =
        QCryptographicHash::hash(identityOf(programFolder).toUtf8(), QCryptographicHash::Sha1);
    return place + u"/kervan-transfer-%1-%2.lock"_s.arg(qEnvironmentVariable("USER") +
                                                            qEnvironmentVariable("USERNAME"),
                                                        QString::fromLatin1(key.toHex().left(16)));
}

} // namespace

InstanceLock::InstanceLock(const QString &programFolder)
    : m_file(lockPath(programFolder))
{
    m_file.setStaleLockTime(0); // however long the program runs
}

bool InstanceLock::take()
{
    if (m_file.tryLock())
        return true;
    if (m_file.error() != QLockFile::LockFailedError)
        return true;
    // The system lets nobody remove a file that a running program has locked; what can be removed
    // was left behind by one that was killed, whatever stands in it.
    return m_file.removeStaleLockFile() && m_file.tryLock();
}

} // namespace kervan
