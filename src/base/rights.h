#pragma once

#include <QtGlobal>

namespace kervan {

#ifdef Q_OS_WIN
/// Lets the user of the program alone into the open file, whatever the folder allows and whatever
/// name it gets later. False where the disk keeps no rights, or they can't be set.
bool keepToUser(int descriptor);
#endif

} // namespace kervan
