#include "controls/bigbutton.h"
#include "controls/gridview.h"
#include "controls/pictures.h"
#include "controls/theme.h"
#include "frame/mainwindow.h"
#include "invoices/desk.h"
#include "invoices/screens/fatwindow.h"
#include "store/definition.h"
#include "store/screens/definitionwindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScrollBar>
#include <QSettings>

using namespace kervan;

namespace {

constexpr QSize desktop(1366, 768);

/// The frame as large as a desktop shows it at a scale, with forty invoices read.
struct Room
{
    Desk desk;
    MainWindow frame{desk.t.program};
    GridView *list = nullptr;

    explicit Room(double scale = 1)
    {
        frame.showNormal();
        frame.resize(qFloor(desktop.width() / scale), qFloor(desktop.height() / scale));
        frame.open(u"fat");
        QByteArray source;
        for (int i = 0; i < 40; ++i) {
            const QString title = i % 2 ? u"TEK"_s : u"ÇİFT"_s;
            source += header({.no = u"F%1"_s.arg(i), .title = title}) + goods(u"P1");
        }
        writeBytes(desk.t.path(u"a.bif"_s), source);
        writeBytes(desk.t.path(u"kasa.kvz"_s), "1");
        list = frame.findChild<GridView *>(u"l1"_s);
        if (!QTest::qWaitForWindowActive(&frame))
            QTest::qFail("the frame is not active", __FILE__, __LINE__);
        QCoreApplication::processEvents();
    }
    FatWindow &screen() { return *frame.findChild<FatWindow *>(); }
    Grid &rows() { return screen().fat().liste.l1; }
    void read() { screen().fat().dosyaac(desk.t.path(u"a.bif"_s)); }
    int rowsInView()
    {
        QCoreApplication::processEvents(); // what the layouts still have to do
        int whole = 0;
        for (int row = 0; row < rows().rows(); ++row) {
            const QRect place = list->visualRect(rows().index(row, 0));
            whole += place.top() >= 0 && place.bottom() < list->viewport()->height();
        }
        return whole;
    }
};

// Where a part of the screen ends, as seen by the frame.
int rightEnd(const QWidget *part, const QWidget &frame)
{
    return part->mapTo(&frame, QPoint(part->width(), 0)).x();
}

} // namespace

class RoomTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theInvoiceListHasRoomOnASmallDesktop_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<int>("rows");
        QTest::newRow("100 %") << 1.0 << 14;
        QTest::newRow("125 %") << 1.25 << 9;
        QTest::newRow("150 %") << 1.5 << 6;
        QTest::newRow("200 %, scrolled to") << 2.0 << 2;
    }

    void theInvoiceListHasRoomOnASmallDesktop()
    {
        QFETCH(double, scale);
        QFETCH(int, rows);
        Room room(scale);
        room.read();
        QVERIFY2(room.rowsInView() >= rows, qPrintable(QString::number(room.rowsInView())));
        QCOMPARE(room.frame.width(), qFloor(desktop.width() / scale));
        QCOMPARE(room.frame.height(), qFloor(desktop.height() / scale));
        for (const QAbstractButton *button : room.frame.findChildren<QAbstractButton *>()) {
            const bool isInAField = qobject_cast<const QLineEdit *>(button->parentWidget());
            if (!button->isVisible() || button->text().isEmpty() || isInAField)
                continue;
            QVERIFY2(rightEnd(button, room.frame) <= room.frame.width(),
                     qPrintable(button->text()));
            const auto *big = qobject_cast<const BigButton *>(button);
            const QSize needed = big ? QSize(big->widthFor(3), 0) : button->minimumSizeHint();
            QVERIFY2(button->width() >= needed.width(), qPrintable(button->text()));
        }
        room.list->setFocus(); // where the screen is scrolled, keys bring it into view
        const QPoint top = room.list->mapTo(&room.frame, QPoint());
        QVERIFY(top.y() > 0 && top.y() + 60 < room.frame.height());
    }

    void theBigButtonsAreSmallWhileAScreenIsOpenAndItHasNoTitleBar()
    {
        TestProgram t;
        t.reachLogo();
        MainWindow frame(t.program);
        frame.showNormal();
        frame.resize(desktop);
        const auto *button = frame.findChild<BigButton *>(u"chameleonButton5"_s);
        const int big = button->height();
        frame.open(u"cr");
        QTRY_VERIFY(button->height() < big / 2);
        frame.open(u"stoktrf");
        const auto *screen = frame.findChild<QWidget *>(u"stoktrf"_s);
        QMdiSubWindow *window = MainWindow::subWindowOf(screen->parentWidget());
        QVERIFY(window->windowFlags() & Qt::FramelessWindowHint);
        QCOMPARE(window->size(), window->parentWidget()->size());
        frame.resize(900, 600);
        QTRY_COMPARE(window->size(), window->parentWidget()->size());
        QCOMPARE(frame.windowTitle(), u"Kervan Transfer v2.21"_s);
        frame.open(u"cr"); // each is still a window of its own
        QVERIFY(frame.findChild<QWidget *>(u"cr"_s)->isVisible());
        for (QMdiSubWindow *each : frame.findChildren<QMdiSubWindow *>())
            each->close();
        QTRY_VERIFY(button->height() > big / 2);
    }

    void theDefinitionScreensFitASmallDesktop()
    {
        TestProgram t;
        for (const Definition &definition : definitions()) {
            const DefinitionWindow window(t.program, definition);
            const QSize room = window.QWidget::screen()->availableSize();
            QVERIFY2(window.width() <= room.width() && window.height() <= room.height(),
                     qPrintable(definition.screen));
            QVERIFY2(window.minimumSizeHint().width() <= 683 &&
                         window.minimumSizeHint().height() <= 512,
                     qPrintable(definition.screen));
        }
    }

    void fromFileToDocumentWithoutTheMouse()
    {
        Room room;
        int keys = 0;
        const auto type = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QWidget *menu = QApplication::activePopupWidget();
            QTest::keyClick(menu ? menu : QApplication::focusWidget(), key, modifiers);
            ++keys;
        };
        room.desk.t.dialogs.answers = {room.desk.t.path(u"a.bif"_s), room.desk.t.path(u"b"_s)};
        type(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), room.list);
        QCOMPARE(room.list->currentIndex().row(), 0);
        QVERIFY(!room.list->selectionModel()->hasSelection());
        type(Qt::Key_L, Qt::ControlModifier);
        type(Qt::Key_Down);
        type(Qt::Key_Return);
        QCOMPARE(room.rows().tickedCount(), 40);
        type(Qt::Key_F6, Qt::ShiftModifier);
        type(Qt::Key_F6, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"c3"_s);
        type(Qt::Key_Down);
        type(Qt::Key_Tab);
        type(Qt::Key_Down);
        room.desk.t.boxes.expectDone(u"Kasa Nakit "_s);
        room.desk.t.boxes.expectDone();
        type(Qt::Key_S, Qt::ControlModifier);
        QVERIFY(readBytes(room.desk.t.path(u"b.xml"_s)).count("<INVOICE ") == 40);
        QVERIFY2(keys <= 20, qPrintable(QString::number(keys)));
    }

    void keysLeadFromTheSearchToTheHitAndRoundThePanes()
    {
        Room room;
        room.read();
        auto *search = room.frame.findChild<QWidget *>(u"crara"_s);
        search->setFocus();
        QTest::keyClicks(search, u"tek"_s.toUpper());
        QTest::keyClick(search, Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), room.list);
        QCOMPARE(room.list->currentIndex().row(), 1);
        QCOMPARE(room.list->selectionModel()->selectedRows().size(), 20);
        QStringList panes;
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
            panes << QApplication::focusWidget()->objectName();
        }
        QCOMPARE(panes.join(u' '), u"l2 chameleonButton5 c3 Check2 l1"_s);
    }

    void theMenuOfAListCopiesAndTicks()
    {
        Room room;
        room.read();
        const auto choose = [&](const QString &caption) {
            QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, QCursor::pos());
            QApplication::sendEvent(room.list->viewport(), &event);
            const auto *menu = room.list->findChild<QMenu *>();
            for (QAction *action : menu->actions()) {
                if (action->text().section(u'\t', 0, 0) == caption)
                    action->trigger();
            }
            delete menu;
        };
        room.list->selectRow(3);
        choose(u"Seç"_s);
        QCOMPARE(ticksOf(room.rows()).indexOf(u'x'), 3);
        choose(u"Seçimi Kaldır"_s);
        QCOMPARE(room.rows().tickedCount(), 0);
        room.rows().setCell(7, L1::CariKodu, u"C2"_s);
        room.list->selectRow(7);
        room.rows().setTicked(0, true); // stays
        choose(u"Aynı Carinin Hepsini Seç"_s);
        QCOMPARE(ticksOf(room.rows()).first(9), u"x------x-"_s);
        choose(u"Başlıklarla Kopyala"_s);
        QVERIFY(QGuiApplication::clipboard()->text().startsWith(u"Cari Kodu\t"));
        QVERIFY(QGuiApplication::clipboard()->text().contains(u"\nC2\tTEK\tF7\t"));
    }

    void theFirstColumnsStayAndAreTheOnesThatAClickThereMeets()
    {
        Room room;
        room.read();
        const QRect before = room.list->visualRect(room.rows().index(2, L1::CariKodu));
        room.list->horizontalScrollBar()->setValue(500);
        QCOMPARE(room.list->visualRect(room.rows().index(2, L1::CariKodu)), before);
        QCOMPARE(room.list->indexAt(before.center()).column(), int(L1::CariKodu));
        QTest::mouseClick(room.list->viewport(), Qt::LeftButton, {},
                          before.topLeft() + QPoint(12, before.height() / 2));
        QVERIFY(room.rows().ticked(2));
        room.list->scrollTo(room.rows().index(2, L1::FaturaNumarasi));
        QVERIFY(room.list->visualRect(room.rows().index(2, L1::FaturaNumarasi)).left() >=
                room.list->visualRect(room.rows().index(2, L1::Unvani)).right());
    }

    void whatTheUserMadeOfAListIsThereTheNextTime()
    {
        const QTemporaryDir folder;
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        QCoreApplication::setOrganizationName(u"Deneme"_s);
        {
            Room room;
            room.read();
            room.list->setColumnWidth(L1::Unvani, 321);
            room.list->hide(); // as the screen is when it closes
            room.frame.resize(700, 500);
            QCoreApplication::processEvents();
            room.frame.close();
        }
        {
            Room room;
            room.read();
            QCOMPARE(room.list->columnWidth(L1::Unvani), 321);
            QVERIFY(!QDir(room.desk.t.folder.path()).entryList().contains(u"Deneme"_s));
        }
        TestProgram t;
        const MainWindow again(t.program);
        QCOMPARE(again.size(), QSize(700, 500));
        QCoreApplication::setOrganizationName({});
    }

    void theProgramFollowsTheColoursOfTheDesktop()
    {
        const auto application = [] {
            return static_cast<QApplication *>(QCoreApplication::instance());
        };
        const QIcon icon = picture(u"close"_s);
        const auto colourOf = [&icon] {
            return icon.pixmap(24, 24).toImage().pixelColor(12, 12); // where its lines cross
        };
        applyTheme(*application(), false);
        const QColor onLight = colourOf();
        applyTheme(*application(), true);
        QVERIFY(colourOf().lightness() > onLight.lightness() + 40);
        QPalette contrast(Qt::black);
        contrast.setColor(QPalette::Window, Qt::black);
        contrast.setColor(QPalette::ButtonText, Qt::yellow);
        contrast.setColor(QPalette::Highlight, Qt::cyan);
        applyTheme(*application(), contrast);
        QCOMPARE(QApplication::palette().color(QPalette::Highlight), QColor(Qt::cyan));
        QCOMPARE(colourOf(), QColor(Qt::yellow));
        QCOMPARE(application()->styleSheet().indexOf(u"#2f6f7e"), -1);
        applyTheme(*application(), false);
    }

    void aDesktopForThoseWhoSeeBadlyIsObeyedWhileItChangesToo()
    {
        auto *application = static_cast<QApplication *>(QCoreApplication::instance());
        const auto desktop = [](QRgb ground, QRgb base, QRgb text) {
            QPalette palette;
            palette.setColor(QPalette::Window, ground);
            palette.setColor(QPalette::Button, ground);
            palette.setColor(QPalette::Base, base);
            palette.setColor(QPalette::WindowText, text);
            palette.setColor(QPalette::HighlightedText, Qt::black);
            return palette;
        };
        QVERIFY(isHighContrast(desktop(0x202020, 0x202020, 0xffffff))); // one ground
        QVERIFY(isHighContrast(desktop(0x002b36, 0x073642, 0x93a1a1))); // a tinted one
        QVERIFY(isHighContrast(desktop(0x101418, 0x000000, 0xffff00))); // tinted letters
        QVERIFY(!isHighContrast(desktop(0xf0f0f0, 0xffffff, 0x000000)));
        QVERIFY(!isHighContrast(desktop(0x2a2e32, 0x1b1e20, 0xfcfcfc)));
        applyTheme(*application); // goes along with the desktop from now on
        applyTheme(*application, desktop(0x000000, 0x000000, 0xffff00));
        QCOMPARE(QApplication::palette().color(QPalette::PlaceholderText), QColor(Qt::yellow));
        QVERIFY(application->styleSheet().contains(u"/tickdark/")); // on a bright ground
        QWidget window;
        QEvent change(QEvent::ThemeChange);
        QCoreApplication::sendEvent(&window, &change);
        QTRY_VERIFY(QApplication::palette().color(QPalette::WindowText) != QColor(Qt::yellow));
        QVERIFY(application->styleSheet().contains(u"/tick/"));
        applyTheme(*application, false);
    }
};

QTEST_MAIN(RoomTest)
#include "tst_room.moc"
