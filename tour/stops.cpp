#include "tour/stops.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
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
    tour.guidePicture(prices, u"bayi-fiyatlari"_s);
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
    tour.guidePicture(firms, u"firmalar"_s,
                      {{firms, "l1"},
                       {firms, "chameleonButton1"},
                       {firms, "chameleonButton2"},
                       {firms, "chameleonButton3"}});
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
        logo.run(u"insert into LG_001_CLCARD values (1, '%1', 'Eski Unvan', 0)"_s.arg(code));
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
    tour.guidePicture(settings, u"sql-baglanti"_s,
                      {{settings, "Text1"},
                       {settings, "Text3"},
                       {settings, "chameleonButton1"},
                       {settings, "c1"},
                       {settings, "chameleonButton7"}});
    tour.click(settings, "chameleonButton7");
}

// A date that is none stays, and is told.
void impossibleDate(Tour &tour, QWidget *fat)
{
    auto *date = tour.find<QLineEdit>(fat, "d1");
    const QString before = date->text();
    tour.type(fat, "d1", u"31.02.2024"_s);
    QTest::keyClick(date, Qt::Key_Return);
    const QRect around(fat->mapFromGlobal(date->mapToGlobal(QPoint())) - QPoint(330, 12),
                       QSize(640, 60));
    tour.guidePicture(fat, u"tarih"_s, {{fat, "d1"}}, around);
    tour.type(fat, "d1", before);
    QTest::keyClick(date, Qt::Key_Return);
}

// The pages below the list, counted from that of the checks. Those of the list itself stand in
// front.
enum class Page { Checks, Reading, Missing, Document };

void clickTab(QTabBar *tabs, int place)
{
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(place).center());
    QTest::qWait(50);
}

void showPage(Tour &tour, QWidget *screen, Page page)
{
    auto *tabs = tour.find<QTabBar>(screen, "sekmeler");
    clickTab(tabs, tabs->count() - 4 + static_cast<int>(page));
}

// As they were found: the page of the list in front, or none.
void leavePages(Tour &tour, QWidget *screen)
{
    auto *tabs = tour.find<QTabBar>(screen, "sekmeler");
    clickTab(tabs, 0);
    if (tabs->count() == 4)
        tour.click(screen, "panelAc");
}

// What a screen finds in its file of faults.
void faults(Tour &tour, QWidget *screen, const char *open, const QString &file)
{
    const QString name = u"denetim-"_s + screen->objectName();
    tour.nextFile(tour.folder() + u'/' + file);
    tour.click(screen, open);
    for (const Page page : {Page::Checks, Page::Reading, Page::Missing}) {
        showPage(tour, screen, page);
        tour.picture(name);
    }
    leavePages(tour, screen);
}

// What stands in the document that was written last.
void documentRead(Tour &tour, QWidget *screen)
{
    showPage(tour, screen, Page::Document);
    QTest::qWait(400); // it is read beside the work
    tour.picture(u"belge-"_s + screen->objectName());
    leavePages(tour, screen);
}

// The invoices with faults, before those that are written.
void checks(Tour &tour, QWidget *fat)
{
    for (const auto &[list, entry] : {std::pair("c3", 0), std::pair("c1", 0), std::pair("c5", 2)})
        tour.choose(fat, list, entry);
    faults(tour, fat, "chameleonButton5", u"txt/denetim-fatura.bif"_s);
    showPage(tour, fat, Page::Checks);
    tour.window().activateWindow();
    if (!QTest::qWaitForWindowActive(&tour.window()))
        qFatal("the frame did not come forward");
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F8);
    tour.guidePicture(
        &tour.window(), u"denetim"_s,
        {{fat, "sekmeler"}, {fat, "ozet"}, {fat, "bulgular"}, {fat, "yalnizBulgulu"}});
    tour.click(fat, "yalnizBulgulu");
    tour.picture(u"yalniz-bulgulu"_s);
    tour.click(fat, "yalnizBulgulu");
    leavePages(tour, fat);
}

