#pragma once

#include "invoices/invoicelist.h"

#include <QString>

#include <functional>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;

namespace kervan {

class GridView;

// The pieces that the windows of both invoice transfers are made of.

/// A list to choose from.
QComboBox *choiceBox(const QString &name, ChoiceField &field, bool editable = false);

/// The layout of the panel of choices, which addField() fills.
QGridLayout *choiceLayout(QWidget *panel);
/// A field and its label in the cell before it; the field takes the room that there is.
void addField(QGridLayout *grid, int row, int column, const QString &label, QWidget *field);

/// The box that ticks all rows of the list.
QCheckBox *allRowsBox(InvoiceList &list);
/// Adds the date filter to the row: its box, and two pickers that tell when a user changes them.
/// Gives the box.
QCheckBox *addDateFilter(QBoxLayout *row, InvoiceList &list, const std::function<void()> &changed);

/// The view on an invoice list. A row is chosen by a click or by moving to it, and the Delete key
/// removes the ticked ones.
GridView *invoiceView(InvoiceList &list, const std::function<void(int row)> &choose);
/// The view on the lines of the chosen invoice.
GridView *lineView(Grid &l2);
/// Both lists in their frames, with a handle between.
QWidget *invoiceLists(GridView *invoices, GridView *lines);

} // namespace kervan
