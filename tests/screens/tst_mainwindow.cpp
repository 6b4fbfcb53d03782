#include "frame/mainwindow.h"

#include "invoices/desk.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "invoices/screens/fatwindow.h"
#include "support/driving.h"

#include <QAction>
#include <QFile>
#include <QMdiSubWindow>
#include <QProcess>

using namespace kervan;

namespace {

/// The frame with the invoice screen open over two invoices.
class Frame
{
public:
    TestProgram t;
    MainWindow window{t.program};

    Frame()
    {
        t.reachLogo();
        writeBytes(t.path(u"kasa.kvz"_s), "1");
        writeBytes(t.path(u"a.bif"_s), header() + header());
        window.show();
        [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(&window);
        press(window, u"chameleonButton5"_s);
        window.findChild<FatWindow *>()->fat().dosyaac(t.path(u"a.bif"_s));
    }
    Grid &invoices() { return window.findChild<FatWindow *>()->fat().liste.l1; }
    void trigger(const QString &action) { window.findChild<QAction *>(action)->trigger(); }
};

} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFrameOpensWithItsCaptionsAndReadsNothing()
    {
        TestProgram t;
        MainWindow window(t.program);
        QCOMPARE(window.windowTitle(), u"Kervan Transfer v2.21"_s);
        QCOMPARE(window.findChild<QAction *>(u"firtanım"_s)->text(), u"Firma Tanımlaması"_s);
        QCOMPARE(window.findChild<QAbstractButton *>(u"lvButtons_H5"_s)->text(),
                 u"Düzey  Fatura Aktarım"_s);
        QCOMPARE(t.program.aktifform, QString());
    }

    void theListMenuServesTheInvoiceScreenThatWasLoadedLast()
    {
        Frame frame;
        frame.trigger(u"fattumsec"_s);
        QCOMPARE(frame.invoices().tickedCount(), 2);
        frame.trigger(u"tumgoster"_s);
        QCOMPARE(frame.invoices().tickedCount(), 0); // read again
        frame.t.program.aktifform = u"2"_s;
        frame.trigger(u"fattumsec"_s); // for a screen that isn't open
        QCOMPARE(frame.invoices().tickedCount(), 0);
        frame.window.open(u"fatduz");
        Grid &duzey = frame.window.findChild<FatduzWindow *>()->fatduz().liste.l1;
        duzey.addRow(u"C1"_s);
        frame.trigger(u"fattumsec"_s);
        QCOMPARE(frame.invoices().tickedCount(), 0);
        QCOMPARE(duzey.tickedCount(), 1);
    }

    void aScreenIsOpenOnceAndItsOpeningRunsOnce()
    {
        Frame frame;
        frame.t.program.aktifform = u"2"_s;
        press(frame.window, u"chameleonButton5"_s);
        frame.trigger(u"ftrans"_s);
        QCOMPARE(frame.window.findChildren<FatWindow *>().size(), 1);
        QCOMPARE(frame.invoices().rows(), 2);
        QCOMPARE(frame.t.program.aktifform, u"2"_s);
    }

    void escClosesTheScreensOneByOneAndAClosedOneComesBackEmpty()
    {
        Frame frame;
        frame.window.open(u"fatduz");
        frame.window.open(u"cr");
        for (int screens = 3; screens > 0; --screens) { // the one below has the keys at once
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            QTRY_COMPARE(frame.window.findChildren<QMdiSubWindow *>().size(), screens - 1);
        }
        QTRY_VERIFY(!frame.window.findChild<FatWindow *>());
        frame.window.open(u"fat");
        QVERIFY(frame.invoices().isEmpty());
    }

    void aDefinitionScreenIsModalAndTheOnlyOneAndTellsWhyItFailsToOpen()
    {
        TestProgram t;
        MainWindow window(t.program);
        window.show();
        window.open(u"urunform"_s);
        window.open(u"urunform"_s);
        auto *screen = window.findChild<QWidget *>(u"urunform"_s);
        QCOMPARE(window.findChildren<QWidget *>(u"urunform"_s).size(), 1);
        QVERIFY(screen->isModal());
        screen->close();
        QTRY_VERIFY(!window.findChild<QWidget *>(u"urunform"_s));
        QVERIFY(QFile::remove(t.path(u"data.dbs"_s)));
        t.boxes.expect({t.path(u"data.dbs"_s) + u" açılamadı: dosya yok (unable to open database file)"_s});
        window.findChild<QAction *>(u"urunformu"_s)->trigger();
        QVERIFY(window.findChild<QWidget *>(u"urunform"_s)); // empty, but there
    }

    void aSecondProgramEndsSilently()
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
};

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
