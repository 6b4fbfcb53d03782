#include "frame/mainwindow.h"

#include "base/grid.h"
#include "invoices/screens/fatwindow.h"
#include "stocktake/screens/urunwindow.h"
#include "support/fakes.h"
#include "support/ruler.h"

#include <QAbstractButton>
#include <QAction>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QProcess>
#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

class MainWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void menusAndButtonsCarryTheirNamesAndCaptions_data();
    void menusAndButtonsCarryTheirNamesAndCaptions();
    void theFrameReadsNothingAtItsStart();
    void aSecondClickBringsTheScreenForwardWithItsList();
    void aClosedScreenComesBackEmpty();
    void theListMenuServesTheScreenLoadedLast();
    void resizingMovesThePictureAndNoScreen();
    void aScreenThatCannotReadItsTableShowsWhy();
    void aDefinitionScreenIsModalAndTheOnlyOne();
    void aSecondProgramEndsSilently();

private:
    static QMdiSubWindow *transfer(MainWindow &window)
    {
        return window.findChild<QMdiArea *>()->subWindowList().value(0);
    }
    static void readSome(MainWindow &window, TestProgram &test)
    {
        writeBytes(test.path(u"a.bif"_s),
                   Ruler(u"@5").put(5, u"20240307").put(80, u"F1").put(148, u"0").line() +
                       Ruler(u"@5").put(5, u"20240308").put(80, u"F2").put(148, u"0").line());
        window.findChild<FatWindow *>(u"fat"_s)->fat().dosyaac(test.path(u"a.bif"_s));
    }
};

void MainWindowTest::menusAndButtonsCarryTheirNamesAndCaptions_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("caption");
    const auto row = [](const char *name, const char *caption) {
        QTest::newRow(name) << QString::fromUtf8(name) << QString::fromUtf8(caption);
    };
    row("trans", "   Aktarım   ");
    row("crtrans", "Cari Hesap Aktarım   ");
    row("crtfisrans", "Cari Hesap Fiş Aktarım     ");
    row("ftrans", "Fatura Aktarım     ");
    row("stkkart", "Stok Kart Aktarımı   ");
    row("chameleonButton1", "Cari Hesap Aktarımı");
    row("chameleonButton4", "Stok Kart Aktarımı");
    row("chameleonButton5", "SAP Fatura Aktarım");
    row("lvButtons_H1", "Düzey Tahsilat Aktarımı");
    row("lvButtons_H2", "Seyahat - Veresiyeden Tahsilat Aktarımı");
    row("lvButtons_H3", "Pos Analizi");
    row("lvButtons_H4", "Sayım Aktarımı");
    row("lvButtons_H5", "Düzey  Fatura Aktarım");
    row("ay", "İşlemler");
    row("urunformu", "Ürün Bayi Fiyat Eşleştirmesi");
    row("dosk", "Dosya Konumları   ");
    row("firtanım", "Firma Tanımlaması");
    row("muhkod11", "Muhasebe Hesap Kodları     ");
    row("odmpl", "Ödeme Plan Kodu   ");
    row("brset", "Birim Setleri");
    row("ststatu1", "Stok Statü Kayıtları");
    row("prs", "Personel Kayıtları     ");
    row("bankkod", "Banka Hesap Kodu    ");
    row("stbrmset", "Stok Birim Seti Kodu     ");
    row("kdvmua", "Kdv Muafiyet Yazısı");
    row("kasakod", "Kasa Kodu");
    row("fozkod", "Fatura Özel Kodları");
    row("stozkod", "Stok özel kodları");
    row("sqbag", "Sql Server Bağlantı");
    row("eolan", "E-Fatura Olanlar");
    row("efatolmgoster", "E-Fatura Olmayanları Göster");
    row("tumsec", "Tümün Seç");
}

void MainWindowTest::menusAndButtonsCarryTheirNamesAndCaptions()
{
    QFETCH(QString, name);
    QFETCH(QString, caption);
    TestProgram test;
    MainWindow window(test.program);
    if (auto *button = window.findChild<QAbstractButton *>(name)) {
        QCOMPARE(button->text(), caption);
        QVERIFY(!button->icon().isNull());
    } else {
        const auto *action = window.findChild<QAction *>(name);
        QVERIFY(action);
        QCOMPARE(action->text(), caption);
    }
}

void MainWindowTest::theFrameReadsNothingAtItsStart()
{
    TestProgram test;
    const MainWindow window(test.program);
    QCOMPARE(window.windowTitle(), u"Kervan Transfer v2.21"_s);
    QCOMPARE(window.objectName(), u"MDIForm1"_s);
    QVERIFY(test.sqlServer.texts.isEmpty());
    QCOMPARE(test.program.aktifform, QString());
}

