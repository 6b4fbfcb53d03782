// Düzey workbooks by their cells: read into the list, shown, checked and exported. The lines of an
// invoice are those of the sheet that bear its number.

#include "base/failure.h"
#include "invoices/columns.h"
#include "invoices/duzey/fatduz.h"
#include "invoices/duzey/fatduzchecks.h"
#include "support/book.h"
#include "support/desk.h"
#include "support/documents.h"
#include "text/numbers.h"

#include <cmath>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// The invoices of the kind that is taken with what their records come to. The list sums up in
// single precision, which a sum of sizes allows for.
void compareList(const Grid &l1, const Sheet &sheet, const QString &kind)
{
    struct Sum
    {
        QString number;
        double amount = 0;
        double size = 0;
    };
    QList<Sum> sums;
    for (int record = 0; record < sheet.rows(); ++record) {
        if (fieldOf(sheet, record, Duzey::CariKodu).isEmpty() ||
            fieldOf(sheet, record, Duzey::FaturaTipi) != kind)
            continue;
        const QString number = fieldOf(sheet, record, Duzey::FaturaNumarasi);
        if (sums.isEmpty() || number != sums.last().number)
            sums << Sum{.number = number};
        const double amount = amountOf(sheet, record);
        sums.last().amount += amount;
        sums.last().size += std::abs(amount);
    }
    fuzz::expect(l1.rows() == sums.size(), "not a row for each invoice of the sheet",
                 QString::number(l1.rows()), QString::number(sums.size()));
    for (int row = 0; row < l1.rows(); ++row) {
        const Sum &sum = sums[row];
        fuzz::expectSame(l1.cell(row, L1::FaturaNumarasi), sum.number, "another invoice");
        const double listed = number(l1.cell(row, L1::ToplamTutar)).value_or(0);
        fuzz::expect(std::abs(listed - sum.amount) <= sum.size * 1e-5 + 0.01,
                     "another total in the list", l1.cell(row, L1::ToplamTutar),
                     QString::number(sum.amount, 'g', 17));
    }
}

} // namespace

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
    if (sheet && !fatduz.bilgi.hasFailed())
        compareList(l1, *sheet, fatduz.tipAdi());
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
    if (!fatduz.okunurBicim.isChecked())
        return;
    expect(found.records == l1.tickedCount(), "not an invoice for each ticked row");
    if (!sheet || fatduz.bilgi.hasFailed() || fatduz.bilgi.text().contains(u"eksik yazıldı"_s))
        return;
    qsizetype invoice = 0;
    for (int row = 0; row < l1.rows(); ++row) {
        if (!l1.ticked(row))
            continue;
        const QString number = l1.cell(row, L1::FaturaNumarasi);
        const qsizetype lines = number.isEmpty() ? 0 : records.of(sheet, number).size();
        expect(found.lines[invoice++] == lines, "another count of lines", number);
    }
}
