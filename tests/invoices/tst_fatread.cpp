// The three readers of the invoice file. Sums are worked out by hand beside each case.

#include "desk.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

const QString noPrices = u"Ürünlerde Bayi Fiyatı Olmayan Faturalar Var...\r\n"
                         "Aşagıdaki Ürünlerin Bayi Fiyatlarını Giriniz. Faturayı Yeniden "
                         "Okutunuz...\r\n"_s;

const QList<int> collectionCells{L1::TahsilatOrani, L1::TahsilatTutari, L1::KasaSatisElemani};

// A line whose every column is "#" but for the fields, so that one cut a column off shows.
Ruler filled(QStringView start)
{
    return Ruler(QString(160, u'#')).put(1, start);
}

QByteArray numbered(QStringView mark, QStringView number)
{
    return Ruler(mark).put(80, number).line();
}

// A line whose product name runs through the columns of the invoice number.
QByteArray goodsNamed(QStringView code, QStringView number)
{
    QByteArray line = goods(code);
    line.replace(79, number.size(), toCodePage(number));
    return line;
}

} // namespace

class TestFatRead : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFieldOfAHeaderComesFromItsColumns();
    void blanksAroundFieldsAndLeadingZerosGo();
    void everyFieldOfALineComesFromItsColumns();
    void onlyRecordsInStateZeroCount();
    void aPersonIsFoundByTheFirstRowWithTheWholeCode();
    void theNextHeaderOverwritesTheCollectionOfTheInvoiceBefore();
    void aCollectionRate_data();
    void aCollectionRate();
    void productsWithoutADealerPriceAreListedInOneBox();
    void numbersGoOnFromTheSideFileToTheRowsThatTheFilterLeft();
    void theDateFilter_data();
    void theDateFilter();
    void aWalk_data();
    void aWalk();
    void theIndexGivesWhatTheWalkGives();
    void amountsOfALine_data();
    void amountsOfALine();
    void theShownLinesKeepThePriceAndNameTheUnit();
    void aLineThatFailsEndsTheWalkWithTheCellsSoFar_data();
    void aLineThatFailsEndsTheWalkWithTheCellsSoFar();
    void aBadQuantityOrPriceStopsTheShownLinesOnlyWhereItIsUsed();
    void aSource_data();
    void aSource();
    void withoutTheDatabaseTheListIsReadAndEveryProductIsMissing();
    void aLockedDatabaseDoesNotHoldUpEveryProduct();
};

void TestFatRead::everyFieldOfAHeaderComesFromItsColumns()
{
    Desk desk;
    desk.t.fill(u"data.dbs"_s, {u"insert into per values (Null,'LOGO8','PERSON08')"_s});
    desk.fat.yukle();
    desk.open(filled(u"@5")
                  .put(5, u"20240229")
                  .put(20, u"PERSON08")
                  .put(28, u"CARI567890")
                  .put(39, u"Çağrı & Şirin'in ĞÜÖİ ığüşöç 34567890 4Z")
                  .put(79, u"Z")
                  .put(80, u"FATURA789012345")
                  .put(96, u"123456789.25")
                  .put(109, u"00000000.125")
                  .put(122, u"000000000.50")
                  .put(135, u"987654321.75")
                  .put(148, u"0")
                  .line());
    QCOMPARE(column(desk.l1(), L1::CariKodu), u"CARI567890"_s);
    QCOMPARE(cells(desk.l1(), 0, {1, 2, 3, 4, 5, 6, 7}),
             u"Çağrı & Şirin'in ĞÜÖİ ığüşöç 34567890 4ZZ|FATURA789012345|LOGO8|29.02.2024|LOGO8|"
             "PERSON08|"_s);
    QCOMPARE(cells(desk.l1(), 0, {8, 9, 10, 11, 12}),
             u"123456789,2500|0,1250|,5000|987654321,7500|"_s);
    QCOMPARE(cells(desk.l1(), 0, {13, 14, 15, 16, 17}), u"||NT000001|KN000001|"_s);
    QVERIFY(desk.fat.liste.listedolu);
    QCOMPARE(desk.fat.liste.satirSayisi.text(), u"1"_s);
    QCOMPARE(desk.fat.baslik.text(), u"FATURA [kaynak.bif]"_s);
}

