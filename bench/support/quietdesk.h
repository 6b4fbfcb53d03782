#pragma once

#include "base/systemclock.h"
#include "odbc/odbcserver.h"
#include "store/installation.h"
#include "store/program.h"
#include "support/quietports.h"

#include <QTemporaryDir>

namespace kervan {

/// An installed program folder for benchmarks, which want no test framework.
class QuietDesk
{
public:
    QuietDesk() { install(folder.path()); }

    QTemporaryDir folder;
    QuietBoxes boxes;
    NoDialogs dialogs;
    SystemClock clock;
    OdbcServer server;
    Program program{folder.path(), {}, {}, {}, boxes, dialogs, clock, server};
};

} // namespace kervan
