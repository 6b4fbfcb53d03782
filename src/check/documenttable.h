#pragma once

#include "base/grid.h"
#include "check/documentreader.h"

#include <QDateTime>
#include <QStringList>

#include <vector>

namespace kervan {

/// A document for the eye: a row per record, with the columns that its family has.
struct DocumentTable
{
    struct Row
    {
        QStringList cells;
        unsigned empty = 0; ///< a bit for each column whose field stands empty in the document
    };

    QString path;
    QDateTime time; ///< of its last change
    DocumentReading reading;
    QList<GridColumn> columns;
    std::vector<Row> rows;           ///< the first of them
    qint64 lacking = 0;              ///< records with an empty field or a line that lacks a code
    std::optional<Decimal> net, sum; ///< of all records, where each can be read

    /// Its records, sum and faults in a sentence.
    QString summary() const;
};

/// What stands in the place of an empty field.
inline constexpr QStringView emptyField = u"boş";

/// Reads the document. Never throws; what is wrong stands in `reading`. Fit for a thread of its
/// own.
DocumentTable documentTable(const QString &path, const std::atomic_bool *stop = nullptr);

/// What its records are called: "fatura", "kasa fişi".
QString nameOf(DocumentFamily family);

} // namespace kervan