void TestFatRead::blanksAroundFieldsAndLeadingZerosGo()
{
    Desk desk;
    desk.open(header({.no = u"  F 1"_s,
                      .total = u"   12345.678"_s,
                      .grand = u"     0.00005"_s,
                      .title = u"  Ada"_s,
                      .person = u" S1"_s}));
    QCOMPARE(cells(desk.l1(), 0, {1, 2, 5, 6, 8, 9, 11}),
             u"Ada|F 1|LP1|S1|12345,6780|0,0000|,0001"_s); // half rounds away from zero
}

void TestFatRead::everyFieldOfALineComesFromItsColumns()
{
    const QString name = u"Ad%1Ad"_s.arg(QString(46, u'-'));
    Desk desk({u"KOD456789012345=2,5"_s});
    desk.open(header() + filled(u"@6")
                             .put(31, u"KOD456789012345")
                             .put(46, name)
                             .put(97, u"00003.25")
                             .put(106, u"00000011.805")
                             .put(124, u"00000008.125")
                             .line());
    desk.fat.liste3yukle(u"F1"_s);
    // dealer 2,5 * 3,25 = 8,125; so no margin, and net 11,805 / 1,18 = 10,0042373
    QCOMPARE(cells(desk.fat.l3, 0, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}),
             u"KOD456789012345|%1|3,25|10,00424|18|8,1250|0|0|8,1250|PK"_s.arg(name));
    QCOMPARE(cells(desk.fat.l3, 0, {10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 27, 28, 29, 30, 31}),
             u"0|0|0|0|0|0|0|0|0|0|0|0|8,125|0|0"_s);
}

void TestFatRead::onlyRecordsInStateZeroCount()
{
    Desk desk;
    QByteArray cutOff = header({.no = u"F4"_s});
    cutOff.replace("0\r\n", "\r\n"); // ends in front of the state
    desk.expectBox(noPrices + u"  YOK"_s);
    desk.open(header({.no = u"F1"_s, .state = u"1"_s}) + goods(u"YOK") + header({.no = u"F2"_s}) +
              header({.no = u"F3"_s, .state = u" "_s}) + cutOff + collection(u"50", u"1") +
              collection(u"60", u" ") + Ruler(u"@7").put(80, u"F5").put(148, u"0").line() +
              Ruler(u" @5").put(80, u"F6").put(148, u"0").line());
    QCOMPARE(column(desk.l1(), L1::FaturaNumarasi), u"F2"_s);
    QCOMPARE(cells(desk.l1(), 0, collectionCells), u"||"_s);
    QCOMPARE(desk.storedCounter(), "1\r\n");
}

void TestFatRead::aPersonIsFoundByTheFirstRowWithTheWholeCode()
{
    Desk desk;
    desk.t.fill(u"data.dbs"_s, {u"insert into per values (Null,'SECOND','S1')"_s});
    desk.fat.yukle();
    desk.open(header() + header({.person = u"s1"_s}) + header({.person = u"S11"_s}) + header());
    QCOMPARE(column(desk.l1(), L1::LogoPersonelKodu), u"LP1,,,LP1"_s);
    QCOMPARE(column(desk.l1(), L1::BelgeNumarasi), u"LP1,,,LP1"_s);
    QCOMPARE(column(desk.l1(), L1::KasaSatisElemani), u"LP1,,,"_s);
}

void TestFatRead::theNextHeaderOverwritesTheCollectionOfTheInvoiceBefore()
{
    Desk desk;
    desk.open(collection(u"50") + // in front of all headers: counted and written nowhere
              header({.total = u"80.00"_s}) + collection(u"50") + header({.state = u"1"_s}) +
              collection(u"25") + header({.total = u"0.50"_s}) + header({.total = u"80.00"_s}) +
              collection(u"50") + collection(u"12.5") + header({.state = u"1"_s}));
    QCOMPARE(cells(desk.l1(), 0, collectionCells), u"100|80,0000|LP1"_s);
    QCOMPARE(cells(desk.l1(), 1, collectionCells), u"100|,5000|LP1"_s);
    QCOMPARE(cells(desk.l1(), 2, collectionCells), u"12,5|10|LP1"_s); // 80 * 12,5 / 100
    QCOMPARE(desk.storedCounter(), "8\r\n");                          // 3 headers, 5 collections
}

