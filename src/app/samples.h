#pragma once

#include <QDate>
#include <QString>

namespace kervan {

/// Copies the sample sources into the program folder's "txt" and fills empty tables with the
/// sample definitions: `samples` holds tanimlar.txt (database, table and values of a row, parted by
/// tabs), *.bif and *.kvz. Tables with rows and files that are there stay. The invoices that show
/// the checks get this day. A Failure names what went wrong.
void layOutSamples(const QString &samples, const QString &programFolder,
                   QDate day = QDate::currentDate());

} // namespace kervan
