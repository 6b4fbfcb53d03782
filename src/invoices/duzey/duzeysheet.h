#pragma once

#include "base/grid.h"
#include "workbook/workbook.h"

#include <QHash>
#include <QList>
#include <QString>

#include <memory>
#include <optional>

namespace kervan {

/// Fields of a record of the sheet: one line of an invoice, with its head beside it.
namespace Duzey {
enum Field {
    FaturaTarihi,
    CariKodu,
    BelgeNumarasi = 3,
    FaturaNumarasi,
    FaturaTipi,
    UrunKodu,
    Miktar,
    Birim,
    BirimFiyat,
    Oran1, // six discount rates from here on
    KdvOrani = 16,
    PersonelKodu,
    OdemeTipi,
    IndirimTutari = 22
};
}

/// A field without the blanks around it; outside the sheet it is a Failure.
QString fieldOf(const Sheet &sheet, int record, Duzey::Field field);

/// A number as the sheet spells it, "." or "," before its decimals, with four decimals. Anything
/// else is "0,0000"; this step never fails.
QString tutarayarlama(const QString &text);

/// The number that it reads, before its rounding; nothing where it finds none.
std::optional<double> tutarsayisi(const QString &text);

/// Quantity times price of a record.
double amountOf(const Sheet &sheet, int record);

/// Adds a line with its discounts to the lines shown. A Failure (a field outside the sheet, a
/// discount amount on a line of nothing) leaves the row with the cells that were filled before it.
void addToL2(const Sheet &sheet, int record, Grid &l2);
/// Adds it to the working copy, with its Logo unit code.
void addToL3(const Sheet &sheet, int record, const Grid &lbrm, Grid &l3);

/// Where the lines of each invoice stand in a sheet, found in one walk over it.
class InvoiceRecords
{
public:
    /// All records that bear the number, wherever in the sheet. Another sheet than the last one is
    /// walked first.
    QList<int> of(const std::shared_ptr<const Sheet> &sheet, const QString &faturano);

private:
    std::shared_ptr<const Sheet> m_sheet;
    QHash<QString, QList<int>> m_records;
};

} // namespace kervan