void TestFatRead::aCollectionRate_data()
{
    QTest::addColumn<QString>("rate");
    QTest::addColumn<QString>("total");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QByteArray>("counter");
    const auto row = [](const char *name, const QString &rate, const QString &total,
                        const QString &expected, bool counts) {
        QTest::newRow(name) << rate << total << expected << QByteArray(counts ? "2\r\n" : "1\r\n");
    };
    row("below 1", u"0.5"_s, u"80"_s, u"0,5|0,4|LP1"_s, true);
    row("filling its columns", u"33.33335"_s, u"1000"_s, u"33,3334|333,334|LP1"_s, true);
    // 123456,78 * 12,5 / 100 = 15432,0975, which has seven digits as a single
    row("amount beyond single precision", u"12.5"_s, u"123456.78"_s, u"12,5|15432,1|LP1"_s, true);
    row("blanks around it", u"    50"_s, u"80"_s, u"50|40|LP1"_s, true);
    row("greater than 0 only before it is masked", u"0.00004"_s, u"80"_s, u"0|0|LP1"_s, true);
    row("without a total", u"50"_s, u""_s, u"50||LP1"_s, true);
    row("0", u"0.00"_s, u"80"_s, u"||"_s, false);
    row("negative", u"-50"_s, u"80"_s, u"||"_s, false);
    row("blank", u""_s, u"80"_s, u"||"_s, false);
    row("unreadable", u"elli"_s, u"80"_s, u"||"_s, false);
}

void TestFatRead::aCollectionRate()
{
    QFETCH(QString, rate);
    QFETCH(QString, total);
    QFETCH(QString, expected);
    QFETCH(QByteArray, counter);
    Desk desk;
    desk.open(header({.total = total}) + collection(rate));
    QCOMPARE(cells(desk.l1(), 0, collectionCells), expected);
    QCOMPARE(desk.storedCounter(), counter);
}

void TestFatRead::productsWithoutADealerPriceAreListedInOneBox()
{
    Desk desk({u"P1=10"_s, u"KR=,01"_s, u"SIFIR=0"_s, u"EKSI=-1"_s, u"BOS="_s, u"HARF=on"_s,
               u"IKI=0"_s, u"IKI=5"_s});
    desk.expectBox(noPrices + u"  YOK  SIFIR  EKSI  YOK  BOS  HARF  IKI  O'NUN"_s);
    desk.open(header() + goods(u"YOK") + goods(u"P1") + goods(u"SIFIR") + goods(u"KR") +
              goods(u"EKSI") + header({.state = u"1"_s}) + goods(u"YOK") + goods(u"BOS") +
              goods(u"HARF") + goods(u"IKI") + goods(u"O'NUN"));
    QCOMPARE(desk.l1().rows(), 1);
}

void TestFatRead::numbersGoOnFromTheSideFileToTheRowsThatTheFilterLeft()
{
    Desk desk;
    writeBytes(desk.t.path(u"kasacariislemno.kvz"_s), "41\r\n");
    const QByteArray bif = header({.no = u"F1"_s, .date = u"20240306"_s}) +
                           header({.no = u"F2"_s}) + header({.no = u"F3"_s}) + collection(u"5");
    desk.fat.liste.Check1.setChecked(true);
    desk.open(bif);
    QCOMPARE(column(desk.l1(), L1::FaturaNumarasi), u"F2,F3"_s);
    QCOMPARE(column(desk.l1(), L1::IslemNo), u"NT000042,NT000043"_s);
    QCOMPARE(column(desk.l1(), L1::KasaIslemNo), u"KN000042,KN000043"_s);
    QCOMPARE(desk.storedCounter(), "45\r\n"); // all three headers and the collection
    desk.fat.otomatikac();
    QCOMPARE(column(desk.l1(), L1::IslemNo), u"NT000046,NT000047"_s);
}

