// The samples show what the checks find: each the findings that its kind of file can hold, and the
// records that give no row.

#include "app/samples.h"
#include "cards/cardchecks.h"
#include "cards/cr.h"
#include "cards/st.h"
#include "cards/stoktrf.h"
#include "invoices/desk.h"
#include "invoices/duzey/fatduzchecks.h"
#include "invoices/fatchecks.h"
#include "slips/desk.h"
#include "slips/slipchecks.h"
#include "stocktake/countchecks.h"
#include "stocktake/sayimform.h"
#include "support/findings.h"
#include "support/places.h"
#include "support/table.h"

using namespace kervan;

namespace {

const QDate sampleDay(2021, 3, 16);

/// A folder with the samples, on the day of their dates.
struct Shop
{
    TestProgram t;

    Shop()
    {
        t.clock.moment = {sampleDay, QTime(9, 30)};
        layOutSamples(samplePath(), t.folder.path(), sampleDay);
        t.reachLogo();
    }
    QString file(const QString &name) const { return t.path(u"txt/"_s + name); }
};

struct Seen
{
    QString findings; ///< of rows
    QString gaps;
    int unread = 0;
};

Seen seenBy(Checks &checks, const ReadReport &report)
{
    checks.finish();
    QStringList rules;
    for (const Finding &finding : checks.findings()) {
        if (finding.row >= 0)
            rules << finding.rule;
    }
    rules.removeDuplicates();
    rules.sort();
    QStringList kinds;
    for (const Gap &gap : checks.gaps())
        kinds << gap.kind;
    return {rules.join(u", "_s), kinds.join(u", "_s), report.total()};
}

Seen seenIn(const QString &name)
{
    Shop shop;
    TestProgram &t = shop.t;
    if (name == u"denetim-fatura.bif") {
        Fat fat(t.program);
        fat.load();
        const auto checks = checksOf(fat);
        t.boxes.expect({.text = noPrices + u"  LOK-GUL    A<B"_s});
        fat.dosyaac(shop.file(name));
        return seenBy(*checks, fat.okuma);
    }
    if (name == u"denetim-duzey-fatura.xlsx") {
        Fatduz fatduz(t.program);
        fatduz.load();
        const auto checks = checksOf(fatduz);
        fatduz.dosyaac(shop.file(name));
        return seenBy(*checks, fatduz.okuma);
    }
    if (name == u"denetim-cariler.txt") {
        Cr cr(t.program);
        const auto checks = checksOf(cr);
        cr.dosyaac(shop.file(name));
        return seenBy(*checks, cr.okuma);
    }
    if (name == u"denetim-stoklar.txt") {
        Stoktrf stoktrf(t.program);
        stoktrf.load();
        const auto checks = checksOf(stoktrf);
        stoktrf.dosyaac(shop.file(name));
        return seenBy(*checks, stoktrf.okuma);
    }
    if (name == u"mey-denetim.xls") {
        St st(t.program);
        st.load();
        const auto checks = checksOf(st);
        st.ac(t.path(u"mey exel/"_s + name));
        return seenBy(*checks, st.okuma);
    }
    if (name == u"denetim-sayim.txt") {
        t.sqlServer.answer = [](const QString &statement) -> SqlRows {
            const bool isKnown = !statement.contains(u"9999");
            return {{u"ITEMKOD"_s, u"BIRIMKOD"_s},
                    isKnown ? QList<QStringList>{{statement.section(u'\'', 1, 1), u"ADET"_s}}
                            : QList<QStringList>{}};
        };
        Sayimform sayim(t.program);
        sayim.load();
        const auto checks = checksOf(sayim);
        sayim.dosyaac(shop.file(name));
        return seenBy(*checks, sayim.okuma);
    }
    const QString form = name.startsWith(u"denetim-duzey") ? u"carifisduzey"_s
                         : name.startsWith(u"POS")         ? u"cafis3"_s
                         : name.startsWith(u"denetim")     ? u"cafis"_s
                                                           : u"cafis2"_s;
    SlipScreen slips(t.program, slipForm(form));
    slips.load();
    const auto checks = checksOf(slips);
    t.dialogs.answers = {shop.file(name)};
    press(slips, u"buton1"_s);
    return seenBy(*checks, slips.okuma);
}

} // namespace

