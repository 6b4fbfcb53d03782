#pragma once

#include "base/failure.h"

#include <QDir>
#include <QString>
#include <QStringList>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

namespace kervan {

/// The description of the failure that ended the step, or null if it ended well.
template<class Step>
QString failureOf(Step &&step)
{
    const auto failed = passOver(std::forward<Step>(step));
    return failed ? failed->description() : QString();
}

/// Whether the step fails and its description names the file or folder.
template<class Step>
bool failsNaming(const QString &path, Step &&step)
{
    return failureOf(std::forward<Step>(step)).contains(QDir::toNativeSeparators(path));
}

/// Everything that stands in a folder, by name.
inline QStringList contentOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

/// As long as it lives, no file of this process can grow beyond so many bytes: what a write meets
/// on a full disk.
class FullDisk
{
public:
#ifdef Q_OS_UNIX
    explicit FullDisk(unsigned long bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        m_works = setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
    }
    bool works() const
    {
        return m_works;
    }

private:
    rlimit m_before{};
    bool m_works = false;
#else
    explicit FullDisk(unsigned long) {}
    bool works() const
    {
        return false;
    }

private:
#endif
    Q_DISABLE_COPY_MOVE(FullDisk)
};

} // namespace kervan
