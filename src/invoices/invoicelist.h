#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/ports.h"

#include <QList>

#include <functional>

namespace kervan {

/// The invoice list of an invoice screen and what a user does to it: ticking, the list views, the
/// date filter, the title search and the removal of rows.
class InvoiceList
{
public:
    /// `reread` reads the source again and fills the list anew.
    InvoiceList(QList<GridColumn> columns, Boxes &boxes, std::function<void()> reread);

    Grid l1;
    bool listedolu = false;    ///< the list had rows at the end of the last read
    int eFaturaSorulmayan = 0; ///< rows whose e-invoice mark the last read could not ask for
    CheckField tarihAraligi;   ///< date filter on
    CheckField tumunuSec;      ///< tick all
    DateField ilkTarih;
    DateField sonTarih;
    TextField arananUnvan;
    TextField satirSayisi; ///< second panel of the status bar

    void showRowCount();

    void fattumsec() { l1.setAllTicked(true); }
    void tumsecimkaldir() { l1.setAllTicked(false); }
    void eolan();
    void eolmayan();
    void efatgoster();
    void efatolmgoster();
    void tumgoster();

    /// tumunuSec was changed: every tick takes its state.
    void tumunusecdegisti() { l1.setAllTicked(tumunuSec.isChecked()); }
    /// Removes the rows dated outside `ilkTarih` to `sonTarih`. A row without a date that can be
    /// compared ends the walk as a Failure, and it and the rows after it stay; so does a bound
    /// that is no date, before the first row.
    void tarihbelirle();
    /// The rows whose title holds the text of `arananUnvan`, case counting.
    QList<int> unvanara() const;
    /// Asks, and removes the ticked rows.
    void secilenlerisil();

private:
    bool isEFatura(int row) const;
    void show(bool eFatura);

    Boxes &m_boxes;
    std::function<void()> m_reread;
};

} // namespace kervan