class TestSamples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFindingOfAFileIsInASample_data()
    {
        addTable(uR"(
case ; findings ; missing ; unread
denetim-fatura.bif ; XML işareti, bayi fiyatı, cari kodu, eksi satır, eksi tutar, fatura numarası, genel indirim, harf, kasa fişi, net fiyat, personel, satır okunamıyor, satır toplamı, satırsız fatura, tarih, tarih okunamıyor, tutar okunamıyor, çift numara, ürün kodu, şablon sözcüğü ; Personel, Bayi fiyatı, Bayi fiyatı ; 2
denetim-duzey-fatura.xlsx ; XML işareti, başka kayıt, birim, bölünmüş fatura, eksi satır, fatura numarası, harf, indirim, personel, satır okunamıyor, tarih, tarih okunamıyor, ödeme planı, şablon sözcüğü ; Personel, Birim ; 3
denetim-cariler.txt ; XML işareti, boş kod, boş ünvan, harf, çift numara, şablon sözcüğü ;  ; 3
denetim-stoklar.txt ; XML işareti, birim, birim çarpanı, boş ad, boş kod, harf, kdv oranı, çift numara, şablon sözcüğü ;  ; 4
mey-denetim.xls ; XML işareti, başlık satırı, boş ad, boş kod, harf, çift numara, şablon sözcüğü ;  ; 2
denetim-sayim.txt ; barkod, eksi tutar, noktalı miktar, tutar okunamıyor, çift numara ; Logo'daki barkod ; 4
denetim-tahsilatlar.xlsx ; XML işareti, boş cari kodu, boş kasa kodu, boş ünvan, eksi tutar, harf, sıfır tutar, tarih, tarih okunamıyor, toplam, tutar okunamıyor, şablon sözcüğü, şüpheli tutar ;  ; 4
16032021-00100199.xls ; XML işareti, boş ünvan, eksi tutar, harf, personel, sıfır tutar, tutar okunamıyor, şablon sözcüğü, şüpheli tutar ; Personel ; 2
POSANALIZ-20210316.xlsx ; XML işareti, boş kasa kodu, boş ünvan, eksi tutar, harf, sıfır tutar, şablon sözcüğü, şüpheli tutar ;  ; 3
denetim-duzey-nakit.xlsx ; XML işareti, boş cari kodu, eksi tutar, harf, personel, sıfır tutar, tarih, tarih okunamıyor, tutar okunamıyor, şablon sözcüğü, şüpheli tutar ; Personel ; 2)"_s);
    }
    void eachFindingOfAFileIsInASample()
    {
        const Seen seen = seenIn(caseName());
        QCOMPARE(seen.findings, fetch("findings"));
        QCOMPARE(seen.gaps, fetch("missing"));
        QCOMPARE(QString::number(seen.unread), fetch("unread"));
    }

    void theInvoicesAreOfTheDayOnWhichTheyAreLaidOut()
    {
        TestProgram t;
        layOutSamples(samplePath(), t.folder.path(), QDate(2031, 12, 31));
        const QByteArray invoices = readBytes(t.path(u"txt/denetim-fatura.bif"_s));
        QVERIFY(invoices.contains("20311231") && invoices.contains("20320101"));
        QVERIFY(!invoices.contains("202103"));
        QCOMPARE(readBytes(t.path(u"txt/ornek.bif"_s)), readBytes(samplePath(u"ornek.bif"_s)));
    }
};

QTEST_GUILESS_MAIN(TestSamples)
#include "tst_samples.moc"
