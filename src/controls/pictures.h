#pragma once

#include <QIcon>
#include <QString>

namespace kervan {

/// A picture of the program by its name ("open"), as large as it fits into the room given to it. On
/// a dark palette line pictures are drawn lighter.
QIcon picture(const QString &name);

/// The file of a picture for a style sheet, which takes one for all screens: that of the sharpest.
QString pictureFile(const QString &name, int width);

} // namespace kervan
