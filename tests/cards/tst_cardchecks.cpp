// What is found in the lists of the card transfers, each finding planted in a source.

#include "cards/cardchecks.h"

#include "cards/cr.h"
#include "cards/st.h"
#include "cards/stoktrf.h"
#include "support/fakes.h"
#include "support/findings.h"
#include "support/ruler.h"
#include "support/workbooks.h"

using namespace kervan;

namespace {

// A line of the material export.
QByteArray material(QStringView code, QStringView name, QStringView unit = u"ADET",
                    QStringView multiplier = u"0.000", QStringView rate = u"10")
{
    return ruled(u"000001", 25, code, 79, name, 119, unit, 125, multiplier, 133, rate);
}

struct StockDesk
{
    TestProgram t;
    Stoktrf screen{t.program};

    StockDesk()
    {
        t.fill({u"insert into ozkod values (Null,'KMP-24','Kampanya')"_s,
                u"insert into ozkod values (Null,'A&B','Ortak')"_s,
                u"insert into ozkod values (Null,'ANA','Ana mal')"_s},
               u"stokozkod.dbs"_s);
        writeBytes(t.path(u"brmset.kvz"_s), "SET\r\n");
    }
    void choose(const QStringList &codes)
    {
        for (std::size_t i = 0; i < screen.ozelKodlar.size(); ++i)
            screen.ozelKodlar[i].setText(codes.value(static_cast<qsizetype>(i)));
    }
    void read(const QByteArray &lines)
    {
        writeBytes(t.path(u"stok.txt"_s), lines);
        screen.dosyaac(t.path(u"stok.txt"_s));
    }
    QByteArray saved()
    {
        t.boxes.expectDone();
        screen.kaydet(t.path(u"stok.xml"_s));
        return readBytes(t.path(u"stok.xml"_s));
    }
};

struct MeyDesk
{
    TestProgram t;
    St screen{t.program};

    MeyDesk()
    {
        t.fill({u"insert into muh values (Null,'','8','1','2','3','4','','','','')"_s,
                u"insert into muh values (Null,'','18','153','','153i','','','','','')"_s,
                u"insert into birim values (Null,'05','ADET','','','','','','')"_s,
                u"insert into birim values (Null,'','KOLI','','','','','','')"_s});
        screen.load();
    }
    void choose(const QString &rate, const QString &unitSet)
    {
        screen.kdvOrani.setText(rate);
        screen.kdvoranisec();
        screen.birimSeti.setText(unitSet);
        screen.birimsetisec();
    }
    void read(const QString &lines)
    {
        writeWorkbook(t.path(u"mey.xls"_s), u"cari mey"_s, bookRows(lines));
        screen.ac(t.path(u"mey.xls"_s));
    }
};

} // namespace

