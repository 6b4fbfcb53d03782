// What is found in the lists of the slip transfers, each finding planted in a source.

#include "slips/slipchecks.h"

#include "base/codepage.h"
#include "slips/columns.h"
#include "slips/desk.h"
#include "support/findings.h"
#include "support/ruler.h"

using namespace kervan;

namespace {

// A movement of `cafis`: amount, cash code, account, title, date.
QString movement(const QString &amount, const QString &till, const QString &account,
                 const QString &title, const QString &date)
{
    return u"\n%1|||%2||%3|%4|||||%5"_s.arg(amount, till, account, title, date);
}

QString trip(const QString &account, const QString &title, const QString &amount)
{
    return u"\n%1||%2||||||||||||%3"_s.arg(account, title, amount);
}

QString tripsOf(const QStringList &records)
{
    return u"|||||||||||||x\n2\n3\n4\n5"_s + records.join(QString());
}

// A sale of `cafis3`.
QString sale(const QString &till, const QString &account, const QString &title,
             const QString &amount)
{
    return u"\n%1||%2|%3||||%4|HHSATIS"_s.arg(till, account, title, amount);
}

QString salesOf(const QStringList &records)
{
    return u"K||C|Ü||||T|TÜR"_s + records.join(QString());
}

QString oddTrips()
{
    return tripsOf({trip(u"C&1"_s, u"A & B"_s, u"#10"_s), trip(u"C2‰"_s, u"saat ‰"_s, u"#-5"_s),
                    trip(u"C3"_s, {}, u"#0"_s), trip(u"C4"_s, u"DÖRT"_s, u"x"_s),
                    trip(u"C5"_s, u"BEŞ"_s, u"12.50"_s)});
}

QString oddSales()
{
    return salesOf({sale(u"K&"_s, u"C&1"_s, u"A & B"_s, u"#10"_s),
                    sale(u"K‰"_s, u"C2‰"_s, u"saat ‰"_s, u"#-5"_s), sale({}, u"C3"_s, {}, u"#0"_s),
                    sale(u"bankakodu"_s, u"C4"_s, u"DÖRT"_s, u"x"_s),
                    sale(u"K5"_s, u"C5"_s, u"BEŞ"_s, u"12.50"_s)});
}

struct OddBook
{
    QString name, records;
    QString control = u"buton1"_s;
};

// In which each rule of a screen's lists finds something.
QList<OddBook> oddBooks(const QString &screen)
{
    if (screen == u"cafis2")
        return {{u"08032024-13.xls"_s, oddTrips()},
                {u"a-13.xls"_s, oddTrips()},
                {u"06032024.xls"_s, oddTrips()}};
    if (screen == u"cafis3")
        return {{u"POSANALIZ-20240308.xlsx"_s, oddSales()}, {u"POS.xlsx"_s, oddSales()}};
    if (screen == u"cafis")
        return {{u"a.xlsx"_s,
                 u"T|||K|||Ü|||||TARİH"_s +
                     movement(u"#1234567.89"_s, u"K&‰"_s, u"C&‰"_s, u"A&‰"_s, u"8.3.2024"_s) +
                     movement(u"#0.5"_s, u"K&‰"_s, u"C1"_s, u"islemno"_s, u"7.3.2024"_s) +
                     movement(u"#2"_s, u"K2"_s, u"C1"_s, u"Ü"_s, u"yarın"_s) +
                     movement(u"#-5"_s, {}, u"C1"_s, {}, u"31.1.2023"_s) +
                     movement(u"#0"_s, u"K3"_s, u"C1"_s, u"Ü"_s, u"7.3.2024"_s) +
                     movement(u"12.50"_s, u"bankakodu"_s, u"C1"_s, u"Ü"_s, u"7.3.2024"_s)},
                {u"b.xlsx"_s, u"T|||K|||Ü|||||TARİH"_s +
                                  movement(u"1,2,3"_s, u"K"_s, u"C"_s, u"Ü"_s, u"7.3.2024"_s)}};
    const QString cash =
        u"T|C|Ü|A|P|x|T\n8.3.2024|C&‰|Ü|A&‰|13|x|10\n7.3.2024||Ü|sateleman|99|x|-1\n"
        "x|C|Ü|A|12|x|1\n1.1.2022|C|Ü|A|12|x|0\n7.3.2024|C|Ü|A|12|x|1.2.3\n"
        "7.3.2024|C|Ü|A|12|x|1.234,50"_s;
    const QString card = u"x|P|A|C|Ü|T|x|T\nx|12|trhay|1|Ü|7.3.2024|x|10\n"
                         "x|12||1|Ü|7.3.2024|x|0"_s;
    return {{u"a.xlsx"_s, cash}, {u"b.xlsx"_s, card, u"lvButtons_H3"_s}, {u"a.xlsx"_s, cash}};
}

// A line of the text export.
QByteArray textLine(QStringView type, QStringView account, QStringView day, QStringView due,
                    QStringView amount, QStringView number)
{
    return ruled(type, 3, account, 16, day, 26, due, 37, amount, 217, number);
}

struct Desk : SlipDesk
{
    std::unique_ptr<Checks> checks;

