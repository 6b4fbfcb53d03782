// The Düzey invoice screen. A document case (documentcase.h) is a folder of tests/data/fatduz:
//   source.txt   the sheet (see bookRows)
//   data.txt     firma (shown and not clicked with a "?" in front), fatbilgi, sayfa; sec and
//   efatura
//                name rows from 1 on
//   expected.xml

#include "duzeydesk.h"

#include "controls/gridview.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "store/sidefiles.h"
#include "support/documentcase.h"
#include "support/driving.h"
#include "support/table.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>

using namespace kervan;

namespace {

const QList<int> firstColumns{0, 1, 2, 3, 4, 5, 6, 7, 8};

} // namespace

class TestFatduz : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDocumentOfACaseIsTheExpectedOne_data() { DocumentCase::addAll(u"fatduz"_s); }
    void theDocumentOfACaseIsTheExpectedOne()
    {
        TestProgram t;
        const DocumentCase given(t);
        const QString sheet = given[u"sayfa"_s].isEmpty() ? u"Sheet1"_s : given[u"sayfa"_s];
        writeBytes(t.path(u"kasa.kvz"_s), "K100");
        writeBytes(t.path(u"kdvmu.kvz"_s), "never in a document\nneither\n");
        writeBytes(t.path(u"duzeyfaturaexelsayfano.kvz"_s), "\xEF\xBB\xBF" + sheet.toUtf8());
        given.markEInvoices(t);
        Fatduz fatduz(t.program);
        fatduz.load();
        fatduz.tanimlar.firma.setText(given[u"firma"_s]);
        if (!fatduz.tanimlar.firma.text().startsWith(u'?'))
            fatduz.firmasec();
        fatduz.faturaTuru.setText(given[u"fatbilgi"_s]);
        const QString source = t.path(u"kaynak.xlsx"_s);
        writeWorkbook(source, sheet, bookRows(given.text(u"source.txt"_s)));
        t.dialogs.answers << source << t.path(u"belge"_s);
        fatduz.dosyaac();
        for (const QString &row : given.list(u"sec"_s))
            fatduz.liste.l1.setTicked(row.toInt() - 1, true);
        t.boxes.expectDone();
        fatduz.logoyaaktar();
        t.boxes.verify();
        QCOMPARE(t.dialogs.asked[0].title, u"Cari Haraket Dosyası Seçin"_s);
        QCOMPARE(t.dialogs.asked[0].filter, u"Exel Dosyaları (xlsx)|*.xlsx;*.xls"_s);
        given.expect(t.path(u"belge.xml"_s));
    }

    void aNumberOfTheSheetGetsFourDecimalsWhateverItsMark_data()
    {
        addTable(uR"(
case                                ; text      ; expected
a comma                             ; 12,5      ; 12,5000
a point is a decimal mark           ; 1.250     ; 1,2500
a point and three zeros             ; 12.000    ; 12,0000
a point and four zeros              ; 12.0000   ; 12,0000
a comma and three zeros             ; 1000,000  ; 1000,0000
below zero, rounded away from it    ; -3,00005  ; -3,0001
two marks                           ; 1.234,56  ; 0,0000
of two points the last zeros are cut; 1.000.000 ; 1,0000
nothing                             ;           ; 0,0000)"_s);
        QTest::newRow("beyond all measure") << QString(400, u'9') << u"0,0000"_s;
    }
    void aNumberOfTheSheetGetsFourDecimalsWhateverItsMark()
    {
        QCOMPARE(tutarayarlama(fetch("text")), fetch("expected"));
    }

    void theOpeningLoadsAllItHasAndStopsAtAMissingCashCodeWithABox()
    {
        DuzeyDesk desk;
        Fatduz &fatduz = desk.fatduz;
        QCOMPARE(desk.t.program.aktifform, u"2"_s);
        QCOMPARE(fatduz.faturaTuru.text() + fatduz.sayfaAdi.text(),
                 u"10 (Satış Faturaları)Sheet1"_s);
        QCOMPARE(fatduz.liste.ilkTarih.date(), QDate(2024, 3, 7));
        fatduz.sayfaAdi.setText(u"Şubat, eski"_s);
        fatduz.sayfanokaydet();

        desk.t.program.aktifform = u"1"_s;
        const QString cash = desk.t.path(u"kasa.kvz"_s);
        QVERIFY(QFile::remove(cash));
        desk.expectReportOf([&] { readSingleValue(cash); });
        Fatduz second(desk.t.program);
        second.load();
        desk.t.boxes.verify();
        QCOMPARE(second.sayfaAdi.text(), u"Şubat"_s); // a comma ends a value
        QCOMPARE(second.tanimlar.firma.entries(), QStringList{u"Merkez"_s});
        QCOMPARE(second.link.durum.text(), u"SQL Bağlantı Var"_s);
        QCOMPARE(desk.t.program.aktifform, u"1"_s);
        second.listesec();
        QCOMPARE(desk.t.program.aktifform, u"2"_s);
        second.sayfaAdi.setText(u"SHEET1"_s); // case does not count
        desk.write({{}});
        second.dosyaac(desk.source);
        QCOMPARE(second.baslik.text(), u"DÜZEY FATURA [kaynak.xlsx]"_s);
        QCOMPARE(cells(second.liste.l1, 0, firstColumns),
                 u"C1||F1|B1|07.03.2024|LP1|S1|P30|10,0000"_s);
    }

    void onlyRecordsThatFollowEachOtherAreOneInvoiceAndItsTotalIsSingle()
    {
        DuzeyDesk desk;
        // 2^24 is the last whole number from which a single still counts by one.
        const Record large{.quantity = u"16777216"_s, .price = u"1,000"_s};
        desk.open({large,
                   {.price = u"1"_s},
                   {.price = u"1.00"_s},
                   {.no = u"F2"_s},
                   {.kind = u"satış"_s},
                   {.cari = {}},
                   {.quantity = u"2,5"_s, .price = u"0.1"_s}});
        QCOMPARE(column(desk.l1, L1::FaturaNumarasi), u"F1,F2,F1"_s);
        QCOMPARE(column(desk.l1, L1::ToplamTutar).replace(u",0000"_s, u""_s),
                 u"16777217,10,0,2500"_s);
        QCOMPARE(desk.fatduz.liste.satirSayisi.text(), u"3"_s);
        for (const int row : {0, 2}) { // either row shows all that bears the number
            desk.fatduz.satirsec(row);
            QCOMPARE(column(desk.fatduz.l2, L2::Miktar).remove(u"0000"_s),
                     u"16777216,,1,,1,,1,,1,,2,5000"_s);
        }
        desk.fatduz.satirsec(3);
        QCOMPARE(desk.fatduz.l2.rows(), 6);
    }

    void theSecondDiscountIsTakenOnTheWholeAmountAndAllAreSingle()
    {
        DuzeyDesk desk;
        desk.open({{.price = u"#100"_s, .rates = u"#10|#10|#10|#10|#10|#10"_s, .money = u"#5"_s},
                   {.rates = u"|#2.5||||"_s},
                   {.quantity = u"#3"_s, .rates = u"0|-1|x|||"_s, .money = u"10"_s}});
        Grid &l2 = desk.fatduz.l2;
        desk.fatduz.satirsec(0);
        QCOMPARE(cells(l2, 0, firstColumns),
                 u"U1||1,0000|100,0000|20,0000|100,0000|52,512|0|100,0000"_s);
        // 100 - 28 = 72, - 35,2 = 64,8, - 41,68 = 58,32, - 47,512 = 52,488; 5 of it is 9,5259869 %
        QCOMPARE(cells(l2, 0, {10, 12, 14, 16, 18, 20, 22}), u"10|10|8|7,2|6,48|5,832|5"_s);
        QCOMPARE(cells(l2, 0, {9, 11, 13, 15, 17, 19, 21, 23, 26, 27, 29}),
                 u"10,0000|10,0000|10,0000|10,0000|10,0000|10,0000|9,525987||||"_s);
        QCOMPARE(cells(l2, 1, {6, 9, 10, 11, 12, 21, 22}), u"0,25|0,0000|0|2,5000|0,25|0|0"_s);
        // 10 / 30 in single precision, times 100
        QCOMPARE(cells(l2, 2, {6, 9, 10, 11, 12, 13, 14, 21, 22}),
                 u"10|0,0000|0|-1,0000|0|0,0000|0|33,33334|10"_s);
        Grid &l3 = desk.fatduz.l3;
        desk.fatduz.liste3yukle(u"F1"_s);
        QCOMPARE(cells(l3, 0, firstColumns), u"U1||1,0000|100,0000|20,0000|100,0000|0|0|0"_s);
        QCOMPARE(cells(l3, 0, {9, 10, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26}),
                 u"ADT|10,0000|10,0000|9,525987|0|0|10|10|8|7,2|6,48|5,832|5|"_s);
        desk.fatduz.liste3yukle({}); // does nothing, not even clear
        QCOMPARE(l3.rows(), 3);
        // On a line of nothing a discount of nothing divides nothing.
        desk.open({{.price = u"#0"_s, .money = u"#0"_s}});
        desk.fatduz.satirsec(0);
        QCOMPARE(cells(l2, 0, {5, 6, 21, 22}), u"0,0000|0|0|0"_s);
        // Worked out with each product, sum and quotient rounded to 24 bits; doubles give 15,13429,
        // 4,541496 and 8,11233.
        desk.open({{.price = u"#146.65"_s, .rates = u"#2|#12|#12|#7|#12|#5"_s, .money = u"#7"_s}});
        desk.fatduz.satirsec(0);
        QCOMPARE(cells(l2, 0, {10, 12, 14, 16, 18, 20, 22, 21, 6}),
                 u"2,933|17,598|15,13428|7,768929|12,38589|4,541495|7|8,112331|67,3616"_s);
    }

    void aFailedReadShowsItsReasonAndLeavesTheListsAsTheyStood()
    {
        DuzeyDesk desk;
        Fatduz &fatduz = desk.fatduz;
        desk.t.boxes.expect({.text = u"Fatura dosyası seçilmedi."_s});
        fatduz.yenidenoku();
        fatduz.personelsec(); // no file, nothing to read again
        desk.open({{}, {.no = u"F2"_s, .price = u"#0"_s, .money = u"#1"_s}, {.no = u"F2"_s}});
        QCOMPARE(desk.l1.rows(), 2);
        // A discount on a line of nothing ends the lines there.
        desk.t.boxes.expect({.text = u"Sıfıra bölme."_s});
        fatduz.satirsec(1);
        QCOMPARE(fatduz.l2.rows(), 1);
        QCOMPARE(cells(fatduz.l2, 0, {2, 5, 21, 22}), u"1,0000|0,0000|0|"_s);
        fatduz.sayfaAdi.setText(u"Sayfa9"_s);
        for (const auto &action : {&Fatduz::yenidenoku, &Fatduz::personelsec}) {
            desk.expectReportOf([&] { readSheet(desk.source, u"Sayfa9"_s); });
            (fatduz.*action)();
            desk.t.boxes.verify();
            QVERIFY(desk.l1.isEmpty() && fatduz.l2.isEmpty());
        }
        fatduz.sayfaAdi.setText(u"Sheet1"_s);
        // A sheet that ends in front of the personnel code: the row as far as it came.
        writeWorkbook(desk.source, u"Sheet1"_s, bookRows(u"d|C1|t|B1|F1|SATIŞ"_s));
        desk.expectReportOf([&] { readSheet(desk.source, u"Sheet1"_s)->text(0, 17); });
        fatduz.yenidenoku();
        desk.t.boxes.verify();
        QCOMPARE(cells(desk.l1, 0, {0, 2, 3, 4, 5}), u"C1|F1|B1|d|"_s);
        // A first invoice without number goes on with the one before it, and there is none.
        writeWorkbook(desk.source, u"Sheet1"_s, bookRows(Record{.no = {}}.line()));
        desk.expectReportOf([&] { desk.l1.cell(-1, 0); });
        fatduz.yenidenoku();
        desk.t.boxes.verify();
        QVERIFY(fatduz.ilerleme.isShown());
        writeWorkbook(desk.source, u"Sheet1"_s, QList<BookRow>{});
        fatduz.ilerleme.finish();
        fatduz.yenidenoku();
        QVERIFY(fatduz.ilerleme.isShown() &&
                desk.l1.isEmpty()); // a sheet without rows leaves it on
        desk.open({{}});
        QVERIFY(!fatduz.ilerleme.isShown());
    }

    void theViewsReadTheWorkbookAgainAndADateFiltersOnlyWhenItChanges()
    {
        DuzeyDesk desk;
        InvoiceList &list = desk.fatduz.liste;
        desk.t.sqlServer.answer = [](const QString &statement) -> SqlRows {
            return {{u"ACCEPTEINV"_s}, {{statement.contains(u"='E"_s) ? u"1"_s : u"0"_s}}};
        };
        const auto after = [&](void (InvoiceList::*operation)()) {
            (list.*operation)();
            return column(desk.l1, L1::FaturaNumarasi) + u' ' +
                   QString::number(desk.l1.tickedCount());
        };
        const Record eInvoice{.no = u"E1"_s, .cari = u"E"_s};
        const Record old{.no = u"F3"_s, .date = u"@2024-03-06"_s};
        desk.open({{}, eInvoice});
        QCOMPARE(after(&InvoiceList::eolan), u"F1,E1 1"_s);
        desk.write({{}, eInvoice, old});
        QCOMPARE(after(&InvoiceList::efatolmgoster), u"F1,F3 0"_s);
        QCOMPARE(after(&InvoiceList::tumgoster), u"F1,E1,F3 0"_s);
        list.tarihAraligi.setChecked(true); // by itself it does nothing, and nor does a read
        desk.fatduz.yenidenoku();
        QCOMPARE(desk.l1.rows(), 3);
        QCOMPARE(after(&InvoiceList::tumgoster), u"F1,E1 0"_s);
        list.ilkTarih.setDate(QDate(2024, 3, 6));
        desk.fatduz.tarihdegisti();
        QCOMPARE(desk.l1.rows(), 3);
        list.sonTarih.setDate(QDate(2024, 3, 6));
        desk.fatduz.tarihdegisti();
        QCOMPARE(after(&InvoiceList::fattumsec), u"F3 1"_s);
    }

    void anExportPassesOverWhatFailsAndEndsWithSuccess()
    {
        DuzeyDesk desk;
        Fatduz &fatduz = desk.fatduz;
        const auto exportTo = [&](const QString &name) {
            desk.t.boxes.expectDone();
            fatduz.kaydet(desk.t.path(name));
            desk.t.boxes.verify();
        };
        const auto lines = [&] { // of two invoices
            const QByteArray text = readBytes(desk.t.path(u"a.xml"_s));
            return text.count("</INVOICE>") == 2 ? text.count("<MASTER_CODE>") : -1;
        };
        desk.t.boxes.expectWarning(
            u"Dosya Konumu Hatalı...!Ayarlardan Dosya Konumlarını Kontrol Ediniz."_s, Icon::Stop);
        fatduz.kaydet({});
        desk.t.dialogs.answers << std::nullopt;
        fatduz.logoyaaktar(); // cancelled: no box

        desk.open({{}, {.no = u"F2"_s, .price = u"#0"_s, .money = u"#1"_s}, {.no = u"F2"_s}});
        fatduz.liste.fattumsec();
        exportTo(u"a.xml"_s);
        QCOMPARE(lines(), 2); // the second line of F2 is lost
        QVERIFY(fatduz.bilgi.text().contains(u"F2: Sıfıra bölme."_s));
        desk.write({{}, {}, {}, {.no = u"F2"_s}});
        exportTo(u"a.xml"_s);
        QCOMPARE(lines(), 4); // as the file is now
        exportTo(u"yok/b.xml"_s);
        QVERIFY(fatduz.bilgi.text().contains(u"b.xml"_s));
        QVERIFY(QFile::remove(desk.source));
        exportTo(u"a.xml"_s);
        QCOMPARE(lines(), 0); // heads alone
        QVERIFY(!fatduz.ilerleme.isShown());
        QVERIFY(!fatduz.bekle.isChecked());
    }

    void theRoadThroughTheWindow()
    {
        DuzeyDesk desk;
        FatduzWindow window(desk.t.program);
        window.load();
        Fatduz &fatduz = window.fatduz();
        Grid &l1 = fatduz.liste.l1;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const auto read = [&](const QString &names) {
            QCOMPARE(column(l1, L1::FaturaNumarasi), names);
        };
        auto *kind = window.findChild<QComboBox *>(u"fatbilgi"_s);
        desk.t.boxes.expect({.text = u"Fatura dosyası seçilmedi."_s});
        QTest::keyClick(kind, Qt::Key_Down);
        desk.write(
            {{.date = u"@2024-03-08"_s}, {.no = u"A1"_s, .kind = u"ALIŞ"_s}, {.no = u"F2"_s}});
        drop(window, desk.source);
        read(u"A1"_s);
        QTest::keyClick(kind, Qt::Key_Up);
        read(u"F1,F2"_s);
        press(window, u"Check1"_s);
        read(u"F1,F2"_s);
        type(window, u"d2"_s, u"09.03.2024"_s);
        read(u"F1,F2"_s);
        type(window, u"d1"_s, u"080324"_s);
        read(u"F1"_s);
        auto *view = window.findChild<GridView *>(u"l1"_s);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(l1.index(0, 2)).center());
        QCOMPARE(fatduz.l2.rows(), 1);

        auto *sheet = window.findChild<QLineEdit *>(u"Text1"_s);
        sheet->setText(u"Sayfa9"_s);
        press(window, u"lvButtons_H1"_s);
        QCOMPARE(readBytes(desk.t.path(u"duzeyfaturaexelsayfano.kvz"_s)), "Sayfa9\r\n");
        desk.t.program.aktifform = u"1"_s;
        const QSignalSpy menu(&window, &FatduzWindow::listMenuWanted);
        press(window, u"lvButtons_H2"_s);
        QCOMPARE(menu.size(), 1);
        QCOMPARE(desk.t.program.aktifform, u"2"_s);

        QStringList pointers;
        connect(&fatduz.ilerleme, &ProgressField::changed, this,
                [&] { pointers << QString::number(QApplication::overrideCursor() ? 1 : 0); });
        press(window, u"Check2"_s);
        desk.t.boxes.expectQuestion(u"Faturayı Listeden Silmek İstediğinize Eminmisiniz ?"_s,
                                    false);
        press(window, u"chameleonButton6"_s);
        QTest::keyClick(window.findChild<QComboBox *>(u"c3"_s), Qt::Key_Down);
        desk.t.dialogs.answers << desk.t.path(u"a.xml"_s);
        desk.t.boxes.expectDone();
        press(window, u"chameleonButton1"_s);
        QCOMPARE(pointers.join(QString()), u"111"_s); // an hourglass from start to end
        QVERIFY(!QApplication::overrideCursor());
        QVERIFY(readBytes(desk.t.path(u"a.xml"_s)).contains(">D1<")); // the depot of the firm
        const QSignalSpy close(&window, &FatduzWindow::closeWanted);
        QTest::keyClick(&window, Qt::Key_Escape);
        QCOMPARE(close.size(), 1);
    }
};

QTEST_MAIN(TestFatduz)
#include "tst_fatduz.moc"
