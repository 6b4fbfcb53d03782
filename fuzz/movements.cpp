// Text exports of movements on the four slip screens: a row a line, and documents with a slip for
// each row of their class.

#include "base/codepage.h"
#include "slips/columns.h"
#include "slips/slipchecks.h"
#include "slips/slipscreen.h"
#include "support/desk.h"
#include "support/documents.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

const SlipForm &formOf(int which)
{
    switch (which) {
    case 0:
        return cafis();
    case 1:
        return cafis2();
    case 2:
        return cafis3();
    default:
        return carifisduzey();
    }
}

void write(SlipScreen &screen, const SlipCommand &command)
{
    const auto *document = std::get_if<WriteDocument>(&command.action);
    if (!document)
        return;
    const QString target = fuzz::pathOf(u"belge.xml"_s);
    QFile::remove(target);
    const int shown = fuzz::desk().boxes.shown;
    screen.run(command);
    if (!QFile::exists(target))
        return fuzz::expect(fuzz::desk().boxes.shown > shown || screen.bilgi.hasFailed(),
                            "no document without a word", command.name);
    const fuzz::ReadDocument found = fuzz::readBack(target, screen.okunurBicim.values());
    if (!screen.okunurBicim.isChecked())
        return;
    const SlipDocument &written = document->document();
    const Grid &grid = written.ofBankList ? screen.l2 : screen.l1;
    int rows = 0;
    for (int row = 0; row < grid.rows(); ++row)
        rows += written.takes(grid, row) ? 1 : 0;
    fuzz::expect(found.records == rows, "not a slip for each row", command.name,
                 QString::number(found.records));
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const SlipForm &form = formOf(pieces.choice(4));
    const int way = pieces.choice(12);
    desk().layDown();
    store(pathOf(u"kasacariislemno.kvz"_s), pieces.bytes());
    store(pathOf(u"bankacariislemno.kvz"_s), pieces.bytes());
    const QByteArray bytes = pieces.bytes();
    store(pathOf(u"kaynak.txt"_s), bytes);
    SlipScreen screen(desk().program, form);
    screen.load();
    screen.okunurBicim.setChecked(way % 2 == 0);
    for (const SlipCommand &command : form.commands) {
        if (std::holds_alternative<OpenText>(command.action))
            screen.run(command);
    }
    const QStringList lines = plainLines(bytes);
    expect(screen.l1.rows() == lines.size(), "not a row for each line");
    for (int row = 0; row < screen.l1.rows(); ++row) {
        expectSame(screen.l1.cell(row, MetinHareket::Tutar), lines[row].mid(36, 18).remove(u' '),
                   "another amount");
        expectSame(screen.l1.cell(row, MetinHareket::MuhBelgeNo), lines[row].mid(216, 10),
                   "another document number");
    }
    if (way % 3 == 0)
        checksOf(screen)->finish();
    screen.l1.tickWhere([&](int row) { return row % 4 != way % 5; });
    write(screen, form.commands[way % form.commands.size()]);
}
