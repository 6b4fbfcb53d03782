#include "base/codepage.h"
#include "base/filefault.h"
#include "base/grid.h"
#include "base/leftovers.h"
#include "base/linereader.h"
#include "base/notes.h"
#include "base/statement.h"
#include "base/wholefile.h"
#include "support/fakes.h"
#include "support/openelsewhere.h"
#include "support/table.h"

#include <QAbstractItemModelTester>
#include <QDir>

using namespace kervan;

namespace {

QStringList linesOf(const QByteArray &bytes)
{
    const QTemporaryDir folder;
    writeBytes(folder.filePath(u"kaynak.txt"_s), bytes);
    LineReader reader(folder.filePath(u"kaynak.txt"_s));
    QStringList lines;
    while (reader.next())
        lines << reader.line().toString();
    return lines;
}

void writeWhole(const QString &path, const QByteArray &bytes = "yeni")
{
    WholeFile file(path);
    file.write(bytes);
    file.commit();
}

} // namespace

class TestBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMissingRowOrColumnIsAFailureAndAMissingCellReadsEmpty()
    {
        Grid grid({{u"A"_s}, {u"B"_s}});
        grid.addRow(u"x"_s);
        grid.addRow(u"y"_s); // as long as the row before it, and longer where it has to be
        grid.setCell(1, 1, u"z"_s);
        QCOMPARE(grid.cell(0, 1), QString());
        QCOMPARE(grid.cell(1, 1), u"z"_s);
        for (const auto &[row, column] : {std::pair(2, 0), {-1, 0}, {0, 2}, {0, -1}}) {
            QVERIFY_THROWS_EXCEPTION(Failure, grid.cell(row, column));
            QVERIFY_THROWS_EXCEPTION(Failure, grid.setCell(row, column, {}));
        }
    }

    void rowsGoByAFilterAndOneThatFailsKeepsItsRowAndAllBehindIt()
    {
        Grid grid({{u"A"_s}}, Grid::Tickable);
        const QAbstractItemModelTester tester(&grid); // fatal
        for (const QChar name : u"ABCDEF"_s)
            grid.setTag(grid.addRow(name), name.toLower());
        grid.setTicked(4, true);
        QVERIFY_THROWS_EXCEPTION(Failure, grid.keepWhere([](int row) {
            return row == 4 ? throw Failure({}) : row % 2 == 0;
        }));
        QStringList texts;
        QStringList tags;
        for (int row = 0; row < grid.rows(); ++row) {
            texts << grid.cell(row, 0);
            tags << grid.tag(row);
        }
        QCOMPARE(texts, (QStringList{u"A"_s, u"C"_s, u"E"_s, u"F"_s}));
        QCOMPARE(tags, (QStringList{u"a"_s, u"c"_s, u"e"_s, u"f"_s}));
        QVERIFY(grid.ticked(2));
        QCOMPARE(grid.tickedCount(), 1);
    }

    void everyByteGoesThroughTextAndBackAndAnyOtherCharacterIsOneQuestionMark()
    {
        QByteArray all;
        for (int byte = 0; byte < 256; ++byte)
            all += static_cast<char>(byte);
        const QString text = fromCodePage(all);
        QCOMPARE(toCodePage(text), all);
        // 81, 8D, 8E, 8F, 90, 9D and 9E have no character and stand for themselves.
        QCOMPARE(text.sliced(0x80, 0x20),
                 u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008D\u008E\u008F\u0090‘’“”•–—˜™š›œ\u009D\u009EŸ"_s);
        QString latin = QString::fromLatin1(all.sliced(0xA0));
        latin.replace(u'Ð', u'Ğ').replace(u'Ý', u'İ').replace(u'Þ', u'Ş');
        latin.replace(u'ð', u'ğ').replace(u'ý', u'ı').replace(u'þ', u'ş');
        QCOMPARE(text.first(0x80) + text.sliced(0xA0),
                 QString::fromLatin1(all.first(0x80)) + latin);
        const char16_t lone[] = {0xD83D, u'a', 0xDE00, 0xD83D, 0};
        QCOMPARE(toCodePage(u"aЖÐÝÞðýþ\u0080\u0099\uFFFFb😀c😀") + toCodePage(lone),
                 QByteArray("a??????????b?c??a??"));
    }

    void linesEndInAnyOfThreeWays()
    {
        QCOMPARE(linesOf("\r\na\n\r\r\n\nb\r"), (QStringList{{}, u"a"_s, {}, {}, {}, u"b"_s}));
        QCOMPARE(linesOf("a\r\nb"), (QStringList{u"a"_s, u"b"_s})); // no end of the last one
        QCOMPARE(linesOf(""), QStringList());
        QCOMPARE(linesOf("\r\n"), QStringList{{}});
        QCOMPARE(linesOf("\xDE\0\x81"_ba), QStringList{u"Ş\0\u0081"_s});
        QCOMPARE(linesOf("\xEF\xBB\xBF\xC5\x9E\r\n\xC4\xB1"), (QStringList{u"Ş"_s, u"ı"_s}));
        QCOMPARE(linesOf("\xEF\xBB\xBF"), QStringList());
    }

    void linesRunAcrossBuffers()
    {
        const QByteArray full(65535, 'a'); // a byte less than a buffer
        const QString text(65535, u'a');
        QCOMPARE(linesOf(full + "\r\nb"), (QStringList{text, u"b"_s}));
        QCOMPARE(linesOf(full + "\rb"), (QStringList{text, u"b"_s}));
        QCOMPARE(linesOf(full + "\r"), QStringList{text});
        QCOMPARE(linesOf(full + "a\r\n\r\nb"), (QStringList{text + u'a', {}, u"b"_s}));
        QCOMPARE(linesOf(full.chopped(4) + "\n0123456789\n"),
                 (QStringList{text.chopped(4), u"0123456789"_s}));
        QCOMPARE(linesOf("\xEF\xBB\xBF" + full.chopped(3) + "\xC5\x9E\n"),
                 QStringList{text.chopped(3) + u'Ş'});
        // An endless line is cut.
        QCOMPARE(linesOf("ilk\r\n" + QByteArray(10 << 20, 'x') + "\r\nson\r\n"),
                 (QStringList{u"ilk"_s, QString(LineReader::longestLine, u'x'), u"son"_s}));
    }

    void aValueThatWouldEndItsQuotesIsNoticed_data()
    {
        addTable(uR"(
case               ; value       ; breaks
no apostrophe      ; baba "x" -- ; no
one in the midst   ; baba'nın    ; yes
one at the end     ; baba'       ; yes
a pair             ; baba''nın   ; no
a pair at the end  ; baba''      ; no
a pair and one more; baba'''     ; yes
two apart          ; 'a'         ; yes)"_s);
    }
    void aValueThatWouldEndItsQuotesIsNoticed()
    {
        const QString value = fetch("value");
        const Statement statement = Statement(u"where kod='").value(value).text(u"'");
        QCOMPARE(statement.text(), u"where kod='"_s + value + u'\'');
        QCOMPARE(statement.breakingValue().has_value(), fetch("breaks") == u"yes");
    }

    void aPartOfANameHoldsLettersDigitsAndUnderscoresAlone()
    {
        QVERIFY(!Statement(u"from LG_").name(u"00Ş_7").breakingValue());
        QVERIFY(Statement(u"from LG_").name(u"007 a").breakingValue());
    }

    void aSourceThatCannotBeReadIsAFailureThatNamesIt()
    {
        const QTemporaryDir folder;
        for (const QString &path : {folder.filePath(u"yok.bif"_s), folder.path()})
            QVERIFY(failsNaming(path, [&] { LineReader reader(path); }));
        QCOMPARE(contentOf(folder.path()), QString());
        QVERIFY_THROWS_EXCEPTION(Failure, LineReader{QString()});
    }

    void aFileThatCannotBeWrittenSaysWhy_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("why");
        QTest::newRow("missing folder") << u"yok/a.xml"_s << u"klasörü yok"_s;
        QTest::newRow("a file for a folder") << u"dolu/a.xml"_s << u"klasörü yok"_s;
        QTest::newRow("a folder") << u"klasör"_s << u"bu bir klasör"_s;
        QTest::newRow("long name") << QString(300, u'x') << u"adı çok uzun"_s;
        QTest::newRow("read-only file") << u"salt.xml"_s << u"dosya salt okunur"_s;
#ifdef Q_OS_WIN
        for (const QString &device : {u"NUL.xml"_s, u"klasör/aux"_s, u"Com1 .a.xml"_s})
            QTest::newRow(qPrintable(device)) << device << u"bu ad Windows'a ayrılmış"_s;
        for (const QString &odd : {u"a:b.xml"_s, u"a?.xml"_s})
            QTest::newRow(qPrintable(odd)) << odd << u"dosya adında kullanılamayan bir harf var"_s;
        for (const QString &end : {u"dolu."_s, u"dolu "_s})
            QTest::addRow("\"%s\"", qPrintable(end))
                << end << u"adın sonunda nokta ya da boşluk olamaz"_s;
#else // where the bits of a folder close it
        QTest::newRow("closed folder") << u"kapalı/a.xml"_s << u"izin yok"_s;
#endif
    }
    void aFileThatCannotBeWrittenSaysWhy()
    {
        QFETCH(QString, name);
        QFETCH(QString, why);
        const QTemporaryDir folder;
        const QString path = folder.path() + u'/' + name;
        QVERIFY(QDir(folder.path()).mkpath(u"klasör"_s) && QDir(folder.path()).mkpath(u"kapalı"_s));
        for (const QString &file : {u"dolu"_s, u"salt.xml"_s})
            writeBytes(folder.filePath(file), "eski");
        QFile::setPermissions(folder.filePath(u"salt.xml"_s),
                              QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
        QFile::setPermissions(folder.filePath(u"kapalı"_s), QFile::ReadOwner | QFile::ExeOwner);
        QFile::setPermissions(folder.path(), QFile::Permissions(0x7777));
        asAnyUser([&] {
            const auto failed = passOver([&] { writeWhole(path); });
            QVERIFY(failed);
            QCOMPARE(failed->description(), asTold(path) + u" yazılamadı: "_s + why);
            QCOMPARE(failed->headline(), u"Yazılamadı, %1: %2"_s.arg(why, asTold(path)));
            QCOMPARE(readBytes(folder.filePath(u"dolu"_s)), "eski");
        });
    }

    void aFileOfALongPathAndAnyLettersIsWrittenAndRead()
    {
        const QTemporaryDir folder;
        QString path = folder.path();
        for (int depth = 0; depth < 4; ++depth)
            path += u"/Şube İstanbul'un %20 #1 & "_s + QString(60, u'ğ');
        QVERIFY(QDir().mkpath(path));
        path += u"/satış ı.txt"_s;
        writeBytes(path, "eski");
        writeWhole(path, "yeni\r\n");
        LineReader reader(path);
        QVERIFY(reader.next());
        QCOMPARE(reader.line(), u"yeni");
#ifdef Q_OS_WIN
        const OpenElsewhere other(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
        QCOMPARE(failureOf([&] { writeWhole(path); }),
                 asTold(path) + u" yazılamadı: başka bir programda açık"_s);
#endif
    }

#ifdef Q_OS_WIN
    void aFileThatAnotherProgramHoldsIsToldAndStaysWhole()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xml"_s);
        writeBytes(path, "eski");
        for (const DWORD share : {0, FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE}) {
            const OpenElsewhere other(path, share);
            QCOMPARE(failureOf([&] { writeWhole(path); }),
                     asTold(path) + u" yazılamadı: başka bir programda açık"_s);
        }
        QCOMPARE(readBytes(path), "eski");
        QCOMPARE(contentOf(folder.path()), u"a.xml"_s);
        {
            const OpenElsewhere spreadsheet(path, FILE_SHARE_READ); // is read beside it
            LineReader reader(path);
            QVERIFY(reader.next());
        }
        const OpenElsewhere other(path);
        QCOMPARE(failureOf([&] { LineReader reader(path); }),
                 asTold(path) + u" okunamadı: başka bir programda açık"_s);
    }
#endif

    void aFullDiskAndOneThatIsReadOnlyAreToldAndTheOldFileStays()
    {
        const QTemporaryDir folder;
        const SmallDisk disk(folder.path());
        if (!disk.isThere())
            QSKIP("no right to mount a small disk here");
        const QString path = folder.filePath(u"a.xml"_s);
        writeBytes(path, "eski");
        const QByteArray large(400'000, 'x');
        QCOMPARE(failureOf([&] { writeWhole(path, large); }), path + u" yazılamadı: disk dolu"_s);
        QCOMPARE(readBytes(path), "eski");
        QVERIFY(disk.makeReadOnly());
        QCOMPARE(failureOf([&] { writeWhole(path); }), path + u" yazılamadı: disk salt okunur"_s);
        QCOMPARE(contentOf(folder.path()), u"a.xml"_s);
    }

    void onlyWhatIsNamedAsByAKilledWriterIsSwept()
    {
        const QTemporaryDir folder; // Windows' take names that differ by capitals alone for one
        const QStringList drawn{u"a.kvz.bCDefG"_s, u"ş b.kvz.XyZAbc"_s};
        const QStringList chosen{u"a.kvz.backup"_s, u"b.kvz.BackUp"_s, u"b.kvz.ESKISI"_s,
                                 u"a.kvz.eskiTL"_s, u"a.kvz.Eskisi"_s};
        const QStringList others{u"b.kvz.aBCde1"_s, u"b.kvz.aBCdeFg"_s, u"aBCdeF"_s,
                                 u".aBCdeF"_s,      u"b.kvz.aBCdeŞ"_s,  u"a.kvz"_s};
        for (const QString &name : drawn + chosen + others)
            writeBytes(folder.filePath(name), "1");
        QStringList told;
        sweepLeftovers(folder.path(), [&](const Leftover &leftover) {
            const QString name = leftover.file.fileName();
            told << name;
            return leftover.isDrawn;
        });
        told.sort();
        QStringList wanted = drawn + chosen;
        wanted.sort();
        QCOMPARE(told, wanted);
        for (const QString &name : drawn)
            QVERIFY2(!QFile::exists(folder.filePath(name)), name.toUtf8());
        for (const QString &name : chosen + others)
            QVERIFY2(QFile::exists(folder.filePath(name)), name.toUtf8());
    }

    void notesKeepWhatCameFirstAndLoseNothing()
    {
        Notes notes;
        notes.add(fileFailure(u"b.xml"_s, u"yazılamadı"_s, u"disk dolu"_s));
        notes.add(Failure(u"sayaç"_s));
        notes.add(Failure(u"sayaç"_s));
        notes.add(std::optional<Failure>());
        notes.addDocument(u"/a/c.xml"_s, u"fiş"_s, 3, QTime(9, 5));
        notes.addDocument(u"/a/d.xml"_s, u"fiş"_s, 1, QTime(9, 5), Failure(u"olmadı"_s));
        QCOMPARE(notes.text(), u"Yazılamadı, disk dolu: b.xml • sayaç • olmadı"_s);
        QCOMPARE(notes.details(), u"b.xml yazılamadı: disk dolu\nsayaç\nolmadı"_s);
        QCOMPARE(notes.written().size(), 1);
        QCOMPARE(notes.written().first().what, u"3 fiş"_s);
        notes.begin();
        QVERIFY(notes.text().isEmpty() && notes.details().isEmpty() && notes.written().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestBase)
#include "tst_base.moc"
