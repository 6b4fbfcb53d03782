#pragma once

#include "base/failure.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
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

/// Whether the step fails and its description names the file or folder.
template<class Step>
bool failsNaming(const QString &path, Step &&step)
{
    return failureOf(std::forward<Step>(step)).contains(QDir::toNativeSeparators(path));
}

/// Everything that stands in a folder, by name, joined by "|".
inline QString contentOf(const QString &folder)
{
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    return QDir(folder).entryList(all, QDir::Name).join(u'|');
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

} // namespace kervan
