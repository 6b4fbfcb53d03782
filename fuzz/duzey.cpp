// Düzey workbooks by their cells: read into the list, shown, checked and exported. The lines of an
// invoice are those of the sheet that bear its number.

#include "base/failure.h"
#include "invoices/columns.h"
#include "invoices/duzey/fatduz.h"
#include "invoices/duzey/fatduzchecks.h"
#include "support/book.h"
#include "support/desk.h"
#include "support/documents.h"

using namespace kervan;
using namespace Qt::StringLiterals;

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const int way = pieces.choice(24);
    desk().layDown();
    const QString source = pathOf(u"kaynak.xls"_s);
    writeXls(source, u"Sheet1"_s, rowsOf(pieces.bytes()));
    Fatduz fatduz(desk().program);
    fatduz.load();
    fatduz.tanimlar.firma.setText(u"Merkez"_s);
    fatduz.tanimlar.firmasec();
    const QStringList kinds = fatduz.faturaTuru.entries();
    if (!kinds.isEmpty())
        fatduz.faturaTuru.setText(kinds[way % kinds.size()]);
    fatduz.okunurBicim.setChecked(way % 2 == 0);
    fatduz.dosyaac(source);
    Grid &l1 = fatduz.liste.l1;
    const auto sheet = fatduz.okunanSayfa();
    InvoiceRecords records;
    for (int row = 0; row < qMin(l1.rows(), 4); ++row) {
        const QString number = l1.cell(row, L1::FaturaNumarasi);
        fatduz.satirsec(row);
        if (!sheet)
            continue;
        QList<int> plain;
        for (int record = 0; record < sheet->rows(); ++record) {
            passOver([&] {
                if (fieldOf(*sheet, record, Duzey::FaturaNumarasi) == number)
                    plain << record;
            });
        }
        expect(records.of(sheet, number) == plain, "other records of an invoice", number);
    }
    if (way % 3 == 0)
        checksOf(fatduz)->finish();
    l1.tickWhere([&](int row) { return row % 4 != way % 5; });
    const QString target = pathOf(u"belge.xml"_s);
    fatduz.kaydet(target);
    const ReadDocument found = readBack(target, fatduz.okunurBicim.values());
    expect(contents(target).startsWith("<?xml") && contents(target).endsWith("INVOICES>\r\n"),
           "no whole document");
    if (fatduz.okunurBicim.isChecked())
        expect(found.records == l1.tickedCount(), "not an invoice for each ticked row");
}
