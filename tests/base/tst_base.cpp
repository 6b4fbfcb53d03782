#include "base/codepage.h"
#include "base/grid.h"
#include "base/linereader.h"
#include "support/failing.h"
#include "support/fakes.h"

#include <QAbstractItemModelTester>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <random>
#include <stdexcept>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// Rows named a, b, c, ..., each with its name in small as tag.
void fillWith(Grid &grid, const QString &names)
{
    for (const QChar name : names)
        grid.setTag(grid.addRow(name), name.toLower());
}

QString textsOf(const Grid &grid)
{
    QString texts;
    for (int row = 0; row < grid.rows(); ++row)
        texts += grid.cell(row, 0) + grid.tag(row) + (grid.ticked(row) ? u"+"_s : QString());
    return texts;
}

QStringList linesOf(const QString &path)
{
    LineReader reader(path);
    QStringList lines;
    while (reader.next())
        lines << reader.line().toString();
    return lines;
}

} // namespace

class TestBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMissingRowIsAFailureAndAMissingCellReadsEmpty()
    {
        Grid grid({{u"A"_s}, {u"B"_s}, {u"C"_s}});
        QVERIFY_THROWS_EXCEPTION(Failure, grid.cell(0, 0));
        grid.addRow(u"x"_s);
        QCOMPARE(grid.cell(0, 2), QString());
        grid.setCell(0, 2, u"z"_s);
        QCOMPARE(grid.cell(0, 0) + u'|' + grid.cell(0, 1) + u'|' + grid.cell(0, 2), u"x||z"_s);
        QVERIFY_THROWS_EXCEPTION(Failure, grid.cell(-1, 0));
        QVERIFY_THROWS_EXCEPTION(Failure, grid.cell(0, 3));
        QVERIFY_THROWS_EXCEPTION(Failure, grid.cell(0, -1));
        QVERIFY_THROWS_EXCEPTION(Failure, grid.setCell(1, 0, {}));
        QVERIFY_THROWS_EXCEPTION(Failure, grid.setCell(0, 3, {}));
        QVERIFY_THROWS_EXCEPTION(Failure, grid.ticked(1));
        QVERIFY_THROWS_EXCEPTION(Failure, grid.setTicked(1, true));
        QVERIFY_THROWS_EXCEPTION(Failure, grid.tag(1));
        QVERIFY_THROWS_EXCEPTION(Failure, grid.setTag(1, {}));
        QCOMPARE(grid.rows(), 1);
    }

    void ticksAreSetAndCountedRowByRow()
    {
        Grid grid({{u"A"_s}, {u"B"_s}}, Grid::Tickable);
        fillWith(grid, u"ABC"_s);
        grid.setTicked(1, true);
        QCOMPARE(textsOf(grid), u"AaBb+Cc"_s);
        QVERIFY(grid.setData(grid.index(2, 0), Qt::Checked, Qt::CheckStateRole));
        QVERIFY(!grid.setData(grid.index(0, 1), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(grid.tickedCount(), 2);
        grid.tickWhere([&](int row) { return grid.cell(row, 0) == u"A"; });
        QCOMPARE(textsOf(grid), u"Aa+BbCc"_s);
        grid.setAllTicked(true);
        QCOMPARE(grid.tickedCount(), 3);
        QCOMPARE(grid.data(grid.index(2, 0), Qt::CheckStateRole), QVariant(Qt::Checked));
        grid.setAllTicked(false);
        QCOMPARE(grid.tickedCount(), 0);
    }

    void rowsThatDoNotBelongGoAndTheRestKeepsOrderTicksAndTags()
    {
        Grid grid({{u"A"_s}}, Grid::Tickable);
        fillWith(grid, u"ABCDEF"_s);
        grid.setTicked(2, true);
        grid.setTicked(3, true);
        QString seen;
        grid.keepWhere([&](int row) {
            seen += grid.cell(row, 0);
            return u"CDF"_s.contains(grid.cell(row, 0));
        });
        QCOMPARE(seen, u"ABCDEF"_s);
        QCOMPARE(textsOf(grid), u"Cc+Dd+Ff"_s);
        grid.keepWhere([](int) { return false; });
        QVERIFY(grid.isEmpty());
    }

    void aFilterThatFailsKeepsItsRowAndAllBehindIt()
    {
        Grid grid({{u"A"_s}}, Grid::Tickable);
        QAbstractItemModelTester tester(&grid,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        fillWith(grid, u"ABCDEF"_s);
        grid.setTicked(4, true);
        const auto failing = [](int row) -> bool {
            if (row == 4)
                throw Failure(u"tarih yok"_s);
            return row % 2 == 0;
        };
        QCOMPARE(failureOf([&] { grid.keepWhere(failing); }), u"tarih yok"_s);
        QCOMPARE(textsOf(grid), u"AaCcEe+Ff"_s);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                                 grid.keepWhere([](int) -> bool { throw std::runtime_error(""); }));
        QCOMPARE(textsOf(grid), u"AaCcEe+Ff"_s);
    }

    void viewsAreToldOfEveryChangeAndOnceOfARefill()
    {
        Grid grid({{u"A"_s}, {u"B"_s}}, Grid::Tickable);
        QAbstractItemModelTester tester(&grid,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy data(&grid, &Grid::dataChanged);
        QSignalSpy inserts(&grid, &Grid::rowsInserted);
        QSignalSpy resets(&grid, &Grid::modelReset);
        fillWith(grid, u"ABC"_s);
        QCOMPARE(inserts.count(), 3);
        grid.setCell(1, 1, u"x"_s);
        QCOMPARE(data.takeFirst().value(0).toModelIndex(), grid.index(1, 1));
        grid.setTicked(2, true);
        QCOMPARE(data.takeFirst().value(0).toModelIndex(), grid.index(2, 0));
        grid.setAllTicked(true);
        QCOMPARE(data.first().value(0).toModelIndex(), grid.index(0, 0));
        QCOMPARE(data.takeFirst().value(1).toModelIndex(), grid.index(2, 0));
        {
            const Grid::Refill refill(grid);
            grid.clear();
            fillWith(grid, u"DEFG"_s);
            grid.setCell(3, 1, u"y"_s);
            grid.setAllTicked(true);
            grid.keepWhere([](int row) { return row > 0; });
            QCOMPARE(resets.count(), 0);
        }
        QCOMPARE(resets.count(), 1);
        QCOMPARE(inserts.count(), 3);
        QCOMPARE(data.count(), 0);
        QCOMPARE(textsOf(grid), u"Ee+Ff+Gg+"_s);
        grid.clear();
        QCOMPARE(resets.count(), 2);
        grid.setAllTicked(true);
        QCOMPARE(grid.rowCount(), 0);
    }

    void everyByteGoesThroughTextAndBack()
    {
        QByteArray all;
        for (int byte = 0; byte < 256; ++byte)
            all += static_cast<char>(byte);
        const QString text = fromCodePage(all);
        QCOMPARE(text.size(), 256);
        QCOMPARE(QSet<QChar>(text.begin(), text.end()).size(), 256);
        QCOMPARE(toCodePage(text), all);
        // 81, 8D, 8E, 8F, 90, 9D and 9E have no character and stand for themselves.
        QCOMPARE(text.sliced(0x80, 0x20),
                 u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008D\u008E\u008F\u0090‘’“”•–—˜™š›œ\u009D\u009EŸ"_s);
        QString latin = QString::fromLatin1(all.sliced(0xA0));
        latin.replace(u'Ð', u'Ğ').replace(u'Ý', u'İ').replace(u'Þ', u'Ş');
        latin.replace(u'ð', u'ğ').replace(u'ý', u'ı').replace(u'þ', u'ş');
        QCOMPARE(text.sliced(0xA0), latin);
        QCOMPARE(toCodePage(u"ĞÜŞİÖÇğüşıöç€"),
                 QByteArray("\xD0\xDC\xDE\xDD\xD6\xC7\xF0\xFC\xFE\xFD\xF6\xE7\x80"));
    }

    void aCharacterWithoutPlaceIsOneQuestionMark()
    {
        QCOMPARE(toCodePage(u"aЖb"), QByteArray("a?b"));
        QCOMPARE(toCodePage(u"ÐÝÞðýþ"), QByteArray("??????")); // their bytes are Turkish letters
        QCOMPARE(toCodePage(u"\u0080\u0099\uFFFF"), QByteArray("???"));
        QCOMPARE(toCodePage(u"a😀b😀"), QByteArray("a?b?"));
        const char16_t lone[] = {0xD83D, u'a', 0xDE00, 0xD83D, 0};
        QCOMPARE(toCodePage(lone), QByteArray("?a??"));
        QByteArray bytes("önce");
        appendToCodePage(bytes, u"ş😀");
        QCOMPARE(bytes, QByteArray("önce\xFE?"));
    }

    void linesEndInAnyOfThreeWays_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const QByteArray full(65535, 'a');
        const QString text(65535, u'a');
        QTest::newRow("CR LF") << QByteArray("a\r\nb\r\n") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("LF") << QByteArray("a\nb\n") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("CR") << QByteArray("a\rb\r") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("mixed, with empty lines")
            << QByteArray("\r\na\n\r\r\n\nb\r") << QStringList{{}, u"a"_s, {}, {}, {}, u"b"_s};
        QTest::newRow("last line without end")
            << QByteArray("a\r\nb") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("empty file") << QByteArray() << QStringList{};
        QTest::newRow("one line end") << QByteArray("\r\n") << QStringList{{}};
        QTest::newRow("code page") << QByteArray("\xDE\0\x81", 3) << QStringList{u"Ş\0\u0081"_s};
        QTest::newRow("UTF-8 mark")
            << QByteArray("\xEF\xBB\xBF\xC5\x9E\r\n\xC4\xB1") << QStringList{u"Ş"_s, u"ı"_s};
        QTest::newRow("UTF-8 mark alone") << QByteArray("\xEF\xBB\xBF") << QStringList{};
        QTest::newRow("CR LF across two buffers") << full + "\r\nb" << QStringList{text, u"b"_s};
        QTest::newRow("CR alone at a buffer's end") << full + "\rb" << QStringList{text, u"b"_s};
        QTest::newRow("CR at the end of file and buffer") << full + "\r" << QStringList{text};
        QTest::newRow("line end at a buffer's start")
            << full + "a\r\n\r\nb" << QStringList{text + u'a', {}, u"b"_s};
        QTest::newRow("line across two buffers") << full.chopped(4) + "\n0123456789\n"
                                                 << QStringList{text.chopped(4), u"0123456789"_s};
        QTest::newRow("UTF-8 letter across two buffers")
            << "\xEF\xBB\xBF" + full.chopped(3) + "\xC5\x9E\n"
            << QStringList{text.chopped(3) + u'Ş'};
    }
    void linesEndInAnyOfThreeWays()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"kaynak.txt"_s);
        writeBytes(path, bytes);
        QTEST(linesOf(path), "lines");
    }

    void anEndlessLineDoesNotHideTheNextOne()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"kaynak.txt"_s);
        writeBytes(path, QByteArray("ilk\r\n") + QByteArray(10 << 20, 'x') + "\r\nson\r\n");
        const QStringList lines = linesOf(path);
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.first(), u"ilk"_s);
        QVERIFY(lines[1].size() >= 1000 && lines[1].size() <= LineReader::longestLine);
        QCOMPARE(lines[1].count(u'x'), lines[1].size());
        QCOMPARE(lines.last(), u"son"_s);
    }

    void aLineIsFoundAgainByItsOffset()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"kaynak.txt"_s);
        QByteArray bytes("\xEF\xBB\xBF");
        QList<std::pair<qint64, QString>> expected;
        for (int i = 0; i < 3000; ++i) {
            const QByteArray text = QByteArray::number(i) + QByteArray(i % 97, '.') + "ş";
            expected.append({bytes.size(), QString::fromUtf8(text)});
            bytes += text + (i % 3 == 0 ? "\n" : i % 3 == 1 ? "\r\n" : "\r");
        }
        writeBytes(path, bytes);
        LineReader reader(path);
        for (const auto &[offset, text] : std::as_const(expected)) {
            QVERIFY(reader.next());
            QCOMPARE(reader.offset(), offset);
            QCOMPARE(reader.line(), text);
        }
        QVERIFY(!reader.next());
        QVERIFY(!reader.next());
        std::mt19937 random(7);
        std::shuffle(expected.begin(), expected.end(), random);
        for (const auto &[offset, text] : std::as_const(expected)) {
            reader.seek(offset);
            QVERIFY(reader.next());
            QCOMPARE(reader.offset(), offset);
            QCOMPARE(reader.line(), text);
        }
    }

    void aLineBeyondThreeGigabytesIsFound()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(u"kaynak.txt"_s));
        constexpr qint64 far = 3'000'000'000;
        if (!file.open(QIODevice::WriteOnly) || !file.resize(far) || !file.seek(far))
            QSKIP("no room for a large file");
        file.write("uzak\r\nson");
        file.close();
        LineReader reader(file.fileName());
        reader.seek(far);
        QVERIFY(reader.next());
        QCOMPARE(reader.line(), u"uzak");
        QVERIFY(reader.next());
        QCOMPARE(reader.offset(), far + 6);
        QCOMPARE(reader.line(), u"son");
    }

    void aSourceThatCannotBeReadIsAFailureThatNamesIt()
    {
        QTemporaryDir folder;
        const QString missing = folder.filePath(u"yok.bif"_s);
        QVERIFY(failsNaming(missing, [&] { LineReader reader(missing); }));
        QVERIFY(!QFile::exists(missing));
        QVERIFY(failsNaming(folder.path(), [&] { LineReader reader(folder.path()); }));
        QVERIFY_THROWS_EXCEPTION(Failure, LineReader{u""_s});
    }

    void aFailureIsPassedOverEndsQuietlyOrIsReported()
    {
        FakeBoxes boxes;
        QString done;
        const auto fine = [&] {
            done += u'1';
        };
        const auto failing = [&] {
            done += u'2';
            throw Failure(u"dosya yok"_s);
            done += u'3';
        };
        QVERIFY(!passOver(fine));
        QCOMPARE(passOver(failing)->description(), u"dosya yok"_s);
        QCOMPARE(done, u"12"_s);
        QVERIFY(!endQuietly(fine));
        QCOMPARE(endQuietly(failing)->description(), u"dosya yok"_s);
        QCOMPARE(done, u"1212"_s);
        QVERIFY(!endWithReport(boxes, fine));
        boxes.expect({.text = u"dosya yok"_s}); // a plain box: no title of ours, no icon
        QVERIFY(endWithReport(boxes, failing));
        boxes.verify();
        QCOMPARE(done, u"121212"_s);
        const auto fault = [] {
            throw std::runtime_error("");
        };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, endWithReport(boxes, fault));
    }
};

QTEST_GUILESS_MAIN(TestBase)
#include "tst_base.moc"
