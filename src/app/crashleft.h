#pragma once

#include <QString>

namespace kervan {

/// The file that a crash left there, told once: from now on it has a name of its own, so that a
/// later crash does not write over it. Empty if there is none, or none but the one that was told
/// before and could not be renamed.
QString leftByCrash(const QString &programFolder);

/// Whether it was left by the command that transfers without a window.
bool isOfCommand(const QString &report);

} // namespace kervan
