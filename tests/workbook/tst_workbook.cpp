#include "support/fakes.h"
#include "support/xlswriter.h"
#include "support/ziparchive.h"
#include "workbook/workbook.h"

using namespace kervan;

namespace {

// Fields between "|", lines as rows; in front of each field the letter of its kind.
QString told(const Sheet &sheet)
{
    QStringList rows;
    for (int row = 0; row < sheet.rows(); ++row) {
        QStringList fields;
        for (int field = 0; field < sheet.columns(); ++field)
            fields << u".TNDB"[int(sheet.kind(row, field))] + sheet.text(row, field);
        rows << fields.join(u'|');
    }
    return rows.join(u'\n');
}

// Every kind of cell, the first of them at C3.
QList<BookRow> everyKind()
{
    const BookCell none;
    return {
        {none, BookCell::emptyUnder(u"0.00"_s)},
        {},
        {none, none, u"Ünvan"_s, u" önde, arkada "_s, u"iki\nsatır"_s, u"_xyz & <b>"_s, u"12,5"_s},
        {none, none, 0.1 + 0.2, 1.5e-7, -1234.5, 1e15, 123456789012345.0, 0},
        {none, none, {42, u"00000"_s}, {-7, u"00000"_s}, {12.5, u"000"_s}, {1234567, u"000"_s}},
        {none,
         none,
         QDate(2021, 3, 15),
         QDateTime(QDate(2021, 3, 15), QTime(13, 45, 30), Qt::UTC),
         {0.5, u"hh:mm"_s},
         {44270, u"#,##0.00\\ \"gün\""_s},
         {44270, u"[Red]0.0"_s},
         {-3, u"dd.mm.yyyy"_s}},
        {},
        {none, none, true, false, BookCell::Formula{u"=1/4"_s, 0.25},
         BookCell::Formula{u"=IF(NOW()>0,\"ab\",0)"_s, u"ab"_s}, BookCell::emptyUnder(u"0.00"_s),
         BookCell::emptyUnder(u"0.00"_s), BookCell::emptyUnder(u"0.00"_s)},
        {},
        {none, none, none, u"son"_s},
        {none, BookCell::emptyUnder(u"0.00"_s)},
    };
}

const QString everyKindTold = u"TÜnvan|T önde, arkada |Tiki\nsatır|T_xyz & <b>|T12,5|.\n"
                              "N0,3|N0,00000015|N-1234,5|N1000000000000000|N123456789012345|N0\n"
                              "N00042|N-00007|N012,5|N1234567|.|.\n"
                              "D15.03.2021|D15.03.2021 13:45:30|D12:00:00|N44270|N44270|N-3\n"
                              ".|.|.|.|.|.\n"
                              "BDoğru|BYanlış|N0,25|Tab|.|.\n"
                              ".|.|.|.|.|.\n"
                              ".|Tson|.|.|.|."_s;

// A package of hand-written parts: rows of the only sheet, and what else is not as usual.
struct Parts
{
    QByteArray rows;
    QByteArray strings = {};
    QByteArray styles = {};
    QByteArray workbookProperties = {};
    QByteArray beforeSheet = {};
};

ZipEntries package(const Parts &parts)
{
    return {{"_rels/.rels",
             "<Relationships><Relationship Id='a' Target='/xl/book.xml' Type="
             "'http://purl.oclc.org/ooxml/officeDocument/relationships/officeDocument'/>"
             "</Relationships>"},
            {"xl/book.xml",
             "<x:workbook xmlns:x='http://purl.oclc.org/ooxml/spreadsheetml/main'>" +
                 parts.workbookProperties +
                 "<x:sheets><x:sheet name='Grafik' r:id='c'/><x:sheet name='SATIŞ LİSTESİ' "
                 "state='hidden' r:id='s'/></x:sheets></x:workbook>"},
            {"xl/_rels/book.xml.rels",
             "<Relationships><Relationship Id='c' Type='x/chartsheet' Target='chart.xml'/>"
             "<Relationship Id='s' Type='x/worksheet' Target='../tables/./t.xml'/>"
             "<Relationship Id='t' Type='x/sharedStrings' Target='/xl/texts.xml'/>"
             "<Relationship Id='y' Type='x/styles' Target='styles.xml'/></Relationships>"},
            {"xl/texts.xml", "<sst>" + parts.strings + "</sst>"},
            {"xl/styles.xml", "<styleSheet>" + parts.styles + "</styleSheet>"},
            {"tables/t.xml", parts.beforeSheet + "<worksheet><sheetData>" + parts.rows +
                                 "</sheetData></worksheet>"}};
}

QByteArray utf16(const QString &text)
{
    return QByteArray("\xFF\xFE", 2) +
           QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

QByteArray head(quint16 version, quint16 kind)
{
    QByteArray bytes = biffRecord(0x809, QByteArray(16, '\0'));
    bytes[4] = char(version & 0xFF);
    bytes[5] = char(version >> 8);
    bytes[6] = char(kind);
    return bytes;
}

} // namespace

class TestWorkbook : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QString write(const QByteArray &bytes)
    {
        writeBytes(path(u"dosya.xls"_s), bytes);
        return path(u"dosya.xls"_s);
    }
    // The only sheet of a package, as told above.
    QString fromParts(const Parts &parts)
    {
        writeZip(path(u"parts.zip"_s), package(parts));
        return told(*readSheet(path(u"parts.zip"_s), u"SATIŞ LİSTESİ"_s));
    }
    QString failureOfParts(const Parts &parts)
    {
        return failureOf([&] { fromParts(parts); });
    }

private Q_SLOTS:
    // kinds-lo.xlsx and kinds-lo.xls were saved by LibreOffice 7.4 from the first of these.
    void everyProgramsWorkbookGivesTheSameGrid()
    {
        const QList<BookSheet> sheets{{u"Sayfa1"_s, everyKind()}};
        writeWorkbook(path(u"kinds.xlsx"_s), sheets);
        writeXls(path(u"kinds.xls"_s), sheets);
        const QString data = QStringLiteral(TEST_DATA "/workbook/");
        for (const QString &book : {path(u"kinds.xlsx"_s), path(u"kinds.xls"_s),
                                    data + u"kinds-lo.xlsx"_s, data + u"kinds-lo.xls"_s})
            QVERIFY2(told(*readSheet(book, u"Sayfa1"_s)) == everyKindTold,
                     qPrintable(book + u'\n' + told(*readSheet(book, u"Sayfa1"_s))));
    }

