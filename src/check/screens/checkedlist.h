#pragma once

#include "base/notes.h"
#include "check/checks.h"
#include "check/listshape.h"
#include "check/readback.h"
#include "check/readinessrules.h"
#include "check/readreport.h"
#include "check/screens/checkpane.h"
#include "check/writtendocuments.h"
#include "logoxml/spelling.h"
#include "store/program.h"

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
    Program &program;
    Notes &notes;
    XmlChoice &okunurBicim;
    std::function<ListShape()> shape;
    std::function<void()> reread;
    /// How its rows are found in documents, and what goes into the one that is being written.
    std::function<ListedRows()> listed = nullptr;
    std::function<WrittenRows()> written = nullptr;
    /// The side files of the counters that its documents take numbers from.
    QStringList counters = {};
    /// Of invoices, whether a row gets a cash slip.
    std::function<bool(int row)> belowLimit = nullptr;
    /// The page that belongs to the list itself, with its list, where there is one.
    QWidget *lines = nullptr;
    GridView *linesView = nullptr;
    QString linesTitle = {};
    /// Of the second list that is written from, where there is one.
    Grid *secondRows = nullptr;
    std::function<ListShape()> secondShape = nullptr;
    std::function<ListedRows()> secondListed = nullptr;
};

/// The list with the pane below it: lines, findings, what was not read, missing definitions.
Panes *checkedPanes(const CheckedList &list);

/// What a document holds, as far as the pane of the window has read it; asked once it stands.
ContentOf contentKnownBelow(const QWidget *window);

} // namespace kervan
