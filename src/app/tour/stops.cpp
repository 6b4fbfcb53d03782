#include "app/tour/stops.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QTest>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The whole of the table, then a price for the product that has none.
void dealerPrices(Tour &tour)
{
    tour.choose("urunformu");
    QWidget *prices = tour.screen("urunform");
    if (!QTest::qWaitForWindowActive(prices))
        qFatal("the dealer prices did not come forward");
    auto *view = tour.find<QTableView>(prices, "l1");
    const int row = view->model()->rowCount() - 10;
    const QStringList texts{u"HLV-FST"_s, u"FISTIKLI HELVA 500 GR"_s, u"68,40"_s, u"60,75"_s};
    for (int i = 0; i < texts.size(); ++i) {
        view->setCurrentIndex(view->model()->index(row, i + 1));
        view->setFocus();
        for (const QChar letter : texts[i]) // the first letter opens the editor
            QTest::keyClick(QApplication::focusWidget(), letter.toLatin1());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::qWait(20);
    }
    tour.picture(prices, u"bayi-fiyatlari"_s);
    tour.click(prices, "chameleonButton7");
}

// Two definition screens, a record of one of them, and the file settings.
void definitions(Tour &tour)
{
    tour.choose("muhkod11");
    tour.picture(tour.screen("muhkod"), u"muhasebe-kodlari"_s);
    tour.click(tour.screen("muhkod"), "chameleonButton8");
    tour.choose("firtanım");
    QWidget *firms = tour.screen("fir");
    tour.picture(firms, u"firmalar"_s);
    tour.click(firms, "chameleonButton1");
    QTest::keyClicks(tour.find<QLineEdit>(firms, "Text3"), u"BURSA"_s);
    tour.picture(firms, u"firma-kaydi"_s);
    tour.click(firms, "chameleonButton7");
    tour.click(firms, "chameleonButton8");
    tour.choose("dosk");
    tour.picture(tour.screen("ayr"), u"dosya-konumlari"_s);
    tour.click(tour.screen("ayr"), "chameleonButton8");
}

// What a firm has in Logo: some of the samples' customers take e-invoices, and the stocktake's
// barcodes are known but for one.
void fillShop(TdsStandin &logo)
{
    fillLogo(logo, 1);
    for (const int code : {34000, 34021, 34035, 34063, 34105})
        logo.run(u"insert into LG_001_CLCARD values (1, '120.%1', 'Eski Unvan', 1)"_s.arg(code));
    for (int code = 10000101; code <= 10000125; ++code)
        logo.run(u"insert into LG_001_CLCARD values (1, 'CR%1', 'Eski Unvan', 0)"_s.arg(code));
    const QStringList items{u"KHV-100"_s, u"KHV-250"_s, u"CAY-500"_s,
                            u"BSK-KRM"_s, u"CKL-SUT"_s, u"YAG-1LT"_s};
    logo.run(u"insert into LG_001_UNITSETL values (1, 'ADET', 'Adet'), (2, 'KOLİ', 'Koli')"_s);
    for (int i = 0; i < items.size(); ++i) {
        logo.run(u"insert into LG_001_ITEMS values (%1, '%2', '')"_s.arg(i).arg(items[i]));
        logo.run(u"insert into LG_001_UNITBARCODE values ('869000000%1', %2, %3)"_s.arg(1001 + i)
                     .arg(i)
                     .arg(1 + i % 2));
    }
}

void connectToLogo(Tour &tour, const TdsStandin &logo)
{
    tour.choose("sqbag");
    QWidget *settings = tour.screen("sqlbaglanti");
    tour.type(settings, "Text1", logo.server());
    tour.type(settings, "Text3", TdsStandin::password.toString());
    tour.type(settings, "Text4", TdsStandin::database.toString());
    tour.click(settings, "chameleonButton1");
    tour.choose(settings, "c1", 0);
    tour.picture(settings, u"sql-baglanti"_s);
    tour.click(settings, "chameleonButton7");
}

