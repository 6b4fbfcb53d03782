#pragma once

#include <QFileDevice>
#include <QString>

namespace kervan {

/// Why the file could not be opened, read or written, in a few Turkish words.
QString filefault(const QFileDevice &file);

} // namespace kervan
