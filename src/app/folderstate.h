#pragma once

#include <QString>

namespace kervan {

/// What the user should know of the program folder at a start, one line: the crash of last time, a
/// folder that can't be written, and `recovered`, what became of a transfer that was cut short.
/// Empty if all is well. A crash is told once.
QString folderState(const QString &folder, const QString &recovered);

} // namespace kervan
