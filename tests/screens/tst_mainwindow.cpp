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

class MainWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aScreenIsOpenOnceAndComesBackEmptyAndTheListMenuServesIt()
    {
        TestProgram t;
        t.reachLogo();
        MainWindow window(t.program);
        QCOMPARE(window.windowTitle(), u"Kervan Transfer v2.21"_s);
        QCOMPARE(window.findChild<QAction *>(u"firtanım"_s)->text(), u"Firma Tanımlaması"_s);
        QCOMPARE(window.findChild<QAbstractButton *>(u"lvButtons_H5"_s)->text(),
                 u"Düzey  Fatura Aktarım"_s);
        QCOMPARE(t.program.aktifform, QString()); // nothing is read at the start
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        press(window, u"chameleonButton5"_s);
        writeBytes(t.path(u"a.bif"_s), header() + header());
        window.findChild<FatWindow *>()->fat().dosyaac(t.path(u"a.bif"_s));
        const Grid &l1 = window.findChild<FatWindow *>()->fat().liste.l1;
        const auto trigger = [&](const QString &action) {
            window.findChild<QAction *>(action)->trigger();
            return l1.tickedCount();
        };
        QCOMPARE(trigger(u"fattumsec"_s), 2);
        QCOMPARE(trigger(u"tumgoster"_s), 0); // read again
        t.program.aktifform = u"2"_s;
        QCOMPARE(trigger(u"fattumsec"_s), 0);
        writeBytes(t.path(u"kasa.kvz"_s), "1");
        window.open(u"fatduz"_s);
        Grid &duzey = window.findChild<FatduzWindow *>()->fatduz().liste.l1;
        duzey.addRow(u"C1"_s);
        QCOMPARE(trigger(u"fattumsec"_s), 0); // still the one of fat
        QCOMPARE(duzey.tickedCount(), 1);
        press(window, u"chameleonButton5"_s);
        trigger(u"ftrans"_s);
        QCOMPARE(window.findChildren<FatWindow *>().size(), 1);
        QCOMPARE(l1.rows(), 2);
        QCOMPARE(t.program.aktifform, u"2"_s); // its load did not run again

        // The keys of a screen work at once, behind the button and behind the screen above it.
        window.open(u"cr"_s);
        for (int screens = 3; screens > 0; --screens) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            QTRY_COMPARE(window.findChildren<QMdiSubWindow *>().size(), screens - 1);
        }
        QTRY_VERIFY(!window.findChild<FatWindow *>());
        window.open(u"fat"_s);
        QVERIFY(window.findChild<FatWindow *>()->fat().liste.l1.isEmpty());
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
        t.boxes.expect({t.path(u"data.dbs"_s) + u" açılamadı: unable to open database file"_s});
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
        QCOMPARE(QByteArray::number(second.exitCode()) + second.readAll(), "0");
        QCOMPARE(first.state(), QProcess::Running);
        first.kill();
        first.waitForFinished();
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
