#pragma once

#include "base/failure.h"

#include <QFileDevice>
#include <QString>

namespace kervan {

/// Forgets the system's last fault, so that the next one is that of the call behind it.
void clearFault();
/// The number that the system gave the last fault; a file of Qt's keeps but a sentence of it, so
/// this is asked for right behind the call that failed.
int lastFault();

/// Why the file could not be opened, read or written, in a few Turkish words.
QString filefault(const QFileDevice &file, int fault);

/// Why no file may have this name, empty if one may. Windows would put what is written to
/// "NUL.xml" nowhere, and behind a colon out of sight; other systems take any name.
QString faultOfName(const QString &path);

/// The failure of a file: `step` is what could not be done, "yazılamadı".
Failure fileFailure(const QString &path, const QString &step, const QString &why);

} // namespace kervan
