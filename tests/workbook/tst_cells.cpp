#include "parts.h"
#include "support/places.h"
#include "support/table.h"
#include "support/xlswriter.h"

using namespace kervan;

namespace {

constexpr char dateStyles[] = "<cellXfs><xf numFmtId='0'/><xf numFmtId='22'/></cellXfs>";

// The first cell stands at C3.
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
    // kinds.xlsx and kinds.xls were written by the writers of support; kinds-lo.xlsx and
    // kinds-lo.xls were saved from it by LibreOffice 7.4.
    void everyProgramsWorkbookGivesTheSameGrid()
    {
        const QString data = testData(u"workbook/"_s);
        for (const QString &name :
             {u"kinds.xlsx"_s, u"kinds.xls"_s, u"kinds-lo.xlsx"_s, u"kinds-lo.xls"_s})
            QVERIFY2(told(*readSheet(data + name, u"Sayfa1"_s)) == everyKindTold,
                     qPrintable(name + u'\n' + told(*readSheet(data + name, u"Sayfa1"_s))));
    }

    void aCellHasItsKindAndText_data()
    {
        // The kind stands in front of the text; s='1' is a date with its time.
        addTable(uR"(
case                             ; cell                                           ; expected
16 digits                        ; <c><v>1234567890123456</v></c>                 ; N1234567890123456
an exponent                      ; <c><v>1E+20</v></c>                            ; N100000000000000000000
a digit too many                 ; <c><v>1234.5600000000001</v></c>               ; N1234,56
zero without a sign              ; <c><v>-0</v></c>                               ; N0
blanks around                    ; <c><v> 7.0 </v></c>                            ; N7
no day                           ; <c s='1'><v>0</v></c>                          ; D00:00:00
a time alone                     ; <c s='1'><v>0.25</v></c>                       ; D06:00:00
the first day                    ; <c s='1'><v>1</v></c>                          ; D01.01.1900
the end of the first February    ; <c s='1'><v>59</v></c>                         ; D28.02.1900
the leap day that never was      ; <c s='1'><v>60</v></c>                         ; D29.02.1900
the day behind it                ; <c s='1'><v>61</v></c>                         ; D01.03.1900
nearly a day                     ; <c s='1'><v>44270.9999999</v></c>              ; D16.03.2021
the last day                     ; <c s='1'><v>2958465.5</v></c>                  ; D31.12.9999 12:00:00
beyond the calendar              ; <c s='1'><v>2958466</v></c>                    ; N2958466
before the calendar              ; <c s='1'><v>-1</v></c>                         ; N-1
a date                           ; <c t='d'><v>2021-03-15</v></c>                 ; D15.03.2021
a moment                         ; <c t='d'><v>2021-03-15T08:00:00Z</v></c>       ; D15.03.2021 08:00:00
a time of day                    ; <c t='d'><v>08:30:00</v></c>                   ; D08:30:00
the first date                   ; <c t='d'><v>1900-01-01</v></c>                 ; D01.01.1900
a date before the leap day       ; <c t='d'><v>1900-02-28</v></c>                 ; D28.02.1900
a date behind it                 ; <c t='d'><v>1900-03-01</v></c>                 ; D01.03.1900
a date before the calendar       ; <c t='d'><v>1899-12-30</v></c>                 ; T1899-12-30
no date                          ; <c t='d'><v>dün</v></c>                        ; Tdün
true                             ; <c t='b'><v>1</v></c>                          ; BDoğru
false                            ; <c t='b'><v>0</v></c>                          ; BYanlış
an error                         ; <c t='e'><v>#N/A</v></c>                       ; .
a number that is none            ; <c t='n'><v>x</v></c>                          ; Tx
a number too large               ; <c t='n'><v>1e400</v></c>                      ; T1e400
an empty text                    ; <c t='str'><v></v></c>                         ; .
the text of a formula            ; <c t='str'><v> f_x0041_</v></c>                ; T fA
no value                         ; <c t='n'/>                                     ; .
a formula                        ; <c t='b'><f>x</f><v>1</v></c>                  ; BDoğru
a text of its own                ; <c t='inlineStr'><is><t>i\r\nç</t></is></c>    ; Ti\nç)"_s);
    }
    void aCellHasItsKindAndText()
    {
        // The cells beside and below keep an empty one in its place.
        const QByteArray other = "<c t='str'><v>x</v></c>";
        const auto sheet = sheetOf(
            {.rows = "<row>" + fetch("cell").toUtf8() + other + "</row><row>" + other + "</row>",
             .styles = dateStyles});
        QCOMPARE(told(*sheet), fetch("expected") + u"|Tx\nTx|."_s);
    }