void TestFatRead::theDateFilter_data()
{
    QTest::addColumn<QStringList>("dates");
    QTest::addColumn<QDate>("first");
    QTest::addColumn<QDate>("last");
    QTest::addColumn<QString>("expected");
    const QStringList around{u"20240306"_s, u"20240307"_s, u"20240308"_s, u"20240309"_s};
    QTest::newRow("keeps both bounds")
        << around << QDate(2024, 3, 7) << QDate(2024, 3, 8) << u"07.03.2024,08.03.2024"_s;
    QTest::newRow("removes all when the first day is later than the last")
        << around << QDate(2024, 3, 8) << QDate(2024, 3, 7) << QString();
    QTest::newRow("compares year, then month, then day")
        << QStringList{u"20231231"_s, u"20240131"_s, u"20240201"_s, u"20250115"_s}
        << QDate(2024, 1, 2) << QDate(2024, 2, 1) << u"31.01.2024,01.02.2024"_s;
    QTest::newRow("keeps a row without a date and all behind it")
        << QStringList{u"20240101"_s, u"20240307"_s, u""_s, u"20240101"_s} << QDate(2024, 3, 7)
        << QDate(2024, 3, 7) << u"07.03.2024,..,01.01.2024"_s;
}

void TestFatRead::theDateFilter()
{
    QFETCH(QStringList, dates);
    QFETCH(QDate, first);
    QFETCH(QDate, last);
    QFETCH(QString, expected);
    Desk desk;
    QByteArray bif;
    for (const QString &date : dates)
        bif += header({.date = date});
    desk.fat.liste.d1.setDate(first);
    desk.fat.liste.d2.setDate(last);
    desk.open(bif);
    QCOMPARE(desk.l1().rows(), dates.size());
    desk.fat.liste.Check1.setChecked(true);
    desk.fat.check1sec();
    QCOMPARE(column(desk.l1(), L1::FaturaTarihi), expected);
    desk.fat.otomatikac(); // the same at the end of a read
    QCOMPARE(column(desk.l1(), L1::FaturaTarihi), expected);
}

void TestFatRead::aWalk_data()
{
    QTest::addColumn<QByteArray>("bif");
    QTest::addColumn<QString>("expected");
    const QByteArray f1 = header();
    const QByteArray f2 = header({.no = u"F2"_s});
    const QByteArray a = goods(u"A"), b = goods(u"B"), c = goods(u"C"), d = goods(u"D");
    const QByteArray other = Ruler(u"@7").line();

    QTest::newRow("takes the lines behind the header") << f2 + a + f1 + b + c + f2 + d << u"B,C"_s;
    QTest::newRow("passes over records before the lines") << f1 + other + "\r\n" + a << u"A"_s;
    QTest::newRow("ends at any record behind the lines") << f1 + a + other + b << u"A"_s;
    QTest::newRow("ends at an empty line behind the lines") << f1 + a + "\r\n" + b << u"A"_s;
    QTest::newRow("takes the next invoice's lines for lack of own ones") << f1 + f2 + a << u"A"_s;
    QTest::newRow("takes the first run of a number that stands twice") << f1 + a + f1 + b << u"A"_s;
    QTest::newRow("begins at a product name that holds the number")
        << f2 + a + goodsNamed(u"B", u"F1") + c + f1 + d << u"B,C"_s;
    QTest::newRow("isn't ended by another number in a product name")
        << f1 + a + goodsNamed(u"B", u"F2") + f2 + c << u"A,B"_s;
    QTest::newRow("begins at a header that doesn't count")
        << header({.state = u"1"_s}) + a + f1 + b << u"A"_s;
    QTest::newRow("begins at an unknown record") << numbered(u"##", u"F1") + a + f1 + b << u"A"_s;
    QTest::newRow("trims the number") << numbered(u"@5", u"     F1") + a << u"A"_s;
    QTest::newRow("wants the whole number")
        << numbered(u"@5", u"F1X") + a + numbered(u"@5", u"f1") + b + f1 + c << u"C"_s;
    QTest::newRow("reads columns 80 to 94")
        << Ruler(u"@5").put(79, u"F1").line() + a +
               Ruler(u"@5").put(80, u"F1").put(95, u"9").line() + b
        << u"B"_s;
    QTest::newRow("finds nothing") << f2 + a << QString();
    QByteArray bareEnds = f1 + a + b;
    bareEnds.replace("\r\n", "\n").chop(1);
    QTest::newRow("reads bare line ends and a last line without one") << bareEnds << u"A,B"_s;
}