    void numbersKeepTheirDigitsAndNeverAnExponent()
    {
        QCOMPARE(fromParts({.rows = "<row><c><v>1234567890123456</v></c><c><v>1E+20</v></c>"
                                    "<c><v>1234.5600000000001</v></c><c><v>-0</v></c>"
                                    "<c><v> 7.0 </v></c><c><v>1e400</v></c></row>"}),
                 u"N1234567890123456|N100000000000000000000|N1234,56|N0|N7|T1e400"_s);
    }

    void aFormatWithPartsOfADateMakesDates()
    {
        const std::pair<QString, QString> cases[] = {
            {u"dd/mm/yy"_s, u"15.03.2021"_s}, {u"[$-41F]d mmmm yyyy;@"_s, u"15.03.2021"_s},
            {u"[h]:mm"_s, u"15.03.2021"_s},   {u"\"tarih\" y"_s, u"15.03.2021"_s},
            {u"General"_s, u"44270"_s},       {u"\"gün\" 0"_s, u"44270"_s},
            {u"0\\d"_s, u"44270"_s},          {u"0_s*d"_s, u"44270"_s},
            {u"[Red]#,##0.00"_s, u"44270"_s}, {u"@"_s, u"44270"_s},
            {u"0.00E+00"_s, u"44270"_s},      {u"0000000"_s, u"0044270"_s},
            {u"00000.00"_s, u"44270"_s},
        };
        BookRow row;
        QStringList expected;
        for (const auto &[format, text] : cases) {
            row << BookCell(44270, format);
            expected << text;
        }
        writeXls(path(u"formats.xls"_s), u"A"_s, {row});
        const auto sheet = readSheet(path(u"formats.xls"_s), u"A"_s);
        for (int i = 0; i < expected.size(); ++i)
            QVERIFY2(sheet->text(0, i) == expected[i], qPrintable(cases[i].first));
    }

