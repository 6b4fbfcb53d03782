#pragma once

#include "base/busy.h"
#include "base/ports.h"
#include "store/folders.h"
#include "store/localdb.h"

#include <QString>

namespace kervan {

class SqlServer;

/// What every screen is given: the program folder, the state that screens share, and the doors to
/// the world outside. Made once by main() or by a test, and outlives every screen.
struct Program
{
    QString folder;    // databases and side files stand here
    QString aktifform; // the invoice screen loaded last: "1" is fat, "2" is fatduz
    Folders folders;
    LocalDb db;
    Boxes &boxes;
    FileDialogs &dialogs;
    Clock &clock;
    SqlServer &sqlServer;
    Busy busy{}; // what is being done at this moment

    /// A file or folder of the program folder.
    QString path(QStringView name) const { return folder + u'/' + name.toString(); }
};

} // namespace kervan
