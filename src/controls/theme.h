#pragma once

class QApplication;
class QColor;
class QPalette;

namespace kervan {

/// Dresses the program: Fusion with a quiet palette, light or dark as the desktop is.
void applyTheme(QApplication &application);

/// The same with the choice made by the caller.
void applyTheme(QApplication &application, bool dark);

/// The ground of a ticked row.
QColor tint(const QPalette &palette);

} // namespace kervan
