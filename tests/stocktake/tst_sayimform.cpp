#include "stocktake/sayimform.h"

#include "base/linereader.h"
#include "support/cells.h"
#include "support/fakes.h"
#include "support/places.h"
#include "support/ruler.h"

using namespace kervan;

namespace {

// Knows the barcodes that begin with 869: their stock code is what stands behind it.
SqlRows answered(const QString &statement)
{
    const QString barcode = statement.section(u'\'', 1, 1);
    if (!barcode.startsWith(u"869"_s))
        return {{u"ITEMKOD"_s, u"BIRIMKOD"_s}, {}};
    const QString code = barcode.sliced(3);
    const QString unit = code == u"BIRIMSIZ" ? QString() : u"KOLİ"_s;
    return {{u"ITEMKOD"_s, u"BIRIMKOD"_s}, {{code, unit}, {u"?"_s, u"?"_s}}};
}

class Desk
{
public:
    TestProgram t;
    Sayimform screen{t.program};

    Desk()
    {
        t.reachLogo();
        t.sqlServer.answer = answered;
        screen.load();
    }
    void open(const QByteArray &lines)
    {
        writeBytes(t.path(u"sayim.txt"_s), lines);
        screen.dosyaac(t.path(u"sayim.txt"_s));
    }
};

} // namespace