    // The 1900 system has a 29.02.1900; before its first day there is only a time; what lies
    // outside the calendar stays a number.
    void daysAreCountedInBothSystems()
    {
        const QByteArray styles = "<cellXfs><xf numFmtId='0'/><xf numFmtId='22'/></cellXfs>";
        QByteArray row = "<row>";
        for (const char *serial :
             {"0", "1", "59", "60", "61", "0.25", "44270.9999999", "2958465.5", "2958466", "-1"})
            row += QByteArray("<c s='1'><v>") + serial + "</v></c>";
        row += "</row>";
        QCOMPARE(fromParts({.rows = row, .styles = styles}),
                 u"D00:00:00|D01.01.1900|D28.02.1900|D29.02.1900|D01.03.1900|D06:00:00|D16.03.2021|"
                 "D31.12.9999 12:00:00|N2958466|N-1"_s);
        QCOMPARE(fromParts({.rows = "<row><c s='1'><v>0</v></c><c s='1'><v>42808.5</v></c>"
                                    "<c s='1'><v>-1</v></c><c s='1'><v>2957004</v></c></row>",
                            .styles = styles,
                            .workbookProperties = "<x:workbookPr date1904='1'/>"}),
                 u"D01.01.1904|D15.03.2021 12:00:00|N-1|N2957004"_s);
        writeXls(path(u"1904.xls"_s), {{u"A"_s, {{BookCell(42808, u"dd.mm.yyyy"_s)}}}}, true);
        QCOMPARE(told(*readSheet(path(u"1904.xls"_s), u"A"_s)), u"D15.03.2021"_s);
    }

    void everyWayToWriteATextIsRead()
    {
        const QByteArray strings =
            "<si><t> sade </t></si><si><t xml:space='preserve'> boşluk </t></si>"
            "<si><r><t>zen</t></r><r><rPr/><t xml:space=\"preserve\">gin </t></r><rPh><t>x</t>"
            "</rPh><phoneticPr/></si><si><t>a_x000D__x005F_x0041_ _xD83D__xDE00__x00_</t></si>"
            "<si><t>&lt;&#304;&#x130;&amp;<!-- - -> -->&gt;<![CDATA[&lt;<]]></t></si><si/>";
        QByteArray row = "<row>";
        for (int i = 0; i < 6; ++i)
            row += "<c t='s'><v>" + QByteArray::number(i) + "</v></c>";
        row += "<c t='inlineStr'><is><t>i\r\nç</t></is></c><c t='str'><f>A1</f><v> f_x0041_</v></c>"
               "</row>";
        QCOMPARE(fromParts({.rows = row, .strings = strings}),
                 u"Tsade|T boşluk |Tzengin |Ta\r_x0041_ 😀_x00_|T<İİ&>&lt;<|.|Ti\nç|T fA"_s);
    }

