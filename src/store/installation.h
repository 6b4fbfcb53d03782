#pragma once

#include <QString>

namespace kervan {

/// Lays out a program folder: the three database files with their tables, indexes and seeded rows
/// (`yol` with empty texts, `kdv` with 18), and the folders that dialogs start in. What is there
/// already stays untouched. A Failure names the file that could not be made.
void install(const QString &programFolder);

} // namespace kervan
