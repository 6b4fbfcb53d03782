#pragma once

#include "base/fields.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QWidget;

namespace kervan {

class DateEdit;

// Ties a widget to a field of a screen: the widget shows the field and writes back what the user
// enters. What the user does with it is for the window to connect, behind the tie.

void bind(QLabel *label, TextField &field);
void bind(QLineEdit *edit, TextField &field);
void bind(QComboBox *box, ChoiceField &field);
void bind(QCheckBox *box, CheckField &field);
void bind(DateEdit *edit, DateField &field);
/// The bar is repainted at once, so that long work shows without letting clicks in.
void bind(QProgressBar *bar, ProgressField &field);
/// The pointer is an hourglass while the field is checked.
void bindHourglass(QWidget *window, CheckField &field);

} // namespace kervan