    void resultsDatesAndErrorsAreRead()
    {
        QCOMPARE(fromParts({.rows = "<row><c t='b'><f>x</f><v>1</v></c><c t='e'><v>#N/A</v></c>"
                                    "<c t='d'><v>2021-03-15</v></c><c t='d'><v>2021-03-15T08:00:00Z"
                                    "</v></c><c t='d'><v>08:30:00</v></c><c t='d'><v>dün</v></c>"
                                    "<c><v>x</v></c><c t='str'><v></v></c><c t='n'/>"
                                    "<c t='b'><v>0</v></c></row>"}),
                 u"BDoğru|.|D15.03.2021|D15.03.2021 08:00:00|D08:30:00|Tdün|Tx|.|.|BYanlış"_s);
        // The same in records: number, truth, error, empty text.
        const auto result = [](int column, const QByteArray &value) {
            return biffRecord(0x06,
                              QByteArray(2, '\0') + char(column) + QByteArray(3, '\0') + value);
        };
        QByteArray globals = head(0x600, 5);
        const QByteArray entry("\0\0\0\0\0\0\1\0A", 9);
        const auto place = globals.size() + entry.size() + 8;
        globals += biffRecord(0x85, char(place) + entry.sliced(1)) + biffRecord(0x0A, {});
        write(globals + head(0x600, 16) + result(1, "\1\0\1\0\0\0\xFF\xFF"_ba) +
              result(2, "\2\0\x2A\0\0\0\xFF\xFF"_ba) + result(3, "\3\0\0\0\0\0\xFF\xFF"_ba) +
              result(4, "\0\0\0\0\0\0\xF8\x3F"_ba) + biffRecord(0x205, "\0\0\5\0\0\0\7\1"_ba) +
              biffRecord(0x205, "\0\0\6\0\0\0\0\0"_ba) +
              biffRecord(0xBD, "\0\0\7\0\0\0\x67\0\0\0\0\0\x2A\0\0\0\x8\0"_ba) +
              biffRecord(0x0A, {}));
        QCOMPARE(told(*readSheet(path(u"dosya.xls"_s), u"A"_s)),
                 u"BDoğru|.|.|N1,5|.|BYanlış|N0,25|N10"_s);
    }

    void cellsAndRowsFindTheirPlaces()
    {
        QCOMPARE(
            fromParts({.rows = "<row/><row><c/><c><v>1</v></c><c r='E2'><v>2</v></c>"
                               "<c><v>3</v></c></row><row r='4'><c r='B4'><v>4</v></c></row>"}),
            u"N1|.|.|N2|N3\n.|.|.|.|.\nN4|.|.|.|."_s);
        QCOMPARE(fromParts({.rows = "<row r='3'><c r='B3'><v>3</v></c></row><row r='2'>"
                                    "<c r='C2'><v>1</v></c><c r='A2'><v>0</v></c>"
                                    "<c r='C2'><v>2</v></c></row>"}),
                 u"N0|.|N2\n.|N3|."_s);
        QCOMPARE(fromParts({.rows = "<row><c><v></v></c></row>"}), QString());
        writeZip(path(u"far.zip"_s),
                 package({.rows = "<row r='1'><c r='A1'><v>1</v></c></row><row r='1048576'>"
                                  "<c r='XFD1048576'><v>2</v></c></row>"}));
        const auto sheet = readSheet(path(u"far.zip"_s), u"satış listesi"_s);
        QCOMPARE(sheet->rows(), 1048576);
        QCOMPARE(sheet->columns(), 16384);
        QCOMPARE(sheet->text(1048575, 16383) + sheet->text(500000, 1), u"2"_s);
        QCOMPARE(failureOf([&] { sheet->text(1048576, 0); }), u"Sayfada 1048577. kayıt yok."_s);
        QCOMPARE(failureOf([&] { sheet->kind(0, 16384); }), u"Sayfada 16385. alan yok."_s);
    }

    void aPartMayBeUtf16()
    {
        ZipEntries entries = package({.rows = {}});
        entries.last().second = utf16(u"<?xml version='1.0'?><worksheet><sheetData><row>"
                                      "<c t='inlineStr'><is><t>Şişli</t></is></c></row></sheetData>"
                                      "</worksheet>"_s);
        writeZip(path(u"parts.zip"_s), entries);
        QCOMPARE(told(*readSheet(path(u"parts.zip"_s), u"SATIŞ LİSTESİ"_s)), u"TŞişli"_s);
    }

