#include "base/codepage.h"
#include "base/grid.h"
#include "base/linereader.h"
#include "base/statement.h"
#include "support/fakes.h"

#include <QAbstractItemModelTester>

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

} // namespace

class TestBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMissingRowOrColumnIsAFailureAndAMissingCellReadsEmpty()
    {
        Grid grid({{u"A"_s}, {u"B"_s}});
        grid.addRow(u"x"_s);
        QCOMPARE(grid.cell(0, 1), QString());
        for (const auto &[row, column] : {std::pair(1, 0), {-1, 0}, {0, 2}, {0, -1}}) {
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

    void linesEndInAnyOfThreeWays_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const auto add = [](const char *name, const QByteArray &bytes, const QStringList &lines) {
            QTest::newRow(name) << bytes << lines;
        };
        add("all three", "\r\na\n\r\r\n\nb\r", {{}, u"a"_s, {}, {}, {}, u"b"_s});
        add("no end of the last one", "a\r\nb", {u"a"_s, u"b"_s});
        add("an empty file", "", {});
        add("an empty line", "\r\n", {{}});
        add("zero bytes", QByteArray("\xDE\0\x81", 3), {u"Ş\0\u0081"_s});
        add("UTF-8 by its mark", "\xEF\xBB\xBF\xC5\x9E\r\n\xC4\xB1", {u"Ş"_s, u"ı"_s});
        add("a mark alone", "\xEF\xBB\xBF", {});
        // Around a buffer of 65536 bytes.
        const QByteArray full(65535, 'a');
        const QString text(65535, u'a');
        add("CR LF across two buffers", full + "\r\nb", {text, u"b"_s});
        add("CR at the end of one", full + "\rb", {text, u"b"_s});
        add("CR at the end of all", full + "\r", {text});
        add("CR LF behind a full one", full + "a\r\n\r\nb", {text + u'a', {}, u"b"_s});
        add("a line across two", full.chopped(4) + "\n0123456789\n",
            {text.chopped(4), u"0123456789"_s});
        add("a letter across two", "\xEF\xBB\xBF" + full.chopped(3) + "\xC5\x9E\n",
            {text.chopped(3) + u'Ş'});
        add("an endless line is cut", "ilk\r\n" + QByteArray(10 << 20, 'x') + "\r\nson\r\n",
            {u"ilk"_s, QString(LineReader::longestLine, u'x'), u"son"_s});
    }
    void linesEndInAnyOfThreeWays()
    {
        QFETCH(QByteArray, bytes);
        QTEST(linesOf(bytes), "lines");
    }

    void aValueThatWouldEndItsQuotesIsNoticed_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("breaks");
        QTest::newRow("no apostrophe") << u"baba \"x\" --"_s << false;
        QTest::newRow("one in the midst") << u"baba'nın"_s << true;
        QTest::newRow("one at the end") << u"baba'"_s << true;
        QTest::newRow("a pair") << u"baba''nın"_s << false;
        QTest::newRow("a pair at the end") << u"baba''"_s << false;
        QTest::newRow("a pair and one more") << u"baba'''"_s << true;
        QTest::newRow("two apart") << u"'a'"_s << true;
    }
    void aValueThatWouldEndItsQuotesIsNoticed()
    {
        QFETCH(QString, value);
        const Statement statement = Statement(u"where kod='").value(value).text(u"'");
        QCOMPARE(statement.text(), u"where kod='"_s + value + u'\'');
        QTEST(statement.breakingValue().has_value(), "breaks");
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
};

QTEST_GUILESS_MAIN(TestBase)
#include "tst_base.moc"
