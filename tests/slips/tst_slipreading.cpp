// Text exports and workbooks on their way into the lists of the slip screens.

#include "slips/columns.h"
#include "slips/desk.h"
#include "support/places.h"
#include "support/ruler.h"
#include "support/table.h"

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
        QCOMPARE(d.t.dialogs.asked.last().title, u"Cari Haraket Dosyası Seçin"_s);
        QCOMPARE(d.t.dialogs.asked.last().filter, u"Text Dosyaları (txt)|*.txt"_s);
        QCOMPARE(d.t.dialogs.asked.last().start, d.t.path(u"txt"_s));
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
        // A file that is gone leaves no row, and says so in the window; an empty one has none.
        d.t.dialogs.answers = {d.t.path(u"yok.txt"_s)};
        d.press(u"chameleonButton5"_s);
        QVERIFY(d.s.l1.isEmpty() && !d.s.ilerleme.isShown());
        QVERIFY(d.s.bilgi.text().contains(u"yok.txt"));
        d.readText({});
        QCOMPARE(d.s.hareketSayisi.text(), u"0"_s);
        QCOMPARE(d.s.bilgi.text(), QString());
    }

    void classesAreToldByExactCodes()
    {
        SlipDesk d(cafis3());
        const auto classes = [&](const QByteArray &line) { // type, way of payment, side
            d.readText(line);
            return cells(
                d.s.l1, 0,
                {MetinHareket::IslemTipi, MetinHareket::IslemTuru, MetinHareket::BakiyeTuru});
        };
        QCOMPARE(classes("20          K1 "), u"Nakit Tahsil|Nakit|Borç"_s); // debit with a blank
        QCOMPARE(classes("20          C1"), u"Nakit Tahsil|Çek/Senet|Borç"_s);
        QCOMPARE(classes("50          T-1"), u"Kredi Kartı|Kredi Kartı|Alacak"_s);
        QCOMPARE(classes("99          k 1"), u"||"_s); // no such type, small letter, blank in front
        QCOMPARE(classes("2           K 1"), u"|Nakit|"_s); // half a code
        QCOMPARE(classes("30"), u"Çek||"_s);
        QCOMPARE(classes("40"), u"Senet||"_s);
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
        addTable(uR"(
case  ; open         ; lines                                                                    ; numbered ; save
cash  ; buton1       ; T|K|Ü|A|S||T\n 5.3.2021 9:30 | 1,2 | GÜL | AÇ | 7 || 1,234.5             ; KN000001 ; buton2
cards ; lvButtons_H3 ; X|S|A|K|Ü|T||T\n| 7 | AÇ | 1,2 | GÜL | 5.3.2021 9:30 || 1,234.5          ; KK000001 ; lvButtons_H2)"_s);
    }
    void aDuzeySheetIsReadTrimmed()
    {
        SlipDesk d(carifisduzey());
        d.t.fill({u"insert into per values (Null,'P7','7')"_s});
        writeBytes(d.t.path(u"kasa.kvz"_s), "100\r\n");
        writeBytes(d.t.path(u"bank.kvz"_s), "102\r\n");
        d.s.load();
        d.readBook(u"a.xlsx"_s, fetch("lines") + u' ', fetch("open"));
        QCOMPARE(textOf(d.s.l1),
                 u"1|5.3.2021 9:30|12|GÜL|1.234,5000|%1|100|102|P7|AÇ"_s.arg(fetch("numbered")));
        QVERIFY(d.saved(fetch("save")).contains("<DATE>05.03.2021</DATE>")); // without the time
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
        for (SlipDesk *d : {&ends, &goesOn}) {
            QVERIFY(!d->s.ilerleme.isShown());
            d->readBook(u"bos.xlsx"_s, u"K"_s); // the next read begins anew
            QVERIFY(d->s.bilgi.text().startsWith(u"\"Sayfa1\" sayfasında bu ekranın"_s));
        }
    }

    void aFieldBeyondTheSheetEndsOneReadAndIsPassedOverByTheOther()
    {
        SlipDesk ends(cafis());
        ends.readBook(u"a.xlsx"_s, u"T|||K|||Ü\n#1|||K||C|BİR\n#2|||K||C|İKİ"_s); // no date
        QCOMPARE(textOf(ends.s.l1), u"1|||||||"_s);
        // The note stays until something is read or written, and so through what comes to nothing.
        const QString told = u"Okuma 2. kayıtta bitti, listede 1 hareket var: "_s;
        QVERIFY2(ends.s.bilgi.text().startsWith(told), qPrintable(ends.s.bilgi.text()));
        ends.s.sayfaadikaydet();
        ends.t.boxes.expectWarning(u"Listeden Seçim Yapınız..."_s, Icon::None);
        ends.press(u"buton2"_s);
        ends.s.l1.setTicked(0, true);
        ends.t.dialogs.answers = {std::nullopt};
        ends.press(u"buton2"_s);
        QVERIFY(ends.s.bilgi.text().startsWith(told));
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
        // A screen that passes over failures goes on to its count, the others leave the old one.
        addTable(uR"(
case         ; count
cafis        ; 7
cafis2       ; 0
cafis3       ; 0
carifisduzey ; 7)"_s);
    }
    void aSheetThatCannotBeReadLeavesTheListsEmpty()
    {
        SlipDesk d(slipForm(caseName()));
        d.s.l1.addRow({});
        d.s.l2.addRow({});
        d.s.hareketSayisi.setText(u"7"_s);
        const QString book = d.t.path(u"a.xlsx"_s);
        writeWorkbook(book, u"Başka"_s, bookRows(movements()));
        d.read(book);
        QVERIFY(d.s.l1.isEmpty() && d.s.l2.isEmpty() && !d.s.ilerleme.isShown());
        QCOMPARE(d.s.hareketSayisi.text(), fetch("count"));
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
        addTable(uR"(
case         ; file                    ; first  ; again
cafis        ; exelsayfano.kvz         ; Sayfa1 ; no
cafis2       ; exelsayfano2.kvz        ; Sayfa1 ; no
cafis3       ; exelsayfano3.kvz        ; Sayfa1 ; no
carifisduzey ; carifisexelsayfano.kvz  ; Sheet1 ; yes)"_s);
    }
    void theNameOfTheSheetIsRemembered()
    {
        const QString file = fetch("file");
        const bool canBeStoredAgain = fetch("again") == u"yes";
        SlipDesk d(slipForm(caseName()));
        d.s.load();
        QCOMPARE(d.s.sayfaAdi.text(), fetch("first"));
        QVERIFY(d.s.sayfaKaydedilir.isChecked()); // there is no file
        d.s.sayfaAdi.setText(u"Ocak, Şubat"_s);
        d.s.sayfaadikaydet();
        QCOMPARE(d.bytes(file), toCodePage(u"Ocak, Şubat\r\n"));
        QCOMPARE(d.s.sayfaKaydedilir.isChecked(), canBeStoredAgain);
        d.s.load();
        QCOMPARE(d.s.sayfaAdi.text(), u"Ocak"_s); // a comma ends the value
        QCOMPARE(d.s.sayfaKaydedilir.isChecked(), canBeStoredAgain);
        d.s.sayfaAdi.setText(u"Mart"_s);
        QVERIFY(d.s.sayfaKaydedilir.isChecked());
        QVERIFY(QFile::remove(d.t.path(file)));
        QVERIFY(QDir().mkdir(d.t.path(file))); // a folder can't be written as a file
        d.s.sayfaadikaydet();
        QVERIFY(d.s.sayfaKaydedilir.isChecked() && d.s.bilgi.text().contains(file));
        QVERIFY(QDir().rmdir(d.t.path(file)));
        d.s.sayfaadikaydet();
        QCOMPARE(d.s.bilgi.text(), QString());
    }

    // One of them was saved by LibreOffice.
    void aSampleFitsItsScreen_data()
    {
        addTable(uR"(
case                    ; screen       ; open         ; lastMovement ; lastOfBankList
tahsilatlar.xlsx        ; cafis        ; buton1       ; 16|23.03.202|120.01.108|GÜLER ŞARKÜTERİ|45,10|NT000016|KN000016|100.01.001 ; 3|10.3.2021|1.236.529,00|BT000003|100.01.003
15032021-00100101.xls   ; cafis2       ; buton1       ; 8|15/03/2021|120.01.108|GÜLER ŞARKÜTERİ|45,10|NT000008|KN000008|PER01      ; 1|15/03/2021|1.249.401,00|BT000001|PER01
POSANALIZ-20210315.xlsx ; cafis3       ; buton1       ; 12|15/03/2021|120.01.102|IŞIK BÜFE|347,50|NT000012|KN000012|POS02          ; 2|15/03/2021|1.361,60|BT000002|POS02
duzey-nakit.xlsx        ; carifisduzey ; buton1       ; 5|15.03.2021|120.01.105|ŞİRİN'İN YERİ|1.234,5000|KN000005|||PER01|Nakit tahsilat 5 ;
duzey-kredikarti.xlsx   ; carifisduzey ; lvButtons_H3 ; 5|15.03.2021|120.01.105|ŞİRİN'İN YERİ|1.234,5000|KK000005|||PER01|Kredi kartı 5    ;)"_s);
    }
    void aSampleFitsItsScreen()
    {
        SlipDesk d(slipForm(fetch("screen")));
        d.t.fill({u"insert into per values (Null,'PER01','00100101')"_s});
        d.s.load();
        d.read(samplePath(caseName()), fetch("open"));
        QCOMPARE(d.s.bilgi.text(), QString());
        QCOMPARE(d.s.persl.isEmpty(), fetch("screen") == u"cafis");
        QCOMPARE(textOf(d.s.l1).section(u'\n', -1), fetch("lastMovement"));
        QCOMPARE(textOf(d.s.l2).section(u'\n', -1), fetch("lastOfBankList"));
    }
};

QTEST_GUILESS_MAIN(TestSlipReading)
#include "tst_slipreading.moc"