    void sheetsAreFoundByTheirNames()
    {
        const QList<BookSheet> sheets{
            {u"veri"_s, {{1}}}, {u"VERİ2"_s, {{2}}}, {u"Gizli"_s, {{3}}, true}};
        writeWorkbook(path(u"names.xlsx"_s), sheets);
        writeXls(path(u"names.xls"_s), sheets);
        for (const QString &book : {path(u"names.xlsx"_s), path(u"names.xls"_s)}) {
            QCOMPARE(readSheet(book, u"VERI"_s)->text(0, 0), u"1"_s);
            QCOMPARE(readSheet(book, u"veri2"_s)->text(0, 0), u"2"_s);
            QCOMPARE(readSheet(book, u"gizli"_s)->text(0, 0), u"3"_s);
            QCOMPARE(failureOf([&] { readSheet(book, u"Sayfa1"_s); }),
                     book + u" okunamadı: \"Sayfa1\" adlı sayfa yok; sayfaları: \"veri\", "
                            "\"VERİ2\", \"Gizli\""_s);
        }
        writeZip(path(u"parts.zip"_s), package({.rows = {}}));
        QVERIFY(failureOf([&] {
                    readSheet(path(u"parts.zip"_s), u"Grafik"_s);
                }).endsWith(u"sayfaları: \"SATIŞ LİSTESİ\""_s));
    }

    void longTextsAndManyEmptyRowsAreRead()
    {
        // The longest text that a cell takes; wide and narrow ones cross the records of an .xls.
        const QString text = u"Şğ"_s.repeated(16383) + u'n';
        const QList<BookRow> rows{{text, u"kısa"_s, text.toLower(), u"son"_s}};
        writeWorkbook(path(u"long.xlsx"_s), u"A"_s, rows);
        writeXls(path(u"long.xls"_s), u"A"_s, rows);
        for (const QString &book : {path(u"long.xlsx"_s), path(u"long.xls"_s)})
            QCOMPARE(told(*readSheet(book, u"A"_s)),
                     u"T%1|Tkısa|T%2|Tson"_s.arg(text, text.toLower()));
        QByteArray empty;
        for (int row = 1; row <= 1000000; ++row)
            empty += "<row r='" + QByteArray::number(row) + "' s='1'><c s='1'/></row>";
        QCOMPARE(fromParts({.rows = empty + "<row><c><v>1</v></c></row>"}), u"N1"_s);
    }

    void aFileThatIsNoWorkbookSaysWhatItIs()
    {
        writeWorkbook(path(u"a.xlsx"_s), u"A"_s, {{1}});
        writeXls(path(u"a.xls"_s), u"A"_s, 2000, [](int row) { return BookRow{row, u"x"_s}; });
        const QByteArray xlsx = readBytes(path(u"a.xlsx"_s));
        const QByteArray xls = readBytes(path(u"a.xls"_s));
        writeZip(path(u"a.ods"_s), {{"content.xml", "<x/>"}});
        writeZip(path(u"a.docx"_s), {{"word/document.xml", "<x/>"}});
        const auto compound = [](const QString &name, const QByteArray &bytes) {
            return compoundFile({{u"x"_s, "y"}, {name, bytes}});
        };
        const std::pair<QByteArray, QString> cases[] = {
            {"", u"dosya boş"_s},
            {"\xEF\xBB\xBF\r\n <html>", u"HTML ya da XML metni"_s},
            {utf16(u"<table>"_s), u"HTML ya da XML metni"_s},
            {"a;b;c\r\n1;2;3", u"düz metin"_s},
            {QByteArray("\x89PNG\0\0", 6), u"çalışma kitabı değil"_s},
            {readBytes(path(u"a.ods"_s)), u"OpenDocument"_s},
            {readBytes(path(u"a.docx"_s)), u"çalışma kitabı değil"_s},
            {xlsx.first(xlsx.size() / 2), u"yarım kalmış"_s},
            {xls.first(xls.size() / 2), u"yarım kalmış"_s},
            {xls.first(300), u"yarım kalmış"_s},
            {compound(u"EncryptedPackage"_s, "abc"), u"parola ile korunuyor"_s},
            {compound(u"Workbook"_s, head(0x600, 5) + biffRecord(0x2F, "ab")),
             u"parola ile korunuyor"_s},
            {compound(u"Book"_s, head(0x500, 5)), u"Excel 95"_s},
            {QByteArray("\x09\0\x04\0\0\0\x10\0", 8), u"Excel 95"_s},
            {compound(u"WordDocument"_s, "abc"), u"çalışma kitabı değil"_s},
            {compound(u"Workbook"_s, head(0x600, 5)), u"yarım kalmış"_s},
        };
        for (const auto &[bytes, expected] : cases) {
            const QString book = write(bytes);
            const QString failure = failureOf([&] { readSheet(book, u"A"_s); });
            QVERIFY2(failure.startsWith(book + u" okunamadı: "_s) && failure.contains(expected),
                     qPrintable(expected + u" / "_s + failure));
        }
        QVERIFY(failsNaming(path(u"yok.xls"_s), [&] { readSheet(path(u"yok.xls"_s), u"A"_s); }));
        QVERIFY(failsNaming(m_folder.path(), [&] { readSheet(m_folder.path(), u"A"_s); }));
    }

