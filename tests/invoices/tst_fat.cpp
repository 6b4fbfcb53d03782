// The invoice screen without its window: loading, choosing, the two export buttons, the list.

#include "desk.h"
#include "invoices/fatchecks.h"
#include "support/findings.h"
#include "support/memory.h"
#include "support/table.h"

#include <QFile>
#include <QSignalSpy>

using namespace kervan;

namespace {

const QString noTicks = u"Fatura Listesinden Seçim Yapılması Gerekiyor...!"_s;

QByteArray three()
{
    return header({u"F1"_s, u"20240306"_s}) + goods(u"P1") + header({u"F2"_s}) + goods(u"P1") +
           header({u"F3"_s, u"20240308"_s}) + goods(u"P1");
}

// Files of the program folder that an export wrote, or left behind.
QString written(const Desk &desk)
{
    QStringList names = contentOf(desk.t.folder.path()).split(u'|');
    names.removeIf(
        [](const QString &name) { return name.contains(u' ') || name.endsWith(u"bs"_s); });
    for (const QString &before : {u"kaynak.bif"_s, u"sqlbaglan.kvz"_s, u"txt"_s})
        names.removeOne(before);
    return names.join(u' ');
}

// An invoice list of its own, whose source is read again by counting.
struct ListDesk
{
    FakeBoxes boxes;
    int reads = 0;
    InvoiceList list{QList<GridColumn>(18), boxes, [this] {
                         ++reads;
                     }};

    ListDesk()
    {
        for (const QString &code : {u"A"_s, u"B"_s, u"C"_s})
            list.l1.addRow(code);
    }
    void mark(int row) { list.l1.setCell(row, L1::EFatura, u"Evet"_s); }
    QString ticks() const { return ticksOf(list.l1); }
    QString rows() const { return column(list.l1, L1::CariKodu); }
};

} // namespace

