// Workbooks of movements by their cells, on the four slip screens.

#include "base/failure.h"
#include "check/readback.h"
#include "slips/columns.h"
#include "slips/slipchecks.h"
#include "slips/slipscreen.h"
#include "support/book.h"
#include "support/desk.h"
#include "support/documents.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

struct Kind
{
    const SlipForm &form;
    qsizetype file;
    QString name; ///< of the workbook, from which some screens take date and staff
};

// Records that give a row: behind the headings, of the kind that is taken, up to one that ends the
// read. A step that fails may end it too, and then it is told.
void compareList(const SlipScreen &screen, const Sheet &sheet, const SheetLayout &layout)
{
    const auto field = [&](int record, int number) {
        QString text;
        passOver([&] { text = fuzz::bare(sheet.text(record, number)); });
        return text;
    };
    QList<int> records;
    for (int record = layout.headings; record < sheet.rows(); ++record) {
        if (layout.kindField && field(record, *layout.kindField) != u"HHSATIS")
            continue;
        if (layout.endField && field(record, *layout.endField).isEmpty())
            break;
        records << record;
    }
    const Grid &l1 = screen.l1;
    const bool ended = screen.bilgi.text().contains(u"kayıtta bitti"_s);
    fuzz::expect(l1.rows() == records.size() || (ended && l1.rows() < records.size()),
                 "not a row for each record that is taken", QString::number(l1.rows()),
                 QString::number(records.size()));
    const int account = Hareket::CariKodu; // the same on all screens
    static_assert(account == DuzeyHareket::CariKodu);
    const auto rule = std::ranges::find(layout.cells, account, &CellRule::cell);
    for (int row = 0; row < l1.rows() - (ended ? 1 : 0); ++row)
        fuzz::expectSame(QString(l1.cell(row, account)).remove(u','),
                         field(records[row], rule->field()).remove(u','), "another account");
}

int amountOf(const SlipScreen &screen, const SlipDocument &document)
{
    const auto family = document.ofBankList ? DocumentFamily::BankSlips : DocumentFamily::CashSlips;
    return listedSlips(screen, family).amount;
}

// What the rows come to is what their slips do, where all can be read.
void compareSum(const Grid &grid, int column, const QString &path, const QString &command)
{
    const auto listed = writtenRows(grid, DocumentFamily::Unknown, true, -1, column).sum;
    if (!listed)
        return;
    Decimal sum;
    bool isWhole = true;
    readDocument(path, [&](const DocumentRecord &record) {
        isWhole = isWhole && record.sum;
        sum += record.sum.value_or(Decimal());
    });
    fuzz::expect(isWhole, "a slip without its amount", command);
    fuzz::expectSame(sum.text(), listed->text(), "the slips come to another sum");
}

Kind kindOf(int which)
{
    switch (which) {
    case 0:
        return {cafis(), 0, u"a.xls"_s};
    case 1:
        return {cafis2(), 0, u"15032021-00100101.xls"_s};
    case 2:
        return {cafis3(), 0, u"POSANALIZ-20210315.xls"_s};
    default:
        return {carifisduzey(), which - 3, u"a.xls"_s};
    }
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const Kind kind = kindOf(pieces.choice(5));
    const int way = pieces.choice(12);
    desk().layDown();
    const QString source = pathOf(kind.name);
    SlipScreen screen(desk().program, kind.form);
    screen.load();
    writeXls(source, screen.sayfaAdi.text(), rowsOf(pieces.bytes()));
    screen.okunurBicim.setChecked(way % 2 == 0);
    const SlipFile &file = kind.form.files[kind.file];
    screen.dosyaac(file, source);
    std::shared_ptr<const Sheet> sheet;
    passOver([&] { sheet = readSheet(source, screen.sayfaAdi.text()); });
    if (sheet)
        compareList(screen, *sheet, file.layout);
    if (way % 3 == 0)
        checksOf(screen)->finish();
    screen.l1.tickWhere([&](int row) { return row % 4 != way % 5; });
    screen.l2.setAllTicked(true);
    const QString target = pathOf(u"belge.xml"_s);
    for (const SlipCommand &command : kind.form.commands) {
        const auto *document = std::get_if<WriteDocument>(&command.action);
        if (!document)
            continue;
        QFile::remove(target);
        const int shown = desk().boxes.shown;
        screen.run(command);
        if (!QFile::exists(target)) {
            expect(desk().boxes.shown > shown || screen.bilgi.hasFailed(),
                   "no document without a word", command.name);
            continue;
        }
        const ReadDocument found = readBack(target, screen.okunurBicim.values());
        const SlipDocument &written = document->document();
        if (!screen.okunurBicim.isChecked() || !written.takesTicked())
            continue;
        const Grid &grid = written.ofBankList ? screen.l2 : screen.l1;
        expect(found.records == grid.tickedCount(), "not a slip for each ticked row", command.name,
               QString::number(found.records));
        compareSum(grid, amountOf(screen, written), target, command.name);
    }
}