    void whatADamagedOrHostileSheetHoldsIsRefused()
    {
        const std::pair<Parts, QString> cases[] = {
            {{.rows = "<row>" + QByteArray(20'000'000, ' ') + "</row>"}, u"sınırı aşıyor"_s},
            {{.rows = "<row><c r='A1048577'><v>1</v></c></row>"}, u"sınırını aşıyor"_s},
            {{.rows = "<row><c r='XFE1'><v>1</v></c></row>"}, u"sınırını aşıyor"_s},
            {{.rows = "<row><c r='1A'><v>1</v></c></row>"}, u"bozuk"_s},
            {{.rows = "<row><c t='s'><v>3</v></c></row>", .strings = "<si/>"}, u"bozuk"_s},
            {{.rows = "<row><c t='str'><v>&x;</v></c></row>"}, u"tanımsız varlık"_s},
            {{.rows = "<row><c t='str'><v>&#x110000;</v></c></row>"}, u"karakter numarası"_s},
            {{.rows = "<row><c><v>1</v>"}, u"yarım kalmış"_s},
            {{.rows = "</sheetData></worksheet></x>"}, u"fazla kapanış"_s},
            {{.rows = {}, .beforeSheet = "<!DOCTYPE w [<!ENTITY x 'x'>]>"}, u"belge türü"_s},
            {{.rows = {}, .beforeSheet = "<?xml version='1.0' encoding='ISO-8859-9'?>"},
             u"UTF-8 değil"_s},
            {{.rows = {}, .beforeSheet = "<chartsheet/>"}, u"çalışma sayfası değil"_s},
        };
        for (const auto &[parts, expected] : cases)
            QVERIFY2(failureOfParts(parts).contains(expected),
                     qPrintable(expected + u" / "_s + failureOfParts(parts)));
    }

    void anUnchangedWorkbookIsParsedOnce()
    {
        const QString book = path(u"kept.xlsx"_s);
        writeWorkbook(book, {{u"A"_s, {{1}}}, {u"B"_s, {{2}}}});
        Workbooks workbooks;
        const auto sheet = workbooks.sheet(book, u"A"_s);
        QCOMPARE(workbooks.sheet(book, u"A"_s), sheet);
        QCOMPARE(workbooks.sheet(book, u"B"_s)->text(0, 0), u"2"_s);
        writeWorkbook(book, u"A"_s, {{u"yeni bir değer"_s}});
        QCOMPARE(workbooks.sheet(book, u"A"_s)->text(0, 0), u"yeni bir değer"_s);
        // The same size at another time is another file; one that is gone fails.
        const auto kept = workbooks.sheet(book, u"A"_s);
        QFile file(book);
        QVERIFY(file.open(QIODevice::ReadWrite) &&
                file.setFileTime(QDateTime(QDate(2020, 1, 1), QTime(0, 0)),
                                 QFile::FileModificationTime));
        QVERIFY(workbooks.sheet(book, u"A"_s) != kept);
        QVERIFY(file.remove());
        QVERIFY(failsNaming(book, [&] { workbooks.sheet(book, u"A"_s); }));
    }
};

QTEST_GUILESS_MAIN(TestWorkbook)
#include "tst_workbook.moc"
