#pragma once

#include <QString>

namespace kervan {

/// A folder that holds none of the databases and side files, as one just unpacked, or one whose
/// laying out was cut short. One that has lost a database is no new one: what was in it is missing,
/// and must not look as if it had been empty.
bool isNewFolder(const QString &programFolder);

/// Lays out a program folder: the three database files with their tables, indexes and seeded rows
/// (`yol` with empty texts, `kdv` with 18), and the folders that dialogs start in. What is there
/// already stays untouched. A Failure names the file that could not be made.
void install(const QString &programFolder);

} // namespace kervan
