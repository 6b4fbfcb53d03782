#include "base/codepage.h"
#include "check/decimal.h"
#include "check/documentreader.h"
#include "check/leftdocuments.h"
#include "check/readback.h"
#include "check/writtendocuments.h"
#include "support/fakes.h"
#include "support/places.h"
#include "support/table.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

using namespace kervan;

namespace {

QString shown(std::optional<Decimal> amount)
{
    return amount ? amount->text() : u"yok"_s;
}

// A record in one line: "8 F1 05.03.2024 C1 - 120.01 P30 | 3 satır | 5,00 | 6,18"; "-" is a field
// that the record has not, "" one that is empty.
QString told(const DocumentRecord &record)
{
    using Field = DocumentRecord::Field;
    QStringList fields;
    for (const Field field : {Field::Kind, Field::Number, Field::Date, Field::Customer,
                              Field::Title, Field::Account, Field::Plan}) {
        const QString text = fromCodePage(record[field]);
        fields << (!record.has(field) ? u"-"_s : text.isEmpty() ? u"\"\""_s : text);
    }
    return u"%1 | %2 satır | %3 | %4"_s.arg(fields.join(u' '))
        .arg(record.lines)
        .arg(shown(record.net), shown(record.sum));
}

struct Read
{
    QStringList records;
    QStringList problems; // "line: what | value"
    DocumentReading reading;

    explicit Read(const QByteArray &bytes)
        : reading(readDocumentBytes(bytes, [this](const DocumentRecord &r) { records << told(r); }))
    {
        for (const DocumentProblem &each : std::as_const(reading.problems))
            problems << u"%1: %2 | %3"_s.arg(each.line).arg(each.what, each.value);
    }
};

QByteArray data(const QString &name)
{
    return readBytes(testData(name));
}

// An invoice as small as one can be told by.
QByteArray invoice(const QByteArray &number, const QByteArray &customer, const QByteArray &price)
{
    return "  <INVOICE DBOP=\"INS\" >\r\n    <TYPE>8</TYPE>\r\n    <NUMBER>" + number +
           "</NUMBER>\r\n    <DATE>05.03.2024</DATE>\r\n    <ARP_CODE>" + customer +
           "</ARP_CODE>\r\n    <TRANSACTIONS>\r\n      <TRANSACTION>\r\n"
           "        <TYPE>0</TYPE>\r\n        <QUANTITY>2</QUANTITY>\r\n        <PRICE>" +
           price +
           "</PRICE>\r\n        <VAT_RATE>18</VAT_RATE>\r\n"
           "        <ADD_TAX_RATE>0.18</ADD_TAX_RATE>\r\n"
           "        <ADD_TAX_VAT_MATRAH>10</ADD_TAX_VAT_MATRAH>\r\n"
           "      </TRANSACTION>\r\n    </TRANSACTIONS>\r\n  </INVOICE>\r\n";
}

QByteArray invoices(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"ISO-8859-9\"?>\r\n<SALES_INVOICES>\r\n" + body +
           "</SALES_INVOICES>\r\n";
}

QByteArray cashSlip(const QByteArray &number, const QByteArray &customer, const QByteArray &amount)
{
    return "\r\n  <SD_TRANSACTION DBOP=\"INS\" >\r\n    <DATE>05.03.2024</DATE>\r\n    <NUMBER>" +
           number + "</NUMBER>\r\n    <AMOUNT>" + amount +
           "</AMOUNT>\r\n    <ATTACHMENT_ARP>\r\n      <TRANSACTION>\r\n        <ARP_CODE>" +
           customer +
           "</ARP_CODE>\r\n      </TRANSACTION>\r\n    </ATTACHMENT_ARP>\r\n"
           "  </SD_TRANSACTION>";
}

QByteArray cashSlips(const QByteArray &body)
{
    return "<?xml version=\"1.0\"?>\r\n<SD_TRANSACTIONS>\r\n" + body + "\r\n</SD_TRANSACTIONS>";
}

// A list of rows "number;date;customer;amount".
void fill(Grid &grid, const QStringList &rows)
{
    for (const QString &row : rows) {
        const QStringList cells = row.split(u';');
        const int at = grid.addRow(cells[0]);
        for (int column = 1; column < cells.size(); ++column)
            grid.setCell(at, column, cells[column]);
    }
}

QString kinds(const WrittenDocuments &written)
{
    QString text;
    for (const WrittenMark &mark : written.marks())
        text += u"-=~s"[mark.kind];
    return text;
}

} // namespace

class TestDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void amountsAreReadAsTheyAreSpelled();
    void sumsRoundNothing();
    void eachFamilyIsReadIntoItsRecords_data();
    void eachFamilyIsReadIntoItsRecords();
    void whatAnXmlReaderRefusesIsReadAndNamed();
    void otherLayoutsAreReadAlike();
    void brokenFilesAreTold_data();
    void brokenFilesAreTold();
    void linesThatLackTheirCodesAreCounted();
    void invoicesAreFoundByTheirNumbers();
    void slipsAreFoundByWhatTheyHold();
    void whatIsBrokenIsSkippedAndNamed();
    void onlyWhatAKilledProgramLeftIsSwept();
    void aCounterBehindADocumentIsTold();
    void aDocumentIsComparedWithTheRowsThatWentIntoIt();
};

void TestDocuments::amountsAreReadAsTheyAreSpelled()
{
    QCOMPARE(shown(Decimal::ofCell(u"1.234,5600")), u"1.234,56"_s);
    QCOMPARE(shown(Decimal::ofCell(u" -,50 ")), u"-0,50"_s);
    QCOMPARE(shown(Decimal::ofCell(u"12.50")), u"1.250,00"_s); // a point groups, as number() has it
    QCOMPARE(shown(Decimal::ofCell(u"0,000012345678901234")), u"0,000012345678901234"_s);
    QCOMPARE(shown(Decimal::ofCell(u"0009999999999999,9")), u"9.999.999.999.999,90"_s);
    for (const char16_t *const none : {u"", u" ", u",", u"-", u"1,2,3", u"12a", u"1-", u",5.0",
                                       u"10000000000000", u"0,0000000000000000001"})
        QCOMPARE(shown(Decimal::ofCell(QStringView(none))), u"yok"_s);

    QCOMPARE(shown(Decimal::ofDocument("1234.5600")), u"1.234,56"_s);
    QCOMPARE(shown(Decimal::ofDocument(".50")), u"0,50"_s);
    QCOMPARE(shown(Decimal::ofDocument("1,5")), u"yok"_s);
    QCOMPARE(shown(Decimal::ofDocument("1.234.5")), u"yok"_s);
}

