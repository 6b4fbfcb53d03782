#pragma once

#include "base/notes.h"
#include "check/screens/checkedlist.h"
#include "invoices/invoicelist.h"

#include <QString>

#include <functional>

class QCheckBox;
class QComboBox;
class QPoint;
class QPushButton;
class QWidget;

namespace kervan {

class FieldPanel;
class FlowLayout;

// The pieces that the windows of both invoice transfers are made of.

/// A list to choose from.
QComboBox *choiceBox(const QString &name, ChoiceField &field, bool editable = false);

/// The kinds of invoices, and the staff of the source: a choice of either reads the source again.
QComboBox *kindBox(ChoiceField &faturaTuru);
QComboBox *staffBox(ChoiceField &personel);

/// Adds the commands of the list at the end of a row: its menu, which is wanted at a place of the
/// desktop, and the removal of the ticked invoices.
void addListCommands(FlowLayout *row, QWidget *window, InvoiceList &list,
                     const std::function<void(const QPoint &place)> &menuWanted);

/// Adds a field and its label to the panel of choices.
void addField(FieldPanel *panel, const QString &label, QWidget *field);

/// A choice that is the same on most days, and what its picking does.
struct DailyChoice
{
    QString name; ///< as a sentence has it: "Firma"
    ChoiceField &field;
    std::function<void()> pick;
};
/// The button that makes the choices of the last document again, as if the user picked them. What
/// was chosen is remembered for the screen whenever it has written a document; a choice that no
/// longer is in its list is told in the notes and left as it is.
QPushButton *dailyChoicesButton(QWidget *window, Notes &notes, const QList<DailyChoice> &choices);

/// The box that ticks all rows of the list.
QCheckBox *allRowsBox(InvoiceList &list);
/// Adds the date filter to the row: its box, and two pickers that tell when a user changes them.
/// Gives the box.
QCheckBox *addDateFilter(FlowLayout *row, InvoiceList &list, const std::function<void()> &changed);

/// The view on an invoice list. A row is chosen by a click or by moving to it, and the Delete key
/// removes the ticked ones. Until a source is opened, which `caption` shows, it says how to open
/// one of the kind `source`.
GridView *invoiceView(InvoiceList &list, const QString &source, TextField &caption,
                      const std::function<void(int row)> &choose);
/// That list in its frame, and below it the lines of the chosen invoice and what is checked; `list`
/// tells all but the frame and the lines.
QWidget *invoiceLists(CheckedList list, Grid &l2);

} // namespace kervan
