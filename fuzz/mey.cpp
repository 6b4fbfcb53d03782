// Mey workbooks by their cells: a row a record, a card a row.

#include "cards/cardchecks.h"
#include "cards/st.h"
#include "support/book.h"
#include "support/desk.h"
#include "support/documents.h"

using namespace kervan;
using namespace Qt::StringLiterals;

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const int way = pieces.choice(12);
    desk().layDown();
    desk().dialogs.source = pathOf(u"kaynak.xls"_s);
    writeXls(desk().dialogs.source, u"cari mey"_s, rowsOf(pieces.bytes()));
    St st(desk().program);
    st.load();
    st.okunurBicim.setChecked(way % 2 == 0);
    const int shown = desk().boxes.shown;
    st.manualac();
    expect(!st.l1.isEmpty() || desk().boxes.shown > shown || st.bilgi.hasFailed(),
           "a workbook gives nothing without a word");
    if (!st.l1.isEmpty()) {
        const auto sheet = readSheet(desk().dialogs.source, u"cari mey"_s);
        expect(st.l1.rows() == sheet->rows(), "not a row for each record");
        for (int row = 0; row < sheet->rows(); ++row) {
            for (int field = 0; field < qMin(int(St::Columns), sheet->columns()); ++field)
                expectSame(st.l1.cell(row, field), sheet->text(row, field), "another cell");
        }
    }
    st.kdvOrani.setText(u"18"_s);
    st.kdvoranisec();
    st.birimSeti.setText(u"KOLI"_s);
    st.birimsetisec();
    if (way % 3 == 0)
        checksOf(st)->finish();
    const int before = desk().boxes.shown;
    st.manualkaydet();
    const QString target = pathOf(u"belge.xml"_s);
    if (!QFile::exists(target))
        return expect(desk().boxes.shown > before || st.bilgi.hasFailed(),
                      "no document without a word");
    const ReadDocument found = readBack(target, st.okunurBicim.values());
    if (st.okunurBicim.isChecked())
        expect(found.records == st.l1.rows(), "not a card for each row",
               QString::number(found.records), QString::number(st.l1.rows()));
}