void invoices(Tour &tour)
{
    tour.click(&tour.window(), "chameleonButton5");
    QWidget *fat = tour.screen("fat");
    tour.picture(u"fatura-bos"_s);
    checks(tour, fat);
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
    documentRead(tour, fat);
    tour.guidePicture(&tour.window(), u"fatura"_s,
                      {{fat, "chameleonButton5"},
                       {fat, "chameleonButton2"},
                       {fat, "c3"},
                       {fat, "c1"},
                       {fat, "c5"},
                       {fat, "fatbilgi"},
                       {fat, "Check1"},
                       {fat, "chameleonButton1"},
                       {fat, "yazilan"}});
    impossibleDate(tour, fat);
}

void cariCards(Tour &tour, TdsStandin &logo)
{
    tour.click(&tour.window(), "chameleonButton1");
    QWidget *cr = tour.screen("cr");
    tour.picture(u"cari-bos"_s);
    faults(tour, cr, "chameleonButton5", u"txt/denetim-cariler.txt"_s);
    tour.nextFile(tour.folder() + u"/txt/cariler.txt"_s);
    tour.click(cr, "chameleonButton5");
    tour.picture(u"cari-kartlari"_s);
    tour.nextFile(tour.folder() + u"/logo xml/cari"_s);
    tour.click(cr, "chameleonButton1");
    tour.nextFile(tour.folder() + u"/logo xml/cari-guncelleme"_s);
    tour.click(cr, "chameleonButton2");
    tour.picture(u"cari-kaydedildi"_s);
    tour.guidePicture(&tour.window(), u"cari"_s,
                      {{cr, "chameleonButton5"},
                       {cr, "chameleonButton1"},
                       {cr, "chameleonButton2"},
                       {cr, "chameleonButton3"}});
    documentRead(tour, cr);
    tour.click(cr, "chameleonButton3");
    QWidget *update = tour.screen("sqlbaglanti");
    tour.click(update, "chameleonButton1");
    tour.picture(update, u"cari-guncelleme"_s);
    tour.click(update, "chameleonButton2"); // ends at the title with an apostrophe
    tour.picture(update, u"cari-guncelleme-durdu"_s);
    tour.guidePicture(update, u"cari-guncelleme"_s, {{update, "chameleonButton2"}, {update, "c1"}});
    if (logo.run(u"select * from LG_001_CLCARD where DEFINITION_ <> 'Eski Unvan'"_s).size() != 4)
        qFatal("the titles before the apostrophe did not reach Logo");
    tour.click(update, "chameleonButton8");
}

void stocktake(Tour &tour)
{
    tour.click(&tour.window(), "lvButtons_H4");
    QWidget *sayim = tour.screen("sayimform");
    faults(tour, sayim, "chameleonButton5", u"txt/denetim-sayim.txt"_s);
    tour.nextFile(tour.folder() + u"/txt/sayim.txt"_s);
    tour.click(sayim, "chameleonButton5");
    tour.picture(u"sayim"_s);
    tour.guidePicture(&tour.window(), u"sayim"_s,
                      {{sayim, "Text1"}, {sayim, "Label9"}, {sayim, "l1"}});
    tour.nextFile(tour.folder() + u"/logo xml/sayim"_s);
    tour.click(sayim, "chameleonButton1");
    tour.picture(u"sayim-kaydedildi"_s);
    documentRead(tour, sayim);
}

// What was written, and below the caption what could not be: a folder stands where the list of
// codes would.
void strips(Tour &tour, QWidget *stoktrf)
{
    const QDir list(tour.folder() + u"/stokkontrol.kvz"_s);
    QFile::remove(list.path());
    list.mkpath(u"."_s);
    tour.nextFile(tour.folder() + u"/logo xml/stok"_s);
    tour.click(stoktrf, "chameleonButton1");
    const int height =
        tour.find<QWidget>(stoktrf, "chameleonButton1")->mapTo(stoktrf, QPoint()).y();
    tour.guidePicture(
        stoktrf, u"serit"_s,
        {{stoktrf, "bilgi"}, {stoktrf, "ayrinti"}, {stoktrf, "yazilan"}, {stoktrf, "klasorac"}},
        {0, 0, stoktrf->width(), height});
    list.rmdir(list.path());
}

