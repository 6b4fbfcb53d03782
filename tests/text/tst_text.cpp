#include "base/codepage.h"
#include "support/fakes.h"
#include "text/dates.h"
#include "text/ini.h"
#include "text/numbers.h"
#include "text/spellings.h"

using namespace kervan;

namespace {

// Every number of the list under the mask.
QString under(Mask mask, const QString &numbers)
{
    QStringList texts;
    for (const QString &number : numbers.split(u' '))
        texts << masked(number, mask);
    return texts.join(u' ');
}

template<class... Number>
QString spelled(Number... numbers)
{
    return QStringList{toText(numbers)...}.join(u' ');
}

} // namespace

class TestText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMaskSpellsItsDigits()
    {
        const std::pair<Mask, QString> cases[] = {
            {"#.00"_mask, u"1234,57 -1234,57 ,50 ,00"_s},
            {"#.0000"_mask, u"1234,5678 -1234,5678 ,5000 ,0000"_s},
            {"#0.0000"_mask, u"1234,5678 -1234,5678 0,5000 0,0000"_s},
            {"#0.000000"_mask, u"1234,567800 -1234,567800 0,500000 0,000000"_s},
            {"##0.00"_mask, u"1234,57 -1234,57 0,50 0,00"_s},
            {"#,###.00"_mask, u"1.234,57 -1.234,57 ,50 ,00"_s},
            {"#,##0.00"_mask, u"1.234,57 -1.234,57 0,50 0,00"_s},
            {"00"_mask, u"1235 -1235 01 00"_s},
            {"000000"_mask, u"001235 -001235 000001 000000"_s},
        };
        for (const auto &[mask, expected] : cases)
            QCOMPARE(under(mask, u"1234,5678 -1234,5678 0,5 0"_s), expected);
    }

    void halvesAreRoundedAwayFromZero()
    {
        // The first two are below the half in binary; the 16th digit makes another half.
        QCOMPARE(under("##0.00"_mask, u"1,005 2,675 -2,675 0,125 1,00499999999999 0,995"_s),
                 u"1,01 2,68 -2,68 0,13 1,00 1,00"_s);
        QCOMPARE(under("##0.00"_mask, u"1,0049999999999999 0,005 0,0049"_s), u"1,01 0,01 0,00"_s);
        QCOMPARE(
            under("#.00"_mask, u"0,285 0,0000006 1.234.567,8 123456789012345678 -0,004 yok "_s),
            u",29 ,00 1234567,80 123456789012346000,00 ,00 yok "_s);
        QCOMPARE(under("#.0000"_mask, u"0,99995 0,00005"_s), u"1,0000 ,0001"_s);
        QCOMPARE(under("#,##0.00"_mask, u"999,995 1234567,891 100000000000000000000"_s),
                 u"1.000,00 1.234.567,89 100.000.000.000.000.000.000,00"_s);
        QCOMPARE(under("#,###.00"_mask, u"999999,995 -999,99"_s), u"1.000.000,00 -999,99"_s);
        QCOMPARE(under("00"_mask, u"9,5"_s) + masked(u" 12,5 "_s, "#.00"_mask), u"1012,50"_s);
        // Single precision has seven digits.
        QCOMPARE(masked(1234567.89F, "#,##0.00"_mask), u"1.234.568,00"_s);
        QCOMPARE(masked(123456.785F, "#.00"_mask), u"123456,80"_s);
        QCOMPARE(masked(1.005F, "##0.00"_mask), u"1,01"_s);
        QCOMPARE(masked(-0.5F, "#.0000"_mask), u"-,5000"_s);
    }

    void withoutMaskANumberIsShortAndHasNoExponent()
    {
        QCOMPARE(spelled(100.0, 0.25, -1234.5, 0.0, -0.0, 1e-7, 1e20, 0.1 + 0.2),
                 u"100 0,25 -1234,5 0 0 0,0000001 100000000000000000000 0,3"_s);
        QCOMPARE(spelled(1.0 / 3, 2.0 / 3, 123456789012345678.0),
                 u"0,333333333333333 0,666666666666667 123456789012346000"_s);
        QCOMPARE(spelled(0.1F * 3, 1.0F / 3, 1234567.89F, 16777216.F, 1e-7F, 1e20F),
                 u"0,3 0,3333333 1234568 16777220 0,0000001 100000000000000000000"_s);
    }

    void aTextIsANumberUnderTheTurkishMarksAlone()
    {
        const auto read = [](auto... texts) {
            return spelled(toNumber(texts)...);
        };
        QCOMPARE(read(u"1234", u"1234,56", u"1.234.567,8", u"12.50", u",5", u",00", u"-,5", u"+7"),
                 u"1234 1234,56 1234567,8 1250 0,5 0 -0,5 7"_s);
        QCOMPARE(read(u"000012,3400", u"  -12,5  ", u"100000000000000000000"),
                 u"12,34 -12,5 100000000000000000000"_s);
        QStringList bad =
            u"|   |abc|12a|a12|1,2,3|1 234|--5|+-5|-|,|.|.5|1,5.0|1e5|0x10|nan|inf|&H10|12%|1;2|٣|½"_s
                .split(u'|');
        for (const QString &text : bad << QString(100000, u'x'))
            QVERIFY2(!failureOf([&] { toNumber(text); }).isEmpty(), qPrintable(text.left(10)));
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

    void datesAreTurnedByPositionAndReadInTheDisplaySpellingAlone()
    {
        QCOMPARE(tarihanahtari(u"2024"_s, u"3"_s, u"7"_s), u"20240307"_s);
        QCOMPARE(tarihanahtari(u"24"_s, u"11"_s, u"30"_s), u"241130"_s);
        QCOMPARE(tarihcevir(u"20240307") + u' ' + tarihcevir(u"2024117"),
                 u"07.03.2024 7.11.2024"_s);
        QCOMPARE(tarihcevir(u"") + u' ' + tarihcevir(u"20") + u' ' + tarihcevir(u"20241"),
                 u".. ..20 .1.2024"_s);
        QCOMPARE(tarihcevir(u"abcdefghij"), u"gh.ef.abcd"_s);
        for (const char16_t *text : {u"07.03.2024", u" 7.3.2024 ", u"7/3/24"})
            QCOMPARE(toDate(text), QDate(2024, 3, 7));
        for (const char16_t *text : {u"", u"..", u"31.02.2024", u"20240307", u"07.03", u"03.2024",
                                     u"07.13.2024", u"bugün", u"07.03.2024x"})
            QVERIFY2(!failureOf([&] { toDate(text); }).isEmpty(),
                     qPrintable(QString::fromUtf16(text)));
        QCOMPARE(systemDate(QDate(2024, 3, 7)), u"07.03.2024"_s);
    }

    void textsLoseTheirMarksAndBlanksAndAreCutByColumn()
    {
        QCOMPARE(tutarnoktasil(u"1.234.567,8 12.50 ,50 1,2,3"_s), u"1234567.8 1250 .50 1.2.3"_s);
        QCOMPARE(sonbosluksil(u"  a b  ") + sonbosluksil(u"   "), u"  a b"_s);
        QCOMPARE(sonbosluksil(u"a\t ") + sonbosluksil(u"b\u00A0"), u"a\tb\u00A0"_s);
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
        const auto read = [&](const QString &section, const QString &keys) {
            QString values;
            for (const QString &key : keys.split(u' '))
                values += u'|' + inioku(section, key, path);
            return values;
        };
        for (const QByteArray &bytes : {toCodePage(text), "\xEF\xBB\xBF" + text.toUtf8(),
                                        toCodePage(text).replace("\r\n", "\n")}) {
            writeBytes(path, bytes);
            QCOMPARE(read(u"id"_s, u"ID id id2 120.01"_s), u"|41|41||"_s);
            QCOMPARE(read(u"carino"_s, u"120.01 120.02 120.03 120.04 120.05 120 id"_s),
                     u"|5| Şube = 2 |tek|\"yarım|||"_s);
            QCOMPARE(read(u"cari"_s, u"id"_s), u"|"_s);
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
};

QTEST_GUILESS_MAIN(TestText)
#include "tst_text.moc"
