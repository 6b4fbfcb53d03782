#pragma once

#include "base/failure.h"

#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QString>
#include <QStringList>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/mount.h>
#endif

namespace kervan {

/// The rows of a table in the test's text.
inline QStringList rowsOf(const QString &table)
{
    return table.split(u'\n', Qt::SkipEmptyParts);
}

/// The description of the failure that ended the step, or null if it ended well.
template<class Step>
QString failureOf(Step &&step)
{
    const auto failed = passOver(std::forward<Step>(step));
    return failed ? failed->description() : QString();
}

/// A path as the user is told it.
inline QString asTold(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

/// Whether the step fails and its description names the file or folder.
template<class Step>
bool failsNaming(const QString &path, Step &&step)
{
    return failureOf(std::forward<Step>(step)).contains(asTold(path));
}

/// Everything that stands in a folder, by name, joined by "|".
inline QString contentOf(const QString &folder)
{
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    return QDir(folder).entryList(all, QDir::Name).join(u'|');
}

/// Whether the program runs under Wine, which lacks some of what Windows has.
inline bool isUnderWine()
{
    return QLibrary(QStringLiteral("ntdll")).resolve("wine_get_version") != nullptr;
}

/// Puts something at the path that exists and that nobody can open, not even the system's own user:
/// the node of a socket. False where the system has none.
inline bool makeUnreadable([[maybe_unused]] const QString &path)
{
#ifdef Q_OS_UNIX
    return mknod(QFile::encodeName(path).constData(), S_IFSOCK | S_IRUSR | S_IWUSR, 0) == 0;
#else
    return false;
#endif
}

/// Carries out the step while no file of this process can grow beyond so many bytes: what a write
/// meets on a full disk. False where the system has no such limit.
template<class Step>
bool onAFullDisk(unsigned long bytes, Step &&step)
{
#ifdef Q_OS_UNIX
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{bytes, before.rlim_max};
    if (setrlimit(RLIMIT_FSIZE, &limit) == 0) {
        std::forward<Step>(step)();
        return setrlimit(RLIMIT_FSIZE, &before) == 0;
    }
#endif
    return false;
}

/// Carries out the step without the rights of the system's own user, if the test has them.
template<class Step>
void asAnyUser(Step &&step)
{
#ifdef Q_OS_LINUX
    constexpr uid_t nobody = 65534;
    const bool changed = geteuid() == 0 && setresuid(nobody, nobody, 0) == 0;
    std::forward<Step>(step)();
    if (changed && setresuid(0, 0, 0) != 0)
        qFatal("the rights did not come back");
#else
    std::forward<Step>(step)();
#endif
}

/// A small disk in the place of a folder, where the system lets a test mount one.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &folder, [[maybe_unused]] int kilobytes = 256)
        : m_folder(QFile::encodeName(folder))
    {
#ifdef Q_OS_LINUX
        const QByteArray size = "size=" + QByteArray::number(kilobytes) + 'k';
        m_there = mount("tmpfs", m_folder.constData(), "tmpfs", 0, size.constData()) == 0;
#endif
    }
    ~SmallDisk()
    {
#ifdef Q_OS_LINUX
        if (m_there)
            umount2(m_folder.constData(), MNT_DETACH);
#endif
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    bool isThere() const
    {
        return m_there;
    }
    bool makeReadOnly([[maybe_unused]] bool isReadOnly = true) const
    {
#ifdef Q_OS_LINUX
        unsigned long flags = MS_REMOUNT;
        if (isReadOnly)
            flags |= MS_RDONLY;
        return mount(nullptr, m_folder.constData(), nullptr, flags, nullptr) == 0;
#else
        return false;
#endif
    }
    /// Fills it but for so many blocks of 4 KB.
    void leave(int blocks) const
    {
        QFile ballast(name());
        if (!ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            qFatal("no ballast on the small disk");
        while (ballast.write(QByteArray(4096, 'x')) == 4096) {
        }
        if (!ballast.resize(ballast.size() / 4096 * 4096 - blocks * 4096LL))
            qFatal("no room on the small disk");
    }
    void empty() const
    {
        QFile::remove(name());
    }

private:
    QString name() const
    {
        return QFile::decodeName(m_folder) + QStringLiteral("/ballast");
    }

    QByteArray m_folder;
    bool m_there = false;
};

} // namespace kervan
