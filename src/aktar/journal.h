#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace kervan {

// What keeps a transfer from being half done, or done twice, when the program is killed. Documents
// are written into a folder of their own inside the target's, and a file in the program folder
// holds what is to become of them. Until it says that all is written, the next program to come
// throws the documents away and puts the counters back; from then on it moves them to where they
// belong. Nobody outside ever sees a document whose counters are not stored.

/// A file that gets another name, in the place of a file that is there only where it `replaces`.
struct Move
{
    QString from, to;
    bool replaces = false;
};

class Journal
{
public:
    /// Begins behind recover(): remembers the counters and makes an empty folder for documents of
    /// `targetFolder`, which has to be there. A Failure names what could not be read or made.
    Journal(const QString &programFolder, const QString &targetFolder);

    /// Where documents are written for now.
    const QString &folder() const { return m_folder; }
    /// From now on all of it is to be carried out, whatever happens. Carries it out; a Failure
    /// names the first file that can't be moved, and what is left waits for recover(). Where one
    /// is gone by then, or its place is taken, all is taken back before the Failure.
    void commit(const QList<Move> &moves);
    /// Whether it has come to that, be all of it carried out or not.
    bool isCommitted() const { return m_isCommitted; }
    /// Puts the counters back and throws away what was written.
    void takeBack();

private:
    QString m_programFolder;
    QString m_folder;
    QJsonObject m_counters; // as they were
    bool m_isCommitted = false;
};

/// Brings what a killed program left to its end; nothing where there is nothing. Gives a sentence
/// of what was done, empty for nothing. A Failure names what is in the way; it is then tried again
/// the next time.
QString recover(const QString &programFolder);

/// The name of the journal in a program folder.
constexpr QStringView journalName = u"kervan-aktar.islem";

/// Whether there is something for recover() to do.
bool isPending(const QString &programFolder);

/// Whether the counters stand at numbers that recover() will take back, or may: none may be given
/// out.
bool countersArePending(const QString &programFolder);

/// How the window begins: it recovers too, but somebody is in front of it, so only counters whose
/// numbers would be given out again keep it closed. `told` is what there is to say.
struct Opening
{
    bool mayOpen = true;
    QString told;
};
Opening recoverForWindow(const QString &programFolder);

/// The two counters as they are stored, cash and bank; empty where there is none. A Failure names
/// one that can't be read.
QStringList countersOf(const QString &programFolder);

} // namespace kervan