class TestSayimform : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCountBecomesTheExpectedSlip()
    {
        Desk desk;
        desk.open(ruled(u"869A+MIKTAR+", 15, u"1.234,50 çöp") + ruled(u" 111", 15, u"7") + "\r\n" +
                  ruled(u"869SÜT", 15, u" 1.000 ") +
                  "869KISA"
                  "\r\n");
        QCOMPARE(textOf(desk.screen.l1), u"1|869A+MIKTAR+|A+MIKTAR+|1.234,|KOLİ\n2|111||7|\n"
                                         "3||||\n4|869SÜT|SÜT|1.000|KOLİ\n5|869KISA|KISA||KOLİ"_s);
        QCOMPARE(desk.screen.sayimSayisi.text(), u"5"_s);
        QCOMPARE(desk.t.sqlServer.statements.size(), 10); // two a line
        QVERIFY(desk.t.sqlServer.statements[9].endsWith(u"where BAR.BARCODE='869KISA'"_s));

        desk.screen.fisno.setText(u"SYM000007"_s);
        desk.t.dialogs.answers = {std::nullopt, desk.t.path(u"sayim"_s)};
        desk.screen.xmlkaydet(); // cancelled
        desk.t.boxes.expectDone();
        desk.screen.xmlkaydet();
        QCOMPARE(desk.t.dialogs.asked.last().title, u"Sayım Xml Dosyası Kaydet"_s);
        QCOMPARE(readBytes(desk.t.path(u"sayim.xml"_s)),
                 readBytes(testData(u"sayim/expected.xml"_s)));
        QCOMPARE(desk.screen.l1.rows(), 5);
    }

    void withoutARowNothingIsAskedAndUnknownBarcodesLeaveAnEmptySlip()
    {
        Desk desk;
        desk.t.boxes.expectWarning(u"Sayım Listesinde Kayıt Bulunamadı...!"_s);
        desk.screen.xmlkaydet();
        desk.open({});
        QCOMPARE(desk.screen.sayimSayisi.text(), u"0"_s);
        desk.open("000\r\n000");
        QCOMPARE(desk.screen.l1.rows(), 2);
        desk.t.boxes.expectDone();
        desk.screen.kaydet(desk.t.path(u"bos.xml"_s));
        const QByteArray slip = readBytes(desk.t.path(u"bos.xml"_s));
        QVERIFY(slip.contains("    <TRANSACTIONS>\r\n </TRANSACTIONS>\r\n"));
        desk.t.boxes.expectDone(); // said in any case; what failed stands in the window
        desk.screen.kaydet(desk.t.path(u"yok/bos.xml"_s));
        QVERIFY(desk.screen.bilgi.text().contains(u"bos.xml"_s));
    }

    void theStockCodeAloneDecidesWhichRowsAreWritten()
    {
        Desk desk;
        desk.open("869BIRIMSIZ\r\n869\r\n869A\r\n");
        QCOMPARE(column(desk.screen.l1, Sayimform::StokKodu), u"BIRIMSIZ,,A"_s);
        QCOMPARE(column(desk.screen.l1, Sayimform::Birim), u",KOLİ,KOLİ"_s);
        desk.t.boxes.expectDone();
        desk.screen.kaydet(desk.t.path(u"sayim.xml"_s));
        const QByteArray slip = readBytes(desk.t.path(u"sayim.xml"_s));
        QCOMPARE(slip.count("<TRANSACTION>"), 2);
        QVERIFY(slip.contains("<UNIT_CODE></UNIT_CODE>"));
    }

    void tenThousandLinesOfWhichHalfAreUnknownKeepTheirPlaces()
    {
        Desk desk;
        QByteArray lines;
        for (int i = 0; i < 10'000; ++i)
            lines += (i % 2 ? "869" : "111") + QByteArray::number(i) + "\r\n";
        desk.open(lines);
        QCOMPARE(rowOf(desk.screen.l1, 9999), u"10000|8699999|9999||KOLİ"_s);
        desk.t.boxes.expectDone();
        desk.screen.kaydet(desk.t.path(u"s.xml"_s));
        const QByteArray slip = readBytes(desk.t.path(u"s.xml"_s));
        QCOMPARE(slip.count("<TRANSACTION>"), 5'000);
        QVERIFY(slip.contains("<ITEM_CODE>9999</ITEM_CODE>\r\n        <LINE_TYPE>0</LINE_TYPE>\r\n"
                              "        <LINE_NUMBER>5000</LINE_NUMBER>"));
    }

    void aFailedLookUpEndsTheReadAndEmptiesTheList()
    {
        Desk desk;
        desk.t.sqlServer.answer = [&](const QString &statement) {
            if (desk.t.sqlServer.statements.size() == 4) // the unit of the second line
                throw Failure(u"hat kesildi"_s);
            return answered(statement);
        };
        desk.t.boxes.expect({.text = u"hat kesildi"_s});
        desk.open(ruled(u"869A", 15, u"1") + ruled(u"869B", 15, u"2") + ruled(u"869C", 15, u"3"));
        QVERIFY(desk.screen.l1.isEmpty() && !desk.screen.ilerleme.isShown());
        QCOMPARE(desk.screen.sayimSayisi.text(), u"0"_s);
        QCOMPARE(desk.screen.bilgi.details(),
                 u"Okuma 2. satırda durdu (dosyada 3 satır var), liste boşaltıldı.\nhat kesildi"_s);
        QCOMPARE(desk.screen.bilgi.source.text(), desk.t.path(u"sayim.txt"_s));
        desk.t.boxes.expectWarning(u"Sayım Listesinde Kayıt Bulunamadı...!"_s);
        desk.screen.xmlkaydet(); // half a count is not written

        desk.t.sqlServer.statements.clear();
        desk.t.boxes.expect(
            {.text = u"Bu değer SQL komutunu bozar, komut gönderilmedi: '; DROP --"_s});
        desk.open("'; DROP --\r\n869A");
        const QString nul = u"86%1A"_s.arg(QChar(u'\0'));
        desk.t.boxes.expect(
            {.text = u"Bu değer SQL komutunu bozar, komut gönderilmedi: %1"_s.arg(nul)});
        desk.open(nul.toLatin1());
        QVERIFY(desk.t.sqlServer.statements.isEmpty());

        Sayimform unconnected(desk.t.program);
        desk.t.boxes.expect({.text = u"SQL Server bağlantısı yok."_s});
        unconnected.dosyaac(desk.t.path(u"sayim.txt"_s));
        QVERIFY(unconnected.l1.isEmpty());

        const QString gone = desk.t.path(u"yok.txt"_s);
        const QString why = failureOf([&] { const LineReader reader(gone); });
        QVERIFY(why.contains(u"yok.txt"_s));
        desk.t.boxes.expect({.text = why});
        desk.screen.dosyaac(gone);
    }
};

QTEST_GUILESS_MAIN(TestSayimform)
#include "tst_sayimform.moc"
