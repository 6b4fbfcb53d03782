#pragma once

class QWidget;

namespace kervan {

/// Ctrl+Z on the window of a transfer takes back what was last done to the ticks and rows of its
/// lists `l1` and `l2`, and tells it in the status bar. A field that is typed in keeps the keys.
void installUndo(QWidget *window);

} // namespace kervan
