#pragma once

#include "base/ports.h"

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

} // namespace kervan
