#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace kervan {

/// The entries of a zip archive, by name and contents.
using ZipEntries = QList<std::pair<QByteArray, QByteArray>>;

/// Ends the program when it can't.
void writeZip(const QString &path, const ZipEntries &entries);

} // namespace kervan
