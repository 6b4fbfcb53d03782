// Whole documents. A case is a folder of tests/data/fatura:
//   source.bif         the invoice file
//   data.txt           choices as key=value, then statements for data.dbs; "--" is a remark
//   expected.xml, expected-kasa.xml
// Choices: firma (typed and not clicked with a "?" in front), muh, odeme, birim, fatbilgi; sec and
// efatura name rows from 1 on; kasa, sayac and muafiyet are side files; dugme is the button.

#include "desk.h"

#include <QDir>
#include <QHash>

using namespace kervan;

class TestFatDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDocumentsOfACaseAreTheExpectedOnes_data()
    {
        QTest::addColumn<QString>("folder");
        const QDir cases(QStringLiteral(TEST_DATA "/fatura"));
        for (const QString &name : cases.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            QTest::newRow(qPrintable(name)) << cases.filePath(name);
    }
    void theDocumentsOfACaseAreTheExpectedOnes()
    {
        QFETCH(QString, folder);
        QStringList lines =
            QString::fromUtf8(readBytes(folder + u"/data.txt"_s)).split(u'\n', Qt::SkipEmptyParts);
        QHash<QString, QString> keys;
        for (const QString &choice : lines.takeFirst().split(u';'))
            keys.insert(choice.section(u'=', 0, 0), choice.section(u'=', 1));
        lines.removeIf([](const QString &line) { return line.startsWith(u"--"_s); });

        TestProgram t;
        const QString target = t.path(u"belge.xml"_s);
        t.fill(lines);
        t.fill({u"Update yol set xf = '%1' Where id='1'"_s.arg(target)});
        writeBytes(t.path(u"kasa.kvz"_s), keys[u"kasa"_s].toLatin1());
        writeBytes(t.path(u"kdvmu.kvz"_s),
                   keys[u"muafiyet"_s].replace(u'|', u'\n').toLatin1() + "\n\n");
        writeBytes(t.path(u"kasacariislemno.kvz"_s), keys[u"sayac"_s].toLatin1());
        t.reachLogo();
        const QStringList marked = keys[u"efatura"_s].split(u',', Qt::SkipEmptyParts);
        t.sqlServer.answer = [&](const QString &) -> SqlRows { // one statement a row
            const auto row = QString::number(t.sqlServer.statements.size());
            return {{u"ACCEPTEINV"_s}, {{marked.contains(row) ? u"1"_s : u"0"_s}}};
        };
        Fat fat(t.program);
        fat.load();
        fat.c3.setText(keys[u"firma"_s]);
        if (!fat.c3.text().startsWith(u'?'))
            fat.c3sec();
        fat.c1.setText(keys[u"muh"_s]);
        fat.c1sec();
        fat.c2.setText(keys[u"birim"_s]);
        fat.c5.setText(keys[u"odeme"_s]);
        fat.c5sec();
        fat.fatbilgi.setText(keys[u"fatbilgi"_s]);
        fat.dosyaac(folder + u"/source.bif"_s);
        for (const QString &row : keys[u"sec"_s].split(u',', Qt::SkipEmptyParts))
            fat.liste.l1.setTicked(row.toInt() - 1, true);

        for (const QString &what : {u"Kasa Nakit "_s, u""_s})
            t.boxes.expect({what + u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
        t.dialogs.answers << target;
        keys[u"dugme"_s] == u"otomatik" ? fat.otomatikkaydet() : fat.logoyaaktar();
        t.boxes.verify();
        QCOMPARE(readBytes(target).split('\n'), readBytes(folder + u"/expected.xml"_s).split('\n'));
        QCOMPARE(readBytes(t.path(u"belge-KASANAKIT.xml"_s)).split('\n'),
                 readBytes(folder + u"/expected-kasa.xml"_s).split('\n'));
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
        InvoiceDocument document(u"10"_s);
        document.beginInvoice(head);
        document.addLine(goods);
        document.addGeneralDiscount(u"2"_s);
        document.endInvoice();
        const QByteArray text = document.belge().body.value(1);
        QVERIFY(text.contains("      <TRANSACTION>\r\n        <TYPE>4</TYPE>\r\n"));
        const QByteArray tail = readBytes(QStringLiteral(TEST_DATA "/indirimler.xml"));
        QCOMPARE(text.last(tail.size()).split('\n'), tail.split('\n'));
    }
};

QTEST_GUILESS_MAIN(TestFatDocument)
#include "tst_fatdocument.moc"
