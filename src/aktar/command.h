#pragma once

#include "aktar/job.h"
#include "store/folderlock.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace kervan {

/// What surrounds the command: given by main(), or by a test.
struct CommandWorld
{
    QString programFolder; ///< where none is named
    Clock &clock;
    SqlServer &sqlServer;
    Streams streams;
    /// Whether the program is asked to end; a watched folder then ends behind the file in hand.
    std::function<bool()> isEnding = [] {
        return false;
    };
};

/// Runs the command as its arguments want it, those behind the program's name; gives a Status.
int runCommand(const QStringList &arguments, const CommandWorld &world);

/// The transfers of one program folder, which is locked and whole while this lives.
class OpenFolder
{
public:
    /// A folder that is none is a Failure.
    OpenFolder(const Options &options, const CommandWorld &world);

    /// Waits for the folder as long as the options say or until the program is to end, and brings
    /// to its end what a killed program left. Else tells why not: that it is in use, or what is in
    /// the way.
    Status enter(const std::function<void(const QString &line)> &tell);
    void leave() { m_lock.release(); }
    Program &program() { return m_program; }
    CommandPorts ports() { return {m_boxes, m_names}; }

private:
    bool wait();

    std::chrono::seconds m_patience;
    std::function<bool()> m_isEnding;
    QString m_folder;
    FolderLock m_lock;
    LineBoxes m_boxes;
    GivenNames m_names;
    Program m_program;
    std::shared_ptr<DocumentCache> m_documents =
        DocumentCache::shared(); // kept from source to source
};

/// What "--help" shows, of one command or of all.
QString helpText();
QString helpText(const QString &command, const QString &arguments, const QString &what,
                 const QList<Option> &own, const QList<Option> &common);

} // namespace kervan
