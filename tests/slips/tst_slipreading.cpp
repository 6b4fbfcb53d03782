// Text exports and workbooks on their way into the lists of the slip screens.

#include "slips/columns.h"
#include "slips/desk.h"
#include "support/ruler.h"

#include <QDir>

using namespace kervan;

class TestSlipReading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachFieldOfATextExportIsCutFromItsColumns()
    {
        SlipDesk d(cafis());
        const auto filled = [](char16_t letter, int length) {
            return QString(length, QChar(letter));
        };
        d.s.tumHareketler.setChecked(true);
        d.readText(ruled(u"20", 3, filled(u'a', 10), 13, u"C", 14, u"-1", 16, filled(u'b', 10), 26,
                         filled(u'c', 10), 36, u"d", 37, u"1 2 3 4 5 6 7 8 9 ", 55,
                         filled(u'Ş', 60), 115, filled(u'f', 18), 133, filled(u'g', 40), 173,
                         filled(u'h', 10), 183, filled(u'i', 10), 193, filled(u'j', 10), 203,
                         filled(u'k', 10), 213, filled(u'l', 4), 217, filled(u'm', 10), 227, u"x") +
                   "40x  \r\n\r\n");
        QCOMPARE(d.t.dialogs.asked.last().filter, u"Text Dosyaları (txt)|*.txt"_s);
        QVERIFY(!d.s.tumHareketler.isChecked());
        QCOMPARE(d.s.l1.rows(), 3); // the empty line is a row
        QCOMPARE(d.s.hareketSayisi.text(), u"3"_s);
        const QStringList lines = textOf(d.s.l1).split(u'\n');
        QCOMPARE(
            lines[0],
            u"1|Nakit Tahsil|aaaaaaaaaa|Çek/Senet|Alacak|bbbbbbbbbb|cccccccccc|d|123456789|"_s +
                filled(u'Ş', 60) + u'|' + filled(u'f', 18) + u'|' + filled(u'g', 40) +
                u"|hhhhhhhhhh|iiiiiiiiii|jjjjjjjjjj|kkkkkkkkkk|llll|mmmmmmmmmm"_s);
        QCOMPARE(lines[1], u"1|Senet|x  "_s + QString(15, u'|'));
        QCOMPARE(lines[2], QString(17, u'|'));
        // An empty file has no row; one that is gone leaves none either, and says so in the window.
        d.readText({});
        QCOMPARE(d.s.hareketSayisi.text(), u"0"_s);
        QCOMPARE(d.s.bilgi.text(), QString());
        d.t.dialogs.answers = {d.t.path(u"yok.txt"_s)};
        d.press(u"chameleonButton5"_s);
        QVERIFY(d.s.l1.isEmpty() && !d.s.ilerleme.isShown());
        QVERIFY(d.s.bilgi.text().contains(u"yok.txt"));
    }

    void classesAreToldByExactCodes_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("classes"); // type, way of payment, side
        QTest::newRow("cash, debit with a blank")
            << u"20          K1 "_s << u"Nakit Tahsil|Nakit|Borç"_s;
        QTest::newRow("debit at the line's end")
            << u"20          C1"_s << u"Nakit Tahsil|Çek/Senet|Borç"_s;
        QTest::newRow("card, credit")
            << u"50          T-1"_s << u"Kredi Kartı|Kredi Kartı|Alacak"_s;
        QTest::newRow("unknown type, small letter, blank in front")
            << u"99          k 1"_s << u"||"_s;
        QTest::newRow("half a code") << u"2           K 1"_s << u"|Nakit|"_s;
        QTest::newRow("cheque, short line") << u"30"_s << u"Çek||"_s;
        QTest::newRow("note, short line") << u"40"_s << u"Senet||"_s;
    }
    void classesAreToldByExactCodes()
    {
        QFETCH(QString, line);
        SlipDesk d(cafis3());
        d.readText(line.toLatin1());
        QTEST(cells(d.s.l1, 0,
                    {MetinHareket::IslemTipi, MetinHareket::IslemTuru, MetinHareket::BakiyeTuru}),
              "classes");
    }

    void eachClassIsCountedOnItsOwnAcrossReads()
    {
        SlipDesk d(cafis3());
        for (const QString &numbers : {u"1,2,1,,1,1"_s, u"3,4,2,,2,2"_s}) {
            d.readText("20\n20\n50\n99\n30\n40\n");
            QCOMPARE(column(d.s.l1, MetinHareket::Sira), numbers);
        }
    }

    void aDuzeySheetIsReadTrimmed_data()
    {
        for (const char *name : {"open", "lines", "movement", "save"})
            QTest::addColumn<QString>(name);
        QTest::newRow("cash") << u"buton1"_s
                              << u"T|K|Ü|A|S||T\n 5.3.2021 9:30 | 1,2 | GÜL | AÇ | 7 || 1,234.5 "_s
                              << u"1|5.3.2021 9:30|12|GÜL|1.234,5000|KN000001|100|102|P7|AÇ"_s
                              << u"buton2"_s;
        QTest::newRow("cards")
            << u"lvButtons_H3"_s
            << u"X|S|A|K|Ü|T||T\n| 7 | AÇ | 1,2 | GÜL | 5.3.2021 9:30 || 1,234.5 "_s
            << u"1|5.3.2021 9:30|12|GÜL|1.234,5000|KK000001|100|102|P7|AÇ"_s << u"lvButtons_H2"_s;
    }
    void aDuzeySheetIsReadTrimmed()
    {
        QFETCH(QString, open);
        QFETCH(QString, lines);
        QFETCH(QString, save);
        SlipDesk d(carifisduzey());
        d.t.fill({u"insert into per values (Null,'P7','7')"_s});
        writeBytes(d.t.path(u"kasa.kvz"_s), "100\r\n");
        writeBytes(d.t.path(u"bank.kvz"_s), "102\r\n");
        d.s.load();
        d.readBook(u"a.xlsx"_s, lines, open);
        QTEST(textOf(d.s.l1), "movement");
        d.t.boxes.expectDone();
        QVERIFY(d.save(save).contains("<DATE>05.03.2021</DATE>")); // the time is left out
    }

    void anAmountThatIsNoNumberEndsOneReadAndIsPassedOverByTheOther()
    {
        SlipDesk ends(cafis());
        ends.readBook(u"a.xlsx"_s, u"T|||K|||Ü|||||D\n1|||K|||||||||1.3.2021\nx|||K|||||||||"
                                   "1.3.2021\n1|||K|||||||||1.3.2021"_s);
        QCOMPARE(ends.s.l1.rows(), 2);
        QCOMPARE(ends.s.l1.cell(1, Hareket::Tutar), u"x"_s);
        QCOMPARE(ends.s.l2.rows(), 1);
        QVERIFY(ends.s.bilgi.text().contains(u"3. kayıt"));
        SlipDesk goesOn(cafis3());
        goesOn.readBook(
            u"POSANALIZ_20210315.xlsx"_s,
            u"K||C|||||T|TÜR\nK||C|||||1|HHSATIS\nK||C|||||x|HHSATIS\nK||C|||||2|HHSATIS\n"
            "K||C|||||9|hhsatis\nk||C|||||#0.5|HHSATIS\nk||C|||||#0.25|HHSATIS\nY||C|||||y|HHSATIS"_s);
        QCOMPARE(goesOn.s.l1.rows(), 6);
        QCOMPARE(textOf(goesOn.s.l2), u"1|15/03/2021|3,00|BT000001|K\n2|15/03/2021|x|BT000002|K\n"
                                      "3|15/03/2021|,75|BT000003|k\n4|15/03/2021|y|BT000004|Y"_s);
        QVERIFY(goesOn.s.bilgi.text().startsWith(u"2 adım atlandı. İlki: \"x\""));
        for (const SlipDesk *d : {&ends, &goesOn})
            QVERIFY(!d->s.ilerleme.isShown());
    }

    void aFieldBeyondTheSheetEndsOneReadAndIsPassedOverByTheOther()
    {
        SlipDesk ends(cafis());
        ends.readBook(u"a.xlsx"_s, u"T|||K|||Ü\n#1|||K||C|BİR\n#2|||K||C|İKİ"_s); // no date
        QCOMPARE(textOf(ends.s.l1), u"1|||||||"_s);
        SlipDesk goesOn(cafis2());
        goesOn.readBook(u"150320.xls"_s, u"A\nB\nC\nD\nE||F\nC1||BİR\nC2||İKİ"_s); // no amount
        QCOMPARE(textOf(goesOn.s.l1), u"1|15/03/20|C1|BİR||NT000001|KN000001|\n"
                                      "2|15/03/20|C2|İKİ||NT000002|KN000002|"_s);
        QCOMPARE(goesOn.s.l2.rows(), 2);
        // Moving beyond the last record is such a failure too.
        for (SlipDesk *d : {&ends, &goesOn}) {
            d->readBook(u"kisa-1.xlsx"_s, u"A"_s);
            QVERIFY(d->s.l1.isEmpty() && d->s.l2.isEmpty());
        }
        QVERIFY(ends.s.bilgi.text().endsWith(u"okuduğu türden satır yok."));
        QVERIFY(!goesOn.s.bilgi.text().isEmpty());
        SlipDesk kinds(cafis3());
        kinds.readBook(u"a.xlsx"_s, u"A||C\nA||C"_s); // no kind
        QVERIFY(kinds.s.l1.isEmpty());
    }

    void aSheetThatCannotBeReadLeavesTheListsEmpty_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QString>("count");
        // A screen that passes over failures goes on to its count, the others leave the old one.
        QTest::newRow("cafis ends") << u"cafis"_s << u"7"_s;
        QTest::newRow("cafis2 goes on") << u"cafis2"_s << u"0"_s;
        QTest::newRow("cafis3 goes on") << u"cafis3"_s << u"0"_s;
        QTest::newRow("carifisduzey ends") << u"carifisduzey"_s << u"7"_s;
    }
    void aSheetThatCannotBeReadLeavesTheListsEmpty()
    {
        QFETCH(QString, screen);
        SlipDesk d(slipForm(screen));
        d.s.l1.addRow({});
        d.s.l2.addRow({});
        d.s.hareketSayisi.setText(u"7"_s);
        const QString book = d.t.path(u"a.xlsx"_s);
        writeWorkbook(book, u"Başka"_s, bookRows(movements()));
        d.read(book);
        QVERIFY(d.s.l1.isEmpty() && d.s.l2.isEmpty() && !d.s.ilerleme.isShown());
        QTEST(d.s.hareketSayisi.text(), "count");
        // The note names the file first: no record of it was reached.
        QVERIFY(d.s.bilgi.details().startsWith(QDir::toNativeSeparators(book)));
        QVERIFY(d.s.bilgi.text().contains(u"Başka"));
        d.s.sayfaAdi.setText(u"Başka"_s);
        d.read(d.t.path(u"yok.xlsx"_s));
        QVERIFY(d.s.bilgi.text().contains(u"yok.xlsx"));
        d.read(book);
        QVERIFY(!d.s.bilgi.text().contains(u"yok.xlsx"));
    }

    void theNameOfTheSheetIsRemembered_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("first");
        QTest::addColumn<bool>("canBeStoredAgain");
        QTest::newRow("cafis") << u"exelsayfano.kvz"_s << u"Sayfa1"_s << false;
        QTest::newRow("cafis2") << u"exelsayfano2.kvz"_s << u"Sayfa1"_s << false;
        QTest::newRow("cafis3") << u"exelsayfano3.kvz"_s << u"Sayfa1"_s << false;
        QTest::newRow("carifisduzey") << u"carifisexelsayfano.kvz"_s << u"Sheet1"_s << true;
    }
    void theNameOfTheSheetIsRemembered()
    {
        QFETCH(QString, file);
        SlipDesk d(slipForm(QString::fromLatin1(QTest::currentDataTag())));
        d.s.load();
        QTEST(d.s.sayfaAdi.text(), "first");
        QVERIFY(d.s.sayfaKaydedilir.isChecked()); // there is no file
        d.s.sayfaAdi.setText(u"Ocak, Şubat"_s);
        d.s.sayfaadikaydet();
        QCOMPARE(d.bytes(file), toCodePage(u"Ocak, Şubat\r\n"));
        QTEST(d.s.sayfaKaydedilir.isChecked(), "canBeStoredAgain");
        d.s.load();
        QCOMPARE(d.s.sayfaAdi.text(), u"Ocak"_s); // a comma ends the value
        QTEST(d.s.sayfaKaydedilir.isChecked(), "canBeStoredAgain");
        d.s.sayfaAdi.setText(u"Mart"_s);
        QVERIFY(d.s.sayfaKaydedilir.isChecked());
        QVERIFY(QFile::remove(d.t.path(file)));
        QVERIFY(QDir().mkdir(d.t.path(file))); // a folder can't be written as a file
        d.s.sayfaadikaydet();
        QVERIFY(d.s.sayfaKaydedilir.isChecked() && d.s.bilgi.text().contains(file));
    }

    // One of them was saved by LibreOffice.
    void aSampleFitsItsScreen_data()
    {
        for (const char *name : {"screen", "open", "lastMovement", "lastOfBankList"})
            QTest::addColumn<QString>(name);
        QTest::newRow("tahsilatlar.xlsx")
            << u"cafis"_s << u"buton1"_s
            << u"16|23.03.202|120.01.108|GÜLER ŞARKÜTERİ|45,10|NT000016|KN000016|100.01.001"_s
            << u"3|10.3.2021|1.236.529,00|BT000003|100.01.003"_s;
        QTest::newRow("15032021-00100101.xls")
            << u"cafis2"_s << u"buton1"_s
            << u"8|15/03/2021|120.01.108|GÜLER ŞARKÜTERİ|45,10|NT000008|KN000008|PER01"_s
            << u"1|15/03/2021|1.249.401,00|BT000001|PER01"_s;
        QTest::newRow("POSANALIZ-20210315.xlsx")
            << u"cafis3"_s << u"buton1"_s
            << u"12|15/03/2021|120.01.102|IŞIK BÜFE|347,50|NT000012|KN000012|POS02"_s
            << u"2|15/03/2021|1.361,60|BT000002|POS02"_s;
        QTest::newRow("duzey-nakit.xlsx")
            << u"carifisduzey"_s << u"buton1"_s
            << u"5|15.03.2021|120.01.105|ŞİRİN'İN YERİ|1.234,5000|KN000005|||PER01|Nakit tahsilat 5"_s
            << QString();
        QTest::newRow("duzey-kredikarti.xlsx")
            << u"carifisduzey"_s << u"lvButtons_H3"_s
            << u"5|15.03.2021|120.01.105|ŞİRİN'İN YERİ|1.234,5000|KK000005|||PER01|Kredi kartı 5"_s
            << QString();
    }
    void aSampleFitsItsScreen()
    {
        QFETCH(QString, screen);
        QFETCH(QString, open);
        SlipDesk d(slipForm(screen));
        d.t.fill({u"insert into per values (Null,'PER01','00100101')"_s});
        d.s.load();
        d.read(QStringLiteral(TEST_DATA "/../../samples/") +
                   QString::fromLatin1(QTest::currentDataTag()),
               open);
        QCOMPARE(d.s.bilgi.text(), QString());
        QCOMPARE(d.s.persl.isEmpty(), screen == u"cafis");
        QTEST(textOf(d.s.l1).section(u'\n', -1), "lastMovement");
        QTEST(textOf(d.s.l2).section(u'\n', -1), "lastOfBankList");
    }
};

QTEST_GUILESS_MAIN(TestSlipReading)
#include "tst_slipreading.moc"