void TestFatRead::aWalk()
{
    QFETCH(QByteArray, bif);
    QFETCH(QString, expected);
    Desk desk({u"A=1"_s, u"B=1"_s, u"C=1"_s, u"D=1"_s});
    desk.open(bif);
    desk.fat.liste3yukle(u"F1"_s);
    QCOMPARE(column(desk.fat.l3, L3::UrunKodu), expected);
    desk.fat.umurlardetaylioku(u"F1"_s);
    QCOMPARE(column(desk.fat.l2, L2::UrunKodu), expected);
    desk.fat.liste3yukle({});
    desk.fat.umurlardetaylioku({});
    QCOMPARE(desk.fat.l3.rows() + desk.fat.l2.rows(), 0);
}

void TestFatRead::theIndexGivesWhatTheWalkGives()
{
    QRandomGenerator random(20240307);
    const QStringList numbers{u"F1"_s, u"F2"_s, u"F3"_s, u"F4"_s, u"Ğ5"_s, u""_s};
    const QStringList marks{u"@5"_s, u"@5"_s, u"@6"_s, u"@6"_s, u"@6"_s, u"@8"_s, u"@7"_s};
    const QByteArrayList ends{"\r\n", "\n", "\r"};
    QTemporaryDir folder;
    const QString path = folder.filePath(u"rastgele.bif"_s);
    qsizetype taken = 0;
    for (int file = 0; file < 400; ++file) {
        const bool utf8 = random.bounded(8) == 0;
        QByteArray bif = utf8 ? "\xEF\xBB\xBF" : "";
        for (int line = 0, lines = random.bounded(25); line < lines; ++line) {
            Ruler ruler(marks[random.bounded(marks.size())]);
            ruler.put(31, u"L%1"_s.arg(line)).put(80, numbers[random.bounded(numbers.size())]);
            if (random.bounded(40) == 0) // across the buffers of the reader
                ruler.put(100 + random.bounded(140'000), u"son");
            const QString text = random.bounded(12) == 0 ? QString() : ruler.text();
            bif += (utf8 ? text.toUtf8() : toCodePage(text)) + ends[random.bounded(ends.size())];
        }
        if (random.bounded(3) == 0)
            bif.chop(random.bounded(60));
        writeBytes(path, bif);

        BifIndex index(path, {numbers.begin(), numbers.begin() + 1 + random.bounded(5)});
        BifIndex whole(path, {numbers.begin(), numbers.end()});
        for (int walk = 0; walk < 8; ++walk) { // in any order, and again
            const QString number = numbers[random.bounded(5)];
            QStringList plain, indexed, first;
            walkInvoice(path, number, [&](QStringView line) { plain << line.toString(); });
            whole.walkInvoice(number, [&](QStringView line) { indexed << line.toString(); });
            index.walkInvoice(numbers[0], [&](QStringView line) { first << line.toString(); });
            QCOMPARE(indexed, plain);
            if (number == numbers[0])
                QCOMPARE(first, plain);
            taken += plain.size();
        }
    }
    QVERIFY(taken > 1000);
}

void TestFatRead::amountsOfALine_data()
{
    QTest::addColumn<QString>("dealer");
    QTest::addColumn<QString>("quantity");
    QTest::addColumn<QString>("price");
    QTest::addColumn<QString>("amount");
    QTest::addColumn<QString>("packing");  // columns 2, 5, 8 and 9
    QTest::addColumn<QString>("expected"); // columns 29, 30, 31 and 3
    const auto row = [](const char *name, const QString &dealer, const QString &quantity,
                        const QString &price, const QString &amount, const QString &packing,
                        const QString &expected) {
        QTest::newRow(name) << dealer << quantity << price << amount << packing << expected;
    };
    // 8 * 5 = 40; 50 - 40 = 10; 1,8; (12,16 - 1,8 / 5) / 1,18 = 11,8 / 1,18
    row("packs", u"8"_s, u"5"_s, u"12.16"_s, u"50"_s, u"5,00|50,0000|50,0000|PK"_s,
        u"40|10|1,8|10"_s);
    // 19,99 - 9,99 = 10; (11,8 - 1,8 / 9,99) / 1,18 = 11,6198198 / 1,18 = 9,8473049
    row("9.99 packs", u"1"_s, u"9.99"_s, u"11.8"_s, u"19.99"_s, u"9,99|19,9900|19,9900|PK"_s,
        u"9,99|10|1,8|9,847305"_s);
    row("9.994 packs are 9,99", u"1"_s, u"9.994"_s, u"11.8"_s, u"9.99"_s,
        u"9,99|9,9900|9,9900|PK"_s, u"9,99|0|0|10"_s);
    row("9.995 packs are 10,00", u"1"_s, u"9.995"_s, u"1.18"_s, u"10"_s, u"1|11,8|10,0000|KRT"_s,
        u"10|0|0|10"_s);
    // (11,8 - 1,8 / 1) / 1,18 = 10 / 1,18 = 8,4745763
    row("10 are one carton", u"1"_s, u"10"_s, u"1.18"_s, u"20"_s, u"1|11,8|20,0000|KRT"_s,
        u"10|10|1,8|8,474576"_s);
    // 10 * 2,5 = 25; 4,5; 0,81; (11,8 - 0,324) / 1,18 = 9,7254237
    row("25 are 2,5 cartons", u"1"_s, u"25"_s, u"1.18"_s, u"29.5"_s, u"2,5|11,8|29,5000|KRT"_s,
        u"25|4,5|0,81|9,725424"_s);
    // 12,3 as a single is 12,3000001907349, and times 0,7 it is 8,6100001335144; 8,7 less that;
    // (11,8 - 0,016199976 / 12,3) / 1,18 = 11,798682929 / 1,18 = 9,9988838
    row("cartons multiply as a single", u"0,07"_s, u"123"_s, u"1.18"_s, u"8.70"_s,
        u"12,3|11,8|8,7000|KRT"_s,
        u"8,6100001335144|0,0899998664855985|0,0161999759674077|9,998884"_s);
    // 0,4 * 0,5 = 0,2; 0,095; 0,0171; (0,59 - 0,0342) / 1,18 = 0,4710169
    row("values below 1", u"0,4"_s, u"0.5"_s, u"0.59"_s, u"0.295"_s, u",50|,2950|,2950|PK"_s,
        u"0,2|0,095|0,0171|0,4710169"_s);
    // 10 * 1,2345678912 million has eight digits, a single prints seven; / 1,18 = 10462440,7
    row("a carton price beyond single precision", u"1"_s, u"10"_s, u"1234567.8912"_s, u"10"_s,
        u"1|12345680|10,0000|KRT"_s, u"10|0|0|10462440"_s);
    // (11,8 + 1,8) / 1,18 = 13,6 / 1,18 = 11,5254237
    row("a dealer price above the amount", u"20"_s, u"1"_s, u"11.8"_s, u"10"_s,
        u"1,00|10,0000|10,0000|PK"_s, u"20|-10|-1,8|11,52542"_s);
    // (11,8 - 1,8) / 1,18
    row("no dealer price at all", u""_s, u"1"_s, u"11.8"_s, u"10"_s, u"1,00|10,0000|10,0000|PK"_s,
        u"0|10|1,8|8,474576"_s);
}

void TestFatRead::amountsOfALine()
{
    QFETCH(QString, dealer);
    QFETCH(QString, quantity);
    QFETCH(QString, price);
    QFETCH(QString, amount);
    QFETCH(QString, packing);
    QFETCH(QString, expected);
    Desk desk(dealer.isEmpty() ? QStringList() : QStringList{u"X="_s + dealer});
    if (dealer.isEmpty())
        desk.expectBox(noPrices + u"  X"_s);
    desk.open(header() + goods(u"X", quantity, price, amount));
    QVERIFY(!desk.fat.liste3yukle(u"F1"_s));
    QCOMPARE(desk.fat.l3.rows(), 1);
    QCOMPARE(cells(desk.fat.l3, 0, {2, 5, 8, 9}), packing);
    QCOMPARE(cells(desk.fat.l3, 0, {29, 30, 31, 3}), expected);
}

void TestFatRead::theShownLinesKeepThePriceAndNameTheUnit()
{
    Desk desk({u"P=8"_s, u"K=1"_s, u"Y=0,4"_s});
    desk.open(header() + goods(u"P", u"5", u"12.16", u"50") + goods(u"K", u"25", u"1.18", u"29.5") +
              goods(u"Y", u"0.5", u"0.59", u"0.295"));
    desk.fat.satirsec(0);
    const QList<int> shown{0, 1, 2, 3, 4, 5, 6, 7, 8, 27, 28, 29};
    const Grid &l2 = desk.fat.l2;
    QCOMPARE(l2.rows(), 3);
    QCOMPARE(cells(l2, 0, shown),
             u"P|Ürün|5,00|12,1600|18|50,0000  (PK)|0|0|50,0000|40|10,000000|1,800000"_s);
    QCOMPARE(cells(l2, 1, shown),
             u"K|Ürün|2,5|1,1800|18|11,8  (KRT)|0|0|29,5000|25|4,500000|0,810000"_s);
    QCOMPARE(cells(l2, 2, shown),
             u"Y|Ürün|,50|,5900|18|,2950  (PK)|0|0|,2950|0,2|0,095000|0,017100"_s);
    for (int pair = L2::Ind1Yuzde; pair < L2::BayiSatisFiyati; ++pair)
        QCOMPARE(l2.cell(0, pair), QString());

    desk.fat.lbrm.clear(); // a word without a unit gives empty brackets
    desk.fat.satirsec(0);
    QCOMPARE(l2.cell(1, L2::Tutar), u"11,8  ()"_s);
}

void TestFatRead::aLineThatFailsEndsTheWalkWithTheCellsSoFar_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("expected"); // columns 0, 2, 3, 4, 5, 8, 9 and 29, 30, 31
    // without a price a margin of 10 - 10 * 0 = 10 is left
    QTest::newRow("quantity 0 keeps the price as read")
        << goods(u"P1", u"0") << u"P1|,00|11,8000|18|10,0000|10,0000|PK|0|10|1,8"_s;
    QTest::newRow("no quantity") << goods(u"P1", u"") << u"P1|||||||||"_s;
    QTest::newRow("an unreadable quantity") << goods(u"P1", u"bir") << u"P1|||||||||"_s;
    QTest::newRow("no price for packs")
        << goods(u"P1", u"1", u"") << u"P1|1,00||18|10,0000|10,0000|PK|10|0|0"_s;
    QTest::newRow("no price for cartons") << goods(u"P1", u"10", u"") << u"P1|1||||||||"_s;
    QTest::newRow("no amount") << goods(u"P1", u"1", u"11.80", u"")
                               << u"P1|1,00|11,8000|18|||PK|10||"_s;
    QTest::newRow("an empty dealer price")
        << goods(u"BOS") << u"BOS|1,00|11,8000||10,0000||PK|||"_s;
}

void TestFatRead::aLineThatFailsEndsTheWalkWithTheCellsSoFar()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, expected);
    Desk desk({u"P1=10"_s, u"BOS="_s});
    if (line.contains("BOS"))
        desk.expectBox(noPrices + u"  BOS"_s);
    desk.open(header() + goods(u"P1") + line + goods(u"P1"));
    QVERIFY(desk.fat.liste3yukle(u"F1"_s));
    QCOMPARE(desk.fat.l3.rows(), 2);
    QCOMPARE(desk.fat.l3.cell(0, L3::BirimFiyat), u"10"_s);
    QCOMPARE(cells(desk.fat.l3, 1, {0, 2, 3, 4, 5, 8, 9, 29, 30, 31}), expected);
}

