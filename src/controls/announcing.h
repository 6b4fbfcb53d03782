#pragma once

class QLabel;
class QString;
class QWidget;

namespace kervan {

class TextField;

/// Tells it to those who do not see the windows, wherever they are at: their reader speaks it. What
/// a hidden widget has to tell is left.
void announce(const QWidget *by, const QString &text);

/// Names the label of a value by its caption and its value, and announces each change unless it
/// comes too often for that.
void nameValue(QLabel *label, const QString &caption, const TextField &field,
               bool announced = true);

} // namespace kervan
