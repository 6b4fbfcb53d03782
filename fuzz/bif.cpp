// The whole road of an invoice file: read into the list, shown, checked, filtered and exported. As
// XML the document has an invoice for each ticked row, with its number, for two readers.

#include "base/codepage.h"
#include "invoices/columns.h"
#include "invoices/fat.h"
#include "invoices/fatchecks.h"
#include "support/desk.h"
#include "support/documents.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// Headers that count, found plainly.
int headersOf(const QByteArray &bytes)
{
    int count = 0;
    for (const QString &line : fuzz::plainLines(bytes))
        count += line.startsWith(u"@5"_s) && line.mid(147, 1) == u"0" ? 1 : 0;
    return count;
}

void choose(Fat &fat, int way)
{
    fat.tanimlar.firma.setText(u"Merkez"_s);
    fat.tanimlar.firmasec();
    fat.kdvOrani.setText(u"18"_s);
    fat.kdvoranisec();
    const QStringList kinds = fat.faturaTuru.entries();
    if (!kinds.isEmpty())
        fat.faturaTuru.setText(kinds[way % kinds.size()]);
    fat.liste.tarihAraligi.setChecked(way % 7 == 6);
    fat.liste.ilkTarih.setDate(QDate(2024, 3, 1));
    fat.liste.sonTarih.setDate(QDate(2024, 3, 20));
}

void compareNumbers(const Fat &fat, const fuzz::ReadDocument &found)
{
    QStringList numbers;
    for (int row = 0; row < fat.liste.l1.rows(); ++row) {
        if (fat.liste.l1.ticked(row))
            numbers << fat.liste.l1.cell(row, L1::FaturaNumarasi);
    }
    fuzz::expect(found.records == numbers.size(), "not an invoice for each ticked row",
                 QString::number(found.records), numbers.join(u'|'));
    for (qsizetype i = 0; i < numbers.size(); ++i) {
        // A value may hold a word of the template, which a later step then fills.
        if (!std::ranges::any_of(numbers[i], [](QChar c) { return c.isLower(); }))
            fuzz::expectSame(found.numbers[i].trimmed(), fuzz::asSpelled(numbers[i]).trimmed(),
                             "another invoice number");
    }
}

} // namespace

// Behind the source nothing; in front of it a digit for the choices.
void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const int way = pieces.choice(32);
    const QByteArray bytes = pieces.bytes();
    desk().layDown();
    const QString source = pathOf(u"kaynak.bif"_s);
    store(source, bytes);
    Fat fat(desk().program);
    fat.load();
    choose(fat, way);
    fat.okunurBicim.setChecked(way % 2 == 0);
    fat.dosyaac(source);
    const Grid &l1 = fat.liste.l1;
    expect(l1.rows() == headersOf(bytes) || fat.liste.tarihAraligi.isChecked(),
           "not a row for each header that counts");
    for (int row = 0; row < qMin(l1.rows(), 3); ++row)
        fat.satirsec(row);
    if (way % 3 == 0)
        checksOf(fat)->finish();
    fat.liste.l1.tickWhere([&](int row) { return row % 4 != way % 5; });
    const QString target = pathOf(u"belge.xml"_s);
    fat.kaydet(target);
    const ReadDocument found = readBack(target, fat.okunurBicim.values());
    if (fat.okunurBicim.isChecked()) {
        compareNumbers(fat, found);
        const QString slips = pathOf(u"belge-KASANAKIT.xml"_s); // none where a date is none
        if (QFile::exists(slips))
            readBack(slips, fat.okunurBicim.values());
    }
    expect(contents(target).startsWith("<?xml") && contents(target).endsWith("INVOICES>\r\n"),
           "no whole document");
}
