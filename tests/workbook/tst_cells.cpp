#include "parts.h"
#include "support/xlswriter.h"

using namespace kervan;

namespace {

using Kind = Sheet::Kind;

constexpr char dateStyles[] = "<cellXfs><xf numFmtId='0'/><xf numFmtId='22'/></cellXfs>";

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

constexpr QStringView everyKindTold =
    u"TÜnvan|T önde, arkada |Tiki\nsatır|T_xyz & <b>|T12,5|.\n"
    "N0,3|N0,00000015|N-1234,5|N1000000000000000|N123456789012345|N0\n"
    "N00042|N-00007|N012,5|N1234567|.|.\n"
    "D15.03.2021|D15.03.2021 13:45:30|D12:00:00|N44270|N44270|N-3\n"
    ".|.|.|.|.|.\n"
    "BDoğru|BYanlış|N0,25|Tab|.|.\n"
    ".|.|.|.|.|.\n"
    ".|Tson|.|.|.|.";

} // namespace

class TestCells : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QString path(const QString &name) const { return m_folder.filePath(name); }

private Q_SLOTS:
    // kinds-lo.xlsx and kinds-lo.xls were saved by LibreOffice 7.4 from kinds.xlsx.
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

    void aCellHasItsKindAndText_data()
    {
        QTest::addColumn<QByteArray>("cell"); // s='1' is a date with its time
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("text");
        const auto number = [](const char *name, const char *value, const QString &text) {
            QTest::newRow(name) << QByteArray("<c><v>") + value + "</v></c>" << Kind::Number
                                << text;
        };
        number("16 digits", "1234567890123456", u"1234567890123456"_s);
        number("an exponent", "1E+20", u"100000000000000000000"_s);
        number("a digit too many", "1234.5600000000001", u"1234,56"_s);
        number("zero without a sign", "-0", u"0"_s);
        number("blanks around", " 7.0 ", u"7"_s);
        const auto day = [](const char *name, const char *serial, const QString &text,
                            Kind kind = Kind::Date) {
            QTest::newRow(name) << QByteArray("<c s='1'><v>") + serial + "</v></c>" << kind << text;
        };
        day("no day", "0", u"00:00:00"_s);
        day("a time alone", "0.25", u"06:00:00"_s);
        day("the first day", "1", u"01.01.1900"_s);
        day("the last day of the first February", "59", u"28.02.1900"_s);
        day("the leap day that never was", "60", u"29.02.1900"_s);
        day("the day behind it", "61", u"01.03.1900"_s);
        day("nearly a day", "44270.9999999", u"16.03.2021"_s);
        day("the last day", "2958465.5", u"31.12.9999 12:00:00"_s);
        day("beyond the calendar", "2958466", u"2958466"_s, Kind::Number);
        day("before it", "-1", u"-1"_s, Kind::Number);
        const auto typed = [](const char *name, const char *type, const char *value, Kind kind,
                              const QString &text) {
            QTest::newRow(name) << QByteArray("<c t='") + type + "'><v>" + value + "</v></c>"
                                << kind << text;
        };
        typed("a date", "d", "2021-03-15", Kind::Date, u"15.03.2021"_s);
        typed("a moment", "d", "2021-03-15T08:00:00Z", Kind::Date, u"15.03.2021 08:00:00"_s);
        typed("a time of day", "d", "08:30:00", Kind::Date, u"08:30:00"_s);
        typed("the first date", "d", "1900-01-01", Kind::Date, u"01.01.1900"_s);
        typed("before the leap day", "d", "1900-02-28", Kind::Date, u"28.02.1900"_s);
        typed("behind it", "d", "1900-03-01", Kind::Date, u"01.03.1900"_s);
        typed("a date before the calendar", "d", "1899-12-30", Kind::Text, u"1899-12-30"_s);
        typed("no date", "d", "dün", Kind::Text, u"dün"_s);
        typed("true", "b", "1", Kind::Boolean, u"Doğru"_s);
        typed("false", "b", "0", Kind::Boolean, u"Yanlış"_s);
        typed("an error", "e", "#N/A", Kind::Empty, {});
        typed("a number that is none", "n", "x", Kind::Text, u"x"_s);
        typed("a number too large", "n", "1e400", Kind::Text, u"1e400"_s);
        typed("an empty text", "str", "", Kind::Empty, {});
        typed("the text of a formula", "str", " f_x0041_", Kind::Text, u" fA"_s);
        QTest::newRow("no value") << "<c t='n'/>"_ba << Kind::Empty << QString();
        QTest::newRow("a formula")
            << "<c t='b'><f>x</f><v>1</v></c>"_ba << Kind::Boolean << u"Doğru"_s;
        QTest::newRow("a text of its own")
            << "<c t='inlineStr'><is><t>i\r\nç</t></is></c>"_ba << Kind::Text << u"i\nç"_s;
    }
    void aCellHasItsKindAndText()
    {
        QFETCH(QByteArray, cell);
        // The cells beside and below keep an empty one in its place.
        const QByteArray other = "<c t='str'><v>x</v></c>";
        const auto sheet =
            sheetOf({.rows = "<row>" + cell + other + "</row><row>" + other + "</row>",
                     .styles = dateStyles});
        QTEST(sheet->kind(0, 0), "kind");
        QTEST(sheet->text(0, 0), "text");
    }

    void aSharedTextIsReadHoweverItIsWritten_data()
    {
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QString>("text");
        const auto add = [](const char *name, const QByteArray &runs, const QString &text) {
            QTest::newRow(name) << runs << text;
        };
        add("blanks around", "<t> sade </t>", u"sade"_s);
        add("blanks that count", "<t xml:space='preserve'> boşluk </t>", u" boşluk "_s);
        add("blanks between runs",
            "<r><t> Ali </t></r><r><t>Veli</t></r><r><t>\n</t></r><r><t> Ltd \n</t></r>",
            u"Ali Veli\n Ltd"_s);
        add("blanks that count before others that don't",
            "<r><t xml:space='preserve'>a </t></r><r><t> </t></r>", u"a "_s);
        add("runs and reading aids",
            "<r><t>zen</t></r><r><rPr/><t xml:space=\"preserve\">gin </t></r><rPh><t>x</t></rPh>"
            "<phoneticPr/>",
            u"zengin "_s);
        add("escaped characters", "<t>a_x000D__x005F_x0041_ _xD83D__xDE00__x00_</t>",
            u"a\r_x0041_ 😀_x00_"_s);
        add("references, a remark and CDATA",
            "<t>&lt;&#304;&#x130;&amp;<!-- - -> -->&gt;<![CDATA[&lt;<]]></t>", u"<İİ&>&lt;<"_s);
    }
    void aSharedTextIsReadHoweverItIsWritten()
    {
        QFETCH(QByteArray, written);
        const auto sheet = sheetOf({.rows = "<row><c t='s'><v>1</v></c></row>",
                                    .strings = "<si/><si>" + written + "</si>"});
        QTEST(sheet->text(0, 0), "text");
    }

    void aWorkbookMayCountItsDaysFrom1904()
    {
        QCOMPARE(told(*sheetOf({.rows = "<row><c s='1'><v>0</v></c><c s='1'><v>42808.5</v></c>"
                                        "<c s='1'><v>-1</v></c><c s='1'><v>2957004</v></c></row>",
                                .styles = dateStyles,
                                .workbookProperties = "<x:workbookPr date1904='1'/>"})),
                 u"D01.01.1904|D15.03.2021 12:00:00|N-1|N2957004"_s);
        writeXls(path(u"1904.xls"_s), {{u"A"_s, {{BookCell(42808, u"dd.mm.yyyy"_s)}}}}, true);
        QCOMPARE(told(*readSheet(path(u"1904.xls"_s), u"A"_s)), u"D15.03.2021"_s);
    }

    void aFormatWithPartsOfADateMakesADate_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("dd/mm/yy") << u"15.03.2021"_s;
        QTest::newRow("[$-41F]d mmmm yyyy;@") << u"15.03.2021"_s;
        QTest::newRow("[h]:mm") << u"15.03.2021"_s;
        QTest::newRow("\"tarih\" y") << u"15.03.2021"_s;
        for (const char *format : {"General", "\"gün\" 0", "0\\d", "0_s*d", "[Red]#,##0.00", "@",
                                   "0.00E+00", "00000.00"})
            QTest::newRow(format) << u"44270"_s;
        QTest::newRow("0000000") << u"0044270"_s;
    }
    void aFormatWithPartsOfADateMakesADate()
    {
        const QString format = QString::fromUtf8(QTest::currentDataTag());
        writeXls(path(u"format.xls"_s), u"A"_s, {{BookCell(44270, format)}});
        QTEST(readSheet(path(u"format.xls"_s), u"A"_s)->text(0, 0), "text");
    }

    void someFormatsAreDatesByTheirNumber_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<Kind>("kind");
        for (const int format : {14, 22, 27, 36, 45, 47, 50, 58})
            QTest::addRow("%d", format) << format << Kind::Date;
        for (const int format : {0, 13, 23, 26, 37, 44, 48, 49, 59})
            QTest::addRow("%d", format) << format << Kind::Number;
    }
    void someFormatsAreDatesByTheirNumber()
    {
        QFETCH(int, format);
        const auto sheet = sheetOf(
            {.rows = "<row><c s='0'><v>44270</v></c></row>",
             .styles = "<cellXfs><xf numFmtId='" + QByteArray::number(format) + "'/></cellXfs>"});
        QTEST(sheet->kind(0, 0), "kind");
    }

    void cellsAndRowsFindTheirPlaces()
    {
        QCOMPARE(told(*sheetOf(
                     {.rows = "<row/><row><c/><c><v>1</v></c><c r='E2'><v>2</v></c>"
                              "<c><v>3</v></c></row><row r='4'><c r='B4'><v>4</v></c></row>"})),
                 u"N1|.|.|N2|N3\n.|.|.|.|.\nN4|.|.|.|."_s);
        QCOMPARE(told(*sheetOf({.rows = "<row r='3'><c r='B3'><v>3</v></c></row><row r='2'>"
                                        "<c r='C2'><v>1</v></c><c r='A2'><v>0</v></c>"
                                        "<c r='C2'><v>2</v></c></row>"})),
                 u"N0|.|N2\n.|N3|."_s);
        QCOMPARE(
            told(*sheetOf({.rows = "<row><c r='A1'><v>1</v></c><c r='A1'><v>2</v></c></row>"})),
            u"N2"_s);
        QCOMPARE(told(*sheetOf({.rows = "<row><c><v></v></c></row>"})), QString());
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
};

QTEST_GUILESS_MAIN(TestCells)
#include "tst_cells.moc"
