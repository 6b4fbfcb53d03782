#pragma once

#include "invoices/invoicelist.h"

#include <QList>
#include <QString>

namespace kervan {

/// A menu entry or big button of the main window: its control's name, its caption, and the word of
/// the screen that it opens. A button has a picture too.
struct Entry
{
    QString name;
    QString caption;
    QString screen;
    QString picture = {};
};

/// The top-level menu "Aktarım", the big buttons and the menu "İşlemler", in their order.
const QList<Entry> &transferEntries();
const QList<Entry> &bigButtons();
const QList<Entry> &definitionEntries();

/// An entry of the popup menu over an invoice list; a separator has no operation.
struct ListEntry
{
    QString name;
    QString caption;
    void (InvoiceList::*operation)();
};
const QList<ListEntry> &invoiceListEntries();

/// The popup menu of the slip screens: names and captions.
const QList<Entry> &slipListEntries();

} // namespace kervan
