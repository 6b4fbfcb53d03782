#include "base/codepage.h"
#include "base/grid.h"
#include "base/linereader.h"
#include "base/statement.h"
#include "support/fakes.h"
#include "support/table.h"

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
};

QTEST_GUILESS_MAIN(TestBase)
#include "tst_base.moc"
