#pragma once

#include "base/ports.h"
#include "check/checks.h"
#include "check/listshape.h"
#include "check/readreport.h"
#include "check/screens/checkpane.h"

#include <QString>

#include <functional>

namespace kervan {

class GridView;
class Panes;

/// What a transfer window gives, so that its list is checked below it.
struct CheckedList
{
    QWidget *window;
    Grid &rows;
    GridView *view;    ///< of these rows
    QWidget *frame;    ///< around the view
    QString memoryKey; ///< of the pane's share
    Checks &checks;
    ReadReport &report;
    FileDialogs &dialogs;
    std::function<ListShape()> shape;
    std::function<void()> reread;
    /// The page that belongs to the list itself, with its list, where there is one.
    QWidget *lines = nullptr;
    GridView *linesView = nullptr;
    QString linesTitle = {};
};

/// The list with the pane below it: lines, findings, what was not read, missing definitions.
Panes *checkedPanes(const CheckedList &list);

} // namespace kervan
