#include "controls/linklabel.h"
#include "frame/mainwindow.h"

#include "app/instancelock.h"
#include "app/realports.h"
#include "invoices/desk.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "invoices/screens/fatwindow.h"
#include "support/driving.h"
#include "support/shownframe.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>
#include <QProcess>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QTabBar>
#include <QTimer>

#ifdef Q_OS_WIN
#include <array>

#include <windows.h>
#endif

using namespace kervan;

namespace {

/// A server that does not answer.
class SilentServer : public SqlServer
{
public:
    std::unique_ptr<SqlConnection> connect(const QString &, const SqlOptions &) override
    {
        throw Failure(u"yanıt yok"_s);
    }
};

/// The frame with the invoice screen open over two invoices.
class Frame : public ShownFrame
{
public:
    Frame()
    {
        writeBytes(t.path(u"kasa.kvz"_s), "1");
        writeBytes(t.path(u"a.bif"_s), header() + header());
        show();
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
    void theFrameOpensWithItsPictureAndReadsNothing()
    {
        TestProgram t;
        MainWindow window(t.program);
        QCOMPARE(window.windowTitle(), u"Kervan Transfer v2.21"_s);
        QCOMPARE(window.findChild<QAbstractButton *>(u"lvButtons_H5"_s)->text(),
                 u"Düzey  Fatura Aktarım"_s);
        QCOMPARE(t.program.aktifform, QString());
        window.show();
        window.resize(1400, 1000);
        const auto *picture = window.findChild<QWidget *>(u"resim"_s);
        QCOMPARE(picture->size(), QSize(640, 360));
        QTRY_COMPARE(picture->pos(), QPoint(700 - 320, 400 - 180));
    }

    void whatTellsTheVersionAgrees()
    {
        const QString version = QStringLiteral(VERSION);
        TestProgram t;
        const MainWindow window(t.program);
        QCOMPARE(window.windowTitle(), u"Kervan Transfer v"_s + version.section(u'.', 0, 1));
        QProcess installer;
        installer.start(QStringLiteral(INSTALLER), {u"--version"_s});
        QVERIFY(installer.waitForFinished());
        QCOMPARE(QString::fromUtf8(installer.readAll().trimmed()), u"kervan-kurulum "_s + version);
        QCOMPARE(installer.exitCode(), 0);
        QFile changes(QStringLiteral(CHANGES));
        QVERIFY(changes.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(changes.readAll());
        const qsizetype newest = text.indexOf(u"\n## "_s) + 1;
        QVERIFY(text.mid(newest).startsWith(u"## %1\n"_s.arg(version)));
    }

    void theMenusHoldTheirEntries_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("trans") << QStringList{u"Cari Hesap Aktarım   "_s,
                                              u"Cari Hesap Fiş Aktarım     "_s,
                                              u"Fatura Aktarım     "_s, u"Stok Kart Aktarımı   "_s};
        QTest::newRow("ay") << QStringList{u"Ürün Bayi Fiyat Eşleştirmesi"_s,
                                           u"Dosya Konumları   "_s,
                                           u"Firma Tanımlaması"_s,
                                           u"Muhasebe Hesap Kodları     "_s,
                                           u"Ödeme Plan Kodu   "_s,
                                           u"Birim Setleri"_s,
                                           u"Stok Statü Kayıtları"_s,
                                           u"Personel Kayıtları     "_s,
                                           u"Banka Hesap Kodu    "_s,
                                           u"Stok Birim Seti Kodu     "_s,
                                           u"Kdv Muafiyet Yazısı"_s,
                                           u"Kasa Kodu"_s,
                                           u"Fatura Özel Kodları"_s,
                                           u"Stok özel kodları"_s,
                                           u"Sql Server Bağlantı"_s};
        QTest::newRow("seminmenu") << QStringList{u"Tümünü Seç"_s,
                                                  u"E-Fatura Olanlar"_s,
                                                  u"E-Fatura Olmayanlar"_s,
                                                  u"Tüm Seçimi Kaldır"_s,
                                                  QString(),
                                                  u"E-Fatura Olanları Göster"_s,
                                                  u"E-Fatura Olmayanları Göster"_s,
                                                  u"Tümünü Göster"_s};
        QTest::newRow("crhsp") << QStringList{u"Seç"_s, u"Tümün Seç"_s, u"Tüm Seçimi Kaldır"_s};
    }
    void theMenusHoldTheirEntries()
    {
        QFETCH(QStringList, entries);
        TestProgram t;
        MainWindow window(t.program);
        QStringList found;
        for (const QAction *action :
             window.findChild<QMenu *>(QString::fromUtf8(QTest::currentDataTag()))->actions())
            found << action->text();
        QCOMPARE(found, entries);
    }

    void aScreenIsSeenWhileItConnectsAndSaysWhatItIsDoing()
    {
        TestProgram t;
        t.reachLogo();
        writeBytes(t.path(u"a.bif"_s), header());
        MainWindow window(t.program);
        window.show();
        QStringList told;
        connect(&t.program.busy, &Busy::changed, this, [&] {
            const auto *fat = window.findChild<FatWindow *>();
            told << (QApplication::overrideCursor() ? u"busy: "_s : u"done"_s) +
                        fat->findChild<QStatusBar *>(u"sb1"_s)->currentMessage();
            QVERIFY(fat->isVisible() && t.sqlServer.texts.size() == (told.size() > 1));
        });
        window.open(u"fat"_s);
        window.findChild<FatWindow *>()->fat().dosyaac(t.path(u"a.bif"_s));
        QCOMPARE(told,
                 QStringList({u"busy: SQL Server'a bağlanılıyor (SRV)…"_s, u"done"_s,
                              u"busy: a.bif okunuyor…"_s, u"done"_s,
                              u"busy: E-fatura müşterileri Logo'dan soruluyor…"_s, u"done"_s}));
        window.open(u"fat"_s); // is there already
        QCOMPARE(t.sqlServer.texts.size(), 1);
        auto *link = window.findChild<LinkLabel *>(u"Label9"_s);
        QVERIFY(link->isConnected());
        const QImage connected = link->grab().toImage();
        window.findChild<FatWindow *>()->fat().link.durum.setText(u"SQL Bağlantı Yok"_s);
        QVERIFY(!link->isConnected());
        QVERIFY(link->grab().toImage() != connected);
    }

    void theListMenuServesTheInvoiceScreenThatWasLoadedLast()
    {
        Frame frame;
        frame.trigger(u"fattumsec"_s);
        QCOMPARE(frame.invoices().tickedCount(), 2);
        frame.trigger(u"tumgoster"_s);
        QCOMPARE(frame.invoices().tickedCount(), 0); // read again
        frame.invoices().setCell(1, L1::EFatura, u"Evet"_s);
        frame.trigger(u"eolan"_s);
        QVERIFY(!frame.invoices().ticked(0) && frame.invoices().ticked(1));
        frame.trigger(u"eolmayan"_s);
        QVERIFY(frame.invoices().ticked(0) && !frame.invoices().ticked(1));
        frame.trigger(u"tumsecimkaldir"_s);
        QCOMPARE(frame.invoices().tickedCount(), 0);
        frame.t.program.aktifform = u"2"_s;
        frame.trigger(u"fattumsec"_s); // for a screen that isn't open
        QCOMPARE(frame.invoices().tickedCount(), 0);
        frame.window.open(u"fatduz");
        Grid &duzey = frame.window.findChild<FatduzWindow *>()->fatduz().liste.l1;
        duzey.addRow(u"C1"_s);
        frame.trigger(u"fattumsec"_s);
        QCOMPARE(frame.invoices().tickedCount(), 0);
        QCOMPARE(duzey.tickedCount(), 1);
        duzey.setAllTicked(false);
        MainWindow::subWindowOf(frame.window.findChild<FatWindow *>())->close();
        QTRY_VERIFY(!frame.window.findChild<FatWindow *>());
        frame.t.program.aktifform = u"1"_s;
        frame.trigger(u"fattumsec"_s);
        QCOMPARE(duzey.tickedCount(), 0);
    }

    void theListMenuShowsEitherKindOfInvoice()
    {
        Frame frame;
        frame.t.sqlServer.answer = [first = true](const QString &) mutable -> SqlRows {
            return {{u"ACCEPTEINV"_s}, {{std::exchange(first, !first) ? u"1"_s : u"0"_s}}};
        };
        frame.trigger(u"efatgoster"_s);
        QCOMPARE(column(frame.invoices(), L1::EFatura), u"Evet"_s);
        frame.trigger(u"tumgoster"_s);
        QCOMPARE(frame.invoices().rows(), 2);
        frame.trigger(u"efatolmgoster"_s);
        QCOMPARE(column(frame.invoices(), L1::EFatura), QString());
        QCOMPARE(frame.invoices().rows(), 1);
    }

    void whatIsTypedWhileItWorksNeitherAnswersABoxNorClosesTheScreen()
    {
        TestProgram t;
        t.reachLogo();
        ScreenBoxes boxes;
        writeBytes(t.path(u"kasa.kvz"_s), "1");
        SilentServer server;
        Program program{t.folder.path(), {}, {}, {}, boxes, t.dialogs, t.clock, server};
        MainWindow window(program);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const auto type = [&window] {
            for (const auto &[key, modifiers] : {std::pair(Qt::Key_O, Qt::ControlModifier),
                                                 {Qt::Key_Return, Qt::NoModifier},
                                                 {Qt::Key_Escape, Qt::NoModifier}}) {
                for (const auto each : {QEvent::KeyPress, QEvent::KeyRelease})
                    qt_handleKeyEvent(window.windowHandle(), each, key, modifiers);
            }
        };
        // What comes while it works waits until somebody looks.
        connect(&program.busy, &Busy::changed, &window, type, Qt::QueuedConnection);
        for (const QString &screen : {u"fat"_s, u"fatduz"_s, u"sayimform"_s}) {
            QString told;
            bool stands = false;
            QTimer look; // until it is there, however slow the machine
            QObject::connect(&look, &QTimer::timeout, &window, [&] {
                auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
                if (!box)
                    return;
                look.stop();
                told = box->text();
                auto *made = window.findChild<QWidget *>(screen);
                // Nor does the screen close by its own, while it waits for the answer.
                made->findChild<QAbstractButton *>(u"chameleonButton4"_s)->click();
                QCoreApplication::processEvents();
                stands = box->isVisible() && window.findChild<QWidget *>(screen);
                box->accept();
            });
            look.start(200);
            window.open(screen);
            QCOMPARE(told, u"yanıt yok"_s);
            QVERIFY2(stands, qPrintable(screen));
            QVERIFY2(window.findChild<QWidget *>(screen), qPrintable(screen));
        }
        QVERIFY(t.dialogs.asked.isEmpty());
        window.activateWindow();
        QTRY_VERIFY(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY(!window.findChild<QWidget *>(u"sayimform"_s)); // it works again
        QVERIFY(!QMessageBox().windowIcon().isNull());
    }

    void aLetterTypedByItsNumberIsNoKeyOfThePages()
    {
        Frame frame;
        auto *pages = frame.window.findChild<QTabBar *>(u"sekmeler"_s);
        auto *field = frame.window.findChild<FatWindow *>()->findChild<QLineEdit *>();
        field->setFocus();
        QTest::keyClick(field, Qt::Key_2, Qt::AltModifier | Qt::KeypadModifier);
        QCOMPARE(pages->currentIndex(), 0);
        QVERIFY(field->hasFocus());
        QTest::keyClick(field, Qt::Key_2, Qt::AltModifier);
        QCOMPARE(pages->currentIndex(), 1);
    }

    // It is told once; a menu that the mouse passes has no words for the status bar.
    void whatIsToldStaysWhileAMenuIsLookedAt()
    {
        ShownFrame t;
        t.window.tell(u"Rapor: cokme.txt"_s);
        QStatusTipEvent passing{QString()};
        QApplication::sendEvent(&t.window, &passing);
        QCOMPARE(t.window.statusBar()->currentMessage(), u"Rapor: cokme.txt"_s);
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
        QTRY_VERIFY(frame.window.focusWidget()); // the way back has the keys
        QCOMPARE(frame.window.focusWidget()->objectName(), u"lvButtons_H5"_s);
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
        t.boxes.expect({asTold(t.path(u"data.dbs"_s)) +
                        u" açılamadı: dosya yok (unable to open database file)"_s});
        window.findChild<QAction *>(u"urunformu"_s)->trigger();
        QVERIFY(window.findChild<QWidget *>(u"urunform"_s)); // empty, but there
    }

    void aSecondProgramEndsSilently()
    {
        const QTemporaryDir runtime;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
        QString lock = InstanceLock(QFileInfo(QStringLiteral(PROGRAM)).path()).path();
#ifdef Q_OS_UNIX
        lock = runtime.filePath(QFileInfo(lock).fileName());
#endif
        QFile::remove(lock); // of one that was killed
        QProcess first;
        QProcess second;
        for (QProcess *process : {&first, &second}) {
            process->setProcessEnvironment(environment);
            process->setProcessChannelMode(QProcess::MergedChannels);
        }
        first.start(QStringLiteral(PROGRAM), {});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(lock), 20000);
        second.start(QStringLiteral(PROGRAM), {});
        QVERIFY(second.waitForFinished(20000));
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.readAll(), QByteArray());
        QCOMPARE(first.state(), QProcess::Running);
        first.kill();
        first.waitForFinished();
    }