void TestDocuments::sumsRoundNothing()
{
    Decimal sum;
    for (int i = 0; i < 100'000; ++i)
        sum += *Decimal::ofCell(u"0,1");
    QCOMPARE(sum.text(), u"10.000,00"_s);
    QVERIFY(sum == *Decimal::ofDocument("10000"));
    QVERIFY(sum > *Decimal::ofCell(u"9999,9999999999999999"));
    QVERIFY(*Decimal::ofCell(u"-5") < Decimal());
    QCOMPARE((sum - *Decimal::ofCell(u"10000,000000000000000001")).text(),
             u"-0,000000000000000001"_s);
    QCOMPARE((-sum).text(0), u"-10.000"_s);
    QCOMPARE(Decimal().text(), u"0,00"_s);
}

void TestDocuments::eachFamilyIsReadIntoItsRecords_data()
{
    // Sums of invoices: price by quantity, 1.18 of it, and 0.18 of the margin.
    addTable(uR"(case ; file ; record
sap      ; fatura/duz-satis/expected.xml ; 8 F0001 05.03.2024 C100 - 120.01 P30 | 3 satır | 74,54906845 | 90,595000771
duzey    ; fatduz/satis-10/expected.xml  ; 8 F-1 06.03.2024 C1 - 120.01 30 GÜN | 2 satır | 136,000125 | 159,480135
purchase ; fatduz/alis-20/expected.xml   ; 1 F-5 29.02.2024 C5 - 120.01 PEŞİN | 3 satır | 3,00 | 3,60
collected; fatura/duz-satis/expected-kasa.xml ; 11 KN000042 05.03.2024 C100 Deniz Market K100 - | 0 satır | yok | 79,795
note     ; slips/metin/chameleonButton3.xml   ; 2 00000007 01.01.2024 1200003    1200003     Kodlu Cari - 30.06.2024 | 0 satır | yok | 500,00
750,25   ; slips/metin/chameleonButton6.xml   ; 1 00000008 02.01.2024 çek tutar  çek tutar   Kodlu Cari - 31.07.2024 | 0 satır | yok | yok
cash     ; slips/cafis2/buton2.xml            ; 11 KN000001 15.03.2021 120.1 BİRİNCİ Kodlu Cari TUTARCI - | 0 satır | yok | 0,50
bank     ; slips/cafis2/lvButtons_H2.xml      ; 1 BT000001 15.03.2021 TUTARCI TUTARCI Kodlu Personel İşlem Yapmıştır 102 - | 0 satır | yok | 1.235,00
card     ; slips/duzey-kart/lvButtons_H2.xml  ; 70 KK000100 05.03.2021 120.01 POS & Taksit 108.01 - | 0 satır | yok | 1.234.567,80
account  ; cards/cari-ekle/expected.xml ; 3 12345678 - - ABCDEFGHIJKLMNOPQRSTUVWXYZabcçdefgğhıijklmnoöprsşt - - | 0 satır | yok | yok
item     ; cards/stok-tam/expected.xml  ; 1 KOD123456 - - ABCDEFGHIJKLMNOPQRSTUVWXYZÇĞİÖŞÜçğıöşü12 - SET 01 | 0 satır | yok | yok
mey      ; st/expected.xml              ; 1 KOD 05 - - Ürün & Şişe 153 05 | 0 satır | yok | yok
count    ; sayim/expected.xml           ; 50 SYM000007 07.03.2024 - - - - | 3 satır | yok | yok)"_s);
}

void TestDocuments::eachFamilyIsReadIntoItsRecords()
{
    const QByteArray bytes = data(fetch("file"));
    const Read read(bytes);
    QVERIFY(read.reading.isFine());
    QCOMPARE(read.records.value(0), fetch("record"));
    // As many as there are ends of one.
    const QByteArray name = read.reading.root.startsWith("CQPN")     ? "CHQPN_ROLL"
                            : read.reading.root == "MATERIAL_SLIPS"  ? "SLIP"
                            : read.reading.root.endsWith("INVOICES") ? "INVOICE"
                                                                     : read.reading.root.chopped(1);
    QCOMPARE(read.reading.records, bytes.count("</" + name + ">"));
}

void TestDocuments::whatAnXmlReaderRefusesIsReadAndNamed()
{
    const auto titled = [](const QByteArray &title) {
        return "<AR_APS>\r\n  <AR_AP DBOP=\"INS\" >\r\n    <CODE>C1</CODE>\r\n    <TITLE>" + title +
               "</TITLE>\r\n  </AR_AP>\r\n</AR_APS>\r\n";
    };
    const auto title = [](const Read &read) {
        return read.records.value(0).section(u" | "_s, 0, 0).section(u' ', 4).chopped(4);
    };
    QCOMPARE(title(Read(titled("A & B"))), u"A & B"_s);
    QCOMPARE(Read(titled("A & B")).problems,
             QStringList(u"4: TITLE değerinde \"&\" var | A & B"_s));
    QCOMPARE(title(Read(titled("a<B>c</D>"))), u"a<B>c</D>"_s);
    QCOMPARE(Read(titled("a<B>c</D>")).problems,
             QStringList(u"4: TITLE değerinde \"<\" var | a<B>c</D>"_s));
    QCOMPARE(Read(titled("\x01x")).problems.size(), 1);
    // As XML asks, so it is no problem, and the text is the cell's.
    QCOMPARE(title(Read(titled("A &amp; &lt;b&gt; &#304;&#x131;"))), u"A & <b> İı"_s);
    QVERIFY(Read(titled("A &amp; &lt;b&gt; &#304;&#x131;")).problems.isEmpty());
    // On several lines.
    QCOMPARE(title(Read(titled("one\r\n  \r\ntwo & three"))), u"one\n  \ntwo & three"_s);
    QCOMPARE(Read(titled("one\r\ntwo & three")).problems.size(), 1);
}

void TestDocuments::otherLayoutsAreReadAlike()
{
    const QByteArray bytes = data(u"fatura/cok-fatura/expected.xml"_s);
    const QStringList records = Read(bytes).records;
    QCOMPARE(records.size(), 4);
    QByteArray unix = bytes;
    QCOMPARE(Read(unix.replace("\r\n", "\n")).records, records);
    QByteArray inOneLine;
    for (const QByteArray &line : bytes.split('\n'))
        inOneLine += line.trimmed();
    QCOMPARE(Read(inOneLine).records, records);
    QByteArray commented = bytes;
    commented.replace("<NUMBER>", "<!-- no --><NUMBER>").replace("<NOTES1></NOTES1>", "<NOTES1/>");
    QCOMPARE(Read(commented).records, records);
    QVERIFY(Read(commented).problems.isEmpty());

    // However the pieces of a file fall.
    TestProgram t;
    QByteArray large;
    for (int i = 0; i < 4000; ++i)
        large += invoice("F" + QByteArray::number(i), "C1", "1");
    writeBytes(t.path(u"b.xml"_s), invoices(large));
    QStringList numbers;
    const auto read = readDocument(t.path(u"b.xml"_s), [&](const DocumentRecord &record) {
        numbers << fromCodePage(record[DocumentRecord::Number]);
    });
    QVERIFY(read.isFine());
    QCOMPARE(read.bytes, invoices(large).size());
    QCOMPARE(numbers.size(), 4000);
    QCOMPARE(numbers.last(), u"F3999"_s);
    QCOMPARE(read.problemCount, 0);
}

void TestDocuments::brokenFilesAreTold_data()
{
    addTable(uR"(case ; document ; told
empty    ;  ; Dosya boş.
text     ; Ali ; Bir Xml belgesi değil.
foreign  ; <HTML>\n</HTML> ; <HTML> ile başlıyor, bu programın belgelerinden değil.
cut      ; <ITEMS>\n<ITEM DBOP="INS" >\n<CODE>C1</CODE>\n<NAME>Al ; 4: Dosya yarım kalmış: </NAME> yok | Al
no root  ; <ITEMS>\n<ITEM>\n<CODE>C1</CODE>\n</ITEM> ; 4: Dosya yarım kalmış: </ITEMS> yok |
crossed  ; <ITEMS>\n<ITEM>\n<UNITS>\n</ITEM>\n</ITEMS> ; 4: <UNITS> kapanmadan </ITEM> geldi |
unopened ; <ITEMS>\n<ITEM>\n</UNITS>\n</ITEM>\n</ITEMS> ; 3: </UNITS> etiketinin açılışı yok | </UNITS>
behind   ; <ITEMS>\n</ITEMS>\n<ITEMS> ; 3: Kök etiket kapandıktan sonra yine etiket var | ITEMS)"_s);
}

void TestDocuments::brokenFilesAreTold()
{
    QVERIFY(!Read({}).reading.isFine());
    const Read read(toCodePage(fetch("document")));
    const QString &fault = read.reading.fault;
    const QString told = fault.isEmpty() ? read.problems.value(0).trimmed() : fault;
    QCOMPARE(told, fetch("told"));
    QVERIFY(read.problems.size() <= 1);
}

void TestDocuments::linesThatLackTheirCodesAreCounted()
{
    QByteArray bytes = data(u"fatura/duz-satis/expected.xml"_s);
    bytes.replace("<UNIT_CODE>PK<", "<UNIT_CODE><");
    int lacking = -1;
    readDocumentBytes(bytes, [&](const DocumentRecord &record) { lacking = record.linesLacking; });
    QCOMPARE(lacking, 2); // two of three are packs
}

void TestDocuments::invoicesAreFoundByTheirNumbers()
{
    TestProgram t;
    QDir().mkpath(t.path(u"a"_s));
    // 2 * 100 * 1.18 + 10 * 0.18 = 237,80
    writeBytes(t.path(u"a/b.xml"_s),
               invoices(invoice("F1", "C1", "100") + invoice("F2", "C1", "100") +
                        invoice("F3", "C1", "100") + invoice("F4", "C1", "x")));
    WrittenDocuments written;
    Grid list{QList<GridColumn>(4)};
    fill(list, {u"F1;5.03.2024;C1;237,8000"_s, u"F2;05.03.2024;C1;237,9000"_s,
                u"F3;05.03.2024;C2;237,8000"_s, u"F4;05.03.2024;C1;5,00"_s,
                u"F5;05.03.2024;C1;237,8000"_s, u";05.03.2024;C1;237,8000"_s});
    ListedRows rows{.grid = &list,
                    .family = DocumentFamily::Invoices,
                    .kind = invoiceKind(u"10 (Satış)"),
                    .number = 0,
                    .date = 1,
                    .customer = 2,
                    .amount = 3};
    written.setRows(rows);
    QCOMPARE(kinds(written), u"------"_s);
    QSignalSpy changed(&written, &WrittenDocuments::changed);
    written.setFolders({t.path(u"a"_s), QString(), t.path(u"gone"_s)});
    QTRY_VERIFY(!written.isReading());
    QCOMPARE(kinds(written), u"=~~=--"_s);
    QCOMPARE(changed.size(), 2);
    QVERIFY(written.marks()[1].sentence.startsWith(
        u"Bu klasörde aynı numara yazılmış, tutar farklı: belgede 237,80, listede 237,90"_s));
    QVERIFY(written.marks()[0].sentence.contains(u"b.xml"_s));
    // Of another kind there is none.
    rows.kind = invoiceKind(u"30 (Satış İade)");
    written.setRows(rows);
    QCOMPARE(written.markedCount(), 0);
    // A document written since counts; one that is gone doesn't.
    rows.kind = u"8"_s;
    written.setRows(rows);
    writeBytes(t.path(u"a/c.XML"_s), invoices(invoice("F5", "C1", "100")));
    QVERIFY(QFile::remove(t.path(u"a/b.xml"_s)));
    written.refresh();
    QTRY_VERIFY(!written.isReading());
    QCOMPARE(kinds(written), u"----=-"_s);
    // What is read when the folder changes is dropped.
    written.refresh();
    written.setFolders({});
    QTRY_VERIFY(!written.isReading());
    QCOMPARE(written.markedCount(), 0);
}

void TestDocuments::slipsAreFoundByWhatTheyHold()
{
    TestProgram t;
    QDir().mkpath(t.path(u"a"_s));
    writeBytes(t.path(u"a/b.xml"_s),
               cashSlips(cashSlip("KN000007", "C1", "1234.50") +
                         cashSlip("KN000008", "C1", "1234.5") + cashSlip("KN000009", "C2", "")));
    WrittenDocuments written;
    Grid list{QList<GridColumn>(4)};
    fill(list, {u"KN000107;5.3.2024;C1;1.234,50"_s, u"KN000108;05.03.2024 00:00:00;C1;1.234,50"_s,
                u"KN000109;05.03.2024;C1;1.234,50"_s, u"KN000007;05.03.2024;C1;1.234,51"_s,
                u"KN000009;05.03.2024;C2;"_s});
    written.setRows({.grid = &list,
                     .family = DocumentFamily::CashSlips,
                     .by = ListedRows::ByContent,
                     .number = 0,
                     .date = 1,
                     .customer = 2,
                     .amount = 3});
    written.setFolders({t.path(u"a"_s)});
    QTRY_VERIFY(!written.isReading());
    QCOMPARE(kinds(written), u"ss---"_s); // two are written, so a third alike is not
    QCOMPARE(written.numbered(DocumentFamily::CashSlips, {}, u"KN000009"_s).kind,
             WrittenMark::Same);
    QCOMPARE(written.numbered(DocumentFamily::Counts, {}, u"KN000009"_s).kind, WrittenMark::None);
}

void TestDocuments::whatIsBrokenIsSkippedAndNamed()
{
    TestProgram t;
    QDir().mkpath(t.path(u"a"_s));
    const QByteArray whole = invoices(invoice("F1", "C1", "100"));
    writeBytes(t.path(u"a/yarim.xml"_s), whole.chopped(40));
    writeBytes(t.path(u"a/baska.xml"_s), "<html></html>");
    writeBytes(t.path(u"a/not.txt"_s), whole);
    WrittenDocuments written;
    Grid list{QList<GridColumn>(1)};
    fill(list, {u"F1"_s});
    written.setRows(
        {.grid = &list, .family = DocumentFamily::Invoices, .kind = u"8"_s, .number = 0});
    written.setFolders({t.path(u"a"_s)});
    QTRY_VERIFY(!written.isReading());
    QCOMPARE(kinds(written), u"-"_s);
    QCOMPARE(written.skipped().size(), 1);
    QVERIFY(written.skipped()[0].endsWith(u"yarim.xml atlandı: Belge yarım kalmış."_s));
}

void TestDocuments::onlyWhatAKilledProgramLeftIsSwept()
{
    const QTemporaryDir folder;
    const QByteArray line = "<?xml version=\"1.0\" encoding=\"ISO-8859-9\"?>\r\n";
    const QByteArray whole =
        line + "<SALES_INVOICES>\r\n  <INVOICE>\r\n</INVOICE>\r\n</SALES_INVOICES>\r\n";
    const QByteArray half = whole.chopped(20);
    const QByteArray other = line + "<Invoice xmlns=\"urn:x\">\r\n</Invoice>";
    struct Case
    {
        QString name;
        QByteArray bytes;
        bool stays;
    };
    const QList<Case> cases{{u"b.xml.abcdef"_s, half, false},
                            {u"a.xml.aBCdeF"_s, whole, false},
                            {u"a.xml.bBCdeF"_s, {}, false},
                            {u"a.xml.backup"_s, whole, true},
                            {u"d.xml.BackUp"_s, whole, true},
                            {u"b.xml.backup"_s, {}, true},
                            {u"c.xml.backup"_s, other, true},
                            {u"c.xml.aBCdeF"_s, other, true},
                            {u"c.xml.bBCdeF"_s, other.chopped(5), true},
                            {u"c.xml.cBCdeF"_s, line + "<!-- a --><ITEMS/>", true},
                            {u"c.xml.dBCdeF"_s, "<ITEMS>", true},
                            {u"a.txt.aBCdeF"_s, half, true},
                            {u"a.xml"_s, half, true}};
    const auto isThere = [&](const Case &one) {
        return QFile::exists(folder.filePath(one.name));
    };
    for (const Case &one : cases)
        writeBytes(folder.filePath(one.name), one.bytes);
    sweepDocuments(folder.path()); // somebody may be writing
    QVERIFY(std::ranges::all_of(cases, isThere));
    for (const Case &one : cases) {
        QFile file(folder.filePath(one.name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-601),
                                 QFileDevice::FileModificationTime));
    }
    sweepDocuments(folder.path());
    for (const Case &one : cases)
        QVERIFY2(isThere(one) == one.stays, one.name.toUtf8());
}

