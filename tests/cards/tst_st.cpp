#include "cards/st.h"

#include "support/fakes.h"
#include "support/places.h"
#include "support/workbooks.h"

#include <QSignalSpy>

using namespace kervan;

namespace {

class Desk
{
public:
    TestProgram t;
    St st{t.program};

    Desk()
    {
        t.fill(rowsOf(uR"(
insert into muh values (Null,'','8','1','2','3','4','','','','')
insert into muh values (Null,'','18','153','600','153i','610','','','','')
insert into muh values (Null,'','18','x','x','x','x','','','','')
insert into birim values (Null,'05','ADET','','','','','','')
insert into statu values (Null,'Bar','1')
insert into statu values (Null,'Otel','1')
insert into statu values (Null,'Büfe','0'))"_s));
        st.load();
    }
    void expectRefusal()
    {
        t.boxes.expectWarning(u"Açmaya Çalıştığınız Exel Dosyası Mey Cari Exel Dosyası Değil...!"_s,
                              Icon::None);
    }
    void open(const QList<BookRow> &rows, const QString &sheet = u"cari mey"_s)
    {
        writeWorkbook(t.path(u"mey.xls"_s), sheet, rows); // its bytes tell what it is
        t.dialogs.answers << t.path(u"mey.xls"_s);
        st.manualac();
    }
};

} // namespace

class TestSt : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSheetGoesByPositionAndItsHeadingIsARowLikeTheOthers()
    {
        Desk desk;
        QCOMPARE(desk.st.kdvOrani.entries(), (QStringList{u"8"_s, u"18"_s, u"18"_s}));
        QCOMPARE(desk.st.birimSeti.entries(), QStringList{u"ADET"_s});
        QCOMPARE(desk.st.statu.entries(), (QStringList{u"Bar"_s, u"Otel"_s, u"Büfe"_s, u"Tümü"_s}));
        QCOMPARE(desk.st.statu.text(), u"Otel"_s);
        BookRow wide{u"M1"_s, u"RAKI & 70"_s};
        for (int field = 2; field < 20; ++field)
            wide << field + 0.5;
        desk.open({{u"Kodu"_s, u"?"_s, u"?"_s}, wide});
        QCOMPARE(desk.t.dialogs.asked.last().start, desk.t.path(u"mey exel"_s));
        QCOMPARE(desk.st.kayitSayisi.text(), u"2"_s);
        QCOMPARE(desk.st.l1.cell(0, St::Depo), u"Kodu"_s);
        QCOMPARE(desk.st.l1.cell(1, St::UrunKodu), u"RAKI & 70"_s);
        QCOMPARE(desk.st.l1.cell(1, St::Tutar), u"6,5"_s);
        desk.open({{u"?"_s, u"?"_s, u"Ticari Ünvan"_s}});
        QCOMPARE(desk.st.l1.rows(), 1);
    }

    void aWorkbookThatIsNoneOfMeysIsRefusedAndTheListStays()
    {
        Desk desk;
        desk.open({{u"Kodu"_s, u"a"_s, u"b"_s}});
        desk.expectRefusal();
        desk.open({{u"kodu"_s, u"Adi"_s, u"Ünvan"_s}});
        desk.expectRefusal();
        desk.open({{u"Kodu"_s}}, u"Sayfa1"_s);
        QVERIFY(desk.st.bilgi.text().contains(u"Sayfa1"_s)); // the sheets that there are
        desk.expectRefusal();
        desk.st.kontrol(desk.t.path(u"yok.xls"_s));
        QCOMPARE(desk.st.l1.rows(), 1);
    }

    void theChecksRunInTheirOrderAndDropTheListsOpen()
    {
        Desk desk;
        QSignalSpy rate(&desk.st.kdvOrani, &ChoiceField::dropWanted);
        QSignalSpy unit(&desk.st.birimSeti, &ChoiceField::dropWanted);
        desk.t.boxes.expectWarning(u"Stok Listesinde Kayıt Bulunamadı...!"_s);
        desk.st.manualkaydet();
        desk.open({{u"Kodu"_s, u"a"_s, u"b"_s}});
        desk.t.boxes.expectWarning(u"Kdv Oranı Seçiniz...!"_s);
        desk.st.otomatikkaydet();
        desk.st.kdvOrani.setText(u"18"_s);
        desk.t.boxes.expectWarning(u"Birim Seti Seçiniz...!"_s);
        desk.st.manualkaydet();
        QCOMPARE(rate.size(), 1);
        QCOMPARE(unit.size(), 1);
        desk.st.birimSeti.setText(u"ADET"_s);
        desk.t.boxes.expectWarning(
            u"Dosya Konumu Hatalı...!Ayarlardan Dosya Konumlarını Kontrol Ediniz."_s, Icon::Stop);
        desk.st.otomatikkaydet();
        desk.t.dialogs.answers << std::nullopt;
        desk.st.manualkaydet();
        QCOMPARE(desk.t.dialogs.asked.last().start, desk.t.path(u"logo xml"_s));
    }

    void theDocumentIsTheExpectedOneByBothButtonsAndFailsInTheirTwoWays()
    {
        Desk desk;
        const QString target = desk.t.path(u"stok.xml"_s);
        desk.t.fill({u"Update yol set xc = 'x' Where id='1'"_s,
                     u"Update yol set xs = 'stok.xml' Where id='1'"_s}); // in the program folder
        desk.st.load();
        desk.open({{u"Kodu"_s, u"KOD birimseti"_s, u"Ürün & Şişe"_s},
                   {u"M2"_s, u"KOD2"_s, u"muh al kod"_s}});
        desk.st.kdvOrani.setText(u"18"_s);
        desk.st.kdvoranisec();
        desk.st.birimSeti.setText(u"ADET"_s);
        desk.st.birimsetisec();
        desk.t.boxes.expectDone();
        desk.st.otomatikkaydet();
        const QByteArray expected = readBytes(testData(u"st/expected.xml"_s));
        QCOMPARE(readBytes(target), expected);
        desk.t.dialogs.answers << desk.t.path(u"a.XML"_s);
        desk.t.boxes.expectDone();
        desk.st.manualkaydet();
        QCOMPARE(desk.t.dialogs.asked.last().start, u"stok.xml"_s);
        QCOMPARE(readBytes(desk.t.path(u"a.XML.xml"_s)), expected);

        desk.t.program.folders.xs = desk.t.path(u"yok/stok.xml"_s);
        const QString why = failureOf([&] { desk.st.kaydet(desk.t.program.folders.xs); });
        QVERIFY(why.contains(u"stok.xml"_s));
        desk.t.boxes.expect({.text = why});
        desk.st.otomatikkaydet();
        desk.t.dialogs.answers << desk.t.program.folders.xs;
        desk.st.manualkaydet(); // quietly, but for the window's own line
        QCOMPARE(desk.st.bilgi.details(), why);
        QVERIFY(!desk.st.bekle.isChecked() && !desk.st.ilerleme.isShown());
    }
};

QTEST_GUILESS_MAIN(TestSt)
#include "tst_st.moc"
