// The two card transfers. A case of whole documents (documentcase.h) is a folder of
// tests/data/cards:
//   source.txt     the text export
//   data.txt       ekran is cr, cr-guncelle or stok; dataref goes to the first row; c1 to c5 are
//                  special codes; statements are for stokozkod.dbs
//   expected.xml   the document; *.kvz is the list of codes behind it

#include "cards/screens/crwindow.h"
#include "cards/screens/stoktrfwindow.h"
#include "cards/screens/stwindow.h"
#include "frame/mainwindow.h"
#include "invoices/cardcheck.h"
#include "support/cells.h"
#include "support/documentcase.h"
#include "support/driving.h"
#include "support/ruler.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

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

} // namespace

class TestCards : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDocumentOfACaseIsTheExpectedOne_data() { DocumentCase::addAll(u"cards"_s); }
    void theDocumentOfACaseIsTheExpectedOne()
    {
        TestProgram t;
        const DocumentCase given(t, u"stokozkod.dbs"_s);
        const QString target = t.path(u"belge.xml"_s);
        const QString source = given.path(u"source.txt"_s);
        t.boxes.expectDone();
        if (given[u"ekran"_s] == u"stok") {
            Stoktrf stok(t.program);
            stok.load();
            stok.dosyaac(source);
            for (int i = 0; i < 5; ++i) {
                const QString choice = given[u"c%1"_s.arg(i + 1)];
                QVERIFY2(stok.ozelKodlar[size_t(i)].entries().contains(choice), qPrintable(choice));
                stok.ozelKodlar[size_t(i)].setText(choice);
            }
            stok.kaydet(target);
        } else {
            Cr cr(t.program);
            cr.dosyaac(source);
            cr.l1.setCell(0, Cr::DataReferans, given[u"dataref"_s]);
            given[u"ekran"_s] == u"cr" ? cr.kaydet(target) : cr.kaydetguncelle(target);
        }
        given.expect(target);
        given.expectSideFiles(t);
    }

    void eachFieldIsCutFromItsColumns()
    {
        Desk d;
        const QString title(50, u'Ü');
        const QString name(40, u'Ş');
        writeBytes(d.cariler, ruled(u"xx", 3, u"12345678", 11, title, 61, u"x") + "\r\n");
        writeBytes(d.stoklar, ruled(QString(134, u'x'), 25, u"123456789", 79, name, 119, u"ABCDEF",
                                    125, u"12.3456", 133, u"18", 135, u"x") +
                                  ruled(u"", 25, u" KOD ", 79, u" AD ", 119, u" KT ", 125, u" 1 5 ",
                                        133, u" 8"));
        d.cr.caridosyasikoku();
        d.stok.stokdosyasikoku();
        QCOMPARE(d.cr.l1.rows(), 2); // the rows read before are gone, the blank line counts
        QCOMPARE(d.cr.kartSayisi.text(), u"2"_s);
        QCOMPARE(rowOf(d.cr.l1, 0, 17), u"12345678|"_s + title + QString(15, u'|'));
        QCOMPARE(rowOf(d.stok.l1, 0, 6), u"1|123456789|"_s + name + u"|ABCDEF|12.3456|18"_s);
        QCOMPARE(rowOf(d.stok.l1, 1, 6), u"2|KOD| AD| KT|15| 8"_s);
    }

    void theClockIsReadForEachStepOfEachRow()
    {
        Desk d;
        writeBytes(d.cariler, "\r\n\r\n");
        d.cr.dosyaac(d.cariler);
        d.t.clock.moment = {QDate(2024, 3, 7), QTime(23, 59, 58)};
        d.t.clock.step = 1;
        d.t.boxes.expectDone();
        d.cr.kaydet(d.target);
        static const QRegularExpression moments(u"_CREATED>(\\d[^<]*)"_s);
        QStringList written;
        for (const auto &match : moments.globalMatch(QString::fromLatin1(readBytes(d.target))))
            written << match.captured(1);
        const QStringList expected{u"07.03.2024"_s, u"23"_s, u"0"_s, u"1"_s,
                                   u"08.03.2024"_s, u"0"_s,  u"0"_s, u"5"_s};
        QCOMPARE(written, expected);
    }

    void dialogsAreAskedAsTheScreensSayAndACancelChangesNothing()
    {
        Desk d;
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
        for (FileQuestion question : d.t.dialogs.asked)
            asked << question.title + u" ; "_s + question.filter + u" ; "_s +
                         question.start.replace(d.t.folder.path(), u"."_s);
        QCOMPARE(asked, rowsOf(uR"(
Cari Dosyası Seçin ; Text Dosyaları (txt)|*.txt ; ./txt
Stok Dosyası Seçimi ; Text Dosyaları (txt)|*.txt ; ./txt
Cari Xml Dosyası Kaydet ; Xml Dosyaları (xml)|*.xml ; ./logo xml
Cari Xml Dosyası Kaydet ; Xml Dosyaları (xml)|*.xml ; /fatura
Stok Xml Dosyası Kaydet ; Xml Dosyaları (xml)|*.xml ; /fatura)"_s));
        QCOMPARE(d.cr.l1.rows(), 1);
        QCOMPARE(d.stok.l1.rows(), 1);
        QCOMPARE(contentOf(d.t.folder.path()), before);
    }

    void anInsertPassesOverAFailureAndAnUpdateEndsAtIt()
    {
        Desk d;
        QVERIFY(QDir(d.t.folder.path()).mkpath(u"stokkontrol.kvz/a"_s)); // so it can't be replaced
        d.cr.kaydetguncelle(d.nowhere);                                  // no box comes
        QVERIFY(d.cr.bilgi.text().contains(asTold(d.nowhere)) && !d.cr.ilerleme.isShown());
        QVERIFY(!QFile::exists(d.t.path(u"carikontrol.kvz"_s)));
        d.t.boxes.expectDone();
        d.cr.kaydet(d.nowhere);
        QVERIFY(d.cr.bilgi.text().contains(asTold(d.nowhere)) && !d.cr.ilerleme.isShown());
        QCOMPARE(d.bytes(u"carikontrol.kvz"_s), "1234    \r\n");
        d.t.boxes.expectDone();
        d.stok.kaydet(d.nowhere);
        QVERIFY(d.stok.bilgi.text().contains(asTold(d.nowhere)) && !d.stok.ilerleme.isShown());
        QVERIFY(d.stok.bilgi.text().contains(u"stokkontrol.kvz"_s));
        d.t.boxes.expectDone();
        d.stok.kaydet(d.target);
        QVERIFY(readBytes(d.target).endsWith("</ITEMS>\r\n\r\n"));
        QCOMPARE(d.cr.l1.rows(), 1);
        QCOMPARE(d.stok.l1.rows(), 1);
    }

    void theListOfAnEarlierDocumentIsGoneEvenIfNoNewOneCanBeWritten()
    {
        Desk d;
        const QString codes[] = {d.t.path(u"carikontrol.kvz"_s), d.t.path(u"stokkontrol.kvz"_s)};
        for (const QString &list : codes)
            writeBytes(list, "eski\r\n");
        const bool full = onAFullDisk(0, [&] {
            d.t.boxes.expectDone();
            d.cr.kaydet(d.target);
            d.t.boxes.expectDone();
            d.stok.kaydet(d.target);
        });
        if (!full)
            QSKIP("no way to fill a disk here");
        for (const QString &list : codes)
            QVERIFY2(!QFile::exists(list), qPrintable(list));
    }

    void anUnreadableSourceIsPassedOverByOneAndEndsTheOther()
    {
        Desk d;
        const QString missing = d.t.path(u"yok.txt"_s);
        d.cr.dosyaac(missing);
        QCOMPARE(d.cr.kartSayisi.text(), u"0"_s); // the steps behind the reading ran
        d.stok.dosyaac(missing);
        QCOMPARE(d.stok.kartSayisi.text(), u"1"_s); // and here they did not
        QVERIFY(d.cr.bilgi.text().contains(asTold(missing)));
        QVERIFY(d.stok.bilgi.text().contains(asTold(missing)));
        QVERIFY(!d.cr.ilerleme.isShown() && !d.stok.ilerleme.isShown());
        // Both lists are empty now, and nothing is asked or touched.
        writeBytes(d.t.path(u"carikontrol.kvz"_s), "C\r\n");
        for (const QString &list : {u"Cari"_s, u"Cari"_s, u"Stok"_s})
            d.t.boxes.expectWarning(list + u" Kart Listesinde Kayıt Bulunamadı...!"_s);
        d.cr.xmlkaydet();
        d.cr.guncellemexmlkaydet();
        d.stok.xmlkaydet();
        QCOMPARE(d.bytes(u"carikontrol.kvz"_s), "C\r\n");
    }

    void theSpecialCodesComeInTheirOrderAndLoseTheirChoice()
    {
        TestProgram t;
        t.fill({u"insert into ozkod values (Null,'Zeytin','Z')"_s,
                u"insert into ozkod values (Null,'','A-1')"_s},
               u"stokozkod.dbs"_s);
        Stoktrf stok(t.program);
        stok.load(); // there is no brmset.kvz
        QCOMPARE(stok.brmseti.text(), QString());
        stok.ozelKodlar[4].setText(u"A-1- "_s);
        stok.ozkodyukle();
        for (const ChoiceField &list : stok.ozelKodlar)
            QCOMPARE(list.entries(), (QStringList{QString(), u"Z- Zeytin"_s, u"A-1- "_s}));
        QCOMPARE(stok.ozelKodlar[4].text(), QString());
        QVERIFY(QFile::remove(t.path(u"stokozkod.dbs"_s)));
        stok.ozkodyukle();
        QCOMPARE(stok.ozelKodlar[0].entries(), QStringList{QString()});
        QVERIFY(stok.bilgi.text().contains(u"stokozkod.dbs"_s));
    }

    void aCariKeepsTheReferenceItOnceGot()
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

    // The file's own rules decide, of which some look odd: a key ends at its first "=", is found
    // without its blanks and without case, and one that looks like a header ends the section.
    void referencesOfManyAreThoseThatTheyGetOneByOne()
    {
        const QStringList cariler{u"120.1"_s, u"ş"_s, u"8 "_s,   u"8 "_s,       u"a=b"_s, u"A"_s,
                                  u"=x"_s,    u"Ş"_s, u"[x]"_s,  u"[CARINO]"_s, u"→"_s,   u"?"_s,
                                  u"8"_s,     u""_s,  u"e\nf"_s, u"120.1"_s,    u"F"_s};
        const QStringList expected{u"41"_s, u"7"_s,  u"42"_s, u"43"_s, u"44"_s, u"b=44"_s,
                                   u"45"_s, u"7"_s,  u"46"_s, u"47"_s, u"48"_s, u"48"_s,
                                   u"42"_s, u"49"_s, u"50"_s, u"41"_s, u"50"_s};
        const QByteArray start = "[carino]\n\xFE = '7'\n\n[id]\nid=40\n";
        const QByteArray end =
            "[carino]\r\n\xFE = '7'\r\n120.1=41\r\n8 =42\r\n8 =43\r\na=b=44\r\n=x=45\r\n?=48\r\n"
            "=49\r\ne\r\nf=50\r\n[CARINO]=47\r\n[x]=46\r\n\r\n[id]\r\nid=50\r\n";
        Desk d;
        const QString path = d.t.path(u"cariref.kvz"_s);
        writeBytes(path, start);
        QCOMPARE(d.cr.datarefyap(cariler), expected);
        QCOMPARE(readBytes(path), end);
        writeBytes(path, start);
        QStringList single;
        for (const QString &cari : cariler)
            single << d.cr.datarefyap(cari);
        QCOMPARE(single, expected);
        QCOMPARE(readBytes(path), end);
    }

    // A large document is handed over in pieces, which end in the midst of cards.
    void eachCardOfALargeDocumentIsWhole()
    {
        Desk d;
        const auto codeOf = [](int card) {
            return QString::number(10000000 + card);
        };
        const auto written = [&](int cards) {
            QByteArray source;
            for (int card = 0; card < cards; ++card)
                source += ruled(u"", 3, codeOf(card), 11, u"DENİZ");
            writeBytes(d.cariler, source);
            d.cr.dosyaac(d.cariler);
            d.t.boxes.expectDone();
            d.cr.kaydet(d.target);
            return readBytes(d.target);
        };
        constexpr int cards = 600;
        const QByteArray two = written(2);
        const QByteArray first = codeOf(0).toLatin1();
        const qsizetype place = two.indexOf(first);
        const qsizetype size = two.indexOf(codeOf(1).toLatin1()) - place;
        const QByteArray many = written(cards);
        QCOMPARE(many.size(), two.size() + (cards - 2) * size);
        for (int card = 0; card + 1 < cards; ++card) // from its code to the next one's
            QCOMPARE(many.sliced(place + card * size, size),
                     two.sliced(place, size).replace(first, codeOf(card).toLatin1()));
    }

    // The bytes that go to and from the disk tell whether the file is read or written for each.
    void referencesOfFourTimesAsManyTakeFourTimesTheBytes()
    {
        const QString counters = u"/proc/self/io"_s;
        if (!QFile::exists(counters))
            QSKIP("nothing here counts what a program reads and writes");
        const auto moved = [&] {
            const QList<QByteArray> lines = readBytes(counters).split('\n');
            return lines[0].sliced(7).toLongLong() + lines[1].sliced(7).toLongLong();
        };
        const auto bytesFor = [&](int count) {
            Desk d;
            QStringList cariler;
            for (int i = 0; i < count; ++i)
                cariler << u"120.%1"_s.arg(10000 + i);
            const qint64 before = moved();
            d.cr.datarefyap(cariler); // anew
            d.cr.datarefyap(cariler); // all known
            return moved() - before;
        };
        const qint64 few = bytesFor(500);
        const qint64 many = bytesFor(2000);
        QVERIFY(few > 0);
        QVERIFY2(many < 5 * few, qPrintable(u"%1, %2"_s.arg(few).arg(many)));
    }

    void referencesThatCannotBeKeptAreGivenAgain()
    {
        Desk d;
        const QString path = d.t.path(u"cariref.kvz"_s);
        writeBytes(path, "[id]\r\nid=4\r\n[carino]\r\n120.1=3\r\n");
        const QByteArray before = readBytes(path);
        QStringList given;
        if (!onAFullDisk(8, [&] {
                given = d.cr.datarefyap(QStringList{u"120.7"_s, u"120.1"_s, u"120.8"_s});
            }))
            QSKIP("no way to fill a disk here");
        QCOMPARE(given, (QStringList{u"5"_s, u"3"_s, u"5"_s}));
        QCOMPARE(readBytes(path), before);
        writeBytes(path, "[id]\r\nid=çok\r\n[carino]\r\n120.1=3\r\n");
        const auto ask = [&] {
            d.cr.datarefyap(QStringList{u"120.1"_s, u"120.2"_s});
        };
        QVERIFY(!failureOf(ask).isNull());
    }

    void codesAreLookedForInTheListFiles()
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
        t.boxes.expect(
            {u"Faturalarda Daha Önce Aktarılmayan Stoklar Bulunuyor..."_s, {}, Icon::None});
        check.stokkontroloku(source);
        QVERIFY(check.stokyok); // the code found later does not take it back
    }

    void theCariWindowIsDrivenOnce()
    {
        Desk d;
        MainWindow frame(d.t.program);
        frame.show();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        frame.open(u"cr"_s);
        auto *window = frame.findChild<CrWindow *>();
        const auto text = [&](QStringView name) {
            return window->findChild<QLabel *>(name.toString())->text();
        };
        d.t.boxes.expectWarning(u"Cari Listesinde Kayıt Bulunamadı..."_s);
        press(*window, u"chameleonButton3"_s);
        d.t.dialogs.answers = {d.cariler, d.t.path(u"A.XML"_s), d.target};
        press(*window, u"chameleonButton5"_s);
        QVERIFY(!frame.findChild<QDialog *>(u"sqlbaglanti"_s));
        press(*window, u"chameleonButton3"_s);
        auto *update = frame.findChild<QDialog *>(u"sqlbaglanti"_s);
        QVERIFY(update->isModal() && update->findChild<QWidget *>(u"fr1"_s)->isVisible() &&
                update->findChild<QWidget *>(u"fr2"_s)->isVisible());
        update->close();
        QTRY_VERIFY(!frame.findChild<QDialog *>(u"sqlbaglanti"_s));
        frame.activateWindow();
        d.t.boxes.expectDone();
        press(*window, u"chameleonButton1"_s);
        QVERIFY(d.bytes(u"A.XML.xml"_s).contains("DBOP=\"INS\""));
        d.t.boxes.expectDone();
        press(*window, u"chameleonButton2"_s);
        QVERIFY(readBytes(d.target).contains("DBOP=\"UPD\""));
        QCOMPARE(text(u"bart"), u"CARİ HESAP AKTARIMI"_s);
        QCOMPARE(text(u"sb1_2"), u"1"_s);
        QCOMPARE(text(u"sb1_3"), u"07.03.2024"_s);
        QCOMPARE(text(u"sb1_4"), u"09:05:03"_s);
        d.t.clock.moment = d.t.clock.moment.addDays(1);
        QTRY_COMPARE(text(u"sb1_3"), u"08.03.2024"_s);
    }

    void aListThatIsDroppedOpenShowsWhichEntryIsTaken()
    {
        Desk d;
        d.t.fill({u"insert into muh values (Null,'','1','','','','','','','','')"_s,
                  u"insert into muh values (Null,'','18','','','','','','','','')"_s});
        MainWindow frame(d.t.program);
        frame.show();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        frame.open(u"st"_s);
        St &st = frame.findChild<StWindow *>()->st();
        auto *rates = frame.findChild<StWindow *>()->findChild<QComboBox *>(u"c1"_s);
        QCOMPARE(rates->currentIndex(), -1);
        Q_EMIT st.kdvOrani.dropWanted();
        QVERIFY(rates->view()->selectionModel()->isSelected(rates->model()->index(0, 0)));
        QCOMPARE(st.kdvOrani.text(), QString()); // nothing is chosen yet
        QTest::keyClick(rates->view(), Qt::Key_Return);
        QCOMPARE(st.kdvOrani.text(), u"1"_s);
    }

    void theStockWindowIsDrivenOnce()
    {
        Desk d;
        d.t.fill({u"insert into ozkod values (Null,'Gıda','GIDA')"_s}, u"stokozkod.dbs"_s);
        writeBytes(d.t.path(u"brmset.kvz"_s), "KOLI\r\n");
        MainWindow frame(d.t.program);
        frame.show();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        frame.open(u"stoktrf"_s);
        auto *window = frame.findChild<StoktrfWindow *>();
        QCOMPARE(window->findChild<QLabel *>(u"bart"_s)->text(), u"STOK KART AKTARIMI"_s);
        QCOMPARE(window->findChild<QLineEdit *>(u"brmseti"_s)->text(), u"KOLI"_s);
        window->stoktrf().brmseti.setText(u"PAKET"_s); // as the dialog of the code does

        drop(*window, d.stoklar);
        QCOMPARE(window->findChild<QLabel *>(u"sb1_2"_s)->text(), u"1"_s);
        for (int list = 1; list <= 5; ++list)
            QTest::keyClick(window->findChild<QComboBox *>(u"c%1"_s.arg(list)), Qt::Key_Down);
        d.t.dialogs.answers = {d.target};
        d.t.boxes.expectDone();
        QTest::keyClick(window->findChild<QWidget *>(u"l1"_s), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(readBytes(d.target).count(">GIDA</AUXIL_CODE"), 5);
        QVERIFY(readBytes(d.target).contains("<UNITSET_CODE>PAKET</UNITSET_CODE>"));
        press(*window, u"chameleonButton4"_s);
        QTRY_VERIFY(!frame.findChild<StoktrfWindow *>());
    }
};

QTEST_MAIN(TestCards)
#include "tst_cards.moc"