class TestCardChecks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void accountsShowWhatIsPlantedAndCleanOnesNothing()
    {
        TestProgram t;
        Cr cr(t.program);
        const auto checks = checksOf(cr);
        QCOMPARE(found(*checks), QStringList());
        const auto read = [&](const QStringList &accounts) { // in UTF-8, which holds all letters
            QByteArray lines(utf8Mark.data(), utf8Mark.size());
            for (const QString &account : accounts)
                lines += QByteArray("  ") + account.toUtf8() + "\r\n";
            writeBytes(t.path(u"cari.txt"_s), lines);
            cr.dosyaac(t.path(u"cari.txt"_s));
        };
        read({u"CR000001BİR ŞTİ. 'IŞIK'"_s, u"CR2     İKİ > BİR"_s, u"CR000003KDV"_s});
        QCOMPARE(found(*checks), QStringList());
        QCOMPARE(leftOut(cr.okuma), QStringList());

        t.program.folders.xc = u"x"_s;
        t.program.folders.xf = t.path(u"yok/cari.xml"_s);
        writeBytes(t.path(u"cariref.kvz"_s), "[id]\r\nid=bozuk\r\n");
        read({u"CR000001AB & CO"_s, u"CR000002A<B"_s, u"CR000003A\u0001B"_s, u"CR000004ÇAY 5 €"_s,
              u"CR000005Ω KAFE"_s, u"CR000006BİR"_s, u"CR000007İKİ"_s, u"CR000006ÜÇ"_s,
              u"        KODSUZ"_s, u"CR000010"_s, u"CR000011eski caridataref"_s, u""_s,
              u"CR<00013ON ÜÇ"_s, u"CR€00014ON DÖRT"_s});
        QCOMPARE(found(*checks), lines(u"hata belge klasörü\nuyari sayaç\n"
                                       "hata 1:2 XML işareti\nhata 2:2 XML işareti\n"
                                       "hata 3:2 XML işareti\nuyari 4:2 harf\nuyari 5:2 harf\n"
                                       "hata 6:1 çift numara\nhata 8:1 çift numara\n"
                                       "hata 9:1 boş kod\nuyari 10:2 boş ünvan\n"
                                       "hata 11:0 şablon sözcüğü\n"
                                       "hata 12:1 boş kod\nuyari 12:2 boş ünvan\n"
                                       "hata 13:1 XML işareti\nuyari 14:1 harf"_s));
        RulesSetOff off;
        off.ask(rulesOf(cr), cr.l1);
        {
            const FolderAway away(t);
            QCOMPARE(found(*checks).first(), u"hata program klasörü"_s);
            off.ask(rulesOf(cr), cr.l1);
        }
        QVERIFY(textOf(*checks, 3, u"XML işareti"_s).contains(u"1 kodlu"));
        QVERIFY(textOf(*checks, 4, u"harf"_s).contains(u"başka okuyabilir"));
        QVERIFY(textOf(*checks, 5, u"harf"_s).contains(u"\"?\" yazılır"));
        QCOMPARE(textOf(*checks, 6, u"çift numara"_s),
                 u"\"CR000006\" cari kodu 8. satırda da var."_s);
        QCOMPARE(textOf(*checks, 11, u"şablon sözcüğü"_s),
                 u"\"eski caridataref\" içindeki \"caridataref\" şablonun sözcüğüdür, belgede "
                 "yerine \"1059\" yazılır."_s);
        QCOMPARE(leftOut(cr.okuma), lines(u"9 Cari kodu boş.\n10 Satır kısa: Ünvan yok.\n"
                                          "12 Satır boş: listede boş bir satır oldu."_s));
        cr.dosyaac(t.path(u"yok.txt"_s));
        QCOMPARE(leftOut(cr.okuma), lines(u"1 Okuma burada bitti."_s));
        QCOMPARE(off.missing().join(u", "_s), QString());
    }

    void materialsShowWhatIsPlantedAndCleanOnesNothing()
    {
        StockDesk d;
        d.screen.load();
        const auto checks = checksOf(d.screen);
        d.choose({u"ANA- Ana mal"_s, u"ANA- Ana mal"_s, u"ANA- Ana mal"_s, u"ANA- Ana mal"_s,
                  u"ANA- Ana mal"_s});
        d.read(material(u"K1", u" ÇAY 500 GR") +
               material(u"K2", u"ŞEKER", u"KOLİ", u"24.000", u" 8"));
        QCOMPARE(found(*checks), QStringList());
        QCOMPARE(leftOut(d.screen.okuma), QStringList());

        d.screen.brmseti.setText({});
        d.choose(
            {{}, u"KMP-24- Kampanya"_s, u"A&B- Ortak"_s, u"ANA- Ana mal"_s, u"ANA- Ana mal"_s});
        d.read(material(u"K1", u"A & B", u"<", u"1.000") +
               material(u"K2", u"", u"", u"0,000", u"x") +
               material(u"K1", u"kdv dahil", u"ADET", u"0.00", u"") +
               material(u"", u"X", u"ADET", u"") + material(u"K<5", u"ÇAY ‰", u"KL‰") +
               material(u"K‰6", u"Y"));
        QCOMPARE(
            found(*checks),
            lines(u"hata brmseti birim seti\nhata c1 özel kod\nuyari c2 kısalan kod\n"
                  "hata c3 XML işareti\n"
                  "hata 1:3 XML işareti\nhata 1:4 XML işareti\nhata 1:2 çift numara\n"
                  "uyari 2:3 boş ad\nhata 2:4 birim\nhata 2:5 birim çarpanı\nhata 2:6 kdv oranı\n"
                  "hata 3:5 birim çarpanı\nhata 3:6 kdv oranı\nhata 3:0 şablon sözcüğü\n"
                  "hata 3:2 çift numara\nhata 4:2 boş kod\nhata 4:5 birim çarpanı\n"
                  "hata 5:2 XML işareti\nuyari 5:3 harf\nuyari 5:4 harf\nuyari 6:2 harf\n"
                  "eksik Stok birim seti kodu 6 brmset"_s));
        RulesSetOff off;
        QVERIFY(textOf(*checks, 0, u"kısalan kod"_s).endsWith(u"\"KMP\" olarak yazılır."));
        off.ask(rulesOf(d.screen), d.screen.l1);
        const QList<std::pair<QString, QString>> oddCodes{{u"KMP-24- Kampanya"_s, u"kısalan kod"_s},
                                                          {u"A&B- Ortak"_s, u"XML işareti"_s},
                                                          {u"A‰- Binde"_s, u"harf"_s},
                                                          {{}, u"özel kod"_s}};
        for (const auto &[code, rule] : oddCodes) {
            d.choose({code, code, code, code, code});
            for (int list = 1; list <= 5; ++list)
                QCOMPARE(found(*checks).at(list).section(u' ', 1), u"c%1 %2"_s.arg(list).arg(rule));
            off.ask(rulesOf(d.screen), d.screen.l1);
        }
        d.screen.brmseti.setText(u"S&T‰"_s);
        QVERIFY(found(*checks).contains(u"hata brmseti XML işareti"_s));
        QVERIFY(found(*checks).contains(u"uyari brmseti harf"_s));
        off.ask(rulesOf(d.screen), d.screen.l1);
        {
            const FolderAway away(d.t);
            QCOMPARE(found(*checks).first(2), lines(u"hata program klasörü\nhata belge klasörü"_s));
            off.ask(rulesOf(d.screen), d.screen.l1);
        }
        d.screen.brmseti.setText(u"SET"_s); // without a new list
        QVERIFY(!found(*checks).contains(u"hata brmseti birim seti"_s));

        QFile::remove(d.t.path(u"stokozkod.dbs"_s));
        Stoktrf alone(d.t.program);
        alone.load();
        alone.dosyaac(d.t.path(u"stok.txt"_s));
        const auto unread = checksOf(alone);
        QCOMPARE(found(*unread).first(), u"hata tanımlar"_s);
        QVERIFY(found(*unread).contains(u"eksik Stok özel kodu 6 stokozkod"_s));
        off.ask(rulesOf(alone), alone.l1);
        QCOMPARE(off.missing().join(u", "_s), QString());
    }

    // A word is told exactly where the document holds something else than the list.
    void wordsOfTheTemplateAreToldWhereTheyChangeTheDocument()
    {
        StockDesk d;
        d.screen.load();
        // The first is of a step that is through; an empty list's word is filled with itself.
        const QStringList names{u"stokkod yok"_s, u"kdv dahil"_s,     u"KDV DAHİL"_s,
                                u"tarihli"_s,     u"carpan 2"_s,      u"stokozkod"_s,
                                u"birimkodu"_s,   u"malsnfozko4 ek"_s};
        QByteArray lines;
        for (const QString &name : names)
            lines += material(u"K", name, u"ADET", u"12.000", u"18");
        d.choose({{}, u"ANA- Ana mal"_s});
        d.read(lines);
        const auto checks = checksOf(d.screen);
        checks->finish();
        const QString document = fromCodePage(d.saved());
        for (int row = 0; row < names.size(); ++row)
            QCOMPARE(textOf(*checks, row + 1, u"şablon sözcüğü"_s).isEmpty(),
                     document.contains(u"<NAME>%1</NAME>"_s.arg(names[row])));
        QVERIFY(textOf(*checks, 1, u"şablon sözcüğü"_s).isEmpty());
        QVERIFY(!textOf(*checks, 2, u"şablon sözcüğü"_s).isEmpty());
    }

    void theMeyListShowsWhatIsPlantedAndACleanOneNothing()
    {
        MeyDesk d;
        const auto checks = checksOf(d.screen);
        d.choose(u"8"_s, u"ADET"_s);
        d.read(u"D1|M1|RAKI\nD1|M2|VOTKA"_s);
        QCOMPARE(found(*checks), QStringList());
        QCOMPARE(leftOut(d.screen.okuma), QStringList());

        d.t.program.folders.xs = d.t.path(u"stok.xml"_s);
        writeBytes(d.t.path(u"stok.xml"_s), "x");
        d.choose(u"18"_s, u"KOLI"_s);
        d.read(u"Kodu|Adı|Ticari Ünvan|||||Bölge\nD|M1|A & B\nD|M1|kdv orani\nD||X\nD|M5|\n"
               "D|M<|RAKI\nD|M‰|GİN ‰"_s);
        QCOMPARE(found(*checks),
                 lines(u"uyari var olan dosya\nuyari c1 muhasebe kodu\nhata c2 birim seti\n"
                       "uyari 1:2 başlık satırı\nhata 2:3 XML işareti\nhata 2:2 çift numara\n"
                       "hata 3:0 şablon sözcüğü\nhata 3:2 çift numara\nhata 4:2 boş kod\n"
                       "uyari 5:3 boş ad\nhata 6:2 XML işareti\nuyari 7:2 harf\nuyari 7:3 harf\n"
                       "eksik Muhasebe kodu 18 7 muhkod\neksik Birim seti KOLI 7 birimseti"_s));
        RulesSetOff off;
        off.ask(rulesOf(d.screen), d.screen.l1);
        QVERIFY(textOf(*checks, 0, u"muhasebe kodu"_s).endsWith(u"satış, satış iade."));
        QCOMPARE(leftOut(d.screen.okuma),
                 lines(u"4 cari mey!B4 Ürün Kodu boş.\n5 cari mey!C5 Ürün Adı boş.\n"
                       "1 cari mey!H1 Listede bu sütunun yeri yok."_s));
        d.choose({}, {});
        d.t.program.folders.xs = d.t.path(u"yok/stok.xml"_s);
        QCOMPARE(found(*checks).first(4), lines(u"hata belge klasörü\nhata c1 kdv satırı\n"
                                                "hata c2 birim seti\nuyari 1:2 başlık satırı"_s));
        off.ask(rulesOf(d.screen), d.screen.l1);
        QFile::remove(d.t.path(u"data.dbs"_s));
        d.screen.load();
        QCOMPARE(found(*checks).first(), u"hata tanımlar"_s);
        off.ask(rulesOf(d.screen), d.screen.l1);
        QCOMPARE(off.missing().join(u", "_s), QString());
    }
};

QTEST_GUILESS_MAIN(TestCardChecks)
#include "tst_cardchecks.moc"
