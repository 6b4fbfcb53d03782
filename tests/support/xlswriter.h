#pragma once

#include "support/workbooks.h"

namespace kervan {

/// Writes an .xls workbook (BIFF8) of sheets with the same cells as writeWorkbook(); ends the
/// program when it can't.
void writeXls(const QString &path, const QList<BookSheet> &sheets, bool starts1904 = false);
void writeXls(const QString &path, const QString &sheetName, const QList<BookRow> &rows);
/// The same with rows made on demand, for sheets too large to hold twice.
void writeXls(const QString &path, const QString &sheetName, int rows,
              const std::function<BookRow(int row)> &makeRow);

/// One record of BIFF8, cut into continuations where it is too long, which serves for records
/// whose pieces need no care.
QByteArray biffRecord(quint16 type, const QByteArray &data);
/// A compound file with streams of these names, in sectors of 512 bytes (9) or 4096 (12).
QByteArray compoundFile(const QList<std::pair<QString, QByteArray>> &streams, int sectorBits = 9);

} // namespace kervan