    void aSharedTextIsReadHoweverItIsWritten()
    {
        const auto read = [](const QByteArray &written) {
            return sheetOf({.rows = "<row><c t='s'><v>1</v></c></row>",
                            .strings = "<si/><si>" + written + "</si>"})
                ->text(0, 0);
        };
        QCOMPARE(read("<t> sade </t>"), u"sade"_s);
        QCOMPARE(read("<t xml:space='preserve'> boşluk </t>"), u" boşluk "_s);
        // Blanks between runs; those that count before others that don't.
        QCOMPARE(read("<r><t> Ali </t></r><r><t>Veli</t></r><r><t>\n</t></r><r><t> Ltd \n</t></r>"),
                 u"Ali Veli\n Ltd"_s);
        QCOMPARE(read("<r><t xml:space='preserve'>a </t></r><r><t> </t></r>"), u"a "_s);
        // Runs and reading aids, escaped characters, references with a remark and CDATA.
        QCOMPARE(read("<r><t>zen</t></r><r><rPr/><t xml:space=\"preserve\">gin </t></r><rPh><t>x"
                      "</t></rPh><phoneticPr/>"),
                 u"zengin "_s);
        QCOMPARE(read("<t>a_x000D__x005F_x0041_ _xD83D__xDE00__x00_</t>"), u"a\r_x0041_ 😀_x00_"_s);
        QCOMPARE(read("<t>b_x0041</t>"), u"b_x0041"_s);
        QCOMPARE(read("<t>&lt;&#304;&#x130;&amp;<!-- - -> -->&gt;<![CDATA[&lt;<]]></t>"),
                 u"<İİ&>&lt;<"_s);
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

    void aFormatWithPartsOfADateMakesADate()
    {
        const auto shown = [this](const QString &format) {
            writeXls(path(u"format.xls"_s), {{u"A"_s, {{BookCell(44270, format)}}}});
            return readSheet(path(u"format.xls"_s), u"A"_s)->text(0, 0);
        };
        for (const QString &format :
             {u"dd/mm/yy"_s, u"[$-41F]d mmmm yyyy;@"_s, u"[h]:mm"_s, u"\"tarih\" y"_s})
            QVERIFY2(shown(format) == u"15.03.2021", qPrintable(format));
        for (const QString &format : {u"General"_s, u"\"gün\" 0"_s, u"0\\d"_s, u"0_s*d"_s, u"@"_s,
                                      u"[Red]#,##0.00"_s, u"0.00E+00"_s, u"00000.00"_s})
            QVERIFY2(shown(format) == u"44270", qPrintable(format));
        QCOMPARE(shown(u"0000000"_s), u"0044270"_s);
    }

    void someFormatsAreDatesByTheirNumber()
    {
        const auto kindUnder = [](const QByteArray &format) {
            return sheetOf({.rows = "<row><c s='0'><v>44270</v></c></row>",
                            .styles = "<cellXfs><xf numFmtId='" + format + "'/></cellXfs>"})
                ->kind(0, 0);
        };
        for (const char *format : {"14", "22", "27", "36", "45", "47", "50", "58"})
            QVERIFY2(kindUnder(format) == Sheet::Kind::Date, format);
        for (const char *format : {"0", "13", "23", "26", "37", "44", "48", "49", "59"})
            QVERIFY2(kindUnder(format) == Sheet::Kind::Number, format);
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