class TestFat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The lists are filled table by table; the first table that can't be read ends it there.
    void aTableThatCannotBeReadEndsTheListsThere_data()
    {
        // The lists that are filled then, a word of each.
        addTable(uR"(
case         ; filled
yol          ; |||||||
odm          ; f|||||||
kdv          ; f|,P30<>Otuz||||||
muh          ; f|,P30<>Otuz|20|||||
firma        ; f|,P30<>Otuz|20|18||||
birim        ; f|,P30<>Otuz|20|18|Merkez|||
per          ; f|,P30<>Otuz|20|18|Merkez|PK,KRT||
ozkod        ; f|,P30<>Otuz|20|18|Merkez|PK,KRT|S1|
none of them ; f|,P30<>Otuz|20|18|Merkez|PK,KRT|S1|,OZ)"_s);
    }
    void aTableThatCannotBeReadEndsTheListsThere()
    {
        Desk desk;
        desk.t.fill(rowsOf(uR"(
Update yol set xf = 'f' Where id='1'
Update kdv set kdv='20' Where id='1'
insert into odm values (Null,'P30','Otuz','','','','','',''))"_s));
        desk.t.fill({u"insert into ozkod values (Null,'OZ')"_s}, u"fatozkod.dbs"_s);
        for (const QString &file : {u"data.dbs"_s, u"fatozkod.dbs"_s})
            OtherProgram(desk.t.path(file)).run(u"drop table "_s + caseName());
        desk.t.program.folders.xf.clear();
        Fat fat(desk.t.program);
        fat.load();
        fat.yukle(); // the lists follow the definition screens and don't grow
        QStringList found{desk.t.program.folders.xf, fat.odemePlani.entries().join(u',')};
        found << fat.tanimlar.genelKdv.text() << fat.kdvOrani.entries().join(u',');
        found << fat.tanimlar.firma.entries().join(u',') << column(fat.tanimlar.lbrm, 1);
        found << column(fat.tanimlar.persl, 1) << fat.tanimlar.ozelKod.entries().join(u',');
        QCOMPARE(found.join(u'|'), fetch("filled"));
    }

    void anExemptionTextThatIsMissingLeavesTheOther()
    {
        Desk desk;
        writeBytes(desk.t.path(u"kdvmu.kvz"_s), "genel, tam\r\n"); // one line too few
        Fat fat(desk.t.program);
        fat.load();
        QCOMPARE(fat.tanimlar.kdvmuafiyetgenel, u"genel, tam"_s);
        QCOMPARE(fat.tanimlar.kdvmuafiyetsatir, QString());
    }

    void aChoiceThatIsNotFoundKeepsTheValuesOfTheOneBefore()
    {
        Desk desk;
        desk.t.fill(
            {u"insert into firma values (Null,'2','','Merkez','','SECOND','','SECOND','')"_s});
        desk.open(three());
        desk.tick({0});
        for (const QString &text : {u"Merkez"_s, u"18"_s, u"Ali'nin"_s, u"yok"_s, u""_s}) {
            desk.fat.tanimlar.firma.setText(text);
            desk.fat.firmasec();
            desk.fat.kdvOrani.setText(text);
            desk.fat.kdvoranisec();
        }
        const QByteArray document = desk.exported();
        for (const char *element :
             {">120</GL_CODE>", ">D1</SOURCE_WH>", ">600</GL_CODE1>", ">391</GL_CODE2>"})
            QVERIFY2(document.contains(element), element);
    }

    void aCancelledPickLeavesTheList()
    {
        Desk desk;
        desk.t.program.folders.ef = u"/kaynaklar"_s;
        desk.open(three());
        desk.tick({0, 1, 2});
        desk.t.dialogs.answers << std::nullopt;
        desk.fat.dosyaac();
        QCOMPARE(desk.t.dialogs.asked[0].filter, u"Bif Dosyaları (bif)|*.bif"_s);
        QCOMPARE(desk.t.dialogs.asked[0].start, u"/kaynaklar"_s);
        QCOMPARE(desk.ticks(), u"xxx"_s);
    }

    void beforeTheButtonWasPressedNothingReadsTheListAgain()
    {
        Desk desk;
        desk.l1.addRow(u"by hand"_s);
        desk.fat.tariharaligisec();
        desk.fat.yenidenoku();
        QCOMPARE(desk.l1.rows(), 1);
        desk.t.dialogs.answers << std::nullopt;
        desk.fat.dosyaac(); // pressed, and cancelled
        QCOMPARE(desk.l1.rows(), 1);
        desk.fat.tariharaligisec(); // unticked: reads again, and there is no file
        QCOMPARE(desk.l1.rows(), 0);
    }

    void theDateBoxFiltersWhatIsThereAndADateReadsAgain()
    {
        Desk desk;
        InvoiceList &list = desk.fat.liste;
        const auto numbers = [&] {
            return column(list.l1, L1::IslemNo);
        };
        desk.open(three());
        desk.tick({0, 1, 2});
        list.sonTarih.setDate(QDate(2024, 3, 7));
        desk.fat.tarihdegisti(); // the box is not ticked
        QCOMPARE(desk.ticks(), u"xxx"_s);
        list.tarihAraligi.setChecked(true);
        desk.fat.tariharaligisec(); // neither numbered nor read again
        QCOMPARE(numbers(), u"NT000002"_s);
        QCOMPARE(desk.ticks(), u"x"_s);
        QCOMPARE(list.satirSayisi.text(), u"1"_s);
        list.sonTarih.setDate(QDate(2024, 3, 8));
        desk.fat.tarihdegisti();
        QCOMPARE(numbers(), u"NT000001,NT000002"_s);
        QCOMPARE(desk.ticks(), u"--"_s);
        list.ilkTarih.setDate(QDate(2024, 3, 6));
        desk.fat.yenidenoku();
        QCOMPARE(numbers(), u"NT000001,NT000002,NT000003"_s);
        list.ilkTarih.setDate(QDate(2024, 3, 9));
        desk.fat.otomatikac();
        QCOMPARE(numbers(), QString());
        list.tarihAraligi.setChecked(false);
        desk.fat.tariharaligisec();
        QCOMPARE(numbers(), u"NT000001,NT000002,NT000003"_s);
    }

    void theSaveButtonChecksListFirmAndTicksAndThenAsksForAName()
    {
        Desk desk;
        const QSignalSpy firm(&desk.fat.tanimlar.firma, &TextField::focusWanted);
        desk.t.boxes.expectWarning(u"Fatura Listesinde Kayıt Bulunamadı...!"_s);
        desk.fat.logoyaaktar();
        desk.open(three());
        QCOMPARE(firm.size(), 0);
        desk.t.boxes.expectWarning(u"Firma Seçiniz...!"_s);
        desk.fat.logoyaaktar();
        QCOMPARE(firm.size(), 1);
        desk.fat.tanimlar.firma.setText(u"Merkez"_s);
        desk.t.boxes.expectWarning(noTicks);
        desk.fat.logoyaaktar();
        desk.t.boxes.verify();
        QVERIFY(desk.t.dialogs.asked.isEmpty());
        desk.tick({0});
        // The place to start from is told by one folder value and taken from another.
        const QString own = desk.t.folder.path() + u"/logo xml"_s;
        for (const auto &[xc, start] : {std::pair(u""_s, own), {u"/c.xml"_s, u"/f.xml"_s}}) {
            desk.t.program.folders.xc = xc;
            desk.t.program.folders.xf = u"/f.xml"_s;
            desk.t.dialogs.answers << std::nullopt;
            desk.fat.logoyaaktar(); // cancelled: no box, no file, no counter
            QCOMPARE(desk.t.dialogs.asked.last().start, start);
        }
        QCOMPARE(desk.t.dialogs.asked[0].filter, u"Xml Dosyaları (xml)|*.xml"_s);
        QCOMPARE(written(desk), QString());
        for (const QString &name : {u"a.xml"_s, u"b"_s, u"c.XML"_s}) {
            desk.t.dialogs.answers << desk.t.path(name);
            desk.expectDone();
            desk.fat.logoyaaktar();
            desk.t.boxes.verify();
        }
        QCOMPARE(written(desk), u"a-KASANAKIT.xml a.xml b-KASANAKIT.xml b.xml c.XML-KASANAKIT.xml "
                                "c.XML.xml kasacariislemno.kvz"_s);
    }

    void theAutomaticButtonChecksListFirmRateUnitSetAndTarget()
    {
        Desk desk;
        desk.t.boxes.expectWarning(u"Stok Listesinde Kayıt Bulunamadı...!"_s);
        desk.fat.otomatikkaydet();
        desk.open(three());
        const auto refusedAt = [&](TextField &field, const QString &text, const QString &answer) {
            const QSignalSpy focus(&field, &TextField::focusWanted);
            desk.t.boxes.expectWarning(text);
            desk.fat.otomatikkaydet();
            desk.t.boxes.verify();
            QCOMPARE(focus.size(), 1);
            field.setText(answer);
        };
        refusedAt(desk.fat.tanimlar.firma, u"Firma Seçiniz...!"_s, u"Merkez"_s);
        refusedAt(desk.fat.kdvOrani, u"Kdv Oranı Seçiniz...!"_s, u"18"_s);
        refusedAt(desk.fat.birimSeti, u"Birim Seti Seçiniz...!"_s, u"Adet"_s);
        desk.t.boxes.expectWarning(
            u"Dosya Konumu Hatalı...!Ayarlardan Dosya Konumlarını Kontrol Ediniz."_s, Icon::Stop);
        desk.fat.otomatikkaydet();
        QCOMPARE(written(desk), QString());
        // Four characters go, whatever they are.
        desk.t.program.folders.xf = u"cikti.data"_s; // in the program folder
        desk.expectDone();
        desk.fat.otomatikkaydet(); // ticks don't matter
        desk.t.boxes.verify();
        QCOMPARE(written(desk), u"cikti.-KASANAKIT.xml cikti.data kasacariislemno.kvz"_s);
    }

    void aTargetThatCannotBeWrittenStillEndsWithSuccessAndKeepsTheOldFiles()
    {
        Desk desk;
        desk.open(three());
        desk.tick({0, 1, 2});
        desk.expectDone(false); // neither file has a place
        desk.exportTo(u"yok/belge.xml"_s);
        QCOMPARE(written(desk), u"kasacariislemno.kvz"_s);
        QVERIFY(QDir(desk.t.folder.path()).mkdir(u"a.xml"_s)); // in the way of the invoices alone
        desk.expectDone();
        desk.exportTo(u"a.xml"_s);
        QCOMPARE(written(desk), u"a-KASANAKIT.xml a.xml kasacariislemno.kvz"_s);
        const QByteArray cash = readBytes(desk.t.path(u"a-KASANAKIT.xml"_s));
        const QByteArray document = desk.exported();
        writeBytes(desk.t.path(u"kasacariislemno.kvz"_s), "5\r\n");
        desk.fat.otomatikac();
        // No room at all, then room for the counter alone.
        for (const auto &[room, counter] : {std::pair(0UL, "5\r\n"), {64, "8\r\n"}}) {
            desk.expectDone(false);
            if (!onAFullDisk(room, [&] { desk.exportTo(u"belge.xml"_s); }))
                QSKIP("no way to fill a disk here");
            QCOMPARE(readBytes(desk.t.path(u"belge.xml"_s)), document);
            QCOMPARE(readBytes(desk.t.path(u"belge-KASANAKIT.xml"_s)), cash);
            QCOMPARE(readBytes(desk.t.path(u"kasacariislemno.kvz"_s)), counter);
        }
    }

    void aRowThatTheCashStepCannotReadKeepsTheOldCashFile_data()
    {
        addTable(uR"(
case                         ; date     ; grand  ; fails
no date                      ;          ; 118.00 ; yes
a thirteenth month           ; 20241301 ; 118.00 ; yes
no grand total               ; 20240307 ;        ; yes
no date but beyond the limit ;          ; 7000   ; no)"_s);
    }
    void aRowThatTheCashStepCannotReadKeepsTheOldCashFile()
    {
        const bool fails = fetch("fails") == u"yes";
        Desk desk;
        desk.open(header() +
                  header({.no = u"F2"_s, .date = fetch("date"), .grand = fetch("grand")}) +
                  header({.date = u""_s}));
        const auto checks = checksOf(desk.fat);
        checks->finish();
        QCOMPARE(!textOf(*checks, 2, u"kasa fişi"_s).isEmpty(), fails);
        desk.tick({0, 1}); // the last row would fail, too
        const QString cash = desk.t.path(u"belge-KASANAKIT.xml"_s);
        writeBytes(cash, "old cash");
        desk.expectDone(!fails);
        desk.exportTo(u"belge.xml"_s);
        QCOMPARE(readBytes(cash) == "old cash", fails);
        QCOMPARE(readBytes(desk.t.path(u"belge.xml"_s)).count("</INVOICE>"), 2);
    }

    void anExportCanBeRepeatedAndOneWithoutItsSourceHasHeadsAlone()
    {
        Desk desk;
        desk.open(three());
        desk.tick({0, 2});
        const QByteArray document = desk.exported();
        QCOMPARE(document.count("<TRANSACTION>"), 2);
        QCOMPARE(desk.exported(), document);
        QCOMPARE(desk.storedCounter(), "3");
        QCOMPARE(desk.ticks(), u"x-x"_s);
        QVERIFY(!desk.fat.ilerleme.isShown());
        QFile::remove(desk.t.path(u"kaynak.bif"_s));
        const QByteArray heads = desk.exported();
        QCOMPARE(heads.count("</INVOICE>"), 2);
        QCOMPARE(heads.count("<TRANSACTION>"), 0);
        QVERIFY(desk.fat.bilgi.text().contains(u"2 faturanın satırları eksik"_s));
        desk.fat.liste.l1.setAllTicked(false);
        QCOMPARE(desk.exported().count("</INVOICE>"), 0);
        QVERIFY(
            desk.fat.bilgi.text().contains(u"kaynak.bif"_s)); // without an invoice that tells it
    }

    void pricesThatCannotBeReadAreZeroAndTold()
    {
        Desk desk;
        desk.open(three());
        desk.tick({0, 1, 2});
        const QByteArray document = desk.exported();
        QCOMPARE(desk.fat.bilgi.text(), QString());
        OtherProgram backup(desk.t.path(u"data.dbs"_s));
        backup.run(u"begin exclusive"_s);
        QVERIFY(desk.exported() != document); // the whole amount is the dealer's margin
        QVERIFY2(desk.fat.bilgi.text().contains(u"data.dbs"_s), qPrintable(desk.fat.bilgi.text()));
        desk.t.boxes.expect({noPrices + u"  P1  P1  P1"_s});
        desk.fat.dosyaac(desk.t.path(u"kaynak.bif"_s));
        QVERIFY2(desk.fat.bilgi.text().contains(u"data.dbs"_s), qPrintable(desk.fat.bilgi.text()));
    }

    void aSourceThatIsBackBeforeAnInvoiceGivesItsLines()
    {
        Desk desk;
        desk.open(three());
        const QString source = desk.t.path(u"kaynak.bif"_s);
        QVERIFY(QFile::rename(source, source + u'x'));
        BifLines lines(desk.t.program, source, {desk.l1.cell(0, L1::FaturaNumarasi)});
        QVERIFY(lines.unreadable().has_value());
        QVERIFY(QFile::rename(source + u'x', source));
        lines.liste3yukle(desk.l1.cell(0, L1::FaturaNumarasi), desk.fat.tanimlar.lbrm, desk.fat.l3);
        QCOMPARE(desk.fat.l3.rows(), 1);
    }

    void theListsSayWhatTheirColumnsAre()
    {
        const auto headings = [](const Grid &grid) {
            QStringList all;
            for (const GridColumn &column : grid.columns())
                all << column.heading;
            return all.join(u'|');
        };
        Desk desk;
        QCOMPARE(headings(desk.l1),
                 u"Cari Kodu|Ünvanı|Fatura Numarası|Belge Numarası|Fatura Tarihi|"
                 "Logo Personel Kodu|Sap Personel kodu|Ödeme Tipi|Toplam Tutar|İndirim Toplamı|"
                 "Kdv Toplamı|Genel Toplam|E-Fatura|TAHSİLAT ORANI|TAHSİLAT TUTARI|İŞLEM NO|"
                 "KASA İŞLEM NO|KASA SATIS ELEMANI"_s);
        QCOMPARE(headings(desk.fat.l2),
                 u"Ürün Kodu|Ürün Adı|Miktar|Birim Fiyat|Kdv %|Tutar|İndirimTutarı|Kdv Tutarı|"
                 "Toplam|ind1%|ind1|ind2%|ind2|ind3%|ind3|ind4%|ind4|ind5%|ind5|ind6%|ind6|ind7%|"
                 "ind7|ind8%|ind8|ind9%|ind9|Bayi Satış Fiyatı|Bayi Karı|Ek Vergi Tutarı"_s);
    }

    void rowsAreFoundByTheirTitleInItsCase()
    {
        Desk desk;
        desk.open(header({.title = u"Ada"_s}) + header({.title = u"Oda ada"_s}) +
                  header({.title = u"ADA"_s}) + header({.title = u"Da"_s}));
        desk.fat.liste.arananUnvan.setText(u"da"_s);
        QCOMPARE(desk.fat.liste.unvanara(), QList<int>({0, 1}));
    }

    void rowsAreTickedByTheirEFaturaMark()
    {
        ListDesk d;
        d.list.eolmayan();
        QCOMPARE(d.ticks(), u"xxx"_s); // no "Evet" at all
        d.mark(1);
        d.list.eolan();
        QCOMPARE(d.ticks(), u"-x-"_s);
        d.list.eolmayan();
        QCOMPARE(d.ticks(), u"x-x"_s);
        d.list.tumunusecdegisti(); // as its box stands
        QCOMPARE(d.ticks(), u"---"_s);
        d.list.fattumsec();
        QCOMPARE(d.ticks(), u"xxx"_s);
        d.list.tumsecimkaldir();
        QCOMPARE(d.ticks(), u"---"_s);
        QCOMPARE(d.reads, 0);
        d.boxes.expectWarning(noTicks);
        d.list.secilenlerisil();
    }

    void aViewReadsAListAgainThatAReadHasFilled()
    {
        ListDesk d;
        d.mark(1);
        d.list.efatgoster(); // no read has filled the list
        QCOMPARE(d.rows(), u"A,B,C"_s);
        QCOMPARE(d.reads, 0);
        d.list.listedolu = true;
        d.list.efatolmgoster();
        QCOMPARE(d.rows(), u"A,C"_s);
        QCOMPARE(d.list.satirSayisi.text(), u"2"_s);
        d.list.tumgoster();
        QCOMPARE(d.reads, 2);
        d.list.efatgoster();
        QCOMPARE(d.rows(), QString());
        QCOMPARE(d.reads, 3);
        d.list.tumgoster(); // an empty list stays empty
        QCOMPARE(d.reads, 3);
    }

    // It is written while it is made, so that many invoices need no more than few.
    void anExportHoldsNoDocument()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer gives no memory back");
#endif
        Desk desk;
        constexpr int invoices = 6000;
        QByteArray bif;
        for (int i = 0; i < invoices; ++i)
            bif += header({.no = u"F"_s + QString::number(i)}) + goods(u"P1") + goods(u"P2");
        desk.open(bif);
        desk.l1.setAllTicked(true);
        if (!resetPeak())
            QSKIP("the system does not tell");
        const double before = peakSinceReset();
        desk.expectDone();
        desk.exportTo(u"belge.xml"_s);
        const double taken = peakSinceReset() - before;
        const double document =
            static_cast<double>(QFileInfo(desk.t.path(u"belge.xml"_s)).size()) / 1e6;
        QVERIFY(document > 20);
        QVERIFY2(taken < document / 4, qPrintable(u"%1 MB"_s.arg(taken)));
    }
};

QTEST_GUILESS_MAIN(TestFat)
#include "tst_fat.moc"
