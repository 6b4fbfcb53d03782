#include "base/codepage.h"
#include "frame/text/dates.h"
#include "frame/text/ini.h"
#include "frame/text/numbers.h"
#include "frame/text/spellings.h"
#include "support/failing.h"
#include "support/fakes.h"

#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

class TestText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMaskSpellsItsDigits_data()
    {
        QTest::addColumn<Mask>("mask");
        QTest::addColumn<QString>("positive"); // 1234,5678
        QTest::addColumn<QString>("negative"); // -1234,5678
        QTest::addColumn<QString>("half");     // 0,5
        QTest::addColumn<QString>("zero");
        const auto row = [](const char *name, Mask mask, const QString &positive,
                            const QString &half, const QString &zero) {
            QTest::newRow(name) << mask << positive << u'-' + positive << half << zero;
        };
        row("#.00", "#.00"_mask, u"1234,57"_s, u",50"_s, u",00"_s);
        row("#.0000", "#.0000"_mask, u"1234,5678"_s, u",5000"_s, u",0000"_s);
        row("#0.0000", "#0.0000"_mask, u"1234,5678"_s, u"0,5000"_s, u"0,0000"_s);
        row("#0.000000", "#0.000000"_mask, u"1234,567800"_s, u"0,500000"_s, u"0,000000"_s);
        row("#0.00000000", "#0.00000000"_mask, u"1234,56780000"_s, u"0,50000000"_s,
            u"0,00000000"_s);
        row("##0.00", "##0.00"_mask, u"1234,57"_s, u"0,50"_s, u"0,00"_s);
        row("#,###.00", "#,###.00"_mask, u"1.234,57"_s, u",50"_s, u",00"_s);
        row("#,##0.00", "#,##0.00"_mask, u"1.234,57"_s, u"0,50"_s, u"0,00"_s);
        row("#,###.0000", "#,###.0000"_mask, u"1.234,5678"_s, u",5000"_s, u",0000"_s);
        row("00", "00"_mask, u"1235"_s, u"01"_s, u"00"_s);
        row("000", "000"_mask, u"1235"_s, u"001"_s, u"000"_s);
        row("000000", "000000"_mask, u"001235"_s, u"000001"_s, u"000000"_s);
    }
    void everyMaskSpellsItsDigits()
    {
        QFETCH(Mask, mask);
        QTEST(masked(1234.5678, mask), "positive");
        QTEST(masked(-1234.5678, mask), "negative");
        QTEST(masked(0.5, mask), "half");
        QTEST(masked(0.0, mask), "zero");
        QTEST(masked(u"1234,5678"_s, mask), "positive");
        QTEST(masked(0.5F, mask), "half");
    }

    void halvesAreRoundedAwayFromZero_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Mask>("mask");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QString &text, Mask mask,
                            const QString &expected) {
            QTest::newRow(name) << text << mask << expected;
        };
        row("1,005 is binary below the half", u"1,005"_s, "##0.00"_mask, u"1,01"_s);
        row("2,675 is binary below the half", u"2,675"_s, "##0.00"_mask, u"2,68"_s);
        row("0,285 is binary below the half", u"0,285"_s, "#.00"_mask, u",29"_s);
        row("negative half", u"-2,675"_s, "##0.00"_mask, u"-2,68"_s);
        row("even half", u"0,125"_s, "##0.00"_mask, u"0,13"_s);
        row("15 digits below the half", u"1,00499999999999"_s, "##0.00"_mask, u"1,00"_s);
        row("the 16th digit makes the half", u"1,0049999999999999"_s, "##0.00"_mask, u"1,01"_s);
        row("carry into the whole part", u"0,995"_s, "##0.00"_mask, u"1,00"_s);
        row("carry without leading zero", u"0,99995"_s, "#.0000"_mask, u"1,0000"_s);
        row("carry makes a group", u"999,995"_s, "#,##0.00"_mask, u"1.000,00"_s);
        row("carry makes two groups", u"999999,995"_s, "#,###.00"_mask, u"1.000.000,00"_s);
        row("half of the last place alone", u"0,005"_s, "##0.00"_mask, u"0,01"_s);
        row("half of the fourth place alone", u"0,00005"_s, "#.0000"_mask, u",0001"_s);
        row("less than half of the last place", u"0,0049"_s, "##0.00"_mask, u"0,00"_s);
        row("far below the last place", u"0,0000006"_s, "#.00"_mask, u",00"_s);
        row("9,5 under two digits", u"9,5"_s, "00"_mask, u"10"_s);
        row("groups", u"1234567,891"_s, "#,##0.00"_mask, u"1.234.567,89"_s);
        row("no group under a thousand", u"-999,99"_s, "#,###.00"_mask, u"-999,99"_s);
        row("groups in the text", u"1.234.567,8"_s, "#.00"_mask, u"1234567,80"_s);
        row("blanks around", u"  12,5 "_s, "#.00"_mask, u"12,50"_s);
        row("huge", u"100000000000000000000"_s, "#,##0.00"_mask,
            u"100.000.000.000.000.000.000,00"_s);
        row("more than 15 digits", u"123456789012345678"_s, "#.00"_mask,
            u"123456789012346000,00"_s);
        row("no number stays as it is", u" yok "_s, "#.00"_mask, u" yok "_s);
        row("nothing stays nothing", u""_s, "#.00"_mask, u""_s);
    }
    void halvesAreRoundedAwayFromZero()
    {
        QFETCH(QString, text);
        QFETCH(Mask, mask);
        QTEST(masked(text, mask), "expected");
    }

    void aSinglePrecisionNumberIsMaskedFromItsSevenDigits()
    {
        QCOMPARE(masked(1234567.89F, "#,##0.00"_mask), u"1.234.568,00"_s);
        QCOMPARE(masked(123456.785F, "#.00"_mask), u"123456,80"_s);
        QCOMPARE(masked(0.1F * 3, "#.0000"_mask), u",3000"_s);
        QCOMPARE(masked(1.005F, "##0.00"_mask), u"1,01"_s);
        QCOMPARE(masked(0.045F, "##0.00"_mask), u"0,05"_s);
        QCOMPARE(masked(16777216.F, "#.00"_mask), u"16777220,00"_s);
        QCOMPARE(masked(-0.5F, "#.0000"_mask), u"-,5000"_s);
    }

    void withoutMaskANumberIsShortAndHasNoExponent()
    {
        QCOMPARE(toText(100.0), u"100"_s);
        QCOMPARE(toText(0.25), u"0,25"_s);
        QCOMPARE(toText(-1234.5), u"-1234,5"_s);
        QCOMPARE(toText(0.0), u"0"_s);
        QCOMPARE(toText(-0.0), u"0"_s);
        QCOMPARE(toText(1e-7), u"0,0000001"_s);
        QCOMPARE(toText(1e20), u"100000000000000000000"_s);
        QCOMPARE(toText(0.1 + 0.2), u"0,3"_s);
        QCOMPARE(toText(1.0 / 3), u"0,333333333333333"_s);
        QCOMPARE(toText(2.0 / 3), u"0,666666666666667"_s);
        QCOMPARE(toText(123456789012345678.0), u"123456789012346000"_s);
        QCOMPARE(toText(0.1F * 3), u"0,3"_s);
        QCOMPARE(toText(1.0F / 3), u"0,3333333"_s);
        QCOMPARE(toText(1234567.89F), u"1234568"_s);
        QCOMPARE(toText(16777216.F), u"16777220"_s);
        QCOMPARE(toText(1e-7F), u"0,0000001"_s);
        QCOMPARE(toText(1e20F), u"100000000000000000000"_s);
    }

    void aTextIsANumberUnderTheTurkishMarksAlone_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("expected");
        QTest::newRow("whole") << u"1234"_s << 1234.0;
        QTest::newRow("decimals") << u"1234,56"_s << 1234.56;
        QTest::newRow("groups") << u"1.234.567,8"_s << 1234567.8;
        QTest::newRow("a point never marks decimals") << u"12.50"_s << 1250.0;
        QTest::newRow("no digit before the mark") << u",5"_s << 0.5;
        QTest::newRow("masked zero") << u",00"_s << 0.0;
        QTest::newRow("negative below 1") << u"-,5"_s << -0.5;
        QTest::newRow("plus") << u"+7"_s << 7.0;
        QTest::newRow("leading zeros") << u"000012,3400"_s << 12.34;
        QTest::newRow("blanks around") << u"  -12,5  "_s << -12.5;
        QTest::newRow("many digits") << u"100000000000000000000"_s << 1e20;
    }
    void aTextIsANumberUnderTheTurkishMarksAlone()
    {
        QFETCH(QString, text);
        QTEST(toNumber(text), "expected");
    }

    void aTextThatIsNoNumberIsAFailure_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text :
             {"",      "   ", "abc", "12a",  "a12", "1,2,3", "1 234", "--5", "+-5", "-", ",", ".",
              "1,5.0", "1e5", "1E5", "0x10", "nan", "inf",   "&H10",  "12%", "1;2", "٣", "½"})
            QTest::addRow("\"%s\"", text) << QString::fromUtf8(text);
        QTest::newRow("endless") << QString(100000, u'x');
    }
    void aTextThatIsNoNumberIsAFailure()
    {
        QFETCH(QString, text);
        QVERIFY(!number(text));
        QVERIFY(!failureOf([&] { toNumber(text); }).isEmpty());
        QVERIFY(!failureOf([&] { toSingleNumber(text); }).isEmpty());
    }

    void arithmeticThatHasNoResultIsAFailure()
    {
        QVERIFY_THROWS_EXCEPTION(Failure, divided(1, 0));
        QVERIFY_THROWS_EXCEPTION(Failure, divided(0, -0.0));
        QCOMPARE(divided(1, -4), -0.25);
        QVERIFY_THROWS_EXCEPTION(Failure, toSingleNumber(u'4' + QString(38, u'0')));
        QVERIFY_THROWS_EXCEPTION(Failure, toSingle(-1e39));
        QVERIFY_THROWS_EXCEPTION(Failure, toSingle(qQNaN()));
        QCOMPARE(toSingleNumber(u"0,1"), 0.1F);
    }

    void dateKeysArePaddedAndCompareAsText()
    {
        QCOMPARE(tarihanahtari(u"2024"_s, u"3"_s, u"7"_s), u"20240307"_s);
        QCOMPARE(tarihanahtari(u"2024"_s, u"11"_s, u"30"_s), u"20241130"_s);
        QCOMPARE(tarihanahtari(u"24"_s, u"03"_s, u"07"_s), u"240307"_s);
        QVERIFY(tarihanahtari(u"2024"_s, u"9"_s, u"30"_s) <
                tarihanahtari(u"2024"_s, u"10"_s, u"1"_s));
    }

    void aFileDateIsTurnedByPositionAlone()
    {
        QCOMPARE(tarihcevir(u"20240307"), u"07.03.2024"_s);
        QCOMPARE(tarihcevir(u""), u".."_s);
        QCOMPARE(tarihcevir(u"20"), u"..20"_s);
        QCOMPARE(tarihcevir(u"20241"), u".1.2024"_s);
        QCOMPARE(tarihcevir(u"2024117"), u"7.11.2024"_s);
        QCOMPARE(tarihcevir(u"abcdefghij"), u"gh.ef.abcd"_s);
    }

    void amountsLoseTheirGroupMarks()
    {
        QCOMPARE(tutarnoktasil(u"1.234,56"_s), u"1234.56"_s);
        QCOMPARE(tutarnoktasil(u"1.234.567,8"_s), u"1234567.8"_s);
        QCOMPARE(tutarnoktasil(u"12.50"_s), u"1250"_s);
        QCOMPARE(tutarnoktasil(u",50"_s), u".50"_s);
        QCOMPARE(tutarnoktasil(u"1,2,3"_s), u"1.2.3"_s);
        QCOMPARE(tutarnoktasil(u"yok"_s), u"yok"_s);
    }

    void onlyBlanksGoAndOnlyAtTheEnd()
    {
        QCOMPARE(sonbosluksil(u"  ab  "), u"  ab"_s);
        QCOMPARE(sonbosluksil(u"   "), QString());
        QCOMPARE(sonbosluksil(u"a b\t "), u"a b\t"_s);
        QCOMPARE(sonbosluksil(u"ab\u00A0"), u"ab\u00A0"_s);
        QCOMPARE(trimmedBlanks(u"  a b  ").toString(), u"a b"_s);
        QCOMPARE(trimmedBlanks(u"\ta ").toString(), u"\ta"_s);
    }

    void columnsBeyondTheLineAreEmpty()
    {
        QCOMPARE(columns(u"abcdef", 1, 2).toString(), u"ab"_s);
        QCOMPARE(columns(u"abcdef", 5, 4).toString(), u"ef"_s);
        QCOMPARE(columns(u"abcdef", 7, 1).toString(), QString());
        QCOMPARE(columns(u"", 1, 3).toString(), QString());
    }

    void aDisplayDateIsReadAndAnythingElseIsAFailure()
    {
        QCOMPARE(toDate(u"07.03.2024"), QDate(2024, 3, 7));
        QCOMPARE(toDate(u" 7.3.2024 "), QDate(2024, 3, 7));
        for (const char16_t *text : {u"", u"..", u"31.02.2024", u"20240307", u"07.03", u"03.2024",
                                     u"07.13.2024", u"bugün", u"07.03.2024x"})
            QVERIFY2(!failureOf([&] { toDate(text); }).isEmpty(),
                     qPrintable(QString::fromUtf16(text)));
        QCOMPARE(systemDate(QDate(2024, 3, 7)), u"07.03.2024"_s);
    }

    void aValueIsFoundBySectionAndKeyWithoutCase_data()
    {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("expected");
        QTest::newRow("as written") << u"ID"_s << u"id"_s << u"41"_s;
        QTest::newRow("other case") << u"id"_s << u"ID"_s << u"41"_s;
        QTest::newRow("blanks around the mark") << u"carino"_s << u"120.01"_s << u"5"_s;
        QTest::newRow("quotes keep blanks") << u"carino"_s << u"120.02"_s << u" Şube = 2 "_s;
        QTest::newRow("single quotes") << u"carino"_s << u"120.03"_s << u"tek"_s;
        QTest::newRow("one quote only") << u"carino"_s << u"120.04"_s << u"\"yarım"_s;
        QTest::newRow("empty value") << u"carino"_s << u"120.05"_s << QString();
        QTest::newRow("missing key") << u"carino"_s << u"120"_s << QString();
        QTest::newRow("key of another section") << u"carino"_s << u"id"_s << QString();
        QTest::newRow("missing section") << u"cari"_s << u"id"_s << QString();
        QTest::newRow("a comment is no key") << u"ID"_s << u"; id"_s << QString();
    }
    void aValueIsFoundBySectionAndKeyWithoutCase()
    {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"cariref.kvz"_s);
        const QString text =
            u"[ID]\r\nid=41\r\n\r\n [carino] \r\n 120.01 = 5 \r\n"
            "120.02=\" Şube = 2 \"\r\n120.03='tek'\r\n120.04=\"yarım\r\n120.05=\r\n"_s;
        writeBytes(path, toCodePage(text));
        QTEST(inioku(section, key, path), "expected");
        writeBytes(path, "\xEF\xBB\xBF" + QString(text).replace(u"\r\n"_s, u"\n"_s).toUtf8());
        QTEST(inioku(section, key, path), "expected");
        QCOMPARE(inioku(section, key, folder.filePath(u"yok.kvz"_s)), QString());
        QVERIFY(!QFile::exists(folder.filePath(u"yok.kvz"_s)));
    }

    void aWrittenValueTakesItsPlaceAndLeavesTheOtherLinesAlone()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"cariref.kvz"_s);
        QCOMPARE(iniyaz(u"id"_s, u"id"_s, u"1"_s, path), 0); // makes the file
        QCOMPARE(readBytes(path), QByteArray("[id]\r\nid=1\r\n"));
        writeBytes(path, "; \xDEube\r\n[id]\r\nid=41\r\neski=a\r\n\r\n[carino]\r\n120.01=40\r\n");
        iniyaz(u"ID"_s, u"id"_s, u"42"_s, path);
        QCOMPARE(readBytes(path), QByteArray("; \xDEube\r\n[id]\r\nid=42\r\neski=a\r\n\r\n"
                                             "[carino]\r\n120.01=40\r\n"));
        iniyaz(u"carino"_s, u"120.02"_s, u"42"_s, path);
        iniyaz(u"id"_s, u"yeni"_s, u"İ"_s, path);
        iniyaz(u"başka"_s, u"x"_s, u"y"_s, path);
        QCOMPARE(readBytes(path),
                 QByteArray("; \xDEube\r\n[id]\r\nid=42\r\neski=a\r\nyeni=\xDD\r\n\r\n"
                            "[carino]\r\n120.01=40\r\n120.02=42\r\n[ba\xFEka]\r\nx=y\r\n"));
        QCOMPARE(contentOf(folder.path()), QStringList{u"cariref.kvz"_s});
    }

    void aValueIsCutToWhatTheReaderHolds()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"cariref.kvz"_s);
        const QString value = QString(255, u'x') + QString(45, u'y');
        iniyaz(u"s"_s, u"k"_s, value, path);
        QCOMPARE(readBytes(path), "[s]\r\nk=" + value.toLatin1() + "\r\n");
        QCOMPARE(inioku(u"s"_s, u"k"_s, path), value.left(255));
    }

    void aWriteThatFailsLeavesTheOldFileAndGivesZero()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"cariref.kvz"_s);
        QCOMPARE(iniyaz(u"id"_s, u"id"_s, u"1"_s, folder.path()), 0);
        QCOMPARE(iniyaz(u"id"_s, u"id"_s, u"1"_s, folder.filePath(u"yok/cariref.kvz"_s)), 0);
        QCOMPARE(contentOf(folder.path()), QStringList{});
        writeBytes(path, "[id]\r\nid=41\r\n");
        {
            const FullDisk disk(4);
            if (!disk.works())
                QSKIP("no way to fill a disk here");
            QCOMPARE(iniyaz(u"id"_s, u"id"_s, u"42"_s, path), 0);
        }
        QCOMPARE(readBytes(path), QByteArray("[id]\r\nid=41\r\n"));
        QCOMPARE(contentOf(folder.path()), QStringList{u"cariref.kvz"_s});
    }
};

QTEST_GUILESS_MAIN(TestText)
#include "tst_text.moc"
