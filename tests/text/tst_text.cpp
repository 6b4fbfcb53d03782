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
    void everyMaskSpellsItsDigits()
    {
        const auto spelled = [](Mask mask) {
            QStringList all;
            for (const QString &number : {u"1234,5678"_s, u"-1234,5678"_s, u"0,5"_s, u"0"_s})
                all << masked(number, mask);
            return all.join(u'|');
        };
        QCOMPARE(spelled("#.00"_mask), u"1234,57|-1234,57|,50|,00"_s);
        QCOMPARE(spelled("#.0000"_mask), u"1234,5678|-1234,5678|,5000|,0000"_s);
        QCOMPARE(spelled("#0.0000"_mask), u"1234,5678|-1234,5678|0,5000|0,0000"_s);
        QCOMPARE(spelled("#0.000000"_mask), u"1234,567800|-1234,567800|0,500000|0,000000"_s);
        QCOMPARE(spelled("##0.00"_mask), u"1234,57|-1234,57|0,50|0,00"_s);
        QCOMPARE(spelled("#,###.00"_mask), u"1.234,57|-1.234,57|,50|,00"_s);
        QCOMPARE(spelled("#,##0.00"_mask), u"1.234,57|-1.234,57|0,50|0,00"_s);
        QCOMPARE(spelled("00"_mask), u"1235|-1235|01|00"_s);
        QCOMPARE(spelled("000000"_mask), u"001235|-001235|000001|000000"_s);
    }

    void aMaskedNumberIsRoundedHalfAwayFromZero()
    {
        // Halves that lie below it in binary, and one that is one there, too.
        QCOMPARE(masked(u"1,005"_s, "##0.00"_mask), u"1,01"_s);
        QCOMPARE(masked(u"-2,675"_s, "##0.00"_mask), u"-2,68"_s);
        QCOMPARE(masked(u"0,125"_s, "##0.00"_mask), u"0,13"_s);
        // Of 16 digits 15 count.
        QCOMPARE(masked(u"1,00499999999999"_s, "##0.00"_mask), u"1,00"_s);
        QCOMPARE(masked(u"1,004999999999999"_s, "##0.00"_mask), u"1,01"_s);
        // No digit is left but the half; less than that; less by a place.
        QCOMPARE(masked(u"0,005"_s, "##0.00"_mask), u"0,01"_s);
        QCOMPARE(masked(u"0,0049"_s, "##0.00"_mask), u"0,00"_s);
        QCOMPARE(masked(u"0,0006"_s, "##0.00"_mask), u"0,00"_s);
        QCOMPARE(masked(u"-0,004"_s, "#.00"_mask), u",00"_s); // nothing left of a negative one
        // Carries: into the whole part, a new group, a second digit.
        QCOMPARE(masked(u"0,99995"_s, "#.0000"_mask), u"1,0000"_s);
        QCOMPARE(masked(u"999999,995"_s, "#,###.00"_mask), u"1.000.000,00"_s);
        QCOMPARE(masked(u"9,5"_s, "00"_mask), u"10"_s);
        QCOMPARE(masked(u"-999,99"_s, "#,###.00"_mask), u"-999,99"_s); // three digits and a sign
        QCOMPARE(masked(u" 1.234.567,8 "_s, "#.00"_mask), u"1234567,80"_s);
        QCOMPARE(masked(u"123456789012345678"_s, "#.00"_mask), u"123456789012346000,00"_s);
        QCOMPARE(masked(u"100000000000000000000"_s, "#,##0.00"_mask),
                 u"100.000.000.000.000.000.000,00"_s);
        QCOMPARE(masked(u"yok "_s, "#.00"_mask), u"yok "_s); // no number
        // Singles have 7 digits.
        QCOMPARE(masked(1234567.89F, "#,##0.00"_mask), u"1.234.568,00"_s);
        QCOMPARE(masked(123456.785F, "#.00"_mask), u"123456,80"_s);
        QCOMPARE(masked(1.005F, "##0.00"_mask), u"1,01"_s);
        QCOMPARE(masked(-0.5, "#.0000"_mask), u"-,5000"_s);
    }

    void withoutMaskANumberIsShortAndHasNoExponent()
    {
        QCOMPARE(toText(100.0), u"100"_s);
        QCOMPARE(toText(-1234.5), u"-1234,5"_s);
        QCOMPARE(toText(-0.0), u"0"_s); // zero without a sign
        QCOMPARE(toText(1e-7), u"0,0000001"_s);
        QCOMPARE(toText(1e20), u"100000000000000000000"_s);
        QCOMPARE(toText(0.1 + 0.2), u"0,3"_s); // the 16th digit is lost
        QCOMPARE(toText(2.0 / 3), u"0,666666666666667"_s);
        QCOMPARE(toText(123456789012345678.0), u"123456789012346000"_s);
        QCOMPARE(toText(0.1F * 3), u"0,3"_s); // the 8th digit of a single is lost
        QCOMPARE(toText(1.0F / 3), u"0,3333333"_s);
        QCOMPARE(toText(16777216.F), u"16777220"_s);
        QCOMPARE(toText(1e-7F), u"0,0000001"_s);
        QCOMPARE(toText(1e20F), u"100000000000000000000"_s);
    }

    void aTextIsANumberUnderTheTurkishMarks()
    {
        QCOMPARE(toNumber(u"000012,3400"_s), 12.34);
        QCOMPARE(toNumber(u"1.234.567,8"_s), 1234567.8);
        QCOMPARE(toNumber(u"12.50"_s), 1250.0); // a point is a group mark
        QCOMPARE(toNumber(u",00"_s), 0.0);
        QCOMPARE(toNumber(u"-,5"_s), -0.5);
        QCOMPARE(toNumber(u"+7"_s), 7.0);
        QCOMPARE(toNumber(u"  -12,5  "_s), -12.5);
        QCOMPARE(toNumber(u"100000000000000000000"_s), 1e20);
    }

    void aTextThatIsNoNumberIsAFailure()
    {
        for (const char *text :
             {"",   "   ",   "abc", "12a",  "a12", "1,2,3", "1 234", "--5", "+-5", "-", ",", ".",
              ".5", "1,5.0", "1e5", "0x10", "nan", "inf",   "&H10",  "12%", "1;2", "٣", "½"})
            QVERIFY2(passOver([&] { toNumber(QString::fromUtf8(text)); }), text);
        QVERIFY_THROWS_EXCEPTION(Failure, toNumber(QString(100000, u'x')));
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

    void aDateIsTurnedByPositionWhateverItHolds()
    {
        QCOMPARE(tarihcevir(u"20240307"_s), u"07.03.2024"_s);
        QCOMPARE(tarihcevir(u"2024117"_s), u"7.11.2024"_s);
        QCOMPARE(tarihcevir(u"20241"_s), u".1.2024"_s);
        QCOMPARE(tarihcevir(u"20"_s), u"..20"_s);
        QCOMPARE(tarihcevir({}), u".."_s);
        QCOMPARE(tarihcevir(u"abcdefghij"_s), u"gh.ef.abcd"_s);
    }

    void aShownDateIsReadAndAnythingElseIsAFailure()
    {
        QCOMPARE(toDate(u"07.03.2024"_s), QDate(2024, 3, 7));
        QCOMPARE(toDate(u" 7-3-2024 "_s), QDate(2024, 3, 7));
        QCOMPARE(toDate(u"7/3/29"_s), QDate(2029, 3, 7)); // the last short year of this century
        QCOMPARE(toDate(u"7/3/30"_s), QDate(1930, 3, 7));
        QCOMPARE(toDate(u"7/3/4"_s), QDate(2004, 3, 7));
        QCOMPARE(toDate(u"7/3/204"_s), QDate(204, 3, 7));
        for (const char *text : {"", "..", "31.02.2024", "20240307", "07.03", "03.2024",
                                 "07.13.2024", "bugün", "07.03.2024x"})
            QVERIFY2(passOver([&] { toDate(QString::fromUtf8(text)); }), text);
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
