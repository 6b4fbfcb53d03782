#pragma once

#include "base/notes.h"
#include "check/finding.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace kervan {

/// How the command ends.
enum Status {
    Done = 0,
    DoneWithFindings = 1,
    NothingWritten = 2,
    UsedWrongly = 64,
    Barred = 75, ///< by what is no fault of the source: folders, databases, Logo; try later
    InUse = 76,  ///< the folder is, by a window or another command; try later
};

/// A document that was written.
struct OutcomeDocument
{
    QString path;
    QString kind;     ///< as notes count it: "fatura"
    qint64 count = 0; ///< of its records
    QString sum;      ///< of the records' amounts; empty where they have none
};

/// One that was written, read for its sum where it lies; `path` is where it will lie.
OutcomeDocument documentOf(const Notes::Written &written, const QString &path);

/// What became of one source.
struct Outcome
{
    QString source;
    Status status = NothingWritten;
    QList<OutcomeDocument> documents;
    int rows = 0;     ///< of the list
    int selected = 0; ///< of them
    QList<Finding> findings;
    QList<Gap> gaps;   ///< definitions that are missing, where only findings are asked for
    QStringList notes; ///< what was told in lines, boxes and all
    QStringList countersBefore, countersAfter;
    QDateTime begun;
    qint64 readTime = 0, checkTime = 0, writeTime = 0; ///< milliseconds

    int count(Level level) const;
};

/// The worse of two ends.
Status worse(Status a, Status b);

/// A finding as a line: "Hata: satır 3: ...".
QString lineOf(const Finding &finding);
/// "Eksik: Birim ADT, 3 satırda, 2 belgede".
QString lineOf(const Gap &gap);
/// The outcome as one object for each document, or one where there is none; a line each.
QString jsonOf(const Outcome &outcome);
/// The same for the eye.
QString textOf(const Outcome &outcome);

} // namespace kervan
