#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace kervan {

/// The entries of a zip archive, by name and contents.
using ZipEntries = QList<std::pair<QByteArray, QByteArray>>;

/// Both end the program when they can't.
void writeZip(const QString &path, const ZipEntries &entries);
ZipEntries readZip(const QString &path);

} // namespace kervan
