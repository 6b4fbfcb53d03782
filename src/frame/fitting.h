#pragma once

#include <QString>
#include <QStringList>

namespace kervan {

// Which transfers a file may be meant for, by the words of their screens.

/// By its beginning alone, while it is still dragged: of a workbook all that read workbooks. None
/// for what no transfer reads.
QStringList screensAtAGlance(const QString &path);

/// By what is in it. A workbook that looks like none of those that are read is one that any of
/// their screens may be asked to read, and so is one that can't be read here.
QStringList screensFor(const QString &path);

} // namespace kervan
