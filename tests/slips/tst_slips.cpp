// The slip transfers without their windows. A case of whole documents (documentcase.h) is a folder
// of tests/data/slips:
//   source.txt      the text export, or a sheet (see bookRows)
//   data.txt        ekran, dosya (name of the source), oku (command that opens it), isaret (rows of
//                   l1 to tick; all without it), side files
//   <command>.xml   what the command of that name writes; *.kvz side files behind it

#include "slips/desk.h"
#include "support/ruler.h"

#include <QDir>

using namespace kervan;

namespace {

// A cash list of two codes, as `cafis` reads it.
const QString movements = u"T|||K|||Ü|||||TARİH\n"
                          "#10|||K1||C1|BİR|||||@2021-03-15\n"
                          "#20|||K2||C2|İKİ|||||1.4.2021\n"
                          "#30|||K1||C3|ÜÇ|||||1.5.2021"_s;

} // namespace

class TestSlips : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDocumentsOfACaseAreTheExpectedOnes_data() { DocumentCase::addAll(u"slips"_s); }
    void theDocumentsOfACaseAreTheExpectedOnes()
    {
        TestProgram t;
        const DocumentCase given(t);
        SlipScreen s(t.program, slipForm(given[u"ekran"_s]));
        s.load();
        const QString source = t.path(given[u"dosya"_s]);
        if (source.endsWith(u".txt"))
            writeBytes(source, readBytes(given.path(u"source.txt"_s)));
        else
            writeWorkbook(source, s.sayfaAdi.text(), bookRows(given.text(u"source.txt"_s)));
        t.dialogs.answers = {source};
        press(s, given[u"oku"_s]);
        const QStringList ticked = given.list(u"isaret"_s);
        s.l1.tickWhere(
            [&](int row) { return ticked.isEmpty() || ticked.contains(QString::number(row + 1)); });
        s.l2.setAllTicked(true);
        const QStringList documents = given.expected(u"*.xml"_s);
        QVERIFY(!documents.isEmpty());
        for (const QString &document : documents) {
            t.dialogs.answers = {t.path(document)};
            t.boxes.expectDone();
            press(s, QFileInfo(document).baseName());
            given.expect(t.path(document), document);
        }
        given.expectSideFiles(t);
    }

    void eachFieldOfATextExportIsCutFromItsColumns()
    {
        SlipDesk d(cafis());
        const auto filled = [](char16_t letter, int length) {
            return QString(length, QChar(letter));
        };
        d.readText(ruled(u"20", 3, filled(u'a', 10), 13, u"C", 14, u"-1", 16, filled(u'b', 10), 26,
                         filled(u'c', 10), 36, u"d", 37, u"1 2 3 4 5 6 7 8 9 ", 55,
                         filled(u'Ş', 60), 115, filled(u'f', 18), 133, filled(u'g', 40), 173,
                         filled(u'h', 10), 183, filled(u'i', 10), 193, filled(u'j', 10), 203,
                         filled(u'k', 10), 213, filled(u'l', 4), 217, filled(u'm', 10), 227, u"x") +
                   "40x  \r\n\r\n");
        QCOMPARE(d.t.dialogs.asked.last().filter, u"Text Dosyaları (txt)|*.txt"_s);
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

    void classesAreToldByExactCodesAndCountedAcrossReads()
    {
        SlipDesk d(cafis3());
        QByteArray source;
        for (const char16_t *start : {u"20          K1 ", u"20          C1", u"50          T-1",
                                      u"99          k 1", u"2           K 1", u"30", u"40"})
            source += toCodePage(QStringView(start)) + "\n";
        const QString expected = u"%1|Nakit Tahsil|Nakit|Borç/%2|Nakit Tahsil|Çek/Senet|Borç/"
                                 "%3|Kredi Kartı|Kredi Kartı|Alacak/|||/||Nakit|/%3|Çek||/"
                                 "%3|Senet||"_s;
        for (int round = 0; round < 2; ++round) {
            d.readText(source);
            QStringList rows;
            for (int row = 0; row < d.s.l1.rows(); ++row)
                rows << cells(d.s.l1, row, {0, 1, 3, 4});
            QCOMPARE(rows.join(u'/'),
                     expected.arg(2 * round + 1).arg(2 * round + 2).arg(round + 1));
        }
    }

    void aWorkbookTakesItsColumnsBackFromATextExport()
    {
        SlipDesk d(cafis());
        d.readText("20\n");
        QCOMPARE(d.s.l1.columnCount(), 18);
        // Its rows have no date where cash rows have one.
        QCOMPARE(d.save(u"buton2"_s), QByteArray());
        d.readBook(u"a.xlsx"_s, movements);
        QCOMPARE(textOf(d.s.l1), u"1|15.03.202|C1|BİR|10,00|NT000001|KN000001|K1\n"
                                 "2|1.4.2021|C2|İKİ|20,00|NT000002|KN000002|K2\n"
                                 "3|1.5.2021|C3|ÜÇ|30,00|NT000003|KN000003|K1"_s);
        QCOMPARE(textOf(d.s.l2), u"1|15.03.202|40,00|BT000001|K1\n2|1.4.2021|20,00|BT000002|K2"_s);
        // No row of theirs has a class of the text export.
        d.t.boxes.expectDone();
        QCOMPARE(d.save(u"chameleonButton6"_s),
                 "<?xml version=\"1.0\" encoding=\"ISO-8859-9\"?>\r\n<CQPN_ROLLS>\r\n\r\n"
                 "</CQPN_ROLLS>\r\n");
    }

    void numbersAreGivenAtReadingAndStoredAfterAWrite()
    {
        SlipDesk d(cafis());
        writeBytes(d.t.path(u"kasacariislemno.kvz"_s), "\" 41 \",8\r\n");
        writeBytes(d.t.path(u"bankacariislemno.kvz"_s), "cok\r\n");
        for (int round = 0; round < 2; ++round) {
            d.readBook(u"a.xlsx"_s, movements);
            QCOMPARE(d.s.l1.cell(2, 6), u"KN000044"_s);
            QCOMPARE(d.s.l2.cell(1, 3), u"BT000002"_s);
        }
        const QString nowhere = d.t.path(u"yok/a.xml"_s);
        d.s.l1.setTicked(0, true);
        d.t.dialogs.answers = {nowhere};
        d.press(u"buton2"_s);
        QVERIFY(d.s.bilgi.text().contains(QDir::toNativeSeparators(nowhere)));
        QCOMPARE(d.bytes(u"kasacariislemno.kvz"_s), "\" 41 \",8\r\n");
        QByteArray first;
        for (int round = 0; round < 2; ++round) { // the same numbers again
            d.t.boxes.expectDone();
            const QByteArray document = d.save(u"buton2"_s);
            QVERIFY(document.contains("<NUMBER>KN000044<"));
            QVERIFY(first.isEmpty() || document == first);
            first = document;
        }
        // The one is printed as numbers are, the other is not.
        QCOMPARE(d.bytes(u"kasacariislemno.kvz"_s), " 44 \r\n");
        QCOMPARE(d.bytes(u"bankacariislemno.kvz"_s), "cok\r\n");
        d.t.boxes.expectDone();
        d.save(u"lvButtons_H2"_s);
        QCOMPARE(d.bytes(u"bankacariislemno.kvz"_s), "2\r\n");
        d.read(d.t.path(u"a.xlsx"_s));
        QCOMPARE(d.s.l1.cell(0, 6) + d.s.l2.cell(0, 3), u"KN000045BT000003"_s);
        QVERIFY(!d.s.l1.ticked(0));
    }

    void anAmountThatIsNoNumberEndsOneReadAndIsPassedOverByTheOther()
    {
        SlipDesk ends(cafis());
        ends.readBook(u"a.xlsx"_s, u"T|||K|||Ü|||||D\n1|||K|||||||||1.3.2021\nx|||K|||||||||"
                                   "1.3.2021\n1|||K|||||||||1.3.2021"_s);
        QCOMPARE(ends.s.l1.rows(), 2);
        QCOMPARE(ends.s.l1.cell(1, 4), u"x"_s);
        QCOMPARE(ends.s.l2.rows(), 1);
        QVERIFY(ends.s.bilgi.text().contains(u"3. kayıt"));
        SlipDesk goesOn(cafis3());
        goesOn.readBook(
            u"POSANALIZ_20210315.xlsx"_s,
            u"K||C|||||T|TÜR\nK||C|||||1|HHSATIS\nK||C|||||x|HHSATIS\nK||C|||||2|HHSATIS\n"
            "K||C|||||9|hhsatis\nk||C|||||#0.5|HHSATIS\nk||C|||||#0.25|HHSATIS"_s);
        QCOMPARE(goesOn.s.l1.rows(), 5);
        QCOMPARE(textOf(goesOn.s.l2), u"1|15/03/2021|3,00|BT000001|K\n2|15/03/2021|x|BT000002|K\n"
                                      "3|15/03/2021|,75|BT000003|k"_s);
        QVERIFY(goesOn.s.bilgi.text().contains(u"1 adım"));
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
        QCOMPARE(ends.s.bilgi.text(), QString());
        QVERIFY(!goesOn.s.bilgi.text().isEmpty());
        SlipDesk kinds(cafis3());
        kinds.readBook(u"a.xlsx"_s, u"A||C\nA||C"_s); // no kind
        QVERIFY(kinds.s.l1.isEmpty());
    }

    void aSheetThatCannotBeReadLeavesTheListsEmpty()
    {
        for (const auto form : {&cafis, &cafis2, &cafis3, &carifisduzey}) {
            SlipDesk d(form());
            d.s.l1.addRow({});
            d.s.l2.addRow({});
            d.s.hareketSayisi.setText(u"7"_s);
            writeWorkbook(d.t.path(u"a.xlsx"_s), u"Başka"_s, bookRows(movements));
            d.read(d.t.path(u"a.xlsx"_s));
            QVERIFY(d.s.l1.isEmpty() && d.s.l2.isEmpty() && !d.s.ilerleme.isShown());
            QVERIFY(d.s.bilgi.text().contains(u"Başka"));
            const bool goesOn = form == &cafis2 || form == &cafis3;
            QCOMPARE(d.s.hareketSayisi.text(), goesOn ? u"0"_s : u"7"_s);
            d.s.sayfaAdi.setText(u"Başka"_s);
            d.read(d.t.path(u"yok.xlsx"_s));
            QVERIFY(d.s.bilgi.text().contains(u"yok.xlsx"));
            d.read(d.t.path(u"a.xlsx"_s));
            QCOMPARE(d.s.bilgi.text().contains(u"yok.xlsx"), false);
        }
    }

    void aRowWithoutADateLeavesNoDocumentAndNoBox()
    {
        SlipDesk d(cafis2());
        d.readBook(u"15132021-1.xls"_s, u"A\nB\nC\nD\nE\nC1||BİR||||||||||||#1"_s); // month 13
        QCOMPARE(d.s.l1.cell(0, 1), u"15/13/2021"_s);
        QCOMPARE(d.save(u"buton2"_s), QByteArray());
        QVERIFY(d.s.bilgi.text().contains(u"1. satır") && !d.s.ilerleme.isShown());
        QVERIFY(!QFileInfo::exists(d.t.path(u"kasacariislemno.kvz"_s)));
        // A sequence that can't be stored takes the box, but not the document.
        QVERIFY(QDir().mkdir(d.t.path(u"kasacariislemno.kvz"_s)));
        d.readBook(u"15032021-1.xls"_s, u"A\nB\nC\nD\nE\nC1||BİR||||||||||||#1"_s);
        QVERIFY(!d.save(u"buton2"_s).isEmpty());
    }

    void theFilesNameGivesDateAndStaffAndABlankCodeEndsTheRead()
    {
        SlipDesk d(cafis2());
        d.t.fill({u"insert into per values (Null,'KA','12a')"_s,
                  u"insert into per values (Null,'KB','12A')"_s,
                  u"insert into per values (Null,'KC','12A')"_s});
        d.s.load();
        d.readBook(u"15032021-12A-3.xls"_s, u"A\nB\nC\nD\nE\nC1|| BİR||||||||||||#1\n"
                                            "C2||İKİ||||||||||||#2\n  ||ÜÇ||||||||||||#3\nC4"_s);
        QCOMPARE(textOf(d.s.l1), u"1|15/03/2021|C1| BİR|1,00|NT000001|KN000001|KB\n"
                                 "2|15/03/2021|C2|İKİ|2,00|NT000002|KN000002|KB"_s);
        d.t.clock.step = 3600; // each row asks the time anew
        d.t.boxes.expectDone();
        const QByteArray document = d.save(u"buton2"_s);
        QVERIFY(document.contains("<HOUR>9</HOUR>") && document.contains("<HOUR>10</HOUR>"));
    }

    void theCashDocumentOfTextExportsHasNoTwin()
    {
        SlipDesk d(cafis());
        for (const char *code : {"20", "50"}) { // with a row of its class, and without
            d.readText(code);
            QCOMPARE(d.save(u"chameleonButton1"_s), QByteArray());
            QCOMPARE(d.t.dialogs.asked.last().title, u"Nakit Tahsilat Xml Dosyası Kaydet"_s);
            QVERIFY(!d.s.bilgi.text().isEmpty());
        }
    }

    void commandsWarnInTheirOrderAndAskAsTheirScreensSay()
    {
        SlipDesk d(cafis());
        FakeDialogs &dialogs = d.t.dialogs;
        dialogs.answers = {std::nullopt};
        d.press(u"buton1"_s);
        QCOMPARE(dialogs.asked.last().title, u"Cari Haraket Dosyası Seçin"_s);
        QCOMPARE(dialogs.asked.last().filter, u"Exel Dosyaları (xlsx)|*.xlsx;*.xls"_s);
        QCOMPARE(dialogs.asked.last().start, d.t.path(u"txt"_s));
        for (const QString &command : {u"buton2"_s, u"chameleonButton3"_s, u"lvButtons_H2"_s}) {
            d.t.boxes.expectWarning(command == u"lvButtons_H2"
                                        ? u"Banka Fişi Haraket Listesinde Kayıt Bulunamadı...!"_s
                                        : u"Cari Haraket Listesinde Kayıt Bulunamadı...!"_s);
            d.press(command);
        }
        d.readBook(u"a.xlsx"_s, movements);
        d.s.l1.setTicked(1, true);
        // The other list is ticked.
        d.t.boxes.expectWarning(u"Listeden Seçim Yapınız..."_s, Icon::None);
        d.press(u"lvButtons_H2"_s);
        d.s.l2.setTicked(0, true);
        const QString titles = u"buton2=Kasa Nakit Tahsilat|lvButtons_H2=Banka İşlem Fişi|"
                               "chameleonButton2=Kredi Kartı|chameleonButton3=Senet|"
                               "chameleonButton6=Çek|chameleonButton7=Kasa Nakit Tahsilat"_s;
        for (const QString &title : titles.split(u'|')) {
            dialogs.answers = {std::nullopt};
            d.press(title.section(u'=', 0, 0));
            QCOMPARE(dialogs.asked.last().title, title.section(u'=', 1) + u" Xml Dosyası Kaydet"_s);
            QCOMPARE(dialogs.asked.last().filter, u"Xml Dosyaları (xml)|*.xml"_s);
            QCOMPARE(dialogs.asked.last().start, d.t.path(u"logo xml"_s));
        }
        // The one setting is asked for, the other is taken.
        d.t.program.folders.xc = u"C"_s;
        d.t.program.folders.xf = u"F"_s;
        dialogs.answers = {d.t.path(u"A.XML"_s)};
        d.t.boxes.expectDone();
        d.press(u"buton2"_s);
        QCOMPARE(dialogs.asked.last().start, u"F"_s);
        QCOMPARE(d.bytes(u"A.XML.xml"_s).count("<SD_TRANSACTION "), 1);
        // The numbers of unticked rows are gone too.
        QCOMPARE(d.bytes(u"kasacariislemno.kvz"_s), " 3 \r\n");
    }

    void duzeyTakesOnlyTheKindReadLast()
    {
        SlipDesk d(carifisduzey());
        d.t.boxes.expectWarning(u"Cari Haraket Listesinde Kayıt Bulunamadı...!"_s);
        d.press(u"lvButtons_H2"_s);
        d.s.l1.addRow({});
        for (const bool cash : {false, true}) {
            const QString own = cash ? u"buton2"_s : u"lvButtons_H2"_s;
            const QString other = cash ? u"lvButtons_H2"_s : u"buton2"_s;
            if (!cash) { // nothing was read yet
                d.t.boxes.expectWarning(u"Nakit Dosyası Okutmanız Gerekiyor..."_s);
                d.press(other);
            }
            // A read that fails counts as one, and the kind is asked for before the ticks.
            d.t.dialogs.answers = {d.t.path(u"yok.xls"_s)};
            d.press(cash ? u"buton1"_s : u"lvButtons_H3"_s);
            const QString kind = cash ? u"Nakit"_s : u"Kredi Kartı"_s;
            QCOMPARE(d.t.dialogs.asked.last().title, u"Cari Haraket %1 Dosyası Seçin"_s.arg(kind));
            QCOMPARE(d.t.dialogs.asked.last().start, QString());
            QCOMPARE(d.s.baslik.text(), u"DÜZEY CARİ FİŞ AKTARIMLARI  [yok.xls]"_s);
            d.s.l1.addRow({});
            d.t.boxes.expectWarning(cash ? u"Kredi Kartı Dosyası Okutmanız Gerekiyor..."_s
                                         : u"Nakit Dosyası Okutmanız Gerekiyor..."_s);
            d.press(other);
            d.t.boxes.expectWarning(u"Listeden Seçim Yapınız..."_s, Icon::None);
            d.press(own);
            d.s.l1.setTicked(0, true);
            d.t.dialogs.answers = {std::nullopt};
            d.press(own);
            QCOMPARE(d.t.dialogs.asked.last().title,
                     (cash ? u"Kasa Nakit"_s : kind) + u" Tahsilat Xml Dosyası Kaydet"_s);
        }
    }

    void theNameOfTheSheetIsRemembered()
    {
        const QMap<QString, QString> files{{u"cafis"_s, u"exelsayfano.kvz"_s},
                                           {u"cafis2"_s, u"exelsayfano2.kvz"_s},
                                           {u"cafis3"_s, u"exelsayfano3.kvz"_s},
                                           {u"carifisduzey"_s, u"carifisexelsayfano.kvz"_s}};
        for (auto it = files.cbegin(); it != files.cend(); ++it) {
            SlipDesk d(slipForm(it.key()));
            const bool duzey = it.key() == u"carifisduzey";
            d.s.load();
            QCOMPARE(d.s.sayfaAdi.text(), duzey ? u"Sheet1"_s : u"Sayfa1"_s);
            QVERIFY(d.s.sayfaKaydedilir.isChecked()); // there is no file
            d.s.sayfaAdi.setText(u"Ocak, Şubat"_s);
            d.s.sayfaadikaydet();
            QCOMPARE(d.bytes(it.value()), toCodePage(u"Ocak, Şubat\r\n"));
            QCOMPARE(d.s.sayfaKaydedilir.isChecked(), duzey);
            d.s.load();
            QCOMPARE(d.s.sayfaAdi.text(), u"Ocak"_s); // a comma ends the value
            QCOMPARE(d.s.sayfaKaydedilir.isChecked(), duzey);
            d.s.sayfaAdi.setText(u"Mart"_s);
            QVERIFY(d.s.sayfaKaydedilir.isChecked());
            QVERIFY(QFile::remove(d.t.path(it.value())));
            QVERIFY(QDir().mkdir(d.t.path(it.value()))); // a folder can't be written as a file
            d.s.sayfaadikaydet();
            QVERIFY(d.s.sayfaKaydedilir.isChecked() && d.s.bilgi.text().contains(it.value()));
        }
    }

    // One of them was saved by LibreOffice.
    void theSamplesFitTheirScreens()
    {
        const auto read = [](const SlipForm &form, int file, const QString &name) {
            SlipDesk d(form);
            d.t.fill({u"insert into per values (Null,'PER01','00100101')"_s});
            d.s.load();
            d.s.dosyaac(form.files[file], QStringLiteral(TEST_DATA "/../../samples/") + name);
            const int last = d.s.l1.rows() - 1;
            return d.s.bilgi.text() + QString::number(last + 1) + u' ' + d.s.l1.cell(last, 3) +
                   u' ' + d.s.l1.cell(last, 4) + u' ' + d.s.l1.cell(0, form.hasBankList() ? 7 : 8) +
                   u'/' + textOf(d.s.l2).section(u'\n', -1);
        };
        QCOMPARE(
            read(cafis(), 0, u"tahsilatlar.xlsx"_s),
            u"16 GÜLER ŞARKÜTERİ 45,10 100.01.001/3|10.3.2021|1.236.529,00|BT000003|100.01.003"_s);
        QCOMPARE(read(cafis2(), 0, u"15032021-00100101.xls"_s),
                 u"8 GÜLER ŞARKÜTERİ 45,10 PER01/1|15/03/2021|1.249.401,00|BT000001|PER01"_s);
        QCOMPARE(read(cafis3(), 0, u"POSANALIZ-20210315.xlsx"_s),
                 u"12 IŞIK BÜFE 347,50 POS01/2|15/03/2021|1.361,60|BT000002|POS02"_s);
        QCOMPARE(read(carifisduzey(), 0, u"duzey-nakit.xlsx"_s),
                 u"5 ŞİRİN'İN YERİ 1.234,5000 PER01/"_s);
        QCOMPARE(read(carifisduzey(), 1, u"duzey-kredikarti.xlsx"_s),
                 u"5 ŞİRİN'İN YERİ 1.234,5000 PER01/"_s);
    }
};

QTEST_GUILESS_MAIN(TestSlips)
#include "tst_slips.moc"
