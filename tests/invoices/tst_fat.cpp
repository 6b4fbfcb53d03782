// The invoice screen without its window: loading, choosing, the two export buttons, the list.

#include "desk.h"

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

} // namespace

class TestFat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTableThatCannotBeReadEndsTheListsThere()
    {
        const QStringList filled{u"f"_s,      u",P30<>Otuz"_s, u"20"_s, u"18"_s,
                                 u"Merkez"_s, u"PK,KRT"_s,     u"S1"_s, u",OZ"_s};
        const QStringList tables = u"yol odm kdv muh firma birim per ozkod none"_s.split(u' ');
        for (int broken = 0; broken <= filled.size(); ++broken) {
            Desk desk;
            desk.t.fill(rowsOf(uR"(
Update yol set xf = 'f' Where id='1'
Update kdv set kdv='20' Where id='1'
insert into odm values (Null,'P30','Otuz','','','','','',''))"_s));
            desk.t.fill({u"insert into ozkod values (Null,'OZ')"_s}, u"fatozkod.dbs"_s);
            for (const QString &file : {u"data.dbs"_s, u"fatozkod.dbs"_s})
                OtherProgram(desk.t.path(file)).run(u"drop table "_s + tables[broken]);
            writeBytes(desk.t.path(u"kdvmu.kvz"_s), "genel, tam\r\n"); // one line too few
            desk.t.program.folders.xf.clear();
            Fat fat(desk.t.program);
            fat.load();
            fat.yukle(); // the lists follow the definition screens and don't grow
            QStringList found{desk.t.program.folders.xf, fat.odemePlani.entries().join(u','),
                              fat.tanimlar.genelKdv.text()};
            found << fat.kdvOrani.entries() << fat.tanimlar.firma.entries()
                  << column(fat.tanimlar.lbrm, 1) << column(fat.tanimlar.persl, 1)
                  << fat.tanimlar.ozelKod.entries().join(u',');
            QCOMPARE(found.join(u' ').trimmed(), filled.first(broken).join(u' '));
            QCOMPARE(fat.tanimlar.kdvmuafiyetgenel + fat.tanimlar.kdvmuafiyetsatir,
                     u"genel, tam"_s);
        }
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

    void aCancelledPickAndTheDateBoxLeaveTheListAsItIs()
    {
        Desk desk;
        InvoiceList &list = desk.fat.liste;
        const auto left = [&](void (Fat::*action)()) {
            (desk.fat.*action)();
            return column(list.l1, L1::IslemNo) + desk.ticks() + list.satirSayisi.text();
        };
        desk.t.program.folders.ef = u"/kaynaklar"_s;
        desk.l1.addRow(u"by hand"_s);
        QCOMPARE(left(&Fat::tariharaligisec) + left(&Fat::yenidenoku), u"--"_s); // not pressed yet
        desk.t.dialogs.answers << std::nullopt << std::nullopt;
        QCOMPARE(left(qOverload<>(&Fat::dosyaac)), u"-"_s);
        QCOMPARE(desk.t.dialogs.asked[0].filter, u"Bif Dosyaları (bif)|*.bif"_s);
        QCOMPARE(desk.t.dialogs.asked[0].start, u"/kaynaklar"_s);
        QCOMPARE(left(&Fat::tariharaligisec),
                 u"0"_s); // unticked: reads again, and there is no file

        desk.open(three());
        desk.tick({0, 1, 2});
        list.sonTarih.setDate(QDate(2024, 3, 7));
        QCOMPARE(left(qOverload<>(&Fat::dosyaac)), u"NT000001,NT000002,NT000003xxx3"_s);
        QCOMPARE(left(&Fat::tarihdegisti), u"NT000001,NT000002,NT000003xxx3"_s); // not ticked
        list.tarihAraligi.setChecked(true);
        QCOMPARE(left(&Fat::tariharaligisec), u"NT000002x1"_s); // neither numbered nor read again
        list.sonTarih.setDate(QDate(2024, 3, 8));
        QCOMPARE(left(&Fat::tarihdegisti), u"NT000001,NT000002--2"_s);
        list.ilkTarih.setDate(QDate(2024, 3, 6));
        QCOMPARE(left(&Fat::yenidenoku), u"NT000001,NT000002,NT000003---3"_s);
        list.ilkTarih.setDate(QDate(2024, 3, 9));
        QCOMPARE(left(&Fat::otomatikac), u"0"_s);
        list.tarihAraligi.setChecked(false);
        QCOMPARE(left(&Fat::tariharaligisec), u"NT000001,NT000002,NT000003---3"_s);
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
        desk.t.program.folders.xf = desk.t.path(u"cikti.data"_s);
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

    void aRowThatTheCashStepCannotReadKeepsTheOldCashFile()
    {
        const std::pair<Header, bool> cases[] = {
            {{u"F2"_s, u""_s}, true},
            {{u"F2"_s, u"20241301"_s}, true},
            {{u"F2"_s, u"20240307"_s, u"1"_s, u""_s}, true},
            {{u"F2"_s, u""_s, u"1"_s, u"7000"_s}, false}, // beyond the limit
        };
        for (const auto &[bad, failing] : cases) {
            Desk desk;
            desk.open(header() + header(bad) + header({.date = u""_s}));
            desk.tick({0, 1});
            const QString cash = desk.t.path(u"belge-KASANAKIT.xml"_s);
            writeBytes(cash, "old cash");
            desk.expectDone(!failing);
            desk.exportTo(u"belge.xml"_s);
            QCOMPARE(readBytes(cash) == "old cash", failing);
            QCOMPARE(readBytes(desk.t.path(u"belge.xml"_s)).count("</INVOICE>"), 2);
        }
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
        QCOMPARE(heads.count("</INVOICE>") * 10 + heads.count("<TRANSACTION>"), 20);
    }

    void rowsAreTickedAndShownByEFaturaAndFoundByTitle()
    {
        Desk desk;
        int reads = 0;
        InvoiceList list(QList<GridColumn>(18), desk.t.boxes, [&] { ++reads; });
        const auto after = [&](void (InvoiceList::*operation)()) {
            (list.*operation)();
            QString marks;
            for (int row = 0; row < list.l1.rows(); ++row)
                marks += list.l1.cell(row, 0) + (list.l1.ticked(row) ? u"+"_s : u""_s);
            return marks + QString::number(reads);
        };
        for (const QString &title : {u"Ada"_s, u"Oda ada"_s, u"ADA"_s, u"Da"_s})
            list.l1.setCell(list.l1.addRow(title.left(1)), L1::Unvani, title);
        list.arananUnvan.setText(u"da"_s);
        QCOMPARE(list.unvanara(), QList<int>({0, 1}));           // case counts
        QCOMPARE(after(&InvoiceList::eolmayan), u"A+O+A+D+0"_s); // no "Evet" at all
        list.l1.setCell(1, L1::EFatura, u"Evet"_s);
        QCOMPARE(after(&InvoiceList::eolan), u"AO+AD0"_s);
        QCOMPARE(after(&InvoiceList::eolmayan), u"A+OA+D+0"_s);
        QCOMPARE(after(&InvoiceList::tumunusecdegisti), u"AOAD0"_s); // as its box stands
        QCOMPARE(after(&InvoiceList::efatgoster), u"AOAD0"_s);       // no read has filled the list
        list.listedolu = true;
        QCOMPARE(after(&InvoiceList::efatolmgoster), u"AAD1"_s);
        QCOMPARE(list.satirSayisi.text(), u"3"_s);
        QCOMPARE(after(&InvoiceList::tumgoster), u"AAD2"_s);
        QCOMPARE(after(&InvoiceList::efatgoster), u"3"_s);
        QCOMPARE(after(&InvoiceList::tumgoster), u"3"_s); // an empty list stays empty
        desk.t.boxes.expectWarning(noTicks);
        list.secilenlerisil();
    }
};

QTEST_GUILESS_MAIN(TestFat)
#include "tst_fat.moc"
