#include "store/folderlock.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QSysInfo>
#include <QThread>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr auto betweenTries = std::chrono::milliseconds(100);
constexpr QStringView commandName = u"kervan-aktar.kilit";
constexpr QStringView windowNames = u"kervan-pencere-*.kilit";

// One for each user of each machine.
QString windowName()
{
    QString who = qEnvironmentVariable("USER") + qEnvironmentVariable("USERNAME") + u'-' +
                  QSysInfo::machineHostName();
    std::ranges::replace_if(
        who, [](QChar c) { return !c.isLetterOrNumber() && c != u'-'; }, u'_');
    return u"kervan-pencere-%1.kilit"_s.arg(who);
}

std::unique_ptr<QLockFile> lockAt(const QString &path)
{
    auto file = std::make_unique<QLockFile>(path);
    file->setStaleLockTime(0); // however long the program runs
    return file;
}

enum class Lock { Taken, Held, Impossible };

// A file whose program was killed can be removed, one that is held can not.
Lock lock(QLockFile &file)
{
    if (file.tryLock())
        return Lock::Taken;
    if (file.error() != QLockFile::LockFailedError)
        return Lock::Impossible;
    return file.removeStaleLockFile() && file.tryLock() ? Lock::Taken : Lock::Held;
}

} // namespace

FolderLock::FolderLock(QString programFolder, Who who)
    : m_folder(std::move(programFolder))
    , m_who(who)
{
}

bool FolderLock::take(std::chrono::milliseconds patience)
{
    QElapsedTimer waited;
    waited.start();
    while (!takeNow()) {
        if (waited.elapsed() >= patience.count())
            return false;
        QThread::msleep(static_cast<unsigned long>(betweenTries.count()));
    }
    return true;
}

void FolderLock::release()
{
    m_file.reset();
}

bool FolderLock::isAlone() const
{
    const QDir folder(m_folder);
    const QString own = m_file ? QFileInfo(m_file->fileName()).fileName() : QString();
    const QStringList windows = folder.entryList({windowNames.toString()}, QDir::Files);
    return std::ranges::none_of(windows, [&](const QString &name) {
        return name != own && lock(*lockAt(folder.filePath(name))) == Lock::Held;
    });
}

bool FolderLock::takeNow()
{
    const QDir folder(m_folder);
    const bool isWindow = m_who == Who::Window;
    m_holder = folder.filePath(isWindow ? windowName() : commandName.toString());
    m_file = lockAt(m_holder);
    const Lock own = lock(*m_file);
    if (own == Lock::Held && !isWindow) {
        release();
        return false;
    }
    const QStringList others =
        folder.entryList({isWindow ? commandName.toString() : windowNames.toString()}, QDir::Files);
    for (const QString &name : others) {
        m_holder = folder.filePath(name);
        if (lock(*lockAt(m_holder)) == Lock::Held) {
            release();
            return false;
        }
    }
    return true;
}

} // namespace kervan
