#pragma once

#include <QString>

namespace kervan {

/// Lays the user guide and its pictures out in the folder `kilavuz` of a program folder, in the
/// place of an older copy. A Failure names the file that could not be written.
void layOutGuide(const QString &programFolder);

} // namespace kervan
