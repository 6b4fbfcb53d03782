#pragma once

#include "base/failure.h"

#include <QFileDevice>
#include <QString>

#ifdef Q_OS_WIN
#include <string>
#endif

namespace kervan {

/// Forgets the system's last fault, so that the next one is that of the call behind it.
void clearFault();
/// The number that the system gave the last fault; a file of Qt's keeps but a sentence of it, so
/// this is asked for right behind the call that failed.
int lastFault();

/// Why the file could not be opened, read or written, in a few Turkish words.
QString filefault(const QFileDevice &file, int fault);

/// Whether a fault of the system's is one of the place where a file was to be written, and not of
/// its name or size: once there is room, a right, the share again, it can be written.
bool isOfPlace(int fault);

/// Whether another program has the file open in a way that keeps everybody else out; only Windows
/// knows that.
bool isOpenElsewhere(const QString &path);

/// Waits for a second at most while it is, and tells whether it is no longer: scanners and copies
/// to the cloud open for a moment what was just written.
bool waitWhileOpen(const QString &path);

/// Whether the name leads to another machine: a share, on Windows also as a drive. Nothing is asked
/// of the other machine.
bool isOfOtherMachine(const QString &path);

/// Why no file may have this name, empty if one may. Windows would put what is written to
/// "NUL.xml" nowhere, behind a colon out of sight, and with a point or a blank at the end into a
/// file of another name or one that nothing else can open; other systems take any name.
QString faultOfName(const QString &path);

#ifdef Q_OS_WIN
/// The file's name for calls of the system: in this form they take one of more than 260 letters.
std::wstring systemName(const QString &path);
#endif

/// The failure of a file: `step` is what could not be done, "yazılamadı".
Failure fileFailure(const QString &path, const QString &step, const QString &why,
                    const QStringList &choices = {});

} // namespace kervan