void TestFatRead::aBadQuantityOrPriceStopsTheShownLinesOnlyWhereItIsUsed()
{
    Desk desk;
    desk.open(header() + goods(u"P1", u"0") + goods(u"P1", u"1", u"") + goods(u"P1", u"") +
              goods(u"P1"));
    desk.fat.umurlardetaylioku(u"F1"_s);
    QCOMPARE(desk.fat.l2.rows(), 3);
    QCOMPARE(cells(desk.fat.l2, 0, {2, 3, 28, 29}), u",00|11,8000|10,000000|1,800000"_s);
    QCOMPARE(cells(desk.fat.l2, 1, {2, 3, 28, 29}), u"1,00||0,000000|0,000000"_s);
    QCOMPARE(cells(desk.fat.l2, 2, {0, 2, 28}), u"P1||"_s);
}

void TestFatRead::aSource_data()
{
    QTest::addColumn<QByteArray>("bif");
    QTest::addColumn<QString>("titles");
    QByteArray binary;
    for (int i = 0; i < 4096; ++i)
        binary += static_cast<char>(i * 7);
    const QByteArray one = header({.title = u"Çağ"_s});
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("binary, with a header among it") << binary + "\r\n" + one + binary << u"Çağ"_s;
    QTest::newRow("cut off in the last header") << one + one.first(147) << u"Çağ"_s;
    QTest::newRow("cut off behind the state of the last header") << one.first(148) << u"Çağ"_s;
    QTest::newRow("a mark of two characters and nothing behind")
        << "@5\r\n@6\r\n@8" + one << QString();
    QTest::newRow("a line of ten million bytes")
        << QByteArray(10'000'000, '@') + "\r\n" + one << u"Çağ"_s;
    QTest::newRow("UTF-8 with its mark")
        << "\xEF\xBB\xBF" + QString::fromUtf8("@5").leftJustified(38).toUtf8() +
               u"Çağ"_s.leftJustified(109).toUtf8() + "0\n"
        << u"Çağ"_s;
}

