#pragma once

#include "workbook/workbook.h"

namespace kervan {

/// Reads a sheet of an .xls file (BIFF8, in its container or alone) from its bytes, which it lets
/// go of early. Failures are as for readSheet(), but don't name the file.
std::shared_ptr<const Sheet> readXls(QByteArray bytes, const QString &sheetName);

/// The names of the sheets that hold cells.
QStringList xlsSheetNames(QByteArray bytes);

} // namespace kervan