void stockCards(Tour &tour)
{
    tour.click(&tour.window(), "chameleonButton4");
    QWidget *stoktrf = tour.screen("stoktrf");
    faults(tour, stoktrf, "chameleonButton5", u"txt/denetim-stoklar.txt"_s);
    tour.nextFile(tour.folder() + u"/txt/stoklar.txt"_s);
    tour.click(stoktrf, "chameleonButton5");
    for (int list = 0; list < 5; ++list)
        tour.choose(stoktrf, qPrintable(u"c%1"_s.arg(list + 1)), 1 + list % 4);
    tour.picture(u"stok-kartlari"_s);
    tour.guidePicture(&tour.window(), u"stok"_s,
                      {{stoktrf, "c1"}, {stoktrf, "brmseti"}, {stoktrf, "meystok"}});
    tour.nextFile(tour.folder() + u"/logo xml/stok"_s);
    tour.click(stoktrf, "chameleonButton1");
    tour.picture(u"stok-kaydedildi"_s);
    strips(tour, stoktrf);
    documentRead(tour, stoktrf);
}

// A slip screen that is open: reads a workbook, ticks all, writes what its buttons give.
struct SlipStop
{
    const char *screen;
    const char *open;
    const char *source;
    QList<std::pair<const char *, QString>> saves; // button, document
    QString picture{};                             // of the guide
    QList<const char *> numbered{};                // controls of it
    QString faults{};                              // a source with some
};

void slips(Tour &tour, const SlipStop &stop)
{
    const QString name = QString::fromLatin1(stop.screen);
    QWidget *screen = tour.screen(stop.screen);
    if (!stop.faults.isEmpty())
        faults(tour, screen, stop.open, u"txt/"_s + stop.faults);
    tour.nextFile(tour.folder() + u"/txt/"_s + QString::fromLatin1(stop.source));
    tour.click(screen, stop.open);
    for (auto *all : {"Check1", "Check2"}) {
        if (auto *box = screen->findChild<QCheckBox *>(QString::fromLatin1(all));
            box && box->isVisible())
            tour.click(screen, all);
    }
    tour.picture(name);
    QList<Tour::Spot> spots;
    for (const char *control : stop.numbered)
        spots << Tour::Spot{screen, control};
    if (!stop.picture.isEmpty())
        tour.guidePicture(&tour.window(), stop.picture, spots);
    for (const auto &[button, document] : stop.saves) {
        tour.nextFile(tour.folder() + u"/logo xml/"_s + document);
        tour.click(screen, button);
    }
    documentRead(tour, screen);
}

void collections(Tour &tour)
{
    tour.choose("crtfisrans");
    slips(tour, {"cafis",
                 "buton1",
                 "tahsilatlar.xlsx",
                 {{"buton2", u"cafis-kasa"_s}, {"lvButtons_H2", u"cafis-banka"_s}},
                 u"cari-fis"_s,
                 {"l1", "l2", "bankahesapno1"},
                 u"denetim-tahsilatlar.xlsx"_s});
    tour.click(&tour.window(), "lvButtons_H2");
    slips(tour, {"cafis2",
                 "buton1",
                 "15032021-00100101.xls",
                 {{"buton2", u"seyahat"_s}},
                 u"seyahat"_s,
                 {"l1", "l2"},
                 u"16032021-00100199.xls"_s});
    tour.click(&tour.window(), "lvButtons_H3");
    slips(tour, {"cafis3",
                 "buton1",
                 "POSANALIZ-20210315.xlsx",
                 {{"buton2", u"pos-kasa"_s}, {"lvButtons_H2", u"pos-banka"_s}},
                 u"pos-analizi"_s,
                 {},
                 u"POSANALIZ-20210316.xlsx"_s});
    tour.click(&tour.window(), "lvButtons_H1");
    slips(tour, {"carifisduzey",
                 "buton1",
                 "duzey-nakit.xlsx",
                 {{"buton2", u"duzey-nakit"_s}},
                 u"duzey-tahsilat"_s,
                 {"buton1", "buton2", "lvButtons_H3", "lvButtons_H2"},
                 u"denetim-duzey-nakit.xlsx"_s});
    slips(tour, {"carifisduzey",
                 "lvButtons_H3",
                 "duzey-kredikarti.xlsx",
                 {{"lvButtons_H2", u"duzey-kart"_s}}});
}