void TestFatRead::aSource()
{
    QFETCH(QByteArray, bif);
    QFETCH(QString, titles);
    Desk desk;
    if (bif.startsWith("@5\r\n@6")) // a line without a product code lists an empty one
        desk.expectBox(noPrices);
    desk.open(bif);
    QCOMPARE(column(desk.l1(), L1::Unvani), titles);
    QCOMPARE(desk.fat.liste.listedolu, !titles.isEmpty());

    // Gone, and a folder in its place: the read reports nothing and leaves the list empty.
    QFile::remove(desk.t.path(u"kaynak.bif"_s));
    desk.fat.otomatikac();
    QCOMPARE(desk.l1().rows(), 0);
    QVERIFY(!desk.fat.liste.listedolu);
    QCOMPARE(desk.fat.liste.satirSayisi.text(), u"0"_s);
    desk.fat.umurlardetaylioku(u"F1"_s);
    desk.fat.dosyaac(desk.t.folder.path());
    QCOMPARE(desk.l1().rows() + desk.fat.l2.rows(), 0);
}

void TestFatRead::withoutTheDatabaseTheListIsReadAndEveryProductIsMissing()
{
    Desk desk;
    QFile::remove(desk.t.path(u"data.dbs"_s));
    desk.expectBox(noPrices + u"  P1  P2"_s);
    desk.open(header() + goods(u"P1") + goods(u"P2"));
    QCOMPARE(column(desk.l1(), L1::FaturaNumarasi), u"F1"_s);
    desk.fat.satirsec(0);
    QCOMPARE(desk.fat.l2.rows(), 0);
    QVERIFY(!QFile::exists(desk.t.path(u"data.dbs"_s)));
}

void TestFatRead::aLockedDatabaseDoesNotHoldUpEveryProduct()
{
    Desk desk;
    QByteArray bif = header();
    QString missing = noPrices;
    for (int product = 0; product < 12; ++product) {
        const QString code = u"K%1"_s.arg(product);
        bif += goods(code);
        missing += u"  "_s + code;
    }
    {
        QSqlDatabase other = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"other"_s);
        other.setDatabaseName(desk.t.path(u"data.dbs"_s));
        QVERIFY(other.open());
        QVERIFY(QSqlQuery(other).exec(u"begin exclusive"_s));
        desk.expectBox(missing);
        QElapsedTimer timer;
        timer.start();
        desk.open(bif);
        QVERIFY2(timer.elapsed() < 6000, "each product waits for the lock again");
    }
    QSqlDatabase::removeDatabase(u"other"_s);
    QCOMPARE(desk.l1().rows(), 1);
}

QTEST_GUILESS_MAIN(TestFatRead)
#include "tst_fatread.moc"
