#pragma once

#include <QString>

namespace kervan {

/// The six folder values, mirrored from the one row of table `yol`; empty until a screen has
/// loaded them. Each holds what a file dialog once gave: a full file name, mostly.
struct Folders
{
    QString ec, es, ef; // sources of cari, stock and invoice files
    QString xc, xs, xf; // targets of the same three
};

/// A value as a name of the file system: a relative one lies in the program folder, so that a
/// copied folder works where it lies. An empty one stays empty.
QString fullName(const QString &programFolder, const QString &value);

class LocalDb;

/// Takes the values over from table `yol` of the open database; a table that can't be read is a
/// Failure.
void loadFolders(LocalDb &db, Folders &folders);

} // namespace kervan
