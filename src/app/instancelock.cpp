#include "app/instancelock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString lockPath(const QString &programFolder)
{
#ifdef Q_OS_WIN // where the other one is the user's own folder, too much in view for a lock
    QString place = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#else
    QString place = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
#endif
    if (place.isEmpty())
        place = QDir::tempPath();
    QString folder = QDir(programFolder).canonicalPath();
#ifdef Q_OS_WIN // it may be called by other cases of its letters
    folder = folder.toCaseFolded();
#endif
    const QByteArray key = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1);
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
