#include "parts.h"
#include "support/table.h"
#include "support/xlswriter.h"
#include "workbook/xmlscanner.h"

using namespace kervan;

namespace {

// Elements that pack to about a tenth, so that their ratio raises no doubt.
QByteArray wellFilled(int megabytes)
{
    QByteArray filled;
    for (int i = 0; filled.size() < megabytes * 1024 * 1024; ++i)
        filled += "<x n='" + QByteArray::number(i) + "'>" + QByteArray(100, ' ') + "</x>";
    return filled;
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

// The records of a workbook whose only sheet is A.
QByteArray records(const QByteArray &cells, const QByteArray &globals = {})
{
    const QByteArray start = head(0x600, 5);
    const QByteArray end = globals + biffRecord(0x0A, {});
    const QByteArray entry("\0\0\0\0\0\1\0A", 8); // behind the low byte of its place
    const qsizetype place = start.size() + 4 + 1 + entry.size() + end.size();
    return start + biffRecord(0x85, char(place) + entry) + end + head(0x600, 16) + cells +
           biffRecord(0x0A, {});
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

private Q_SLOTS:
    void resultsInRecordsAreRead()
    {
        // Truth, error, empty text and number of a formula, in its records of three versions;
        // error, truth, many numbers.
        const auto result = [](int column, const QByteArray &value, quint16 type = 0x06) {
            return biffRecord(type,
                              QByteArray(2, '\0') + char(column) + QByteArray(3, '\0') + value);
        };
        // A text with a run and a reading aid behind it, and one more.
        const QByteArray texts = biffRecord(0xFC, "\2\0\0\0\2\0\0\0"
                                                  "\1\0\x0C\1\0\2\0\0\0z\1\0\1\0yy"
                                                  "\1\0\0k"_ba);
        // The longest record takes 8224 bytes; the last character of this text goes on in another,
        // which is of wide ones.
        const QByteArray longText =
            "\0\0\x9\0\0\0\x18\x20\0"_ba + QByteArray(8215, 'a') + "\1\x5E\1"_ba;
        write(records(
            result(1, "\1\0\1\0\0\0\xFF\xFF"_ba, 0x206) + result(2, "\2\0\x2A\0\0\0\xFF\xFF"_ba) +
                result(3, "\3\0\0\0\0\0\xFF\xFF"_ba) + result(4, "\0\0\0\0\0\0\xF8\x3F"_ba, 0x406) +
                biffRecord(0x205, "\0\0\5\0\0\0\7\1"_ba) +
                biffRecord(0x205, "\0\0\6\0\0\0\0\0"_ba) +
                biffRecord(0xBD, "\0\0\7\0\0\0\x67\0\0\0\0\0\x2A\0\0\0\x8\0"_ba) +
                biffRecord(0x204, longText) + biffRecord(0xFD, "\0\0\xA\0\0\0\0\0\0\0"_ba) +
                biffRecord(0xFD, "\0\0\xB\0\0\0\1\0\0\0"_ba),
            texts));
        QCOMPARE(told(*readSheet(path(u"dosya.xls"_s), u"A"_s)),
                 u"BDoğru|.|.|N1,5|.|BYanlış|N0,25|N10|T"_s + QString(8215, u'a') + u"Ş|Tz|Tk"_s);
    }

    void aStreamIsReadFromItsSectors()
    {
        const QByteArray cell = biffRecord(0x205, "\0\0\6\0\0\0\1\0"_ba);
        const auto read = [&](qsizetype size, int sectorBits) {
            const qsizetype missing = size - records(cell + biffRecord(0x5C, {})).size();
            const QByteArray stream = records(cell + biffRecord(0x5C, QByteArray(missing, ' ')));
            const QByteArray other(5000, 'y');
            return told(*readSheet(
                write(compoundFile({{u"x"_s, other}, {u"Workbook"_s, stream}}, sectorBits)),
                u"A"_s));
        };
        QCOMPARE(read(4095, 9), u"BDoğru"_s); // the longest in small sectors
        QCOMPARE(read(4096, 9), u"BDoğru"_s);
        QCOMPARE(read(8192, 12), u"BDoğru"_s); // sectors of 4096 bytes
        QCOMPARE(read(4095, 12), u"BDoğru"_s);
    }

    void whatOtherProgramsNameAndWriteOtherwiseIsRead()
    {
        writeXls(path(u"a.xls"_s), u"A"_s, {{BookCell(44270, u"dd.mm.yyyy"_s), {7, u"000"_s}}});
        const QByteArray plain = readBytes(path(u"a.xls"_s));
        const auto changed = [&](const QByteArray &from, const QByteArray &to) {
            QByteArray bytes = plain;
            Q_ASSERT(bytes.count(from) == 1 && from.size() == to.size());
            return write(bytes.replace(from, to));
        };
        const QString cells = u"D15.03.2021|N007"_s;
        QCOMPARE(told(*readSheet(write(plain), u"A"_s)), cells);
        // Bank portals name the stream in capitals.
        QCOMPARE(
            told(*readSheet(changed("W\0o\0r\0k\0b\0o\0o\0k\0"_ba, "W\0O\0R\0K\0B\0O\0O\0K\0"_ba),
                            u"A"_s)),
            cells);
        // A format that tells of more letters than it has; one as older versions spell it.
        QCOMPARE(told(*readSheet(changed("\x0A\0\1d\0d\0.\0"_ba, "\xA0\0\1d\0d\0.\0"_ba), u"A"_s)),
                 cells);
        QCOMPARE(told(*readSheet(changed("\3\0\1\60\0\60\0\60\0"_ba, "\01000000000"_ba), u"A"_s)),
                 u"D15.03.2021|N00000007"_s);

        QCOMPARE(
            told(*sheetOf({.rows = "<row><c s='1'><v>44270</v></c></row>",
                           .styles = "<numFmt numFmtId='164' formatCode='d.m.y \"A&B\"'/><cellXfs>"
                                     "<xf numFmtId='0'/><xf numFmtId='164'/></cellXfs>"})),
            u"D15.03.2021"_s);

        ZipEntries entries = package({.rows = "<row><c><v>1</v></c></row>"});
        for (auto &[name, contents] : entries)
            name.replace('/', '\\');
        entries[2].second.replace("../tables/", "..\\tables\\");
        writeZip(path(u"parts.zip"_s), entries);
        QCOMPARE(told(*readSheet(path(u"parts.zip"_s), u"SATIŞ LİSTESİ"_s)), u"N1"_s);
    }

    // What stands behind the password was enciphered by another program, written from the format's
    // description; the password's check in the second row is that of a real file.
    void aWorkbookLockedWithTheDefaultPasswordIsRead_data()
    {
        QTest::addColumn<QByteArray>("password");
        QTest::addColumn<QByteArray>("behind");
        QTest::newRow("a mask") << QByteArray("000059b30a9a")
                                << QByteArray("850009007f04000004874b9aca0a000000090810000006100000"
                                              "000000000000000000000004020e00e305"
                                              "621e6996c0986ef9290a46140a000000");
        QTest::newRow("RC4 and MD5") << QByteArray("010001000100df3552380d754ae685c2fd78ce3dd1b6d40"
                                                   "443ecb7a76f6ad268c7dfcfa880683038be5e93"
                                                   "c57eb45f52cda1c68fb62a")
                                     << QByteArray("85000900af040000e0816093e30a0000000908100000061"
                                                   "00000000000000000000000000004020e006cdd"
                                                   "9b76197dd8b51537113a8b690a000000");
        QTest::newRow("RC4 and SHA-1, 40 bits")
            << QByteArray("010002000200040000002400000004000000000000000168000004800000280000000100"
                          "00000000000000"
                          "0000005800000010000000000102030405060708090a0b0c0d0e0fc872728f14b55d849b"
                          "7dde3f7cfd96a7"
                          "14000000d5e6c96d597b070d79bf31b1599eddf2ece8d44b")
            << QByteArray("85000900e7040000949320fce60a00000009081000000610000000000000000000000000"
                          "0004020e008055"
                          "47ffe76ad40c4de5a56b588b0a000000");
        QTest::newRow("RC4 and SHA-1, 128 bits")
            << QByteArray("010002000200040000002400000004000000000000000168000004800000800000000100"
                          "00000000000000"
                          "0000005800000010000000000102030405060708090a0b0c0d0e0fa024a295d910dcd16b"
                          "2b69c9dfef1919"
                          "1400000074a70eb0e7278136e857318b9e9a13d19115d50b")
            << QByteArray("85000900e7040000105c54027a0a00000009081000000610000000000000000000000000"
                          "0004020e0047da"
                          "1079b54625dfe02589fc02ab0a000000");
    }
    void aWorkbookLockedWithTheDefaultPasswordIsRead()
    {
        QFETCH(QByteArray, password);
        QFETCH(QByteArray, behind);
        const auto locked = [&](const QByteArray &check) {
            // The record in the open is long enough for the cells to have the second key.
            return write(
                compoundFile({{u"Workbook"_s, head(0x600, 5) + biffRecord(0x2F, check) +
                                                  biffRecord(0xE1, QByteArray(1100, '\0')) +
                                                  QByteArray::fromHex(behind)}}));
        };
        QByteArray check = QByteArray::fromHex(password);
        QCOMPARE(told(*readSheet(locked(check), u"A"_s)), u"Tkilit"_s);
        check[check.size() - 1] = char(check.back() + 1); // another password
        QVERIFY(failureOf([&] {
                    readSheet(locked(check), u"A"_s);
                }).endsWith(u"parola ile korunuyor; Excel'de açıp parolasını kaldırın"_s));
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

    // A source gives as few bytes as it likes; the mark in front must not be lost between them.
    void thePiecesInWhichAPartComesChangeNothing()
    {
        const QByteArrayList parts{utf16(u"<a>\u015F&lt;</a>"_s),
                                   "\xEF\xBB\xBF<a>\xC5\x9F&lt;</a>"};
        for (const QByteArray &part : parts) {
            XmlScanner xml([&, at = qsizetype(0)](char *to, qsizetype) mutable {
                *to = at < part.size() ? part[at] : '\0';
                return at < part.size() ? (++at, 1) : 0;
            });
            QCOMPARE(xml.next(), XmlScanner::Token::Start);
            QCOMPARE(xml.next(), XmlScanner::Token::Text);
            QCOMPARE(xml.text().toByteArray(), QByteArray("\xC5\x9F<"));
        }
    }

    void sheetsAreFoundByTheirNames()
    {
        const QList<BookSheet> sheets{
            {u"veri"_s, {{1}}}, {u"VERİ2"_s, {{2}}}, {u"Gizli"_s, {{3}}, true}};
        writeWorkbook(path(u"names.xlsx"_s), sheets);
        writeXls(path(u"names.xls"_s), sheets);
        for (const QString &book : {path(u"names.xlsx"_s), path(u"names.xls"_s)}) {
            QCOMPARE(readSheetNames(book), QStringList({u"veri"_s, u"VERİ2"_s, u"Gizli"_s}));
            QCOMPARE(readSheet(book, u"VERI"_s)->text(0, 0), u"1"_s);
            QCOMPARE(readSheet(book, u"veri2"_s)->text(0, 0), u"2"_s);
            QCOMPARE(readSheet(book, u"gizli"_s)->text(0, 0), u"3"_s);
            QCOMPARE(failureOf([&] { readSheet(book, u"Sayfa1"_s); }),
                     asTold(book) + u" okunamadı: \"Sayfa1\" adlı sayfa yok; sayfaları: \"veri\", "
                                    "\"VERİ2\", \"Gizli\""_s);
        }
        QList<BookSheet> many;
        for (int i = 1; i <= 22; ++i)
            many << BookSheet{u"S%1"_s.arg(i), {{1}}};
        writeWorkbook(path(u"many.xlsx"_s), many);
        QVERIFY(failureOf([&] {
                    readSheet(path(u"many.xlsx"_s), u"A"_s);
                }).endsWith(u"\"S19\", \"S20\" ve 2 sayfa daha"_s));
        QCOMPARE(readSheetNames(path(u"many.xlsx"_s)).size(), 22);
        writeZip(path(u"parts.zip"_s), package({.rows = {}}));
        QCOMPARE(readSheetNames(path(u"parts.zip"_s)), QStringList{u"SATIŞ LİSTESİ"_s});
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
        QCOMPARE(told(*sheetOf({.rows = empty + "<row><c><v>1</v></c></row>"})), u"N1"_s);
    }

    void aFileThatIsNoWorkbookSaysWhatItIs_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("why");
        const auto compound = [](const QString &name, const QByteArray &bytes) {
            return compoundFile({{u"x"_s, "y"}, {name, bytes}});
        };
        writeWorkbook(path(u"a.xlsx"_s), u"A"_s, {{1}});
        writeXls(path(u"a.xls"_s), u"A"_s, 2000, [](int row) { return BookRow{row, u"x"_s}; });
        writeZip(path(u"a.ods"_s), {{"content.xml", "<x/>"}});
        writeZip(path(u"a.docx"_s), {{"word/document.xml", "<x/>"}});
        const QByteArray xlsx = readBytes(path(u"a.xlsx"_s));
        const QByteArray xls = readBytes(path(u"a.xls"_s));
        const QByteArray start = head(0x600, 5);
        QTest::newRow("nothing") << ""_ba << u"dosya boş"_s;
        QTest::newRow("HTML") << "\xEF\xBB\xBF\r\n <html>"_ba << u"HTML ya da XML metni"_s;
        QTest::newRow("HTML in UTF-16") << utf16(u"<table>"_s) << u"HTML ya da XML metni"_s;
        QTest::newRow("text") << "a;b;c\r\n1;2;3"_ba << u"düz metin"_s;
        QTest::newRow("a picture") << "\x89PNG\0\0"_ba << u"çalışma kitabı değil"_s;
        QTest::newRow("an .ods") << readBytes(path(u"a.ods"_s)) << u"OpenDocument"_s;
        QTest::newRow("a .docx") << readBytes(path(u"a.docx"_s)) << u"çalışma kitabı değil"_s;
        QTest::newRow("half an .xlsx") << xlsx.first(xlsx.size() / 2) << u"yarım kalmış"_s;
        QTest::newRow("half an .xls") << xls.first(xls.size() / 2) << u"yarım kalmış"_s;
        QTest::newRow("less than half") << xls.first(70) << u"yarım kalmış"_s;
        QTest::newRow("half a header") << xls.first(300) << u"yarım kalmış"_s;
        const QByteArray secret = compound(u"Workbook"_s, start + biffRecord(0x2F, "ab"));
        QTest::newRow("an encrypted .xls, cut off") << secret << u"yarım kalmış"_s;
        const QByteArray package = compound(u"EncryptedPackage"_s, "abc");
        QTest::newRow("an encrypted .xlsx") << package << u"parola ile korunuyor"_s;
        QTest::newRow("an .xls of 1995") << compound(u"Book"_s, head(0x500, 5)) << u"Excel 95"_s;
        QTest::newRow("an older one") << "\x09\0\x04\0\0\0\x10\0"_ba << u"Excel 95"_s;
        QTest::newRow("a .doc") << compound(u"WordDocument"_s, "") << u"çalışma kitabı değil"_s;
        const QByteArray cutShort = records(biffRecord(0x203, QByteArray(13, '\0')));
        QTest::newRow("a number cut short") << cutShort << u"yarım kalmış"_s;
        const QByteArray text = biffRecord(0xFC, "\1\0\0\0\1\0\0\0\1\0\0k"_ba);
        const QByteArray behind = biffRecord(0xFD, "\0\0\0\0\0\0\1\0\0\0"_ba);
        QTest::newRow("a text behind the last one") << records(behind, text) << u"metin numarası"_s;
        QByteArray chainless = compoundFile({{u"Workbook"_s, start}});
        chainless.replace(60, 4, "\xFE\xFF\xFF\xFF"); // no table of small sectors
        QTest::newRow("a container without its chains") << chainless << u"yarım kalmış"_s;
        QTest::newRow("no end") << compound(u"Workbook"_s, start) << u"yarım kalmış"_s;
    }
    void aFileThatIsNoWorkbookSaysWhatItIs()
    {
        QFETCH(QByteArray, bytes);
        const QString book = write(bytes);
        const QString failure = failureOf([&] { readSheet(book, u"A"_s); });
        QVERIFY2(failure.startsWith(asTold(book) + u" okunamadı: "_s) &&
                     failure.contains(fetch("why")),
                 qPrintable(failure));
    }

    void aPathWithoutAFileIsNamed()
    {
        for (const QString &book : {path(u"yok.xls"_s), m_folder.path()})
            QVERIFY(failsNaming(book, [&] { readSheet(book, u"A"_s); }));
    }

    void aFileOfMoreThan256MegabytesIsRefused()
    {
        QFile file(path(u"dosya.xls"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(256LL * 1024 * 1024 + 1));
        const QString why = failureOf([&] { readSheet(file.fileName(), u"A"_s); });
        QVERIFY2(why.endsWith(u"256 MB sınırını aşıyor"_s), qPrintable(why));
    }

    void whatADamagedOrHostileSheetHoldsIsRefused_data()
    {
        addTable(uR"(
case                        ; rows                                                  ; why
a row too far               ; <row><c r='A1048577'><v>1</v></c></row>               ; sınırını aşıyor
a column too far            ; <row><c r='XFE1'><v>1</v></c></row>                   ; sınırını aşıyor
no place                    ; <row><c r='1A'><v>1</v></c></row>                     ; bozuk
a text that is not there    ; <row><c t='s'><v>1</v></c></row>                      ; bozuk
no end                      ; <row><c><v>1</v>                                      ; yarım kalmış
an end too many             ; </sheetData></worksheet></x>                          ; fazla kapanış)"_s);
        const auto inText = [](const QByteArray &text) {
            return QString::fromLatin1("<row><c t='str'><v>" + text + "</v></c></row>");
        };
        QTest::newRow("an entity") << inText("&x;") << u"tanımsız varlık"_s;
        QTest::newRow("no character") << inText("&#x110000;") << u"karakter numarası"_s;
        QTest::newRow("a text of 17 MB")
            << inText(wellFilled(17).replace('<', ' ')) << u"parça çok uzun"_s;
        QTest::newRow("20 MB out of nothing") << QString(20'000'000, u' ') << u"sınırı aşıyor"_s;
    }
    void whatADamagedOrHostileSheetHoldsIsRefused()
    {
        const Parts parts{.rows = fetch("rows").toUtf8(), .strings = "<si/>"};
        const QString failure = failureOf([&] { sheetOf(parts); });
        QVERIFY2(failure.contains(fetch("why")), qPrintable(failure));
    }

    void partsThatAreNoneOfASheetAreRefused()
    {
        const auto refusal = [](const QByteArray &beforeSheet) {
            return failureOf([&] { sheetOf({.rows = {}, .beforeSheet = beforeSheet}); });
        };
        QVERIFY(refusal("<!DOCTYPE w [<!ENTITY x 'x'>]>").contains(u"belge türü"));
        QVERIFY(refusal("<?xml version='1.0' encoding='ISO-8859-9'?>").contains(u"UTF-8 değil"));
        QVERIFY(refusal("<chartsheet/>").contains(u"çalışma sayfası değil"));
        const Parts styles{.rows = {}, .styles = wellFilled(33)};
        QVERIFY(failureOf([&] { sheetOf(styles); }).contains(u"sınırı aşıyor"));
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
        // Another size at the same time is another file, and so is the same size at another time;
        // one that is gone fails.
        const auto setTime = [&](int year) {
            QFile file(book);
            return file.open(QIODevice::ReadWrite) &&
                   file.setFileTime(QDateTime(QDate(year, 1, 1), QTime(0, 0)),
                                    QFile::FileModificationTime);
        };
        QVERIFY(setTime(2020));
        workbooks.sheet(book, u"A"_s);
        writeWorkbook(book, u"A"_s, {{u"bir başka ve daha uzun değer"_s}});
        QVERIFY(setTime(2020));
        const auto longer = workbooks.sheet(book, u"A"_s);
        QCOMPARE(longer->text(0, 0), u"bir başka ve daha uzun değer"_s);
        QVERIFY(setTime(2021));
        QVERIFY(workbooks.sheet(book, u"A"_s) != longer);
        QVERIFY(QFile::remove(book));
        QVERIFY(failsNaming(book, [&] { workbooks.sheet(book, u"A"_s); }));
    }
};

QTEST_GUILESS_MAIN(TestWorkbook)
#include "tst_workbook.moc"