void MainWindowTest::aSecondClickBringsTheScreenForwardWithItsList()
{
    TestProgram test;
    MainWindow window(test.program);
    window.show();
    auto *button = window.findChild<QAbstractButton *>(u"chameleonButton5"_s);
    QTest::mouseClick(button, Qt::LeftButton);
    readSome(window, test);
    QCOMPARE(test.program.aktifform, u"1"_s);
    test.program.aktifform = u"2"_s;
    QTest::mouseClick(button, Qt::LeftButton);
    window.findChild<QAction *>(u"ftrans"_s)->trigger();
    QCOMPARE(window.findChildren<FatWindow *>().size(), 1);
    QCOMPARE(window.findChild<FatWindow *>()->fat().liste.l1.rows(), 2);
    QCOMPARE(test.program.aktifform, u"2"_s); // its load did not run again
}

void MainWindowTest::aClosedScreenComesBackEmpty()
{
    TestProgram test;
    MainWindow window(test.program);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.open(u"fat"_s);
    readSome(window, test);
    QTest::keyClick(window.findChild<FatWindow *>(), Qt::Key_Escape);
    QTRY_VERIFY(!window.findChild<FatWindow *>());
    window.open(u"fat"_s);
    QCOMPARE(window.findChild<FatWindow *>()->fat().liste.l1.rows(), 0);
}

void MainWindowTest::theListMenuServesTheScreenLoadedLast()
{
    TestProgram test;
    MainWindow window(test.program);
    window.open(u"fat"_s);
    readSome(window, test);
    const Grid &l1 = window.findChild<FatWindow *>()->fat().liste.l1;
    auto *tickAll = window.findChild<QAction *>(u"fattumsec"_s);
    test.program.aktifform = u"2"_s;
    tickAll->trigger();
    QCOMPARE(l1.tickedCount(), 0);
    test.program.aktifform = u"1"_s;
    tickAll->trigger();
    QCOMPARE(l1.tickedCount(), 2);
    window.findChild<QAction *>(u"tumgoster"_s)->trigger();
    QCOMPARE(l1.tickedCount(), 0); // read again
}

void MainWindowTest::resizingMovesThePictureAndNoScreen()
{
    TestProgram test;
    MainWindow window(test.program);
    window.show();
    window.open(u"fat"_s);
    const QRect screen = transfer(window)->geometry();
    window.resize(1500, 1000);
    QCoreApplication::processEvents();
    const auto *picture = window.findChild<QWidget *>(u"resim"_s);
    QCOMPARE(picture->pos(), QPoint(1500 / 2 - picture->width() / 2, 400 - picture->height() / 2));
    QCOMPARE(transfer(window)->geometry(), screen);
}

void MainWindowTest::aScreenThatCannotReadItsTableShowsWhy()
{
    TestProgram test;
    MainWindow window(test.program);
    QVERIFY(QFile::remove(test.path(u"data.dbs"_s)));
    test.boxes.expect(
        {test.path(u"data.dbs"_s) + u" açılamadı: unable to open database file"_s, {}, Icon::None});
    window.findChild<QAction *>(u"urunformu"_s)->trigger();
    QCOMPARE(window.findChild<UrunWindow *>()->urunform().l1.rows(), 0);
}

void MainWindowTest::aDefinitionScreenIsModalAndTheOnlyOne()
{
    TestProgram test;
    MainWindow window(test.program);
    window.show();
    window.open(u"urunform"_s);
    window.open(u"urunform"_s);
    const auto screens = window.findChildren<QWidget *>(u"urunform"_s);
    QCOMPARE(screens.size(), 1);
    QVERIFY(screens.first()->isModal());
    QCOMPARE(screens.first()->windowTitle(), u"Ürünler"_s);
}

void MainWindowTest::aSecondProgramEndsSilently()
{
    const QTemporaryDir runtime;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
    QProcess first;
    QProcess second;
    for (QProcess *process : {&first, &second}) {
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::MergedChannels);
    }
    first.start(QStringLiteral(PROGRAM), {});
    QVERIFY(first.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(!QDir(runtime.path()).entryList({u"*.lock"_s}).isEmpty(), 20000);
    second.start(QStringLiteral(PROGRAM), {});
    QVERIFY(second.waitForFinished(20000));
    QCOMPARE(second.exitStatus(), QProcess::NormalExit);
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(second.readAll(), QByteArray());
    QCOMPARE(first.state(), QProcess::Running);
    first.kill();
    first.waitForFinished();
}

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
