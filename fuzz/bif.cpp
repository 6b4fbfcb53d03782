// The whole road of an invoice file: read into the list, shown, checked, filtered and exported. As
// XML the document has an invoice for each ticked row, with its number, for two readers.

#include "base/codepage.h"
#include "invoices/columns.h"
#include "invoices/fat.h"
#include "invoices/fatchecks.h"
#include "support/desk.h"
#include "support/documents.h"
#include "text/numbers.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// The headers that count, found and cut plainly.
void compareList(const Grid &l1, const QByteArray &bytes)
{
    QStringList headers = fuzz::plainLines(bytes);
    headers.removeIf(
        [](const QString &line) { return !line.startsWith(u"@5"_s) || line.mid(147, 1) != u"0"; });
    fuzz::expect(l1.rows() == headers.size(), "not a row for each header that counts");
    for (int row = 0; row < l1.rows(); ++row) {
        const QString &line = headers[row];
        fuzz::expectSame(l1.cell(row, L1::FaturaNumarasi), fuzz::bare(line.mid(79, 15)),
                         "another number in the list");
        fuzz::expectSame(l1.cell(row, L1::CariKodu), fuzz::bare(line.mid(27, 10)),
                         "another account in the list");
        fuzz::expectSame(l1.cell(row, L1::Unvani), fuzz::bare(line.mid(38, 41)),
                         "another title in the list");
    }
}

// Ticked ones that get a cash slip, held in single precision.
qint64 smallInvoices(const Grid &l1)
{
    qint64 count = 0;
    for (int row = 0; row < l1.rows(); ++row) {
        const double total = number(l1.cell(row, L1::GenelToplam)).value_or(0);
        count += l1.ticked(row) && static_cast<float>(total) < 7000 ? 1 : 0;
    }
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

// The lines are those that the walk of the source finds, unless the note tells that some lack.
void compareInvoices(const Fat &fat, const QString &source, const fuzz::ReadDocument &found)
{
    const bool isWhole = !fat.bilgi.text().contains(u"eksik yazıldı"_s);
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
        qint64 lines = 0;
        if (!numbers[i].isEmpty())
            walkInvoice(source, numbers[i], [&](QStringView) { ++lines; });
        fuzz::expect(!isWhole || found.lines[i] == lines, "another count of lines", numbers[i],
                     QString::number(found.lines[i]));
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
    if (!fat.liste.tarihAraligi.isChecked())
        compareList(l1, bytes);
    for (int row = 0; row < qMin(l1.rows(), 3); ++row)
        fat.satirsec(row);
    if (way % 3 == 0)
        checksOf(fat)->finish();
    fat.liste.l1.tickWhere([&](int row) { return row % 4 != way % 5; });
    const QString target = pathOf(u"belge.xml"_s);
    fat.kaydet(target);
    const ReadDocument found = readBack(target, fat.okunurBicim.values());
    if (fat.okunurBicim.isChecked()) {
        compareInvoices(fat, source, found);
        const QString slips = pathOf(u"belge-KASANAKIT.xml"_s); // none where a date is none
        if (QFile::exists(slips))
            expect(readBack(slips, fat.okunurBicim.values()).records == smallInvoices(l1),
                   "not a slip for each small invoice");
    }
    expect(contents(target).startsWith("<?xml") && contents(target).endsWith("INVOICES>\r\n"),
           "no whole document");
}
