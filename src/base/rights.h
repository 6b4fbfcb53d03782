#pragma once

#include <QString>
#include <QtGlobal>

namespace kervan {

#ifdef Q_OS_WIN
/// Lets the user of the program alone into the file, whatever the folder allows. False where the
/// disk keeps no rights, or they can't be set.
bool keepToUser(const QString &path);
#endif

} // namespace kervan
