#pragma once

class QApplication;
class QColor;
class QPalette;

namespace kervan {

/// Dresses the program: Fusion with a quiet palette, light or dark as the desktop is.
void applyTheme(QApplication &application);

/// The same over a palette of the desktop's, as that of a high contrast, which is obeyed.
void applyTheme(QApplication &application, const QPalette &desktop);
/// Whether all of a palette is to be taken as it is: its ground is plain black or white, all its
/// grounds are one colour, or its ground or letters are tinted.
bool isHighContrast(const QPalette &palette);

/// Whether its ground is a dark one.
bool isDark(const QPalette &palette);

/// The same with the choice made by the caller.
void applyTheme(QApplication &application, bool onDark);

/// What is wrong is written in it.
QColor faultText(const QPalette &palette);

/// What is done or connected is written in it.
QColor goodText(const QPalette &palette);

/// The ground of a ticked row.
QColor tint(const QPalette &palette);

/// A colour with so many hundredths of another over it.
QColor mixed(const QColor &below, const QColor &above, int share);

} // namespace kervan
