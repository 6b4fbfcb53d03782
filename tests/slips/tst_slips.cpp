// The documents of the slip transfers, and what is asked in front of them. A case of whole
// documents (documentcase.h) is a folder of tests/data/slips:
//   source.txt      the text export, or a sheet (see bookRows)
//   data.txt        ekran, dosya (name of the source), oku (command that opens it), isaret (rows of
//                   l1 to tick; all without it), side files
//   <command>.xml   what the command of that name writes; *.kvz side files behind it

#include "slips/columns.h"
#include "slips/desk.h"
#include "support/table.h"

#include <QDir>

using namespace kervan;

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

    void aWorkbookTakesItsColumnsBackFromATextExport()
    {
        SlipDesk d(cafis());
        d.readText("20\n");
        QCOMPARE(d.s.l1.columnCount(), 18);
        // Its rows have no date where cash rows have one.
        QCOMPARE(d.save(u"buton2"_s), QByteArray());
        d.readBook(u"a.xlsx"_s, movements());
        QCOMPARE(textOf(d.s.l1), u"1|15.03.202|C1|BİR|10,00|NT000001|KN000001|K1\n"
                                 "2|1.4.2021|C2|İKİ|20,00|NT000002|KN000002|K2\n"
                                 "3|1.5.2021|C3|ÜÇ|30,00|NT000003|KN000003|K1"_s);
        QCOMPARE(textOf(d.s.l2), u"1|15.03.202|40,00|BT000001|K1\n2|1.4.2021|20,00|BT000002|K2"_s);
        // No row of theirs has a class of the text export.
        QCOMPARE(d.saved(u"chameleonButton6"_s),
                 "<?xml version=\"1.0\" encoding=\"ISO-8859-9\"?>\r\n<CQPN_ROLLS>\r\n\r\n"
                 "</CQPN_ROLLS>\r\n");
    }

    void numbersAreGivenAtReadingAndStoredAfterAWrite()
    {
        SlipDesk d(cafis());
        writeBytes(d.t.path(u"kasacariislemno.kvz"_s), "\" 41 \",8\r\n");
        writeBytes(d.t.path(u"bankacariislemno.kvz"_s), "cok\r\n");
        for (int round = 0; round < 2; ++round) {
            d.readBook(u"a.xlsx"_s, movements());
            QCOMPARE(d.s.l1.cell(2, Hareket::KasaIslemNo), u"KN000044"_s);
            QCOMPARE(d.s.l2.cell(1, BankaFisi::FisNo), u"BT000002"_s);
        }
        const QString nowhere = d.t.path(u"yok/a.xml"_s);
        d.s.l1.setTicked(0, true);
        d.t.dialogs.answers = {nowhere};
        d.press(u"buton2"_s);
        QVERIFY(d.s.bilgi.text().contains(QDir::toNativeSeparators(nowhere)));
        QCOMPARE(d.bytes(u"kasacariislemno.kvz"_s), "\" 41 \",8\r\n");
        QByteArray first;
        for (int round = 0; round < 2; ++round) { // the same numbers again
            const QByteArray document = d.saved(u"buton2"_s);
            QCOMPARE(d.s.bilgi.text(), QString());
            QVERIFY(document.contains("<NUMBER>KN000044<"));
            QVERIFY(first.isEmpty() || document == first);
            first = document;
        }
        // The one is printed as numbers are, the other is not.
        QCOMPARE(d.bytes(u"kasacariislemno.kvz"_s), " 44 \r\n");
        QCOMPARE(d.bytes(u"bankacariislemno.kvz"_s), "cok\r\n");
        d.saved(u"lvButtons_H2"_s);
        QCOMPARE(d.bytes(u"bankacariislemno.kvz"_s), "2\r\n");
        d.read(d.t.path(u"a.xlsx"_s));
        QCOMPARE(d.s.l1.cell(0, Hareket::KasaIslemNo), u"KN000045"_s);
        QCOMPARE(d.s.l2.cell(0, BankaFisi::FisNo), u"BT000003"_s);
        QVERIFY(!d.s.l1.ticked(0));
    }

    // A printed number has a blank for its missing sign.
    void aNegativeNumberIsStoredWithItsSign()
    {
        TestProgram t;
        writeBytes(t.path(u"a.kvz"_s), "-5\r\n");
        SlipSequence sequence(t.path(u"a.kvz"_s), SlipSequence::Printed);
        sequence.load();
        QCOMPARE(sequence.next(), -4.0);
        sequence.store();
        QCOMPARE(readBytes(t.path(u"a.kvz"_s)), QByteArray("-4 \r\n"));
    }

    void theBarRunsOverTheRecordsOfASheetAndTheRowsOfADocument()
    {
        SlipDesk d(cafis3());
        QStringList bar;
        QObject::connect(&d.s.ilerleme, &ProgressField::changed, &d.s.ilerleme, [&] {
            if (d.s.ilerleme.isShown())
                bar << u"%1/%2"_s.arg(d.s.ilerleme.value()).arg(d.s.ilerleme.maximum());
        });
        d.readBook(u"POSANALIZ_20210315.xlsx"_s,
                   u"K||C|||||T|TÜR\nK||C|||||1|HHSATIS\nK||C|||||1|HHIADE\n"
                   "K||C|||||2|HHSATIS"_s);
        QCOMPARE(bar, (QStringList{u"0/4"_s, u"1/4"_s, u"1/4"_s, u"2/4"_s}));
        bar.clear();
        d.s.l1.setTicked(1, true);
        d.t.dialogs.answers = {d.t.path(u"a.xml"_s)};
        d.t.boxes.expectDone();
        d.press(u"buton2"_s);
        QCOMPARE(bar, (QStringList{u"0/1"_s, u"1/1"_s})); // ticked rows
        d.readText("40\n20\n");
        bar.clear();
        d.saved(u"chameleonButton3"_s);
        QCOMPARE(bar, (QStringList{u"0/2"_s, u"1/2"_s, u"2/2"_s})); // all rows
    }

    void aDocumentTrimsTheCodesOfItsLists()
    {
        SlipDesk d(cafis());
        d.readBook(u"a.xlsx"_s, movements());
        d.s.l1.setCell(0, Hareket::KasaKodu, u" K 1 "_s);
        d.s.l2.setCell(0, BankaFisi::FisNo, u" B 1 "_s);
        d.s.l2.setCell(0, BankaFisi::OzelKod, u" K 1 "_s);
        QVERIFY(d.saved(u"buton2"_s).contains("<SD_CODE>K 1<"));
        const QByteArray bank = d.saved(u"lvButtons_H2"_s);
        QVERIFY(bank.contains("<NUMBER>B 1<"));
        QVERIFY(bank.contains("<AUXIL_CODE>K 1<"));
    }

    void aRowWithoutADateLeavesNoDocumentAndNoBox()
    {
        SlipDesk d(cafis2());
        d.readBook(u"15132021-1.xls"_s, u"A\nB\nC\nD\nE\nC1||BİR||||||||||||#1"_s); // month 13
        QCOMPARE(d.s.l1.cell(0, Hareket::Tarih), u"15/13/2021"_s);
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
                  u"insert into per values (Null,' KB ','12A')"_s,
                  u"insert into per values (Null,'KC','12A')"_s});
        d.s.load();
        d.readBook(u"15032021-12A-3.xls"_s, u"A\nB\nC\nD\nE\nC1|| BİR||||||||||||#1\n"
                                            "C2||İKİ||||||||||||#2\n  ||ÜÇ||||||||||||#3\nC4"_s);
        QCOMPARE(textOf(d.s.l1), u"1|15/03/2021|C1| BİR|1,00|NT000001|KN000001|KB\n"
                                 "2|15/03/2021|C2|İKİ|2,00|NT000002|KN000002|KB"_s);
        d.t.clock.step = 3600; // each row asks the time anew
        const QByteArray document = d.saved(u"buton2"_s);
        QVERIFY(document.contains("<HOUR>9</HOUR>") && document.contains("<HOUR>10</HOUR>"));
    }

    void theCashDocumentOfTextExportsHasNoTwin()
    {
        SlipDesk d(cafis());
        for (const char *code : {"20", "50"}) { // with a row of its class, and without
            d.readText(code);
            QVERIFY2(d.save(u"chameleonButton1"_s).isEmpty(), code);
            QVERIFY2(!d.s.bilgi.text().isEmpty(), code);
        }
    }

    void aSaveAsksForItsDocument_data()
    {
        addTable(uR"(
case                    ; command          ; title
cash                    ; buton2           ; Kasa Nakit Tahsilat
bank                    ; lvButtons_H2     ; Banka İşlem Fişi
cash without a template ; chameleonButton1 ; Nakit Tahsilat
cards of text exports   ; chameleonButton2 ; Kredi Kartı
notes                   ; chameleonButton3 ; Senet
cheques                 ; chameleonButton6 ; Çek
cash of text exports    ; chameleonButton7 ; Kasa Nakit Tahsilat)"_s);
    }
    void aSaveAsksForItsDocument()
    {
        SlipDesk d(cafis());
        d.s.l1.setTicked(d.s.l1.addRow({}), true);
        d.s.l2.setTicked(d.s.l2.addRow({}), true);
        d.t.dialogs.answers = {std::nullopt};
        d.press(fetch("command"));
        const FileQuestion &asked = d.t.dialogs.asked.last();
        QCOMPARE(asked.title, fetch("title") + u" Xml Dosyası Kaydet"_s);
        QCOMPARE(asked.filter, u"Xml Dosyaları (xml)|*.xml"_s);
        QCOMPARE(asked.start, d.t.path(u"logo xml"_s));
    }

    void aSaveWarnsOfAnEmptyListAndThenOfMissingTicks()
    {
        SlipDesk d(cafis());
        for (const QString &command : {u"buton2"_s, u"chameleonButton3"_s}) {
            d.t.boxes.expectWarning(u"Cari Haraket Listesinde Kayıt Bulunamadı...!"_s);
            d.press(command);
        }
        d.s.l1.setTicked(d.s.l1.addRow({}), true);
        d.t.boxes.expectWarning(u"Banka Fişi Haraket Listesinde Kayıt Bulunamadı...!"_s);
        d.press(u"lvButtons_H2"_s);
        d.s.l2.addRow({}); // with no tick, while the other list has one
        d.t.boxes.expectWarning(u"Listeden Seçim Yapınız..."_s, Icon::None);
        d.press(u"lvButtons_H2"_s);
    }

    void oneFolderSettingIsAskedForAndTheOtherTaken()
    {
        SlipDesk d(cafis());
        d.readBook(u"a.xlsx"_s, movements());
        QCOMPARE(d.t.dialogs.asked.last().title, u"Cari Haraket Dosyası Seçin"_s);
        QCOMPARE(d.t.dialogs.asked.last().filter, u"Exel Dosyaları (xlsx)|*.xlsx;*.xls"_s);
        QCOMPARE(d.t.dialogs.asked.last().start, d.t.path(u"txt"_s));
        d.s.l1.setTicked(1, true);
        d.t.program.folders.xc = u"C"_s;
        d.t.program.folders.xf = u"F"_s;
        d.t.dialogs.answers = {d.t.path(u"A.XML"_s)};
        d.t.boxes.expectDone();
        d.press(u"buton2"_s);
        QCOMPARE(d.t.dialogs.asked.last().start, u"F"_s);
        QCOMPARE(d.bytes(u"A.XML.xml"_s).count("<SD_TRANSACTION "), 1);
        // The numbers of unticked rows are gone too.
        QCOMPARE(d.bytes(u"kasacariislemno.kvz"_s), " 3 \r\n");
    }

    void duzeySavesOnlyTheKindReadLast_data()
    {
        addTable(uR"(
case ; open         ; save         ; otherSave    ; kind        ; otherKind   ; title
cash ; buton1       ; buton2       ; lvButtons_H2 ; Nakit       ; Kredi Kartı ; Kasa Nakit Tahsilat Xml Dosyası Kaydet
card ; lvButtons_H3 ; lvButtons_H2 ; buton2       ; Kredi Kartı ; Nakit       ; Kredi Kartı Tahsilat Xml Dosyası Kaydet)"_s);
    }
    void duzeySavesOnlyTheKindReadLast()
    {
        const QString save = fetch("save");
        SlipDesk d(carifisduzey());
        d.t.boxes.expectWarning(u"Cari Haraket Listesinde Kayıt Bulunamadı...!"_s);
        d.press(save);
        d.s.l1.addRow({});
        d.t.boxes.expectWarning(fetch("kind") + u" Dosyası Okutmanız Gerekiyor..."_s);
        d.press(save); // nothing was read yet
        // A read that fails counts as one, and the kind is asked for before the ticks.
        d.read(d.t.path(u"yok.xls"_s), fetch("open"));
        QCOMPARE(d.t.dialogs.asked.last().title,
                 u"Cari Haraket %1 Dosyası Seçin"_s.arg(fetch("kind")));
        QCOMPARE(d.t.dialogs.asked.last().start, QString());
        QCOMPARE(d.s.baslik.text(), u"DÜZEY CARİ FİŞ AKTARIMLARI  [yok.xls]"_s);
        d.s.l1.addRow({});
        d.t.boxes.expectWarning(fetch("otherKind") + u" Dosyası Okutmanız Gerekiyor..."_s);
        d.press(fetch("otherSave"));
        d.t.boxes.expectWarning(u"Listeden Seçim Yapınız..."_s, Icon::None);
        d.press(save);
        d.s.l1.setTicked(0, true);
        d.t.dialogs.answers = {std::nullopt};
        d.press(save);
        QCOMPARE(d.t.dialogs.asked.last().title, fetch("title"));
    }
};

QTEST_GUILESS_MAIN(TestSlips)
#include "tst_slips.moc"
