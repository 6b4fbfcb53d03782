#pragma once

#include <QIcon>
#include <QString>

namespace kervan {

/// A picture of the program by its name ("open"), as large as it fits into the room given to it. On
/// a dark palette line pictures are drawn lighter.
QIcon picture(const QString &name);

} // namespace kervan
