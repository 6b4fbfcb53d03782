#pragma once

#include <QString>
#include <QStringList>

namespace kervan {

/// The driver to reach a SQL Server with, of those registered on the machine: the newest of
/// Microsoft's, else FreeTDS. Where none is registered, the file name under which Linux installs
/// FreeTDS.
QString chosenDriver(const QStringList &registered);

/// A connection text of the program ("Server=...;Provider=...;UID=...;PWD=...;database=...;") in
/// the words of an ODBC driver. It is cut at ";" wherever one stands; of a repeated key the last
/// value counts. A piece that is no pair is a Failure.
QString driverText(const QString &connectionText, const QString &driver);

/// What a driver or server says, without the layers that it came through ("[FreeTDS][SQL Server]").
QString sentenceOf(const QString &message);

} // namespace kervan
