#pragma once

#include "check/beside.h"
#include "check/documentreader.h"

#include <QStringList>

namespace kervan {

class Grid;

/// What a document has to hold once it is written: the rows of the list that went into it.
struct WrittenRows
{
    DocumentFamily family = DocumentFamily::Unknown;
    QStringList numbers = {}; ///< of all records in their order; empty where the list gives none
    qint64 count = 0;         ///< of records; of a count, of its lines
    /// The amounts as the list shows them; nothing where one can't be read or there are none.
    std::optional<Decimal> sum = std::nullopt;
    bool sumIsNet = false; ///< of invoices whose list has amounts without VAT
};

/// The rows of a list that go into a document, all or the ticked ones; -1 is a column that the list
/// has not. The amount of a row is left out of none: where one can't be read there is no sum.
WrittenRows writtenRows(const Grid &grid, DocumentFamily family, bool tickedOnly, int numberColumn,
                        int amountColumn);

/// A document that was read back.
struct ReadBack
{
    QString path;
    qint64 count = 0;
    std::optional<Decimal> sum; ///< of its records, where the list has one to compare
    qint64 problems = 0;        ///< places that an XML reader stumbles over
    bool agrees = false;
    QString sentence; ///< what agrees, or the first thing that does not
};

/// Reads the document and compares it; the rows must be taken before the list changes. Never
/// throws. Fit for a thread of its own.
ReadBack readBack(const QString &path, const WrittenRows &rows,
                  const std::atomic_bool *stop = nullptr);

/// The same beside the work, so that no export waits for it.
class ReadBackBeside : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    /// Reads this one back; an earlier one that is still read is dropped.
    void start(const QString &path, const WrittenRows &rows);
    /// What is being read is of no interest any more.
    void stop() { m_reader.stop(); }
    bool isRunning() const { return m_reader.isRunning(); }

Q_SIGNALS:
    void done(const kervan::ReadBack &result);

private:
    Beside m_reader;
};

} // namespace kervan
