#include "base/codepage.h"
#include "support/fakes.h"
#include "text/dates.h"
#include "text/ini.h"
#include "text/numbers.h"
#include "text/spellings.h"

using namespace kervan;

class TestText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMaskSpellsItsDigits_data()
    {
        QTest::addColumn<Mask>("mask");
        QTest::addColumn<QString>("many");     // 1234,5678
        QTest::addColumn<QString>("negative"); // -1234,5678
        QTest::addColumn<QString>("half");     // 0,5
        QTest::addColumn<QString>("zero");
        const auto add = [](const char *name, Mask mask, const QStringList &spelled) {
            QTestData &row = QTest::newRow(name) << mask;
            for (const QString &text : spelled)
                row << text;
        };
        add("#.00", "#.00"_mask, {u"1234,57"_s, u"-1234,57"_s, u",50"_s, u",00"_s});
        add("#.0000", "#.0000"_mask, {u"1234,5678"_s, u"-1234,5678"_s, u",5000"_s, u",0000"_s});
        add("#0.0000", "#0.0000"_mask, {u"1234,5678"_s, u"-1234,5678"_s, u"0,5000"_s, u"0,0000"_s});
        add("#0.000000", "#0.000000"_mask,
            {u"1234,567800"_s, u"-1234,567800"_s, u"0,500000"_s, u"0,000000"_s});
        add("##0.00", "##0.00"_mask, {u"1234,57"_s, u"-1234,57"_s, u"0,50"_s, u"0,00"_s});
        add("#,###.00", "#,###.00"_mask, {u"1.234,57"_s, u"-1.234,57"_s, u",50"_s, u",00"_s});
        add("#,##0.00", "#,##0.00"_mask, {u"1.234,57"_s, u"-1.234,57"_s, u"0,50"_s, u"0,00"_s});
        add("00", "00"_mask, {u"1235"_s, u"-1235"_s, u"01"_s, u"00"_s});
        add("000000", "000000"_mask, {u"001235"_s, u"-001235"_s, u"000001"_s, u"000000"_s});
    }
    void everyMaskSpellsItsDigits()
    {
        QFETCH(Mask, mask);
        QTEST(masked(u"1234,5678"_s, mask), "many");
        QTEST(masked(u"-1234,5678"_s, mask), "negative");
        QTEST(masked(u"0,5"_s, mask), "half");
        QTEST(masked(u"0"_s, mask), "zero");
    }

    void aMaskedNumberIsRoundedHalfAwayFromZero_data()
    {
        QTest::addColumn<QString>("spelled");
        QTest::addColumn<QString>("expected");
        const auto add = [](const char *name, const auto &number, Mask mask, const QString &text) {
            QTest::newRow(name) << masked(number, mask) << text;
        };
        add("a half that lies below it in binary", u"1,005"_s, "##0.00"_mask, u"1,01"_s);
        add("another one", u"2,675"_s, "##0.00"_mask, u"2,68"_s);
        add("a negative half", u"-2,675"_s, "##0.00"_mask, u"-2,68"_s);
        add("a half in binary, too", u"0,125"_s, "##0.00"_mask, u"0,13"_s);
        add("15 digits below a half", u"1,00499999999999"_s, "##0.00"_mask, u"1,00"_s);
        add("16 digits count as 15", u"1,004999999999999"_s, "##0.00"_mask, u"1,01"_s);
        add("no digit left but the half", u"0,005"_s, "##0.00"_mask, u"0,01"_s);
        add("less than that", u"0,0049"_s, "##0.00"_mask, u"0,00"_s);
        add("less by a place", u"0,0006"_s, "##0.00"_mask, u"0,00"_s);
        add("nothing left of a negative one", u"-0,004"_s, "#.00"_mask, u",00"_s);
        add("a carry into the whole part", u"0,99995"_s, "#.0000"_mask, u"1,0000"_s);
        add("a carry into a new group", u"999999,995"_s, "#,###.00"_mask, u"1.000.000,00"_s);
        add("a carry into a second digit", u"9,5"_s, "00"_mask, u"10"_s);
        add("three digits and a sign", u"-999,99"_s, "#,###.00"_mask, u"-999,99"_s);
        add("group marks and blanks in the text", u" 1.234.567,8 "_s, "#.00"_mask, u"1234567,80"_s);
        add("18 digits", u"123456789012345678"_s, "#.00"_mask, u"123456789012346000,00"_s);
        add("21 digits in groups", u"100000000000000000000"_s, "#,##0.00"_mask,
            u"100.000.000.000.000.000.000,00"_s);
        add("no number", u"yok "_s, "#.00"_mask, u"yok "_s);
        add("a single has 7 digits", 1234567.89F, "#,##0.00"_mask, u"1.234.568,00"_s);
        add("a single below a half", 123456.785F, "#.00"_mask, u"123456,80"_s);
        add("a single half", 1.005F, "##0.00"_mask, u"1,01"_s);
        add("a double", -0.5, "#.0000"_mask, u"-,5000"_s);
    }
    void aMaskedNumberIsRoundedHalfAwayFromZero()
    {
        QFETCH(QString, spelled);
        QTEST(spelled, "expected");
    }

    void withoutMaskANumberIsShortAndHasNoExponent_data()
    {
        QTest::addColumn<QString>("spelled");
        QTest::addColumn<QString>("expected");
        QTest::newRow("whole") << toText(100.0) << u"100"_s;
        QTest::newRow("with decimals") << toText(-1234.5) << u"-1234,5"_s;
        QTest::newRow("below 1") << toText(0.25) << u"0,25"_s;
        QTest::newRow("zero without a sign") << toText(-0.0) << u"0"_s;
        QTest::newRow("small") << toText(1e-7) << u"0,0000001"_s;
        QTest::newRow("large") << toText(1e20) << u"100000000000000000000"_s;
        QTest::newRow("the 16th digit is lost") << toText(0.1 + 0.2) << u"0,3"_s;
        QTest::newRow("15 digits") << toText(2.0 / 3) << u"0,666666666666667"_s;
        QTest::newRow("18 digits") << toText(123456789012345678.0) << u"123456789012346000"_s;
        QTest::newRow("the 8th digit of a single is lost") << toText(0.1F * 3) << u"0,3"_s;
        QTest::newRow("7 digits of a single") << toText(1.0F / 3) << u"0,3333333"_s;
        QTest::newRow("8 digits of a single") << toText(16777216.F) << u"16777220"_s;
        QTest::newRow("small single") << toText(1e-7F) << u"0,0000001"_s;
        QTest::newRow("large single") << toText(1e20F) << u"100000000000000000000"_s;
    }
    void withoutMaskANumberIsShortAndHasNoExponent()
    {
        QFETCH(QString, spelled);
        QTEST(spelled, "expected");
    }

    void aTextIsANumberUnderTheTurkishMarks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("number");
        QTest::newRow("whole") << u"1234"_s << 1234.0;
        QTest::newRow("decimals") << u"000012,3400"_s << 12.34;
        QTest::newRow("groups") << u"1.234.567,8"_s << 1234567.8;
        QTest::newRow("a point is a group mark") << u"12.50"_s << 1250.0;
        QTest::newRow("decimals alone") << u",5"_s << 0.5;
        QTest::newRow("zeros alone") << u",00"_s << 0.0;
        QTest::newRow("minus") << u"-,5"_s << -0.5;
        QTest::newRow("plus") << u"+7"_s << 7.0;
        QTest::newRow("blanks around") << u"  -12,5  "_s << -12.5;
        QTest::newRow("21 digits") << u"100000000000000000000"_s << 1e20;
    }
    void aTextIsANumberUnderTheTurkishMarks()
    {
        QFETCH(QString, text);
        QTEST(toNumber(text), "number");
    }

    void aTextThatIsNoNumberIsAFailure_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text :
             {"",   "   ",   "abc", "12a",  "a12", "1,2,3", "1 234", "--5", "+-5", "-", ",", ".",
              ".5", "1,5.0", "1e5", "0x10", "nan", "inf",   "&H10",  "12%", "1;2", "٣", "½"})
            QTest::addRow("\"%s\"", text) << QString::fromUtf8(text);
        QTest::newRow("very long") << QString(100000, u'x');
    }
    void aTextThatIsNoNumberIsAFailure()
    {
        QFETCH(QString, text);
        QVERIFY_THROWS_EXCEPTION(Failure, toNumber(text));
    }

    void arithmeticThatHasNoResultIsAFailure()
    {
        QVERIFY_THROWS_EXCEPTION(Failure, divided(1, 0));
        QVERIFY_THROWS_EXCEPTION(Failure, divided(0, -0.0));
        QVERIFY_THROWS_EXCEPTION(Failure, toSingleNumber(u'4' + QString(38, u'0')));
        QVERIFY_THROWS_EXCEPTION(Failure, toSingle(-1e39));
        QVERIFY_THROWS_EXCEPTION(Failure, toSingle(qQNaN()));
        QCOMPARE(divided(1, -4), -0.25);
    }

    void aDateIsTurnedByPositionWhateverItHolds_data()
    {
        QTest::addColumn<QString>("fileDate");
        QTest::addColumn<QString>("shown");
        QTest::newRow("a date") << u"20240307"_s << u"07.03.2024"_s;
        QTest::newRow("a digit short") << u"2024117"_s << u"7.11.2024"_s;
        QTest::newRow("year and a digit") << u"20241"_s << u".1.2024"_s;
        QTest::newRow("half a year") << u"20"_s << u"..20"_s;
        QTest::newRow("nothing") << QString() << u".."_s;
        QTest::newRow("letters, and more of them") << u"abcdefghij"_s << u"gh.ef.abcd"_s;
    }
    void aDateIsTurnedByPositionWhateverItHolds()
    {
        QFETCH(QString, fileDate);
        QTEST(tarihcevir(fileDate), "shown");
    }

    void aShownDateIsReadAndAnythingElseIsAFailure_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("date"); // none: a failure
        QTest::newRow("two digits each") << u"07.03.2024"_s << QDate(2024, 3, 7);
        QTest::newRow("one digit and blanks") << u" 7-3-2024 "_s << QDate(2024, 3, 7);
        QTest::newRow("the last short year of this century") << u"7/3/29"_s << QDate(2029, 3, 7);
        QTest::newRow("the first one of the last") << u"7/3/30"_s << QDate(1930, 3, 7);
        QTest::newRow("a year of one digit") << u"7/3/4"_s << QDate(2004, 3, 7);
        QTest::newRow("a year of three digits") << u"7/3/204"_s << QDate(204, 3, 7);
        for (const char *text : {"", "..", "31.02.2024", "20240307", "07.03", "03.2024",
                                 "07.13.2024", "bugün", "07.03.2024x"})
            QTest::addRow("\"%s\"", text) << QString::fromUtf8(text) << QDate();
    }
    void aShownDateIsReadAndAnythingElseIsAFailure()
    {
        QFETCH(QString, text);
        QDate date;
        const auto failed = passOver([&] { date = toDate(text); });
        QTEST(date, "date");
        QCOMPARE(failed.has_value(), date.isNull());
    }

    void aTypedDateIsTheOneMeant_data()
    {
        QTest::addColumn<QDate>("date"); // none: no date
        const QDate day(2024, 3, 7);
        for (const char *text : {"07.03.2024", "7/3/24", " 7-3-2024 ", "7 3 2024", "07032024",
                                 "070324", "0703", "7.3", "07.03.", "2024-03-07", "20240307",
                                 "07.03.2024 16:30:00", "2024-03-07T00:00:00", "7,3,2024"})
            QTest::newRow(text) << day;
        QTest::newRow("29.02.24") << QDate(2024, 2, 29);
        QTest::newRow("1.1.80") << QDate(1980, 1, 1);
        for (const char *text :
             {"", "7", "703", "29.02.2023", "31.02.2024", "0.3.2024", "7.13.2024", "07.03.204",
              "07.03.1752", "07.0324", "7.3.2024.1", "70320244", "yedi", "7.3.2024 sabah"})
            QTest::addRow("\"%s\" is none", text) << QDate();
    }
    void aTypedDateIsTheOneMeant()
    {
        QFETCH(QDate, date);
        const QString row = QString::fromUtf8(QTest::currentDataTag());
        const QString text = row.startsWith(u'"') ? row.section(u'"', 1, 1) : row;
        QCOMPARE(typedDate(text, 2024).value_or(QDate()), date);
    }

    void keysAndTheSystemDateAreSpelled()
    {
        QCOMPARE(tarihanahtari(u"2024"_s, u"3"_s, u"7"_s), u"20240307"_s);
        QCOMPARE(tarihanahtari(u"24"_s, u"11"_s, u"30"_s), u"241130"_s);
        QCOMPARE(systemDate(QDate(2024, 3, 7)), u"07.03.2024"_s);
    }

    void textsLoseTheirMarksAndBlanksAndAreCutByColumn()
    {
        QCOMPARE(tutarnoktasil(u"1.234.567,8"_s), u"1234567.8"_s);
        QCOMPARE(tutarnoktasil(u"12.50"_s), u"1250"_s); // loses the point that it has already
        QCOMPARE(sonbosluksil(u"  a b  "), u"  a b"_s);
        QCOMPARE(sonbosluksil(u"   "), QString());
        QCOMPARE(sonbosluksil(u"a\t "), u"a\t"_s);
        QCOMPARE(sonbosluksil(u"b\u00A0"), u"b\u00A0"_s);
        QCOMPARE(trimmedBlanks(u" \ta b  "), u"\ta b");
        QCOMPARE(cut(u"abcdef", 1, 2), u"ab");
        QCOMPARE(cut(u"abcdef", 5, 4), u"ef");
        QVERIFY(cut(u"abcdef", 7, 1).isEmpty() && cut(u"", 1, 3).isEmpty());
    }

    void aValueIsFoundBySectionAndKeyWithoutCase()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"cariref.kvz"_s);
        const QString text =
            u"[ID]\r\nid=41\r\n; id2=4\r\n\r\n [carino] \r\n 120.01 = 5 \r\n"
            "120.02=\" Şube = 2 \"\r\n120.03='tek'\r\n120.04=\"yarım\r\n120.05=\r\n"_s;
        for (const QByteArray &bytes : {toCodePage(text), "\xEF\xBB\xBF" + text.toUtf8(),
                                        toCodePage(text).replace("\r\n", "\n")}) {
            writeBytes(path, bytes);
            QCOMPARE(inioku(u"id"_s, u"ID"_s, path), u"41"_s);
            QCOMPARE(inioku(u"id"_s, u"id2"_s, path), QString()); // a remark
            QCOMPARE(inioku(u"id"_s, u"120.01"_s, path), QString());
            QCOMPARE(inioku(u"carino"_s, u"120.01"_s, path), u"5"_s);
            QCOMPARE(inioku(u"carino"_s, u"120.02"_s, path), u" Şube = 2 "_s);
            QCOMPARE(inioku(u"carino"_s, u"120.03"_s, path), u"tek"_s);
            QCOMPARE(inioku(u"carino"_s, u"120.04"_s, path), u"\"yarım"_s);
            QCOMPARE(inioku(u"carino"_s, u"120.05"_s, path), QString());
            QCOMPARE(inioku(u"carino"_s, u"120"_s, path), QString());
            QCOMPARE(inioku(u"cari"_s, u"id"_s, path), QString());
        }
    }

    void aWrittenValueTakesItsPlaceAndLeavesTheOtherLinesAlone()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"cariref.kvz"_s);
        writeBytes(path, "; \xDEube\r\n[id]\r\nid=41\r\neski=a\r\n\r\n[carino]\r\n120.01=40\r\n");
        iniyaz(u"ID"_s, u"id"_s, u"42"_s, path);
        iniyaz(u"carino"_s, u"120.02"_s, u"42"_s, path);
        iniyaz(u"id"_s, u"yeni"_s, u"İ"_s, path);
        iniyaz(u"başka"_s, u"x"_s, u"y"_s, path);
        const QByteArray expected = "; \xDEube\r\n[id]\r\nid=42\r\neski=a\r\nyeni=\xDD\r\n\r\n"
                                    "[carino]\r\n120.01=40\r\n120.02=42\r\n[ba\xFEka]\r\nx=y\r\n";
        QCOMPARE(readBytes(path), expected);
        // A value is written whole, and read up to what a reader holds.
        iniyaz(u"uzun"_s, u"k"_s, QString(300, u'x'), path);
        QCOMPARE(readBytes(path), expected + "[uzun]\r\nk=" + QByteArray(300, 'x') + "\r\n");
        QCOMPARE(inioku(u"uzun"_s, u"k"_s, path), QString(255, u'x'));
    }

    void aWriteThatFailsLeavesTheOldFileAndGivesZero()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"cariref.kvz"_s);
        QCOMPARE(iniyaz(u"id"_s, u"id"_s, u"1"_s, folder.path()), 0);
        iniyaz(u"id"_s, u"id"_s, u"41"_s, path);
        if (!onAFullDisk(4, [&] { QCOMPARE(iniyaz(u"id"_s, u"id"_s, u"42"_s, path), 0); }))
            QSKIP("no way to fill a disk here");
        QCOMPARE(readBytes(path), QByteArray("[id]\r\nid=41\r\n"));
        QCOMPARE(contentOf(folder.path()), u"cariref.kvz"_s);
    }

    void aFileThatCannotBeReadIsNotReplaced()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"cariref.kvz"_s);
        if (!makeUnreadable(path))
            QSKIP("no way to make an unreadable file here");
        QCOMPARE(iniyaz(u"id"_s, u"id"_s, u"1"_s, path), 0);
        QVERIFY(!QFileInfo(path).isFile());
    }
};

QTEST_GUILESS_MAIN(TestText)
#include "tst_text.moc"