void TestDocuments::aCounterBehindADocumentIsTold()
{
    TestProgram t;
    const QString folder = t.path(u"a"_s);
    QDir().mkpath(folder);
    writeBytes(folder + u"/b.xml"_s,
               cashSlips(cashSlip("KN000007", "C1", "1") + cashSlip("KK000900", "C1", "1")));
    WrittenDocuments written;
    written.setFolders({folder});
    QTRY_VERIFY(!written.isReading());
    const QStringList counters{u"kasacariislemno.kvz"_s, u"bankacariislemno.kvz"_s};
    const auto warned = [&](const QByteArray &counter) {
        writeBytes(folder + u"/kasacariislemno.kvz"_s, counter);
        return written.counterWarnings(folder, counters).size();
    };
    QCOMPARE(warned(" 7 \r\n"), 0); // the next is 8
    QCOMPARE(warned(" 6 \r\n"), 1);
    QCOMPARE(warned("\r\n"), 1);
    QVERIFY(written.counterWarnings(folder, counters)[0].contains(u"KN000001"_s));
    QVERIFY(written.counterWarnings(folder, counters)[0].contains(u"KN000007"_s));
    QVERIFY(written.counterWarnings(folder, {}).isEmpty()); // of a screen that counts nothing
}

void TestDocuments::aDocumentIsComparedWithTheRowsThatWentIntoIt()
{
    TestProgram t;
    const QString path = t.path(u"b.xml"_s);
    Grid list{QList<GridColumn>(4), Grid::Tickable};
    fill(list, {u"F1;;;237,8"_s, u"F2;;;1,0"_s, u"F3;;;237,8000"_s});
    list.setTicked(0, true);
    list.setTicked(2, true);
    const WrittenRows rows = writtenRows(list, DocumentFamily::Invoices, true, 0, 3);
    QCOMPARE(rows.numbers, QStringList({u"F1"_s, u"F3"_s}));
    const auto told = [&](const QByteArray &document) {
        writeBytes(path, document);
        const ReadBack read = readBack(path, rows);
        return (read.agrees ? u"+ "_s : u"- "_s) + read.sentence.section(u": "_s, 1);
    };
    const QByteArray one = invoice("F1", "C1", "100");
    const QByteArray third = invoice("F3", "C1", "100");
    QCOMPARE(told(invoices(one + third)), u"+ 2 kayıt, tutar 475,60, listeyle aynı."_s);
    QCOMPARE(told(invoices(one + invoice("F3", "C1", "100.1"))),
             u"- belgedeki tutar 475,836, listedeki 475,60."_s);
    QCOMPARE(told(invoices(one + invoice("F2", "C1", "100"))),
             u"- 2. kayıtta F3 beklenirken F2 var."_s);
    QCOMPARE(told(invoices(one)), u"- belgede 1 kayıt var, listeden 2 kayıt yazılacaktı."_s);
    QCOMPARE(told(invoices(one + invoice("F3", "C1", "x"))),
             u"+ 2 kayıt, listeyle aynı (tutarı okunamayan var)."_s);
    QCOMPARE(told(invoices(one + third).chopped(20)), u"- belge yarım kalmış."_s);
    QCOMPARE(told(cashSlips({})), u"- belge başka türden."_s);
    QVERIFY(QFile::remove(path));
    QVERIFY(!readBack(path, rows).agrees);

    writeBytes(path, invoices(one + third));
    ReadBackBeside beside;
    QSignalSpy done(&beside, &ReadBackBeside::done);
    beside.start(t.path(u"gone.xml"_s), rows);
    beside.start(path, rows); // in the place of the first
    QTRY_COMPARE(done.size(), 1);
    QVERIFY(done[0][0].value<ReadBack>().agrees);
    QVERIFY(!beside.isRunning());
}

QTEST_GUILESS_MAIN(TestDocuments)
#include "tst_documents.moc"
