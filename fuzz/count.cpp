// The file of a barcode terminal: a row a line, only designed statements to Logo, and a slip whose
// lines are the rows that Logo knows.

#include "base/codepage.h"
#include "check/documentreader.h"
#include "stocktake/countchecks.h"
#include "stocktake/sayimform.h"
#include "support/desk.h"
#include "support/documents.h"

using namespace kervan;
using namespace Qt::StringLiterals;

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const int way = pieces.choice(6);
    const QString number = pieces.text();
    desk().layDown();
    const QString source = pathOf(u"kaynak.txt"_s);
    const QByteArray bytes = pieces.bytes();
    store(source, bytes);
    Sayimform sayim(desk().program);
    sayim.load();
    sayim.okunurBicim.setChecked(way % 2 == 0);
    sayim.dosyaac(source);
    const QStringList lines = plainLines(bytes);
    expect(sayim.l1.rows() == lines.size() || (sayim.l1.isEmpty() && sayim.bilgi.hasFailed()),
           "not a row for each line");
    for (int row = 0; row < sayim.l1.rows(); ++row) {
        expectSame(sayim.l1.cell(row, Sayimform::Barkod), bare(lines[row].left(14)),
                   "another barcode");
        expectSame(sayim.l1.cell(row, Sayimform::Miktar), bare(lines[row].mid(14, 6)),
                   "another quantity");
    }
    if (way % 3 == 0)
        checksOf(sayim)->finish();
    sayim.fisno.setText(number);
    sayim.xmlkaydet();
    int known = 0;
    for (int row = 0; row < sayim.l1.rows(); ++row)
        known += sayim.l1.cell(row, Sayimform::StokKodu).isEmpty() ? 0 : 1;
    if (sayim.l1.isEmpty())
        return;
    const QString target = pathOf(u"belge.xml"_s);
    readBack(target, sayim.okunurBicim.values());
    if (!sayim.okunurBicim.isChecked())
        return;
    int written = 0;
    readDocument(target, [&](const DocumentRecord &record) { written += record.lines; });
    expect(written == known, "not a line for each row that Logo knows", QString::number(written),
           QString::number(known));
}