void invoices(Tour &tour)
{
    tour.click(&tour.window(), "chameleonButton5");
    QWidget *fat = tour.screen("fat");
    tour.picture(u"fatura-bos"_s);
    tour.nextFile(tour.folder() + u"/txt/ornek.bif"_s);
    tour.click(fat, "chameleonButton5"); // warns of the product without a dealer price
    dealerPrices(tour);
    tour.click(fat, "chameleonButton2");
    tour.choose(fat, "c3", 0);
    tour.choose(fat, "c1", 0);
    tour.choose(fat, "c5", 2);
    tour.clickRow(fat, "l1", 5, 1);
    tour.picture(u"fatura-kalemleri"_s);
    tour.click(fat, "lvButtons_H2");
    tour.picture(tour.find<QMenu>(&tour.window(), "seminmenu"), u"liste-menusu"_s);
    tour.find<QMenu>(&tour.window(), "seminmenu")->close();
    tour.click(fat, "Check2");
    tour.picture(u"fatura-secili"_s);
    tour.nextFile(tour.folder() + u"/logo xml/satis"_s);
    tour.click(fat, "chameleonButton1");
    tour.picture(u"fatura-aktarildi"_s);
}

void cariCards(Tour &tour)
{
    tour.click(&tour.window(), "chameleonButton1");
    QWidget *cr = tour.screen("cr");
    tour.picture(u"cari-bos"_s);
    tour.nextFile(tour.folder() + u"/txt/cariler.txt"_s);
    tour.click(cr, "chameleonButton5");
    tour.picture(u"cari-kartlari"_s);
    tour.nextFile(tour.folder() + u"/logo xml/cari"_s);
    tour.click(cr, "chameleonButton1");
    tour.nextFile(tour.folder() + u"/logo xml/cari-guncelleme"_s);
    tour.click(cr, "chameleonButton2");
    tour.picture(u"cari-kaydedildi"_s);
    tour.click(cr, "chameleonButton3");
    QWidget *update = tour.screen("sqlbaglanti");
    tour.click(update, "chameleonButton1");
    tour.picture(update, u"cari-guncelleme"_s);
    tour.click(update, "chameleonButton2"); // ends at the title with an apostrophe
    tour.picture(update, u"cari-guncelleme-durdu"_s);
    tour.click(update, "chameleonButton8");
}

void stocktake(Tour &tour)
{
    tour.click(&tour.window(), "lvButtons_H4");
    QWidget *sayim = tour.screen("sayimform");
    tour.nextFile(tour.folder() + u"/txt/sayim.txt"_s);
    tour.click(sayim, "chameleonButton5");
    tour.picture(u"sayim"_s);
    tour.nextFile(tour.folder() + u"/logo xml/sayim"_s);
    tour.click(sayim, "chameleonButton1");
    tour.picture(u"sayim-kaydedildi"_s);
}

void stockCards(Tour &tour)
{
    tour.click(&tour.window(), "chameleonButton4");
    QWidget *stoktrf = tour.screen("stoktrf");
    tour.nextFile(tour.folder() + u"/txt/stoklar.txt"_s);
    tour.click(stoktrf, "chameleonButton5");
    for (int list = 0; list < 5; ++list)
        tour.choose(stoktrf, qPrintable(u"c%1"_s.arg(list + 1)), 1 + list % 4);
    tour.picture(u"stok-kartlari"_s);
    tour.nextFile(tour.folder() + u"/logo xml/stok"_s);
    tour.click(stoktrf, "chameleonButton1");
    tour.picture(u"stok-kaydedildi"_s);
}

} // namespace

void visitAll(Tour &tour, TdsStandin &logo)
{
    fillShop(logo);
    tour.picture(u"ana-pencere"_s);
    definitions(tour);
    connectToLogo(tour, logo);
    invoices(tour);
    cariCards(tour);
    stockCards(tour);
    stocktake(tour);
}

} // namespace kervan
