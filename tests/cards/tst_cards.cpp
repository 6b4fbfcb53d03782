// The two card transfers. A case of whole documents is a folder of tests/data/cards:
//   source.txt        the text export
//   data.txt          choices as key=value, then statements for stokozkod.dbs
//   expected.xml      the document; expected.kvz the list of codes behind it
// Choices: ekran is cr, cr-guncelle or stok; dataref goes to the first row; brmset is the side
// file; c1 to c5 are special codes.

#include "cards/screens/crwindow.h"
#include "cards/screens/stoktrfwindow.h"
#include "frame/mainwindow.h"
#include "invoices/cardcheck.h"
#include "support/failing.h"
#include "support/fakes.h"
#include "support/ruler.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDropEvent>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QRegularExpression>
#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

const Box done{u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information};

// Both transfers over one program folder, each with a source of one card.
struct Desk
{
    TestProgram t;
    Cr cr{t.program};
    Stoktrf stok{t.program};
    const QString cariler = t.path(u"cariler.txt"_s);
    const QString stoklar = t.path(u"stoklar.txt"_s);
    const QString target = t.path(u"belge.xml"_s);
    const QString nowhere = t.path(u"yok/belge.xml"_s);

    Desk()
    {
        writeBytes(cariler, ruled(u"", 3, u"1234", 11, u"DENİZ"));
        writeBytes(stoklar, ruled(u"", 25, u"KOD1", 79, u"LOKUM", 133, u"18"));
        cr.dosyaac(cariler);
        stok.dosyaac(stoklar);
    }
    QByteArray bytes(const QString &name) const { return readBytes(t.path(name)); }
};

// A clock that goes on by a second at each reading.
class TickingClock : public Clock
{
public:
    QDateTime now() const override { return m_moment = m_moment.addSecs(1); }

private:
    mutable QDateTime m_moment{QDate(2024, 3, 7), QTime(23, 59, 57)};
};

QString row(const Grid &grid, int columns)
{
    QStringList cells;
    for (int column = 0; column < columns; ++column)
        cells << grid.cell(0, column);
    return cells.join(u'|');
}

} // namespace

class TestCards : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDocumentOfACaseIsTheExpectedOne_data();
    void theDocumentOfACaseIsTheExpectedOne();
    void eachFieldIsCutFromItsColumns();
    void theClockIsReadForEachStepOfEachRow();
    void dialogsAreAskedAsTheScreensSayAndACancelChangesNothing();
    void anInsertPassesOverAFailureAndAnUpdateEndsAtIt();
    void anUnreadableSourceIsPassedOverByOneAndEndsTheOther();
    void theSpecialCodesComeInTheirOrderAndLoseTheirChoice();
    void aCariKeepsTheReferenceItOnceGot();
    void codesAreLookedForInTheListFiles();
    void theCariWindowIsDrivenOnce();
    void theStockWindowIsDrivenOnce();
};

