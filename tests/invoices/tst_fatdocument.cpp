// Whole documents. A case is a folder of tests/data/fatura:
//   source.bif         the invoice file
//   data.txt           choices as key=value, then statements for data.dbs; "--" is a remark
//   expected.xml, expected-kasa.xml
// Choices: firma (typed and not clicked with a "?" in front), muh, odeme, birim, fatbilgi; sec and
// efatura name rows from 1 on; kasa, sayac and muafiyet are side files; dugme is the button.

#include "invoices/columns.h"
#include "invoices/fat.h"
#include "support/fakes.h"

#include <QDir>
#include <QHash>
#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

struct Case
{
    QHash<QString, QString> keys;
    QStringList statements;
};

Case readCase(const QString &path)
{
    Case read;
    const QStringList lines = QString::fromUtf8(readBytes(path)).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &choice : lines.value(0).split(u';'))
        read.keys.insert(choice.section(u'=', 0, 0), choice.section(u'=', 1));
    for (const QString &line : lines.mid(1)) {
        if (!line.startsWith("--"_L1))
            read.statements << line;
    }
    return read;
}

QList<int> rowsIn(const QString &numbers)
{
    QList<int> rows;
    for (const QString &number : numbers.split(u',', Qt::SkipEmptyParts))
        rows << number.toInt() - 1;
    return rows;
}

// The place of the first byte that differs, told by its line.
QByteArray difference(const QByteArray &actual, const QByteArray &expected)
{
    if (actual == expected)
        return {};
    const QByteArrayList is = actual.split('\n');
    const QByteArrayList should = expected.split('\n');
    qsizetype line = 0;
    while (line < is.size() && line < should.size() && is[line] == should[line])
        ++line;
    return "line " + QByteArray::number(line + 1) + " is \"" + is.value(line).replace('\r', "\\r") +
           "\", not \"" + should.value(line).replace('\r', "\\r") + '"';
}

} // namespace

class TestFatDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDocumentsOfACaseAreTheExpectedOnes_data();
    void theDocumentsOfACaseAreTheExpectedOnes();
    void aPromotionAndItsDiscountsFollowEachOther();
    void aLineBeyondTheLastPlaceIsLost();
};