    RulesSetOff off, offOfBankList;
    SharesCounter shares;

    explicit Desk(const SlipForm &form, const SharesCounter &sharesCounter = nullptr)
        : SlipDesk(form)
        , shares(sharesCounter)
    {
        t.fill({u"insert into per values (Null,'P1','12')"_s});
        writeBytes(t.path(u"kasa.kvz"_s), "KASA\r\n");
        writeBytes(t.path(u"bank.kvz"_s), "BANKA\r\n");
        s.load();
        checks = checksOf(s, shares);
    }
    QStringList found()
    {
        off.ask(rulesOf(s, shares), s.l1);
        offOfBankList.ask(bankListRulesOf(s), s.l2);
        return kervan::found(*checks);
    }
    QStringList unplanted() const { return off.missing() + offOfBankList.missing(); }
    QString words(int row) { return textOf(*checks, row, u"şablon sözcüğü"_s); }
};

} // namespace

class TestSlipChecks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanListsShowNothing()
    {
        Desk c(cafis());
        c.readBook(u"a.xlsx"_s, u"T|||K|||Ü|||||TARİH"_s +
                                    movement(u"#10"_s, u"K1"_s, u"C1"_s, u"BİR"_s, u"1.3.24"_s) +
                                    movement(u"#0.5"_s, u"K2"_s, u"C2"_s, u"İKİ"_s, u"7.3.2024"_s));
        QCOMPARE(c.s.l1.rows(), 2);
        QCOMPARE(c.found(), QStringList());
        Desk c2(cafis2());
        c2.readBook(u"06032024-12.xls"_s,
                    u"|||||||||||||x\n2\n3\n4\n5\nC1||BİR||||||||||||#10\n|TOPLAM"_s);
        QCOMPARE(c2.s.l1.rows(), 1);
        QCOMPARE(c2.found(), QStringList());
        QCOMPARE(leftOut(c2.s.okuma), lines(u"7 Sayfa1!A7 Boş cari kodu okumayı bitirdi."_s));
        QCOMPARE(c2.s.okuma.entries().last().record, u"TOPLAM"_s);
        QVERIFY(!c2.s.okuma.isCutShort());
        Desk c3(cafis3());
        c3.readBook(u"POSANALIZ-20240306.xlsx"_s, u"K||C|Ü||||T|TÜR\nK1||C1|BİR||||#10|HHSATIS"_s);
        QCOMPARE(c3.s.l1.rows(), 1);
        QCOMPARE(c3.found(), QStringList());
        Desk d(carifisduzey());
        d.readBook(u"a.xlsx"_s, u"T|C|Ü|A|P|x|T\n7.3.2024|1,2|Ü|NOT|12|x|1,234.5"_s);
        QCOMPARE(d.s.l1.rows(), 1);
        QCOMPARE(d.found(), QStringList());
        d.readBook(u"b.xlsx"_s, u"x|P|A|C|Ü|T|x|T\nx|12|NOT|1|Ü|7.3.2024|x|10"_s,
                   u"lvButtons_H3"_s);
        QCOMPARE(d.s.l1.rows(), 1);
        QCOMPARE(d.found(), QStringList());
        for (const Desk *desk : {&c, &c3, &d})
            QCOMPARE(leftOut(desk->s.okuma), QStringList());
    }

    void movementsShowWhatIsPlanted()
    {
        bool isShared = false;
        Desk d(cafis(), [&isShared] { return isShared; });
        writeBytes(d.t.path(u"kasacariislemno.kvz"_s), "bozuk\r\n");
        writeBytes(d.t.path(u"bankacariislemno.kvz"_s), "7 adet\r\n");
        d.t.program.folders.xc = u"x"_s;
        d.t.program.folders.xf = d.t.path(u"yok/a.xml"_s);
        d.s.bankaHesapKodu.setText({});
        isShared = true;
        d.readBook(u"a.xlsx"_s,
                   u"T|||K|||Ü|||||TARİH"_s +
                       movement(u"#1234567.89"_s, u"K1"_s, u"C1"_s, u"A & B"_s, u"7.3.2024"_s) +
                       movement(u"#0.5"_s, u"K1"_s, u"C2"_s, u"saat tamiri"_s, u"8.3.2024"_s) +
                       movement(u"#-5"_s, u"K2"_s, {}, u"islemno"_s, u"31.1.2023"_s) +
                       movement(u"#4"_s, u"K3"_s, u"C4"_s, {}, u"yarın"_s) +
                       movement(u"#0"_s, u"K4&"_s, u"C5"_s, u"ÇAY € 'X'"_s, u"@2024-03-06"_s) +
                       movement(u"#3"_s, {}, u"C6"_s, u"saat evi"_s, u"2.2.2023"_s) +
                       movement(u"12.50"_s, u"K8"_s, u"C8"_s, u"SEKİZ"_s, u"7.3.2024"_s) +
                       movement(u"1,2,3"_s, u"K7"_s, u"C7"_s, u"YEDİ"_s, u"7.3.2024"_s));
        QCOMPARE(d.found(),
                 lines(u"hata belge klasörü\nhata bankahesapno1 boş banka kodu\nhata sayaç\n"
                       "uyari ortak sayaç\nhata sayaç\n"
                       "hata 1:4 XML işareti\nhata l2 1:3 toplam\n"
                       "uyari 2:2 tarih\nhata 2:0 şablon sözcüğü\n"
                       "uyari l2 2:2 tarih\nuyari l2 2:3 eksi tutar\n"
                       "uyari 3:2 tarih\nuyari 3:5 eksi tutar\nhata 3:3 boş cari kodu\n"
                       "hata 3:0 şablon sözcüğü\n"
                       "hata l2 3:2 tarih okunamıyor\n"
                       "hata 4:2 tarih okunamıyor\n"
                       "uyari 4:4 boş ünvan\n"
                       "hata l2 4:2 tarih okunamıyor\nuyari l2 4:3 sıfır tutar\n"
                       "hata l2 4:5 XML işareti\n"
                       "hata 5:2 tarih okunamıyor\nuyari 5:5 sıfır tutar\nuyari 5:4 harf\n"
                       "hata 5:8 XML işareti\nhata 6:8 boş kasa kodu\nhata 6:0 şablon "
                       "sözcüğü\nhata 7:5 şüpheli tutar\nhata 8:5 tutar okunamıyor\n"
                       "eksik Banka hesap kodu 6 bankakodu"_s));
        QCOMPARE(
            textOf(*d.checks, 1, u"toplam"_s),
            u"Banka fişinin tutarı \"1.234.568,00\", hareketlerinin toplamı \"1.234.568,39\"."_s);
        QCOMPARE(textOf(*d.checks, 7, u"şüpheli tutar"_s),
                 u"Kaynakta \"12.50\" olan tutar \"1.250,00\" olarak okundu."_s);
        QVERIFY(textOf(*d.checks, 2, u"tarih"_s).contains(u"gelecekte"));
        QVERIFY(textOf(*d.checks, 3, u"tarih"_s).contains(u"400 günün dışında"));
        QCOMPARE(leftOut(d.s.okuma), lines(u"4 Sayfa1!F4 CARİ KODU boş.\n5 Sayfa1!G5 UNVANI boş.\n"
                                           "7 Sayfa1!D7 KASA KODU boş.\n9 Okuma burada bitti."_s));
        d.s.bankaHesapKodu.setText(u"BANKA"_s); // without a new list
        QVERIFY(!d.found().contains(u"eksik Banka hesap kodu 6 bankakodu"_s));
    }

    void tripsAndSalesShowWhatIsPlanted()
    {
        Desk trips(cafis2());
        trips.t.fill({u"insert into per values (Null,'P&‰','13')"_s});
        trips.s.load();
        trips.readBook(u"08032024-13.xls"_s, oddTrips());
        QCOMPARE(trips.found(),
                 lines(u"uyari 1:2 tarih\nhata 1:3 XML işareti\nhata 1:4 XML işareti\n"
                       "hata 1:8 XML işareti\nuyari 1:8 harf\n"
                       "uyari 2:2 tarih\nuyari 2:5 eksi tutar\nuyari 2:3 harf\nuyari 2:4 harf\n"
                       "hata 2:8 XML işareti\nuyari 2:8 harf\nhata 2:0 şablon sözcüğü\n"
                       "uyari 3:2 tarih\nuyari 3:5 sıfır tutar\nuyari 3:4 boş ünvan\n"
                       "hata 3:8 XML işareti\nuyari 3:8 harf\nuyari 4:2 tarih\n"
                       "hata 4:5 tutar okunamıyor\nhata 4:8 XML işareti\nuyari 4:8 harf\n"
                       "uyari 5:2 tarih\nhata 5:5 şüpheli tutar\nhata 5:8 XML işareti\n"
                       "uyari 5:8 harf"_s));
        Desk sales(cafis3());
        sales.readBook(u"POSANALIZ-20240308.xlsx"_s, oddSales());
        QCOMPARE(sales.found(),
                 lines(u"uyari 1:2 tarih\nhata 1:3 XML işareti\nhata 1:4 XML işareti\n"
                       "hata 1:8 XML işareti\nuyari l2 1:2 tarih\nhata l2 1:5 XML işareti\n"
                       "uyari 2:2 tarih\nuyari 2:5 eksi tutar\nuyari 2:3 harf\nuyari 2:4 harf\n"
                       "uyari 2:8 harf\nhata 2:0 şablon sözcüğü\nuyari l2 2:2 tarih\n"
                       "uyari l2 2:3 eksi tutar\nuyari l2 2:5 harf\n"
                       "uyari 3:2 tarih\nuyari 3:5 sıfır tutar\nuyari 3:4 boş ünvan\n"
                       "hata 3:8 boş kasa kodu\nuyari l2 3:2 tarih\nuyari l2 3:3 sıfır tutar\n"
                       "uyari 4:2 tarih\nhata 4:5 tutar okunamıyor\nuyari l2 4:2 tarih\n"
                       "hata l2 4:3 tutar okunamıyor\nhata l2 4:0 şablon sözcüğü\n"
                       "uyari 5:2 tarih\nhata 5:5 şüpheli tutar\nuyari l2 5:2 tarih"_s));
    }

    void eachRuleOfTheSlipScreensIsPlantedSomewhere_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QString>("never"); // what no list of the screen can have
        QTest::newRow("movements")
            << u"cafis"_s << u"tanımlar l1, boş kasa kodu l1 kskod, tutar okunamıyor l2 3"_s;
        QTest::newRow("trips") << u"cafis2"_s
                               << u"boş kasa kodu l1 kskod, boş banka kodu l1 bankahesapno1"_s;
        QTest::newRow("sales") << u"cafis3"_s << u"boş kasa kodu l1 kskod"_s;
        QTest::newRow("collections") << u"carifisduzey"_s << QString();
    }
    void eachRuleOfTheSlipScreensIsPlantedSomewhere()
    {
        QFETCH(const QString, screen);
        QFETCH(const QString, never);
        Desk d(slipForm(screen), [] { return true; });
        d.t.fill({u"insert into per values (Null,'P&‰','13')"_s});
        d.s.load();
        writeBytes(d.t.path(u"kasacariislemno.kvz"_s), "bozuk\r\n");
        writeBytes(d.t.path(u"bankacariislemno.kvz"_s), "7 adet\r\n");
        for (const QString &code : {u"KASA"_s, QString(), u"B&‰"_s}) {
            d.s.kasaKodu.setText(code);
            d.s.bankaHesapKodu.setText(code);
            for (const OddBook &book : oddBooks(screen)) {
                d.readBook(book.name, book.records, book.control);
                d.found();
            }
        }
        d.s.l1.setCell(0, Hareket::CariKodu, {}); // at which a reading may end
        d.found();
        for (const QStringView account : {u"tutar", u"portfoy", u"makbuzno", u"A&‰", u""}) {
            QByteArray text;
            for (const QStringView type : {u"20", u"30", u"40", u"50", u"99"})
                text += textLine(type, account, u"20240308", u"", u"-1", u"12345678&‰") +
                        textLine(type, account, u"2024", u"20240801", u"0", u"") +
                        textLine(type, account, u"20220307", u"", u"10,5", u"12345678&‰");
            d.readText(text);
            d.found();
        }
        {
            const FolderAway away(d.t);
            d.found();
        }
        QFile::remove(d.t.path(u"data.dbs"_s));
        d.s.load();
        d.found();
        QCOMPARE(d.unplanted().join(u", "_s), never);
    }

    // The document of all rows, held against what is said of each.
    void wordsAreToldWhereTheyChangeTheDocument()
    {
        const QStringList titles{u"BİR"_s,        u"saat evi"_s, u"tutar"_s,   u"TUTAR"_s,
                                 u"Kolay"_s,      u"makbuzno"_s, u"islem"_s,   u"cariunvan"_s,
                                 u"kasakodu X"_s, u"İKİ"_s,      u"dakika A"_s};
        Desk d(cafis());
        QString book = u"T|||K|||Ü|||||TARİH"_s;
        for (const QString &title : titles)
            book += movement(u"#10"_s, u"K1"_s, u"C1"_s, title, u"1.3.2024"_s);
        d.readBook(u"a.xlsx"_s, book);
        d.found();
        const QString document = fromCodePage(d.saved(u"buton2"_s));
        for (int row = 0; row < titles.size(); ++row) {
            const bool isThere =
                document.contains(u"<MASTER_TITLE>%1 Kodlu Cari</MASTER_TITLE>"_s.arg(titles[row]));
            QVERIFY2(d.words(row + 1).isEmpty() == isThere, qPrintable(titles[row]));
        }
        QVERIFY(d.words(2).contains(u"bir sonraki fiş"));
        QVERIFY(d.words(11).isEmpty()); // no slip comes behind it
    }

    void aStaffCodeWithoutADefinitionIsToldOnceWithItsRows()
    {
        Desk d(cafis2());
        const QString book = u"|||||||||||||x\n2\n3\n4\n5\nC1||BİR||||||||||||#10\n"
                             "C2||İKİ||||||||||||#10\n|TOPLAM\nC3||ÜÇ||||||||||||#9"_s;
        d.readBook(u"06032024-12.xlsx"_s, book); // where the code gets an "x"
        const QStringList missing = lines(u"hata 1:8 personel\nhata 2:8 personel\n"
                                          "eksik Personel 12x 2 per"_s);
        QCOMPARE(d.found(), missing);
        QVERIFY(textOf(*d.checks, 1, u"personel"_s).startsWith(u"\"12x\" personel kodunun"));
        QCOMPARE(leftOut(d.s.okuma), lines(u"8 Sayfa1!A8 Boş cari kodu okumayı bitirdi, "
                                           "arkasındaki 1 kayıt okunmadı."_s));
        QVERIFY(d.s.okuma.isCutShort()); // C3 would have been read
        d.readBook(u"06032024.xls"_s, book);
        QCOMPARE(d.found(), missing.first(2));
        QVERIFY(textOf(*d.checks, 1, u"personel"_s).startsWith(u"Personel kodu yok"));
        d.readBook(u"a-12.xls"_s, book);
        QCOMPARE(d.found(), lines(u"hata 1:2 tarih okunamıyor\nhata 2:2 tarih okunamıyor"_s));

        QFile::remove(d.t.path(u"data.dbs"_s));
        SlipScreen alone(d.t.program, cafis2());
        alone.load();
        QCOMPARE(kervan::found(*checksOf(alone)), lines(u"hata tanımlar"_s));
    }

    void recordsThatGaveNoRowAreReportedByCell()
    {
        Desk d(cafis3());
        d.readBook(u"POSANALIZ-20240306.xlsx"_s, u"K||C|Ü||||T|TÜR\n|||||||#10|HHIADE\n"
                                                 "K1||C1|BİR||||#10|HHSATIS\n"
                                                 "K2||C2|||||#10|HHSATIS\n|||BOŞ||||#10|HHSATIS"_s);
        QCOMPARE(leftOut(d.s.okuma),
                 lines(u"2 Sayfa1!I2 Türü \"HHSATIS\" değil: alınmadı.\n4 Sayfa1!D4 UNVANI boş.\n"
                       "5 Sayfa1!C5 Boş cari kodu okumayı bitirdi."_s));
        QCOMPARE(d.s.okuma.entries().first().record, u"10 | HHIADE"_s);
        d.readBook(u"POSANALIZ-20240306.xlsx"_s, u"K||C\nK1||C1"_s); // no field of the kind
        QCOMPARE(leftOut(d.s.okuma), lines(u"2 Sayfa1!I2 Türü \"HHSATIS\" değil: alınmadı."_s));
        Desk cash(cafis());
        cash.readBook(u"a.xlsx"_s, u"T|||K|||Ü\n#10|||K1||C1|BİR"_s); // no field of the date
        QCOMPARE(leftOut(cash.s.okuma), lines(u"2 Okuma burada bitti."_s));
        cash.read(cash.t.path(u"yok.xlsx"_s));
        QCOMPARE(leftOut(cash.s.okuma), lines(u"1 Okuma burada bitti."_s));
    }

    void duzeyListsShowWhatIsPlantedByTheirKind()
    {
        Desk d(carifisduzey());
        d.s.kasaKodu.setText({});
        d.s.bankaHesapKodu.setText({});
        QCOMPARE(d.found(),
                 lines(u"hata kskod boş kasa kodu\nhata bankahesapno1 boş banka kodu"_s));
        // "trhay" is a word of the card document, "sateleman" of the cash document.
        const auto rows = [](const QString &line) {
            QString text;
            for (const QString &cells : line.split(u'\n')) {
                const QStringList c = cells.split(u'/'); // date, account, text, staff, amount
                text += u"\n%1|%2|Ü & Ü|%3|%4|x|%5"_s.arg(c[0], c[1], c[2], c[3], c[4]);
            }
            return text;
        };
        d.readBook(u"a.xlsx"_s,
                   u"T|C|Ü|A|P|x|T"_s +
                       rows(u"7.3.2024/1/A & B/12/10\n7.3.2024//sateleman/99/10\n"
                            "x/3/trhay/12/-1\n7.3.2024/4/// 1.2.3\n7.3.2024/5//12/1.234,50"_s));
        QCOMPARE(d.found(),
                 lines(u"hata kskod boş kasa kodu\nhata 1:10 XML işareti\n"
                       "hata 2:3 boş cari kodu\nuyari 2:9 personel\nhata 2:0 şablon sözcüğü\n"
                       "hata 3:2 tarih okunamıyor\nuyari 3:5 eksi tutar\n"
                       "hata 4:5 tutar okunamıyor\nuyari 4:9 personel\nhata 5:5 şüpheli tutar\n"
                       "eksik Personel 99 1 per\neksik Kasa kodu 5 kskod"_s));
        d.readBook(u"b.xlsx"_s,
                   u"x|P|A|C|Ü|T|x|T\nx|12|sateleman|1|Ü|7.3.2024|x|10\n"
                   "x|12|trhay|1|Ü|7.3.2024|x|10\nx|12||1|Ü|7.3.2024|x|0"_s,
                   u"lvButtons_H3"_s);
        QCOMPARE(d.found(), lines(u"hata bankahesapno1 boş banka kodu\nhata 2:0 şablon sözcüğü\n"
                                  "uyari 3:5 sıfır tutar\neksik Banka hesap kodu 3 bankakodu"_s));
    }

    void aTextListShowsWhatIsPlantedAndThatNoButtonWritesIt()
    {
        Desk d(cafis());
        d.readText(textLine(u"20", u"C1", u"20240307", u"", u"10.50", u"0000000001") +
                   textLine(u"30", u"C1", u"20240307", u"20240801", u"10", u"0000000001"));
        QCOMPARE(d.found(), lines(u"uyari buton1 metin listesi"_s));
        d.readText(textLine(u"20", u"A&B", u"20240308", u"", u"10,50", u"0100000001") +
                   textLine(u"99", u"C1", u"20240307", u"", u"10", u"0000000002") +
                   textLine(u"40", u"", u"2024", u"", u"-1", u"") +
                   textLine(u"20", u"portfoy", u"20240307", u"", u"0", u"0000000001") + "\r\n");
        QCOMPARE(d.found().first(15),
                 lines(u"uyari buton1 metin listesi\n"
                       "uyari 1:6 tarih\nhata 1:9 tutar okunamıyor\nhata 1:3 XML işareti\n"
                       "hata 1:18 çift numara\nuyari 2:2 belgesiz satır\n"
                       "hata 3:6 tarih okunamıyor\nhata 3:7 tarih okunamıyor\n"
                       "uyari 3:9 eksi tutar\nhata 3:3 boş cari kodu\nhata 3:18 boş numara\n"
                       "uyari 4:9 sıfır tutar\nhata 4:18 çift numara\n"
                       "uyari 5:2 belgesiz satır\nhata 5:6 tarih okunamıyor"_s));
        QCOMPARE(shapeOf(d.s).number, int(MetinHareket::MuhBelgeNo));
        QVERIFY(
            leftOut(d.s.okuma).contains(u"2 İşlem tipi tanınmıyor: satırı hiçbir belge almaz."_s));
    }
};

QTEST_GUILESS_MAIN(TestSlipChecks)
#include "tst_slipchecks.moc"
