#pragma once

#include "aktar/commandports.h"
#include "aktar/filestate.h"
#include "aktar/journal.h"
#include "aktar/outcome.h"
#include "aktar/selection.h"
#include "aktar/transfers.h"
#include "store/program.h"

#include <functional>
#include <vector>

namespace kervan {

/// Where the lines of a run go: what came out, and what there is to say of it.
struct Streams
{
    std::function<void(const QString &text)> out;
    std::function<void(const QString &line)> tell;
};

/// The doors of a program without windows.
struct CommandPorts
{
    LineBoxes &boxes;
    GivenNames &names;
};

/// One transfer of one program folder, as its options want it. While it writes, the folder's lock
/// is held.
class Job
{
public:
    /// What is used wrongly shows here already, as a Failure.
    Job(Program &program, CommandPorts ports, const Transfer &transfer, const Options &options);

    /// Reads a source, checks it and writes its document, or shows what was asked for. A Failure
    /// is a wrong use that only the definitions tell: the source was not opened.
    Outcome run(const QString &source, const Streams &streams);
    /// Whether it is only to show what it reads, so that nobody need be kept out of the folder.
    bool onlyReads() const;
    /// The full name of a source's document.
    QString targetOf(const QString &source) const;

    /// What else is to move at the moment at which the documents appear, such as the source.
    using Closing = std::function<QList<Move>(const Outcome &outcome, const QString &folder)>;
    void setClosing(Closing closing) { m_closing = std::move(closing); }
    /// Whether the user wants it to end: then Logo's silence is his.
    void setEnding(std::function<bool()> isEnding) { m_isEnding = std::move(isEnding); }

private:
    struct Step // of a choice
    {
        std::function<void()> make;
        bool behindRead;
    };

    std::vector<Step> stepsOf(OpenScreen &screen);
    void read(OpenScreen &screen, const std::vector<Step> &steps, Outcome &outcome,
              const Streams &streams);
    void look(OpenScreen &screen, Outcome &outcome, const Streams &streams) const;
    void show(const Outcome &outcome, const Streams &streams) const;
    QStringList countersBehind(const OpenScreen &screen, const QString &source) const;
    /// A step that fails by what is no fault of the source: it is for another time.
    void barIfItFails(const std::function<void()> &step);
    /// Whether another program held a database that is read here.
    bool isHeldUp() const { return !m_program.db.heldFile().isEmpty(); }
    /// Whether definitions or prices could not be read.
    bool lacksData() const;
    /// A Failure where a document would be without what Logo has to tell. Comes in front of the
    /// findings, some of which are of just that.
    void checkAnswers(const OpenScreen &screen);
    void tellNotes(const Notes &notes, const Streams &streams);
    void write(OpenScreen &screen, Outcome &outcome, const Streams &streams);
    void writeInto(OpenScreen &screen, Journal &journal, const QString &target, Outcome &outcome,
                   const Streams &streams);
    bool isRefuted(const OpenScreen &screen, Outcome &outcome, const Streams &streams) const;
    bool mayWrite(const OpenScreen &screen, const Outcome &outcome, const QString &target,
                  const std::function<void(const QString &line)> &tell) const;

    Program &m_program;
    CommandPorts m_ports;
    const Transfer &m_transfer;
    const Options &m_options;
    Closing m_closing;
    std::function<bool()> m_isEnding = [] {
        return false;
    };
    Selection m_selection;
    QString m_automatic; // the document that the settings name
    QStringList m_told;  // of the notes of the source in hand
    FileState m_source;  // of the one in hand, as its reading began
    bool m_isBarred = false;
    bool m_isCommitted = false; // and perhaps not yet at its place
};

} // namespace kervan
