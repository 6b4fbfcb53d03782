// The three readers of the invoice file. Sums are worked out by hand beside each case.

#include "desk.h"
#include "support/table.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>

using namespace kervan;

namespace {

QString collected(const Desk &desk, int row)
{
    return cells(desk.l1, row, {L1::TahsilatOrani, L1::TahsilatTutari, L1::KasaSatisElemani});
}

QByteArray goodsOf(const QStringList &codes)
{
    QByteArray bif;
    for (const QString &code : codes)
        bif += goods(code);
    return bif;
}

} // namespace

class TestFatRead : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFieldOfARecordComesFromItsColumns()
    {
        Desk desk(u"KOD456789012345=2,5"_s);
        desk.t.fill({u"insert into per values (Null,'LOGO8','PERSON08')"_s});
        desk.fat.yukle();
        const QString title = u"Çağrı & Şirin'in ĞÜÖİ ığüşöç 34567890 4ZZ"_s;
        const QString name = u"Ad%1Ad"_s.arg(QString(46, u'-'));
        const QString full(160, u'#'); // so that a field cut a column off shows
        desk.open(ruled(full, 1, u"@5", 5, u"20240229", 20, u"PERSON08", 28, u"CARI567890", 39,
                        title, 80, u"FATURA789012345", 96, u"123456789.25", 109, u"00000000.125",
                        122, u"000000000.50", 135, u"987654321.75", 148, u"0") +
                  ruled(full, 1, u"@6", 31, u"KOD456789012345", 46, name, 97, u"00003.25", 106,
                        u"00000011.805", 124, u"00000008.125") +
                  header({u"  F 1"_s, u"20240307"_s, u"   12.345"_s, u"  0.00005"_s}));
        QCOMPARE(cells(desk.l1, 0, {1, 0, 2, 3, 4, 5, 6, 7}),
                 title + u"|CARI567890|FATURA789012345|LOGO8|29.02.2024|LOGO8|PERSON08|"_s);
        QCOMPARE(cells(desk.l1, 0, {8, 9, 10, 11, 12, 15, 16}),
                 u"123456789,2500|0,1250|,5000|987654321,7500||NT000001|KN000001"_s);
        QCOMPARE(cells(desk.l1, 1, {2, 5, 6, 8, 9, 11}), u"F 1|LP1|S1|12,3450|0,0000|,0001"_s);
        QCOMPARE(desk.fat.liste.satirSayisi.text(), u"2"_s);
        desk.liste3yukle(u"FATURA789012345"_s);
        // dealer 2,5 * 3,25 = 8,125; so no margin, and net 11,805 / 1,18 = 10,0042373
        QCOMPARE(cells(desk.fat.l3, 0, {1, 0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 19, 20, 28, 29, 30, 31}),
                 name +
                     u"|KOD456789012345|3,25|10,00424|18|8,1250|0|0|8,1250|PK|0|0|0|0|8,125|0|0"_s);
    }

    void onlyRecordsInStateZeroCountAndAPersonIsTheFirstRowWithTheWholeCode()
    {
        Desk desk;
        desk.t.fill({u"insert into per values (Null,'SECOND','S1')"_s});
        desk.fat.yukle();
        desk.t.boxes.expect({noPrices + u"  YOK"_s});
        desk.open(header({.no = u"F1"_s, .state = u"1"_s}) + goods(u"YOK") +
                  header({.no = u"F2"_s}) + header({.no = u"F3"_s, .state = u" "_s}) +
                  header().first(147) + "\r\n" + collection(u"50", u"1") + collection(u"60", u" ") +
                  ruled(u"@7", 80, u"F5", 148, u"0") + ruled(u" @5", 80, u"F6", 148, u"0") +
                  header({.person = u"s1"_s}) + header({.person = u"S11"_s}) + header());
        QCOMPARE(column(desk.l1, L1::FaturaNumarasi), u"F2,F1,F1,F1"_s);
        QCOMPARE(column(desk.l1, L1::LogoPersonelKodu), u"LP1,,,LP1"_s);
        QCOMPARE(column(desk.l1, L1::KasaSatisElemani), u"LP1,,,"_s);
        QCOMPARE(collected(desk, 3), u"||"_s);
        QCOMPARE(desk.storedCounter(), "4");
    }

    void theNextHeaderOverwritesTheCollectionOfTheInvoiceBefore()
    {
        Desk desk;
        desk.open(collection(u"50") + // in front of all headers: counted and written nowhere
                  header({.total = u"80.00"_s}) + collection(u"50") + header({.state = u"1"_s}) +
                  collection(u"25") + header({.total = u"0.50"_s}) + header({.total = u"80.00"_s}) +
                  collection(u"50") + collection(u"12.5") + header({.state = u"1"_s}));
        QCOMPARE(collected(desk, 0), u"100|80,0000|LP1"_s);
        QCOMPARE(collected(desk, 1), u"100|,5000|LP1"_s);
        QCOMPARE(collected(desk, 2), u"12,5|10|LP1"_s); // 80 * 12,5 / 100
        QCOMPARE(desk.storedCounter(), "8");            // 3 headers, 5 collections
    }

    void aCollectionRateCountsIfItIsGreaterThanZero_data()
    {
        // What a row then holds: rate, amount, salesman. Of 15432,0975 a single prints 15432,1.
        addTable(uR"(
case                                ; rate     ; total     ; expected
half a percent                      ; 0.5      ; 80        ; 0,5|0,4|LP1
four decimals of the rate           ; 33.33335 ; 1000      ; 33,3334|333,334|LP1
the amount is single                ; 12.5     ; 123456.78 ; 12,5|15432,1|LP1
greater than zero, masked to zero   ; 0.00004  ; 80        ; 0|0|LP1
a total that is no number           ; 50       ;           ; 50||LP1
zero does not count                 ; 0.00     ; 80        ; ||
below zero does not count           ; -50      ; 80        ; ||
none does not count                 ;          ; 80        ; ||
words do not count                  ; elli     ; 80        ; ||)"_s);
    }
    void aCollectionRateCountsIfItIsGreaterThanZero()
    {
        const QString expected = fetch("expected");
        Desk desk;
        desk.open(header({.total = fetch("total")}) + collection(fetch("rate").rightJustified(8)));
        QCOMPARE(collected(desk, 0), expected);
        QCOMPARE(desk.storedCounter(), expected == u"||" ? "1" : "2"); // the header's, and its own
    }

    void productsWithoutADealerPriceAreListedInOneBox()
    {
        Desk desk(u"P1=10 KR=,01 SIFIR=0 EKSI=-1 BOS= HARF=on IKI=0 IKI=5"_s);
        desk.t.boxes.expect({noPrices + u"  YOK  SIFIR  EKSI  YOK  BOS  HARF  IKI  O'NUN"_s});
        desk.open(goodsOf({u"YOK"_s, u"P1"_s, u"SIFIR"_s, u"KR"_s, u"EKSI"_s, u"YOK"_s, u"BOS"_s,
                           u"HARF"_s, u"IKI"_s, u"O'NUN"_s}));
    }

    void theDateFilterRunsAtTheEndOfAReadAndNumbersFollowIt_data()
    {
        addTable(uR"(
case                               ; first      ; last       ; dates                               ; left
both days are in it                ; 07.03.2024 ; 08.03.2024 ; 20240306 20240307 20240308 20240309 ; 07.03.2024,08.03.2024
the first day after the last       ; 08.03.2024 ; 07.03.2024 ; 20240306 20240307 20240308 20240309 ;
across a month and a year          ; 02.01.2024 ; 01.02.2024 ; 20231231 20240131 20240201 20250115 ; 31.01.2024,01.02.2024
behind a row without date all stay ; 07.03.2024 ; 07.03.2024 ; 20240101 20240307  20240101         ; 07.03.2024,..,01.01.2024)"_s);
    }
    void theDateFilterRunsAtTheEndOfAReadAndNumbersFollowIt()
    {
        const QString left = fetch("left");
        Desk desk;
        writeBytes(desk.t.path(u"kasacariislemno.kvz"_s), "41\r\n");
        QByteArray bif;
        for (const QString &date : fetch("dates").split(u' '))
            bif += header({u"F1"_s, date});
        desk.open(bif);
        desk.fat.liste.ilkTarih.setDate(QDate::fromString(fetch("first"), u"dd.MM.yyyy"_s));
        desk.fat.liste.sonTarih.setDate(QDate::fromString(fetch("last"), u"dd.MM.yyyy"_s));
        desk.fat.liste.tarihAraligi.setChecked(true);
        desk.fat.tariharaligisec();
        QCOMPARE(column(desk.l1, L1::FaturaTarihi), left);
        desk.fat.otomatikac();
        QCOMPARE(column(desk.l1, L1::FaturaTarihi), left);
        QVERIFY(u"KN000042,KN000043,KN000044"_s.startsWith(column(desk.l1, L1::KasaIslemNo)));
        QCOMPARE(desk.storedCounter(), "45"); // all four headers
    }

    void aWalkTakesTheFirstRunOfLinesBehindTheNumber()
    {
        const QByteArray f1 = header();
        const QByteArray f2 = header({.no = u"F2"_s});
        const auto line = [](QStringView code) {
            return goods(code);
        };
        // A line whose product name reaches into the columns of the number.
        const auto lineNaming = [](QStringView code, const char *number) {
            return goods(code).replace(79, 2, number);
        };
        Desk desk(u"a=1 b=1 c=1 d=1 p=1 q=1"_s);
        const auto taken = [&](QByteArray bif) { // products of F1, by both walks
            QStringList found;
            for (const char *end : {"\r\n", "\n"}) {
                desk.open(bif.replace("\r\n", end));
                desk.liste3yukle(u"F1"_s);
                desk.fat.umurlardetaylioku(u"F1"_s);
                found << column(desk.fat.l3, L3::UrunKodu) << column(desk.fat.l2, L2::UrunKodu);
            }
            return found.count(found[0]) == 4 ? found[0] : found.join(u" or "_s);
        };
        QCOMPARE(taken(f2 + line(u"a")), QString());
        QCOMPARE(taken(f2 + line(u"a") + f1 + line(u"b") + line(u"c") + f2 + line(u"d")), u"b,c"_s);
        // Other records in front of them are passed over; behind them one ends them, or an empty
        // line, while another header before the first of them ends nothing.
        QCOMPARE(taken(f1 + QByteArray("@7\r\n\r\n") + line(u"a")), u"a"_s);
        QCOMPARE(taken(f1 + line(u"a") + "@7\r\n" + line(u"b")), u"a"_s);
        QCOMPARE(taken(f1 + line(u"a") + "\r\n" + line(u"b")), u"a"_s);
        QCOMPARE(taken(f1 + f2 + line(u"a")), u"a"_s);
        QCOMPARE(taken(f1 + line(u"a") + f1 + line(u"b")), u"a"_s); // two of one number
        // A line that names the number begins them; one that names another ends nothing.
        QCOMPARE(taken(f2 + line(u"a") + lineNaming(u"p", "F1") + line(u"c") + f1 + line(u"d")),
                 u"p,c"_s);
        QCOMPARE(taken(f1 + line(u"a") + lineNaming(u"q", "F2") + f2 + line(u"c")), u"a,q"_s);
        // The header's state does not count, and any record may bear the number.
        QCOMPARE(taken(header({.state = u"1"_s}) + line(u"a") + f1 + line(u"b")), u"a"_s);
        QCOMPARE(taken(ruled(u"##", 80, u"F1") + line(u"a") + f1 + line(u"b")), u"a"_s);
        // Blanks in front of the number; a longer one, small letters, and one beside its columns.
        QCOMPARE(taken(ruled(u"@5", 80, u"     F1") + line(u"a")), u"a"_s);
        QCOMPARE(taken(ruled(u"@5", 80, u"F1X") + line(u"a") + ruled(u"@5", 80, u"f1") +
                       line(u"b") + f1 + line(u"c")),
                 u"c"_s);
        QCOMPARE(taken(ruled(u"@5", 79, u"F1") + line(u"a") + ruled(u"@5", 80, u"F1", 95, u"9") +
                       line(u"b")),
                 u"b"_s);
    }

    void theIndexGivesWhatTheWalkGives()
    {
        QRandomGenerator random(20240307);
        const QStringList numbers{u"F1"_s, u"F2"_s, u"F3"_s, u"F4"_s, u"Ğ5"_s, u""_s};
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"rastgele.bif"_s);
        qsizetype taken = 0;
        for (int file = 0; file < 400; ++file) {
            const bool utf8 = random.bounded(8) == 0;
            QByteArray bif = utf8 ? "\xEF\xBB\xBF" : "";
            for (int line = 0, lines = random.bounded(25); line < lines; ++line) {
                const int far = random.bounded(40) ? 100 : 100 + random.bounded(140'000);
                const QString mark = u'@' + QString(u"5566678"_s[random.bounded(7)]);
                QByteArray text = ruled(mark, 31, QString::number(line), 80,
                                        numbers[random.bounded(6)], far, u"son")
                                      .chopped(2);
                if (utf8)
                    text = fromCodePage(text).toUtf8();
                bif += (random.bounded(12) ? text : "") +
                       QByteArrayList{"\r\n", "\n", "\r"}[random.bounded(3)];
            }
            bif.chop(random.bounded(3) ? 0 : random.bounded(60));
            writeBytes(path, bif);
            BifIndex some(path, {numbers.begin(), numbers.begin() + 1 + random.bounded(5)});
            BifIndex all(path, {numbers.begin(), numbers.end()});
            for (int walk = 0; walk < 8; ++walk) { // in any order, and again
                const QString number = numbers[random.bounded(5)];
                QStringList plain, indexed, first;
                walkInvoice(path, number, [&](QStringView line) { plain << line.toString(); });
                all.walkInvoice(number, [&](QStringView line) { indexed << line.toString(); });
                some.walkInvoice(numbers[0], [&](QStringView line) { first << line.toString(); });
                QCOMPARE(indexed, plain);
                if (number == numbers[0])
                    QCOMPARE(first, plain);
                taken += plain.size();
            }
        }
        QVERIFY(taken > 1000);
    }

    void aLineSellsInPacksOrFromTenOnInCartons_data()
    {
        // Cells are quantity, price, amount, total, unit, dealer amount, margin, extra tax.
        // packs: 8 * 5 = 40; 50 - 40 = 10; 1,8; (12,16 - 1,8 / 5) / 1,18 = 11,8 / 1,18
        // just below: 19,99 - 9,99 = 10; (11,8 - 1,8 / 9,99) / 1,18 = 11,6198198 / 1,18 = 9,8473049
        // a carton: (11,8 - 1,8 / 1) / 1,18 = 10 / 1,18 = 8,4745763
        // two and a half: 10 * 2,5 = 25; 4,5; 0,81; (11,8 - 0,324) / 1,18 = 9,7254237
        // 12,3 as a single is 12,3000001907349, and times 0,7 it is 8,6100001335144; 8,7 less that;
        //     (11,8 - 0,016199976 / 12,3) / 1,18 = 11,798682929 / 1,18 = 9,9988838
        // below 1: 0,4 * 0,5 = 0,2; 0,095; 0,0171; (0,59 - 0,0342) / 1,18 = 0,4710169
        // 10 * 1,2345678912 million has eight digits, a single prints seven; / 1,18 = 10462440,7
        // a loss: (11,8 + 1,8) / 1,18 = 13,6 / 1,18 = 11,5254237
        addTable(uR"(
case                         ; dealer ; quantity ; price        ; amount ; lines ; expected
packs                        ; 8      ; 5        ; 12.16        ; 50     ; 2     ; 5,00|10|50,0000|50,0000|PK|40|10|1,8
just below a carton          ; 1      ; 9.99     ; 11.8         ; 19.99  ; 2     ; 9,99|9,847305|19,9900|19,9900|PK|9,99|10|1,8
9,994 packs are 9,99         ; 1      ; 9.994    ; 11.8         ; 9.99   ; 2     ; 9,99|10|9,9900|9,9900|PK|9,99|0|0
9,995 packs are a carton     ; 1      ; 9.995    ; 1.18         ; 10     ; 2     ; 1|10|11,8|10,0000|KRT|10|0|0
a carton                     ; 1      ; 10       ; 1.18         ; 20     ; 2     ; 1|8,474576|11,8|20,0000|KRT|10|10|1,8
two and a half               ; 1      ; 25       ; 1.18         ; 29.5   ; 2     ; 2,5|9,725424|11,8|29,5000|KRT|25|4,5|0,81
the quantity is single       ; 0,07   ; 123      ; 1.18         ; 8.70   ; 2     ; 12,3|9,998884|11,8|8,7000|KRT|8,6100001335144|0,0899998664855985|0,0161999759674077
values below 1               ; 0,4    ; 0.5      ; 0.59         ; 0.295  ; 2     ; ,50|0,4710169|,2950|,2950|PK|0,2|0,095|0,0171
the carton's price is single ; 1      ; 10       ; 1234567.8912 ; 10     ; 2     ; 1|10462440|12345680|10,0000|KRT|10|0|0
a loss raises the price      ; 20     ; 1        ; 11.8         ; 10     ; 2     ; 1,00|11,52542|10,0000|10,0000|PK|20|-10|-1,8
fails: quantity 0            ; 10     ; 0        ; 11.8         ; 10     ; 1     ; ,00|11,8000|10,0000|10,0000|PK|0|10|1,8
fails: no quantity           ; 10     ;          ; 11.8         ; 10     ; 1     ; |||||||
fails: a quantity in words   ; 10     ; bir      ; 11.8         ; 10     ; 1     ; |||||||
fails: no price of packs     ; 10     ; 1        ;              ; 10     ; 1     ; 1,00||10,0000|10,0000|PK|10|0|0
fails: no price of cartons   ; 10     ; 10       ;              ; 10     ; 1     ; 1|||||||
fails: no amount             ; 10     ; 1        ; 11.8         ;        ; 1     ; 1,00|11,8000|||PK|10||
fails: no dealer price       ;        ; 1        ; 11.8         ; 10     ; 1     ; 1,00|11,8000|10,0000||PK|||)"_s);
    }
    // What fails keeps the cells before it, and the good line behind it is not reached.
    void aLineSellsInPacksOrFromTenOnInCartons()
    {
        Desk desk(u"P1=10 X="_s + fetch("dealer"));
        if (fetch("dealer").isEmpty())
            desk.t.boxes.expect({noPrices + u"  X"_s});
        desk.open(header() + goods(u"X", fetch("quantity"), fetch("price"), fetch("amount")) +
                  goods(u"P1"));
        QCOMPARE(desk.liste3yukle(u"F1"_s).has_value(), fetch("lines") == u"1");
        QCOMPARE(desk.fat.l3.rows(), fetch("lines").toInt());
        QCOMPARE(cells(desk.fat.l3, 0, {2, 3, 5, 8, 9, 29, 30, 31}), fetch("expected"));
    }

    void theShownLinesKeepThePriceAndNameTheUnit()
    {
        const QStringList expected{
            u"P|Ürün|5,00|12,1600|18|50,0000  (PK)|0|0|50,0000||40|10,000000|1,800000"_s,
            u"K|Ürün|2,5|1,1800|18|11,8  (KRT)|0|0|29,5000||25|4,500000|0,810000"_s,
            u"Y|Ürün|,50|,5900|18|,2950  (PK)|0|0|,2950||0,2|0,095000|0,017100"_s,
            // A bad number ends the walk only where it is used: no quantity to divide by, no price.
            u"Y|Ürün|,00|11,8000|18|10,0000  (PK)|0|0|10,0000||0|10,000000|1,800000"_s,
            u"Y|Ürün|1,00||18|10,0000  (PK)|0|0|10,0000||0,4|9,600000|1,728000"_s,
            u"Y|Ürün|||||||||||"_s};
        Desk desk(u"P=8 K=1 Y=0,4"_s);
        desk.open(header() + goods(u"P", u"5", u"12.16", u"50") +
                  goods(u"K", u"25", u"1.18", u"29.5") + goods(u"Y", u"0.5", u"0.59", u"0.295") +
                  goods(u"Y", u"0") + goods(u"Y", u"1", u"") + goods(u"Y", u"") + goods(u"P"));
        desk.fat.satirsec(0);
        QCOMPARE(desk.fat.l2.rows(), expected.size());
        for (int row = 0; row < desk.fat.l2.rows(); ++row)
            QCOMPARE(cells(desk.fat.l2, row, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 27, 28, 29}),
                     expected[row]);
        desk.fat.tanimlar.lbrm.clear(); // a word without a unit gives empty brackets
        desk.fat.satirsec(0);
        QCOMPARE(desk.fat.l2.cell(1, L2::Tutar), u"11,8  ()"_s);
    }

    void anySourceIsRead()
    {
        Desk desk;
        const auto titles = [&](const QByteArray &bif) {
            desk.open(bif);
            return desk.fat.liste.listedolu ? column(desk.l1, L1::Unvani) : u"none"_s;
        };
        const QByteArray one = header({.title = u"Çağ"_s});
        QCOMPARE(titles({}), u"none"_s);
        // A bad byte in front, and a header cut off before its state, and behind it.
        QCOMPARE(titles("\xFF@5\n" + one + one.first(147)), u"Çağ"_s);
        QCOMPARE(titles(one.first(148)), u"Çağ"_s);
        QCOMPARE(titles("@5\r\n@8" + one), u"none"_s); // marks alone
        QCOMPARE(titles(QByteArray(10'000'000, '@') + "\r\n" + one), u"Çağ"_s);
        QCOMPARE(titles("\xEF\xBB\xBF" + fromCodePage(one).toUtf8()), u"Çağ"_s);
    }

    void aSourceThatIsGoneOrNoFileLeavesTheListsEmpty()
    {
        Desk desk;
        desk.open(header());
        QFile::remove(desk.t.path(u"kaynak.bif"_s));
        desk.fat.otomatikac();
        QVERIFY(!desk.fat.liste.listedolu);
        desk.fat.dosyaac(desk.t.folder.path());
        desk.fat.umurlardetaylioku(u"F1"_s);
        QVERIFY(desk.l1.isEmpty());
        QVERIFY(desk.fat.l2.isEmpty());
    }

    void withoutTheDatabaseEveryProductIsMissingAndALockedOneIsWaitedForOnce()
    {
        Desk desk;
        const QStringList codes{u"K1"_s, u"K2"_s, u"K3"_s, u"K4"_s, u"K5"_s, u"K6"_s};
        const QByteArray bif = header() + goodsOf(codes);
        const QString missing = noPrices + u"  "_s + codes.join(u"  "_s);
        {
            OtherProgram other(desk.t.path(u"data.dbs"_s));
            other.run(u"begin exclusive"_s);
            desk.t.boxes.expect({missing});
            QElapsedTimer timer;
            timer.start();
            desk.open(bif);
            QVERIFY2(timer.elapsed() < 5000, "each product waits for the lock again");
        }
        QFile::remove(desk.t.path(u"data.dbs"_s));
        desk.t.boxes.expect({missing});
        desk.fat.otomatikac();
        desk.fat.satirsec(0);
        QCOMPARE(desk.l1.rows(), 1);
        QVERIFY(desk.fat.l2.isEmpty());
        QVERIFY(!QFile::exists(desk.t.path(u"data.dbs"_s)));
    }
};

QTEST_GUILESS_MAIN(TestFatRead)
#include "tst_fatread.moc"
