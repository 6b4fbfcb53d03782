#include "stocktake/countchecks.h"

#include "check/listrules.h"
#include "check/readinessrules.h"
#include "stocktake/sayimform.h"
#include "text/numbers.h"
#include "text/spellings.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Lines without a stock code are left out.
bool isWritten(const Sayimform &sayim, int row)
{
    return !sayim.l1.cell(row, Sayimform::StokKodu).isEmpty();
}

// A line that holds nothing loses nothing.
QString faultOfBarcode(const Grid &l1, int row)
{
    const QString &barcode = l1.cell(row, Sayimform::Barkod);
    const QString &quantity = l1.cell(row, Sayimform::Miktar);
    if (!l1.cell(row, Sayimform::StokKodu).isEmpty() || (barcode.isEmpty() && quantity.isEmpty()))
        return {};
    if (barcode.isEmpty())
        return u"Barkod yok: %1 miktar fişe girmez."_s.arg(quoted(quantity));
    return u"%1 barkodunu Logo tanımıyor: %2 miktar fişe girmez."_s.arg(quoted(barcode),
                                                                        quoted(quantity));
}

// A point is a group mark always, so "1.5" is written as 15.
QString faultOfPoints(const Sayimform &sayim, int row)
{
    const QString &cell = sayim.l1.cell(row, Sayimform::Miktar);
    const bool isOdd = isWritten(sayim, row) && number(cell) && isOddlyGrouped(cell, u'.', u',');
    return isOdd ? u"Miktar %1 belgeye %2 olarak yazılır: nokta binlik sayılır."_s.arg(
                       quoted(cell), quoted(tutarnoktasil(cell)))
                 : QString();
}

QString faultOfNumberWords(const Sayimform &sayim)
{
    const Filling head = sayim.bas();
    return faultOfWords(head.record, head.placeholders, head.values(0));
}

} // namespace

ListShape shapeOf(const Sayimform &)
{
    return {.what = u"sayım satırı"_s, .amounts = {Sayimform::Miktar}, .amountIs = u"miktar"_s};
}

QList<Rule> rulesOf(Sayimform &sayim)
{
    const Grid &l1 = sayim.l1;
    const auto cells = [&](int column, const QString &name) {
        return Cells{.grid = l1, .column = column, .name = name, .counts = [&sayim](int row) {
                         return isWritten(sayim, row);
                     }};
    };
    const Cells code = cells(Sayimform::StokKodu, u"Stok kodu"_s);
    const Cells unit = cells(Sayimform::Birim, u"Birim"_s);
    const QString logoCure = u"Kartı Logo'da düzeltip dosyayı yeniden okutun."_s;
    const Rule connection{
        .name = u"bağlantı"_s,
        .level = Level::Error,
        .cure = u"SQL Server bağlantısı ekranında bağlantıyı kurun, sonra bu ekranı kapatıp "
                "yeniden açın."_s,
        .ofScreen = [&sayim] {
            return sayim.link.durum.text() == u"SQL Bağlantı Var"
                       ? QString()
                       : u"Logo'ya bağlantı yok: barkodlar sorulamaz."_s;
        }};
    const Rule barcode{.name = u"barkod"_s,
                       .level = Level::Error,
                       .cure = u"Barkodu kaynakta tamamlayın ya da Logo'da stok kartına ekleyin, "
                               "sonra dosyayı yeniden okutun."_s,
                       .column = Sayimform::Barkod,
                       .ofRow = [&l1](int row) {
                           return faultOfBarcode(l1, row);
                       }};
    const Rule points{.name = u"noktalı miktar"_s,
                      .cure = u"Kesirli miktarı kaynakta virgülle yazıp yeniden okutun."_s,
                      .column = Sayimform::Miktar,
                      .ofRow = [&sayim](int row) {
                          return faultOfPoints(sayim, row);
                      }};
    const Rule numberWords{.name = u"şablon sözcüğü"_s,
                           .level = Level::Error,
                           .cure = u"Fiş numarasını değiştirin."_s,
                           .control = u"Text1"_s,
                           .ofScreen = [&sayim] {
                               return faultOfNumberWords(sayim);
                           }};
    QList<Rule> rules{
        connection,
        targetRule(sayim.program()),
        emptyRule(sayim.fisno, u"boş numara"_s, Level::Error, u"Fiş numarası boş."_s,
                  u"Kutusuna yazın."_s, u"Text1"_s),
        numberWords,
        barcode,
        emptyRule(unit, u"birim"_s, Level::Error, logoCure),
        points,
        doubledRule(code, u"stok kodu"_s, Level::Warning,
                    u"Sayımlar toplanmaz: aynı mal iki kez sayılmadıysa bir şey gerekmez."_s),
        wordRule([&sayim] { return sayim.satirlar(); })};
    rules += amountRules(cells(Sayimform::Miktar, u"Miktar"_s));
    rules += letterRules(sayim.fisno, u"Fiş numarası"_s, u"Text1"_s);
    return rules + letterRules(QList<Cells>{code, unit});
}

std::unique_ptr<Checks> checksOf(Sayimform &sayim)
{
    auto checks = std::make_unique<Checks>(sayim.l1, rulesOf(sayim));
    checks->add(
        gapsOf(sayim.l1, u"Logo'daki barkod"_s, {}, [&sayim](int row) -> std::optional<Need> {
            const QString &barcode = sayim.l1.cell(row, Sayimform::Barkod);
            if (isWritten(sayim, row) || barcode.isEmpty())
                return std::nullopt;
            return Need{barcode};
        }));
    checks->watch(sayim.fisno);
    checks->watch(sayim.link.durum);
    return checks;
}

} // namespace kervan
