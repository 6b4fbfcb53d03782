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

void takeAccounts(const QString &source, int way)
{
    Cr cr(fuzz::desk().program);
    cr.okunurBicim.setChecked(way % 2 == 0);
    cr.dosyaac(source);
    const QStringList lines = fuzz::plainLines(fuzz::contents(source));
    fuzz::expect(cr.l1.rows() == lines.size(), "not a row for each line");
    for (int row = 0; row < cr.l1.rows(); ++row) {
        fuzz::expectSame(cr.l1.cell(row, Cr::CariKodu), lines[row].mid(2, 8), "another account");
        fuzz::expectSame(cr.l1.cell(row, Cr::Unvani),
                         fuzz::bare(lines[row].mid(10, 50).replace(u',', u' ')), "another title");
    }
    if (way % 3 == 0)
        checksOf(cr)->finish();
    cr.xmlkaydet();
    if (!cr.l1.isEmpty()) {
        compare(cr.l1, Cr::CariKodu, cr.okunurBicim.values());
        const QString known = fuzz::pathOf(u"carikontrol.kvz"_s);
        fuzz::expect(!QFile::exists(known) || readAllLines(known).size() == cr.l1.rows(),
                     "not a line for each code");
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
    const QStringList lines = fuzz::plainLines(fuzz::contents(source));
    fuzz::expect(stok.l1.rows() == lines.size(), "not a row for each line");
    for (int row = 0; row < stok.l1.rows(); ++row) {
        fuzz::expectSame(stok.l1.cell(row, Stoktrf::MalzemeKodu), fuzz::bare(lines[row].mid(24, 9)),
                         "another material");
        fuzz::expectSame(stok.l1.cell(row, Stoktrf::Kdv), lines[row].mid(132, 2), "another rate");
    }
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
    store(source, shifted(pieces));
    if (kind == 0)
        takeAccounts(source, way);
    else
        takeStock(source, way);
}
