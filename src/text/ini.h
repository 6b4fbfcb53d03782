#pragma once

#include <QString>

namespace kervan {

/// One value of an initialisation file (sections in brackets, key=value lines; names compared
/// without case). Empty if file, section or key is missing; cut to 255 characters; a pair of
/// quotes around the value is dropped.
QString inioku(const QString &section, const QString &key, const QString &path);

/// Sets one value of an initialisation file, which is created if missing; its other lines keep
/// their text, and the file is Windows-1254 with CR LF from then on. Always 0, whatever happened.
int iniyaz(const QString &section, const QString &key, const QString &value, const QString &path);

} // namespace kervan
