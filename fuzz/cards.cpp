// Card texts and what is written from them: a row a line, a card a row, each with its code.

#include "base/codepage.h"
#include "cards/cardchecks.h"
#include "cards/cr.h"
#include "cards/stoktrf.h"
#include "invoices/cardcheck.h"
#include "store/sidefiles.h"
#include "support/desk.h"
#include "support/documents.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

int linesOf(const QByteArray &bytes)
{
    QString text = fromTextFile(bytes);
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    return static_cast<int>(text.count(u'\n')) + (text.isEmpty() || text.endsWith(u'\n') ? 0 : 1);
}

void compare(const Grid &l1, int column, Values spelling)
{
    const fuzz::ReadDocument found = fuzz::readBack(fuzz::pathOf(u"belge.xml"_s), spelling);
    if (spelling == Values::AsTheyStand)
        return;
    fuzz::expect(found.records == l1.rows(), "not a card for each row");
    for (int row = 0; row < l1.rows(); ++row) {
        const QString &code = l1.cell(row, column);
        if (!std::ranges::any_of(code, [](QChar c) { return c.isLower(); }))
            fuzz::expectSame(found.numbers[row].trimmed(), fuzz::asSpelled(code).trimmed(),
                             "another code");
    }
}

// The codes that a document held are looked for when invoices are read.
void compareControl(const Grid &l1, int column, const QString &name)
{
    const QString path = fuzz::pathOf(name);
    fuzz::expect(!QFile::exists(path) || readAllLines(path).size() == l1.rows(),
                 "not a line for each code");
    Q_UNUSED(column)
}

void takeAccounts(const QString &source, int way)
{
    Cr cr(fuzz::desk().program);
    cr.okunurBicim.setChecked(way % 2 == 0);
    cr.dosyaac(source);
    fuzz::expect(cr.l1.rows() == linesOf(fuzz::contents(source)), "not a row for each line");
    if (way % 3 == 0)
        checksOf(cr)->finish();
    cr.xmlkaydet();
    if (!cr.l1.isEmpty()) {
        compare(cr.l1, Cr::CariKodu, cr.okunurBicim.values());
        compareControl(cr.l1, Cr::CariKodu, u"carikontrol.kvz"_s);
        CardCheck check(fuzz::desk().program);
        check.carikontrol(cr.l1.cell(0, Cr::CariKodu));
    }
    cr.guncellemexmlkaydet();
    if (!cr.l1.isEmpty())
        compare(cr.l1, Cr::CariKodu, cr.okunurBicim.values());
}

void takeStock(const QString &source, int way)
{
    Stoktrf stok(fuzz::desk().program);
    stok.load();
    stok.brmseti.setText(u"05"_s);
    stok.okunurBicim.setChecked(way % 2 == 0);
    stok.dosyaac(source);
    if (way % 3 == 0)
        checksOf(stok)->finish();
    stok.xmlkaydet();
    if (!stok.l1.isEmpty())
        compare(stok.l1, Stoktrf::MalzemeKodu, stok.okunurBicim.values());
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const int kind = pieces.choice(2);
    const int way = pieces.choice(6);
    desk().layDown();
    const QString source = pathOf(u"kaynak.txt"_s);
    const QByteArray blanks = shift(pieces.bytes());
    store(source, pieces.bytes() + blanks + pieces.bytes());
    if (kind == 0)
        takeAccounts(source, way);
    else
        takeStock(source, way);
}