void duzeyInvoices(Tour &tour)
{
    tour.click(&tour.window(), "lvButtons_H5");
    QWidget *fatduz = tour.screen("fatduz");
    faults(tour, fatduz, "buton1", u"txt/denetim-duzey-fatura.xlsx"_s);
    tour.nextFile(tour.folder() + u"/txt/duzey-fatura.xlsx"_s);
    tour.click(fatduz, "buton1");
    tour.choose(fatduz, "c3", 0);
    tour.clickRow(fatduz, "l1", 0, 2);
    tour.click(fatduz, "Check2");
    tour.picture(u"duzey-fatura"_s);
    tour.guidePicture(
        &tour.window(), u"duzey-fatura"_s,
        {{fatduz, "fatbilgi"}, {fatduz, "c3"}, {fatduz, "Text1"}, {fatduz, "lvButtons_H1"}});
    tour.nextFile(tour.folder() + u"/logo xml/duzey-satis"_s);
    tour.click(fatduz, "chameleonButton1");
    documentRead(tour, fatduz);
}

void meyStock(Tour &tour)
{
    tour.click(&tour.window(), "chameleonButton4");
    tour.click(tour.screen("stoktrf"), "meystok");
    QWidget *st = tour.screen("st");
    faults(tour, st, "chameleonButton5", u"mey exel/mey-denetim.xls"_s);
    tour.nextFile(tour.folder() + u"/mey exel/mey-stok.xls"_s);
    tour.click(st, "chameleonButton5");
    tour.choose(st, "c1", 0);
    tour.choose(st, "c2", 0);
    tour.picture(u"mey-stok"_s);
    tour.guidePicture(&tour.window(), u"mey-stok"_s,
                      {{st, "c1"}, {st, "c2"}, {st, "chameleonButton1"}, {st, "chameleonButton3"}});
    tour.nextFile(tour.folder() + u"/logo xml/mey-stok"_s);
    tour.click(st, "chameleonButton1");
    documentRead(tour, st);
}

// F1 on a screen, and a page further on.
void guide(Tour &tour)
{
    QTest::keyClick(tour.screen("fat"), Qt::Key_F1);
    QWidget *guide = nullptr;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"kilavuz")
            guide = window;
    }
    if (!guide || !guide->isVisible())
        qFatal("F1 opened no guide");
    tour.picture(guide, u"kilavuz"_s);
    for (const QString &wanted : {u"Dosya ve klasör yazıları"_s, u"Olmayan bir tarih"_s}) {
        tour.type(guide, "kilavuzdaara", wanted);
        QTest::keyClick(tour.find<QLineEdit>(guide, "kilavuzdaara"), Qt::Key_Return);
        tour.picture(guide, u"kilavuzda-arama"_s);
    }
    guide->close();
}

} // namespace

void visitAll(Tour &tour, TdsStandin &logo)
{
    fillShop(logo);
    tour.picture(u"ana-pencere"_s);
    tour.guidePicture(&tour.window(), u"ana-pencere"_s,
                      {{&tour.window(), "chameleonButton1"}, {&tour.window(), "kilavuzac"}});
    definitions(tour);
    connectToLogo(tour, logo);
    invoices(tour);
    cariCards(tour, logo);
    stockCards(tour);
    stocktake(tour);
    collections(tour);
    duzeyInvoices(tour);
    meyStock(tour);
    guide(tour);
}

} // namespace kervan
