#pragma once

#include "workbook/workbook.h"

namespace kervan {

/// Reads a sheet of an .xlsx file from its bytes. Failures are as for readSheet(), but don't name
/// the file.
std::shared_ptr<const Sheet> readXlsx(const QByteArray &bytes, const QString &sheetName);

/// The names of the sheets that hold cells.
QStringList xlsxSheetNames(const QByteArray &bytes);

} // namespace kervan