    void aProgramFolderIsHeldOnceAndOthersAreFree()
    {
        const QTemporaryDir here;
        const QTemporaryDir there;
        InstanceLock first(here.path());
        InstanceLock elsewhere(there.path());
        QVERIFY(first.take() && elsewhere.take());
        QVERIFY(!InstanceLock(here.path() + u"/../"_s + QDir(here.path()).dirName()).take());
    }

#ifdef Q_OS_WIN
    void aFolderIsTheSameByItsShortName()
    {
        const QTemporaryDir here;
        InstanceLock first(here.path());
        QVERIFY(first.take());
        const std::wstring folder = QDir::toNativeSeparators(here.path()).toStdWString();
        std::array<wchar_t, MAX_PATH> letters{};
        QVERIFY(GetShortPathNameW(folder.c_str(), letters.data(), MAX_PATH) > 0);
        const QString name = QString::fromWCharArray(letters.data());
        QVERIFY2(name.contains(u'~'), qPrintable(name));
        QVERIFY(!InstanceLock(name).take());
    }
#endif

    void aLockThatWasLeftBehindHoldsNobodyUp_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("garbage") << QByteArray("\0\0\0\n", 4);
        QTest::newRow("of a number that runs again, as something else")
            << QByteArray::number(QCoreApplication::applicationPid()) + "\nkervan-transfer\n" +
                   QSysInfo::machineHostName().toUtf8() + '\n';
        QTest::newRow("of this program's own number")
            << QByteArray::number(QCoreApplication::applicationPid()) + "\ntst_mainwindow\n" +
                   QSysInfo::machineHostName().toUtf8() + '\n';
        QTest::newRow("of a machine that was renamed") << QByteArray("1\nsystemd\neski-ad\n");
    }
    void aLockThatWasLeftBehindHoldsNobodyUp()
    {
        QFETCH(QByteArray, contents);
        const QTemporaryDir folder;
        InstanceLock lock(folder.path());
        writeBytes(lock.path(), contents);
        QVERIFY(lock.take());
        QVERIFY(!InstanceLock(folder.path()).take());
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
