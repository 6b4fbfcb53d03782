// Whole documents. A case (documentcase.h) is a folder of tests/data/fatura:
//   source.bif         the invoice file
//   data.txt           firma (typed and not clicked with a "?" in front), muh, odeme, birim,
//                      fatbilgi; sec and efatura name rows from 1 on; dugme is the button
//   expected.xml, expected-kasa.xml

#include "desk.h"
#include "support/documentcase.h"
#include "support/places.h"

using namespace kervan;

class TestFatDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDocumentsOfACaseAreTheExpectedOnes_data() { DocumentCase::addAll(u"fatura"_s); }
    void theDocumentsOfACaseAreTheExpectedOnes()
    {
        TestProgram t;
        const DocumentCase given(t);
        const QString target = t.path(u"belge.xml"_s);
        t.fill({u"Update yol set xf = '%1' Where id='1'"_s.arg(target)});
        given.markEInvoices(t);
        Fat fat(t.program);
        fat.load();
        fat.tanimlar.firma.setText(given[u"firma"_s]);
        if (!fat.tanimlar.firma.text().startsWith(u'?'))
            fat.firmasec();
        fat.kdvOrani.setText(given[u"muh"_s]);
        fat.kdvoranisec();
        fat.birimSeti.setText(given[u"birim"_s]);
        fat.odemePlani.setText(given[u"odeme"_s]);
        fat.odemeplanisec();
        fat.faturaTuru.setText(given[u"fatbilgi"_s]);
        fat.dosyaac(given.path(u"source.bif"_s));
        for (const QString &row : given.list(u"sec"_s))
            fat.liste.l1.setTicked(row.toInt() - 1, true);

        t.boxes.expectDone(u"Kasa Nakit "_s);
        t.boxes.expectDone();
        t.dialogs.answers << target;
        given[u"dugme"_s] == u"otomatik" ? fat.otomatikkaydet() : fat.logoyaaktar();
        t.boxes.verify();
        given.expect(target);
        given.expect(t.path(u"belge-KASANAKIT.xml"_s), u"expected-kasa.xml"_s);
    }

    void allNineRatesOfALineBecomeDiscountsInTheirOrder()
    {
        Grid l3{QList<GridColumn>(L3::EkVergiTutari + 1)};
        l3.addRow(u"P1"_s);
        for (int rate = 1; rate <= 9; ++rate)
            l3.setCell(0, L3::Yuzde1 + rate - 1, rate == 4 ? u"0"_s : u"%1,5"_s.arg(rate));
        QCOMPARE(commonGoods(l3, 0).yuzdeler.join(u' '), u"1.5 2.5 3.5 5.5 6.5 7.5 8.5 9.5"_s);
    }

    void anInvoiceHasRoomForSixtyThousandLines()
    {
        InvoiceDocument document(u"10"_s, {.xl1 = {}, .xl2 = "x"});
        document.beginInvoice({});
        for (int line = 0; line < 60'001; ++line)
            document.addLine({});
        QCOMPARE(document.endInvoice().toByteArray().count('x'), 60'000);
    }

    // No line of this source has either; another source of invoices shares the document.
    void aPromotionAndItsDiscountsFollowEachOther()
    {
        InvoiceHead head;
        head.faturaNo = u"F1"_s;
        head.subeDepoKodu = u"D1"_s;
        InvoiceGoods goods;
        goods.indirimMuhKod = u"602"_s;
        goods.promosyon = true;
        goods.yuzdeler = QStringList{u"5.5"_s, u"1"_s};
        InvoiceDocument document(u"10"_s, sapTemplates());
        document.beginInvoice(head);
        document.addLine(goods);
        document.addGeneralDiscount(u"2"_s);
        const QByteArray text = document.endInvoice().toByteArray();
        QVERIFY(text.contains("      <TRANSACTION>\r\n        <TYPE>4</TYPE>\r\n"));
        const QByteArray tail = readBytes(testData(u"indirimler.xml"_s));
        QCOMPARE(text.last(tail.size()).split('\n'), tail.split('\n'));
    }
};

QTEST_GUILESS_MAIN(TestFatDocument)
#include "tst_fatdocument.moc"
