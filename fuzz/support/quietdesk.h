#pragma once

#include "app/realports.h"
#include "base/systemclock.h"
#include "odbc/odbcserver.h"
#include "store/installation.h"
#include "store/program.h"

#include <QTemporaryDir>

namespace kervan {

/// Boxes that nobody sees: every question is answered with yes.
class QuietBoxes : public Boxes
{
public:
    void show(const Box &) override {}
    bool ask(const Box &) override { return true; }
};

/// File dialogs that are always cancelled.
class NoDialogs : public FileDialogs
{
public:
    std::optional<QString> openName(const FileQuestion &) override { return std::nullopt; }
    std::optional<QString> saveName(const FileQuestion &) override { return std::nullopt; }
    std::optional<QString> anyName(const FileQuestion &) override { return std::nullopt; }
};

/// An installed program folder for benchmarks and fuzzers, which want no test framework.
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
