#pragma once

#include <QString>

namespace kervan {

/// Brings the program folder of a killed program to rest, for whoever has it to himself: half
/// written side files go, and what still stands in a log beside a database goes into it or is
/// rolled back, so that a copy of the file alone holds all. What can't be done waits for the next
/// time; nothing of it is told, since nothing of it is lost.
void settle(const QString &programFolder);

} // namespace kervan