void TestFatDocument::theDocumentsOfACaseAreTheExpectedOnes_data()
{
    QTest::addColumn<QString>("folder");
    const QDir cases(QStringLiteral(TEST_DATA "/fatura"));
    for (const QString &name : cases.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        QTest::newRow(qPrintable(name)) << cases.filePath(name);
}

void TestFatDocument::theDocumentsOfACaseAreTheExpectedOnes()
{
    QFETCH(QString, folder);
    const Case given = readCase(folder + u"/data.txt"_s);
    const auto key = [&](QStringView name) {
        return given.keys.value(name.toString());
    };

    TestProgram t;
    const QString target = t.path(u"belge.xml"_s);
    t.fill(u"data.dbs"_s, given.statements);
    t.fill(u"data.dbs"_s, {u"Update yol set xf = '%1' Where id='1'"_s.arg(target)});
    writeBytes(t.path(u"kasa.kvz"_s), key(u"kasa").toLatin1() + "\r\n");
    writeBytes(t.path(u"kdvmu.kvz"_s), key(u"muafiyet").section(u'|', 0, 0).toLatin1() + "\r\n" +
                                           key(u"muafiyet").section(u'|', 1).toLatin1() + "\r\n");
    if (!key(u"sayac").isEmpty())
        writeBytes(t.path(u"kasacariislemno.kvz"_s), key(u"sayac").toLatin1() + "\r\n");

    Fat fat(t.program);
    fat.load();
    fat.c3.setText(key(u"firma"));
    if (!key(u"firma").startsWith(u'?'))
        fat.c3sec();
    fat.c1.setText(key(u"muh"));
    fat.c1sec();
    fat.c2.setText(key(u"birim"));
    fat.c5.setText(key(u"odeme"));
    fat.c5sec();
    fat.fatbilgi.setText(key(u"fatbilgi"));
    fat.dosyaac(folder + u"/source.bif"_s);
    for (const int row : rowsIn(key(u"efatura")))
        fat.liste.l1.setCell(row, L1::EFatura, u"Evet"_s);
    for (const int row : rowsIn(key(u"sec")))
        fat.liste.l1.setTicked(row, true);

    t.boxes.expect({u"Kasa Nakit Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
    t.boxes.expect({u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
    if (key(u"dugme") == u"otomatik") {
        fat.otomatikkaydet();
    } else {
        t.dialogs.answers << target;
        fat.logoyaaktar();
    }
    t.boxes.verify();

    QCOMPARE(difference(readBytes(target), readBytes(folder + u"/expected.xml"_s)), QByteArray());
    QCOMPARE(difference(readBytes(t.path(u"belge-KASANAKIT.xml"_s)),
                        readBytes(folder + u"/expected-kasa.xml"_s)),
             QByteArray());
}

// No line of this source has either; another source of invoices shares the document.
void TestFatDocument::aPromotionAndItsDiscountsFollowEachOther()
{
    InvoiceHead head;
    head.faturaNo = u"F1"_s;
    head.subeDepoKodu = u"D1"_s;
    InvoiceGoods goods;
    goods.indirimMuhKod = u"602"_s;
    goods.promosyon = true;
    goods.yuzdeler = QStringList{u"5.5"_s, u"1"_s};
    InvoiceDocument document(u"10"_s);
    document.beginInvoice(head);
    document.addLine(goods);
    document.addGeneralDiscount(u"2"_s);
    document.endInvoice();
    const QByteArray text = document.belge().body.value(1);

    QVERIFY(text.contains("      <TRANSACTION>\r\n        <TYPE>4</TYPE>\r\n"));
    const QByteArray discount = "      <TRANSACTION>\r\n"
                                "        <TYPE>2</TYPE>\r\n"
                                "        <MASTER_CODE></MASTER_CODE>\r\n"
                                "        <SOURCEINDEX>D1</SOURCEINDEX>\r\n"
                                "        <SOURCECOSTGRP>D1</SOURCECOSTGRP>\r\n"
                                "        <ORDER_REFERENCE>0</ORDER_REFERENCE>\r\n"
                                "        <GL_CODE1>602</GL_CODE1>\r\n"
                                "        <QUANTITY>0</QUANTITY>\r\n"
                                "        <TOTAL></TOTAL>\r\n"
                                "        <RC_XRATE>1</RC_XRATE>\r\n"
                                "        <DISCOUNT_RATE>5.5</DISCOUNT_RATE>\r\n"
                                "        <UNIT_CODE></UNIT_CODE>\r\n"
                                "        <UNIT_CONV1>0</UNIT_CONV1>\r\n"
                                "        <UNIT_CONV2>0</UNIT_CONV2>\r\n"
                                "        <BILLED>1</BILLED>\r\n"
                                "        <DISPATCH_NUMBER>F1</DISPATCH_NUMBER>\r\n"
                                "      </TRANSACTION>\r\n\r\n";
    QByteArray general = discount;
    general.chop(2); // only line discounts have a line end behind them
    general.replace("D1", "").replace("602", "").replace("5.5", "2");
    general.replace("</MASTER_CODE>\r\n",
                    "</MASTER_CODE>\r\n        <DETAIL_LEVEL>1</DETAIL_LEVEL>\r\n");
    const QByteArray lastOfGoods = "</VATEXCEPT_REASON>\r\n      </TRANSACTION>\r\n";
    const qsizetype start = text.indexOf(lastOfGoods) + lastOfGoods.size();
    QCOMPARE(difference(text.sliced(start), discount + QByteArray(discount).replace("5.5", "1") +
                                                general +
                                                "    </TRANSACTIONS>\r\n  </INVOICE>\r\n"),
             QByteArray());
}

void TestFatDocument::aLineBeyondTheLastPlaceIsLost()
{
    InvoiceDocument document(u"10"_s);
    document.beginInvoice({});
    InvoiceGoods goods;
    for (int line = 1; line <= 60'001; ++line) {
        goods.urunKodu = QString::number(line);
        document.addLine(goods);
    }
    document.endInvoice();
    const QByteArray text = document.belge().body.value(1);
    QVERIFY(text.contains("<MASTER_CODE>60000</MASTER_CODE>"));
    QVERIFY(!text.contains("<MASTER_CODE>60001</MASTER_CODE>"));
}

QTEST_GUILESS_MAIN(TestFatDocument)
#include "tst_fatdocument.moc"
