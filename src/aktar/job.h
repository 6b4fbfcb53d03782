#pragma once

#include "aktar/commandports.h"
#include "aktar/journal.h"
#include "aktar/outcome.h"
#include "aktar/transfers.h"
#include "store/program.h"

#include <functional>

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
    /// is a wrong use, after which nothing was written.
    Outcome run(const QString &source, const Streams &streams);
    /// Whether it is only to show what it reads, so that nobody need be kept out of the folder.
    bool onlyReads() const;
    /// The full name of a source's document.
    QString targetOf(const QString &source) const;

    /// What else is to move at the moment at which the documents appear, such as the source.
    using Closing = std::function<QList<Move>(const Outcome &outcome, const QString &folder)>;
    void setClosing(Closing closing) { m_closing = std::move(closing); }

private:
    void read(OpenScreen &screen, Outcome &outcome, const Streams &streams);
    void look(OpenScreen &screen, Outcome &outcome, const Streams &streams) const;
    void tellNotes(const Notes &notes, const Streams &streams);
    void write(OpenScreen &screen, Outcome &outcome, const Streams &streams);
    void writeInto(OpenScreen &screen, Journal &journal, const QString &target, Outcome &outcome,
                   const Streams &streams);
    bool mayWrite(const OpenScreen &screen, const Outcome &outcome, const QString &target,
                  const std::function<void(const QString &line)> &tell) const;

    Program &m_program;
    CommandPorts m_ports;
    const Transfer &m_transfer;
    const Options &m_options;
    Closing m_closing;
    QStringList m_told; // of the notes of the source in hand
};

} // namespace kervan