void TestCards::theDocumentOfACaseIsTheExpectedOne_data()
{
    QTest::addColumn<QString>("folder");
    const QDir cases(QStringLiteral(TEST_DATA "/cards"));
    for (const QString &name : cases.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        QTest::newRow(qPrintable(name)) << cases.filePath(name);
}

void TestCards::theDocumentOfACaseIsTheExpectedOne()
{
    QFETCH(QString, folder);
    QStringList lines =
        QString::fromUtf8(readBytes(folder + u"/data.txt"_s)).split(u'\n', Qt::SkipEmptyParts);
    QHash<QString, QString> key;
    for (const QString &choice : lines.takeFirst().split(u';'))
        key.insert(choice.section(u'=', 0, 0), choice.section(u'=', 1));
    TestProgram t;
    t.fill(lines, u"stokozkod.dbs"_s);
    writeBytes(t.path(u"brmset.kvz"_s), key[u"brmset"_s].toLatin1());
    writeBytes(t.path(u"carikontrol.kvz"_s), "ONCEKI\r\n");
    writeBytes(t.path(u"stokkontrol.kvz"_s), "ONCEKI\r\n");
    const QString target = t.path(u"belge.xml"_s);
    const QString source = folder + u"/source.txt"_s;
    QString list = u"carikontrol.kvz"_s;
    t.boxes.expect(done);
    if (key[u"ekran"_s] == u"stok") {
        list = u"stokkontrol.kvz"_s;
        Stoktrf stok(t.program);
        stok.load();
        stok.dosyaac(source);
        for (int i = 0; i < 5; ++i) {
            const QString choice = key[u"c%1"_s.arg(i + 1)];
            QVERIFY2(stok.c[size_t(i)].entries().contains(choice), qPrintable(choice));
            stok.c[size_t(i)].setText(choice);
        }
        stok.kaydet(target);
    } else {
        Cr cr(t.program);
        cr.dosyaac(source);
        cr.l1.setCell(0, Cr::DataReferans, key[u"dataref"_s]);
        key[u"ekran"_s] == u"cr" ? cr.kaydet(target) : cr.kaydetguncelle(target);
    }
    const QByteArrayList is = readBytes(target).split('\n');
    const QByteArrayList should = readBytes(folder + u"/expected.xml"_s).split('\n');
    for (qsizetype i = 0; i < qMin(is.size(), should.size()); ++i)
        QVERIFY2(is[i] == should[i], "line " + QByteArray::number(i + 1) + ": " + is[i]);
    QCOMPARE(is.size(), should.size());
    QCOMPARE(readBytes(t.path(list)), readBytes(folder + u"/expected.kvz"_s));
}

void TestCards::eachFieldIsCutFromItsColumns()
{
    Desk d;
    const QString title(50, u'Ü');
    const QString name(40, u'Ş');
    writeBytes(d.cariler, ruled(u"xx", 3, u"12345678", 11, title, 61, u"x") + "\r\n");
    writeBytes(d.stoklar, ruled(QString(134, u'x'), 25, u"123456789", 79, name, 119, u"ABCDEF", 125,
                                u"12.3456", 133, u"18", 135, u"x"));
    d.cr.caridosyasikoku();
    d.stok.stokdosyasikoku();
    QCOMPARE(d.cr.l1.rows(), 2); // the rows read before are gone, the blank line counts
    QCOMPARE(d.cr.kartSayisi.text(), u"2"_s);
    QCOMPARE(row(d.cr.l1, 17), u"12345678|"_s + title + QString(15, u'|'));
    QCOMPARE(row(d.stok.l1, 6), u"1|123456789|"_s + name + u"|ABCDEF|12.3456|18"_s);
}

void TestCards::theClockIsReadForEachStepOfEachRow()
{
    Desk d;
    TickingClock clock;
    Program program{d.t.folder.path(), {}, {}, {}, d.t.boxes, d.t.dialogs, clock, d.t.sqlServer};
    writeBytes(d.cariler, "\r\n\r\n");
    Cr cr(program);
    cr.dosyaac(d.cariler);
    d.t.boxes.expect(done);
    cr.kaydet(d.target);
    static const QRegularExpression moments(u"_CREATED>(\\d[^<]*)"_s);
    QStringList written;
    for (const auto &match : moments.globalMatch(QString::fromLatin1(readBytes(d.target))))
        written << match.captured(1);
    QCOMPARE(written.join(u' '), u"07.03.2024 23 0 1 08.03.2024 0 0 5"_s);
}

void TestCards::dialogsAreAskedAsTheScreensSayAndACancelChangesNothing()
{
    Desk d;
    const QString source = u"|Text Dosyaları (txt)|*.txt|"_s + d.t.path(u"txt"_s);
    const QString document = u"|Xml Dosyaları (xml)|*.xml|"_s;
    d.t.program.folders.xs = u"/stok"_s;
    d.t.program.folders.xf = u"/fatura"_s;
    const QString before = contentOf(d.t.folder.path());
    d.t.dialogs.answers = QList<std::optional<QString>>(5);
    d.cr.dosyaac();
    d.stok.dosyaac();
    d.cr.xmlkaydet();
    d.t.program.folders.xc = u"/cari"_s; // only asked whether it is empty
    d.cr.guncellemexmlkaydet();
    d.stok.xmlkaydet();
    QStringList asked;
    for (const FileQuestion &question : d.t.dialogs.asked)
        asked << question.title + u'|' + question.filter + u'|' + question.start;
    QCOMPARE(asked,
             (QStringList{u"Cari Dosyası Seçin"_s + source, u"Stok Dosyası Seçimi"_s + source,
                          u"Cari Xml Dosyası Kaydet"_s + document + d.t.path(u"logo xml"_s),
                          u"Cari Xml Dosyası Kaydet"_s + document + u"/fatura"_s,
                          u"Stok Xml Dosyası Kaydet"_s + document + u"/fatura"_s}));
    QCOMPARE(d.cr.l1.rows() + d.stok.l1.rows(), 2);
    QCOMPARE(contentOf(d.t.folder.path()), before);
}

void TestCards::anInsertPassesOverAFailureAndAnUpdateEndsAtIt()
{
    Desk d;
    QVERIFY(QDir(d.t.folder.path()).mkpath(u"stokkontrol.kvz/a"_s)); // so it can't be replaced
    d.cr.kaydetguncelle(d.nowhere);                                  // no box comes
    QVERIFY(d.cr.bilgi.text().contains(d.nowhere) && !d.cr.pr1.isShown());
    QVERIFY(!QFile::exists(d.t.path(u"carikontrol.kvz"_s)));
    d.t.boxes.expect(done);
    d.cr.kaydet(d.nowhere);
    QVERIFY(d.cr.bilgi.text().contains(d.nowhere) && !d.cr.pr1.isShown());
    QCOMPARE(d.bytes(u"carikontrol.kvz"_s), "1234    \r\n");
    d.t.boxes.expect(done);
    d.stok.kaydet(d.nowhere);
    QVERIFY(d.stok.bilgi.text().contains(d.nowhere) && !d.stok.pr1.isShown());
    QVERIFY(d.stok.bilgi.text().contains(u"stokkontrol.kvz"_s));
    d.t.boxes.expect(done);
    d.stok.kaydet(d.target);
    QVERIFY(readBytes(d.target).endsWith("</ITEMS>\r\n\r\n"));
    QCOMPARE(d.cr.l1.rows() + d.stok.l1.rows(), 2);
}

void TestCards::anUnreadableSourceIsPassedOverByOneAndEndsTheOther()
{
    Desk d;
    const QString missing = d.t.path(u"yok.txt"_s);
    d.cr.dosyaac(missing);
    QCOMPARE(d.cr.kartSayisi.text(), u"0"_s); // the steps behind the reading ran
    d.stok.dosyaac(missing);
    QCOMPARE(d.stok.kartSayisi.text(), u"1"_s); // and here they did not
    QVERIFY(d.cr.bilgi.text().contains(missing) && d.stok.bilgi.text().contains(missing));
    QVERIFY(!d.cr.pr1.isShown() && !d.stok.pr1.isShown());
    // Both lists are empty now, and nothing is asked or touched.
    writeBytes(d.t.path(u"carikontrol.kvz"_s), "C\r\n");
    for (const QString &list : {u"Cari"_s, u"Cari"_s, u"Stok"_s})
        d.t.boxes.expect(
            {list + u" Kart Listesinde Kayıt Bulunamadı...!"_s, u"Dikkat"_s, Icon::Exclamation});
    d.cr.xmlkaydet();
    d.cr.guncellemexmlkaydet();
    d.stok.xmlkaydet();
    QCOMPARE(d.bytes(u"carikontrol.kvz"_s), "C\r\n");
}

void TestCards::theSpecialCodesComeInTheirOrderAndLoseTheirChoice()
{
    TestProgram t;
    t.fill({u"insert into ozkod values (Null,'Zeytin','Z')"_s,
            u"insert into ozkod values (Null,'','A-1')"_s},
           u"stokozkod.dbs"_s);
    Stoktrf stok(t.program);
    stok.load(); // there is no brmset.kvz
    QCOMPARE(stok.brmseti.text(), QString());
    stok.c[4].setText(u"A-1- "_s);
    stok.ozkodyukle();
    for (const ChoiceField &list : stok.c)
        QCOMPARE(list.entries(), (QStringList{QString(), u"Z- Zeytin"_s, u"A-1- "_s}));
    QCOMPARE(stok.c[4].text(), QString());
    QVERIFY(QFile::remove(t.path(u"stokozkod.dbs"_s)));
    stok.ozkodyukle();
    QCOMPARE(stok.c[0].entries(), QStringList{QString()});
    QVERIFY(stok.bilgi.text().contains(u"stokozkod.dbs"_s));
}

void TestCards::aCariKeepsTheReferenceItOnceGot()
{
    Desk d;
    QCOMPARE(d.cr.datarefyap(u"120.1"_s), u"1"_s);
    QCOMPARE(d.cr.datarefyap(u"120.2"_s), u"2"_s);
    QCOMPARE(d.cr.datarefyap(u"120.1"_s), u"1"_s);
    QCOMPARE(d.bytes(u"cariref.kvz"_s), "[id]\r\nid=2\r\n[carino]\r\n120.1=1\r\n120.2=2\r\n");
    writeBytes(d.t.path(u"cariref.kvz"_s), "[id]\r\nid=çok\r\n[carino]\r\n120.1=1\r\n");
    QCOMPARE(d.cr.datarefyap(u"120.1"_s), u"1"_s);
    QVERIFY(!failureOf([&] { d.cr.datarefyap(u"120.9"_s); }).isNull());
}

void TestCards::codesAreLookedForInTheListFiles()
{
    TestProgram t;
    CardCheck check(t.program);
    const auto isCari = [&](const QString &kod) {
        check.cariyok = false;
        check.carikontrol(kod);
        return !check.cariyok;
    };
    QVERIFY(!isCari(u"1"_s)); // there is no file
    writeBytes(t.path(u"carikontrol.kvz"_s), "1234    \r\n123456789012345X\r\n");
    QVERIFY(isCari(u"1234    "_s) && isCari(u"123456789012345"_s));
    QVERIFY(!isCari(u"1234"_s));

    writeBytes(t.path(u"stokkontrol.kvz"_s), QByteArray(31, 'S') + "\r\nKHV100\r\n");
    const QString source = t.path(u"a.bif"_s);
    writeBytes(source, ruled(u"", 19, u"xKHV 1 00 x"));
    QStringList shown;
    connect(&check.durum, &TextField::changed, this, [&] { shown << check.durum.text(); });
    check.stokkontroloku(source);
    check.stokkontrol(QString(30, u'S'));
    QVERIFY(!check.stokyok);
    QCOMPARE(shown, (QStringList{u"Stok Kontrolü Yapılıyor"_s, QString()}));
    writeBytes(source, ruled(u"", 20, u"KHV1000") + ruled(u"", 20, u"KHV100"));
    t.boxes.expect({u"Faturalarda Daha Önce Aktarılmayan Stoklar Bulunuyor..."_s, {}, Icon::None});
    check.stokkontroloku(source);
    QVERIFY(check.stokyok); // the code found later does not take it back
}

void TestCards::theCariWindowIsDrivenOnce()
{
    Desk d;
    MainWindow frame(d.t.program);
    frame.show();
    QVERIFY(QTest::qWaitForWindowActive(&frame));
    frame.open(u"cr"_s);
    auto *window = frame.findChild<CrWindow *>(u"cr"_s);
    QCOMPARE(window->windowTitle(), u"Cari Kart Transferi"_s);
    const auto text = [&](QStringView name) {
        return window->findChild<QLabel *>(name.toString())->text();
    };
    const auto press = [&](int number) {
        auto *button = window->findChild<QAbstractButton *>(u"chameleonButton%1"_s.arg(number));
        QTest::mouseClick(button, Qt::LeftButton);
        return button->text();
    };
    d.t.boxes.expect({u"Cari Listesinde Kayıt Bulunamadı..."_s, u"Dikkat"_s, Icon::Exclamation});
    QCOMPARE(press(3), u"Cari Güncelleme"_s);
    d.t.dialogs.answers = {d.cariler, d.t.path(u"A.XML"_s), d.target};
    QCOMPARE(press(5), u"Cari Dosyası Aç"_s);
    QVERIFY(!frame.findChild<QDialog *>(u"sqlbaglanti"_s));
    press(3);
    auto *update = frame.findChild<QDialog *>(u"sqlbaglanti"_s);
    QVERIFY(update->isModal());
    QVERIFY(update->findChild<QWidget *>(u"fr1"_s)->isVisible());
    QVERIFY(update->findChild<QWidget *>(u"fr2"_s)->isVisible());
    update->close();
    QTRY_VERIFY(!frame.findChild<QDialog *>(u"sqlbaglanti"_s));
    frame.activateWindow();
    d.t.boxes.expect(done);
    QCOMPARE(press(1), u"Logo Xml Kaydet"_s);
    QVERIFY(d.bytes(u"A.XML.xml"_s).contains("DBOP=\"INS\""));
    d.t.boxes.expect(done);
    QCOMPARE(press(2), u"Logo Güncelleme için Xml  Kaydet"_s);
    QVERIFY(readBytes(d.target).contains("DBOP=\"UPD\""));
    QCOMPARE(text(u"bart") + u' ' + text(u"sb1_2"), u"CARİ HESAP AKTARIMI 1"_s);
    QCOMPARE(text(u"sb1_3") + u' ' + text(u"sb1_4"), u"07.03.2024 09:05:03"_s);
    d.t.clock.moment = d.t.clock.moment.addDays(1);
    QTRY_COMPARE(text(u"sb1_3"), u"08.03.2024"_s);
    QTest::keyClick(window, Qt::Key_Escape);
    QTRY_VERIFY(!frame.findChild<CrWindow *>());
}

void TestCards::theStockWindowIsDrivenOnce()
{
    Desk d;
    d.t.fill({u"insert into ozkod values (Null,'Gıda','GIDA')"_s}, u"stokozkod.dbs"_s);
    writeBytes(d.t.path(u"brmset.kvz"_s), "KOLI\r\n");
    MainWindow frame(d.t.program);
    frame.show();
    QVERIFY(QTest::qWaitForWindowActive(&frame));
    frame.open(u"stoktrf"_s);
    auto *window = frame.findChild<StoktrfWindow *>(u"stoktrf"_s);
    QCOMPARE(window->windowTitle(), u"Malzeme Kartları Transfer"_s);
    QCOMPARE(window->findChild<QLabel *>(u"bart"_s)->text(), u"STOK KART AKTARIMI"_s);
    QCOMPARE(window->findChild<QLineEdit *>(u"brmseti"_s)->text(), u"KOLI"_s);
    window->stoktrf().brmseti.setText(u"PAKET"_s); // as the dialog of the code does

    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(d.stoklar)});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &enter);
    QDropEvent drop({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &drop);
    QCOMPARE(window->findChild<QLabel *>(u"sb1_2"_s)->text(), u"1"_s);
    for (int list = 1; list <= 5; ++list)
        QTest::keyClick(window->findChild<QComboBox *>(u"c%1"_s.arg(list)), Qt::Key_Down);
    d.t.dialogs.answers = {d.target};
    d.t.boxes.expect(done);
    QTest::keyClick(window->findChild<QWidget *>(u"l1"_s), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(readBytes(d.target).count(">GIDA</AUXIL_CODE"), 5);
    QVERIFY(readBytes(d.target).contains("<UNITSET_CODE>PAKET</UNITSET_CODE>"));
    QTest::mouseClick(window->findChild<QAbstractButton *>(u"chameleonButton4"_s), Qt::LeftButton);
    QTRY_VERIFY(!frame.findChild<StoktrfWindow *>());
}

QTEST_MAIN(TestCards)
#include "tst_cards.moc"
