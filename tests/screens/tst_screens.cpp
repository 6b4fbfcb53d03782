#include "frame/entries.h"
#include "frame/mainwindow.h"
#include "support/fakes.h"
#include "support/places.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QMdiSubWindow>

using namespace kervan;

namespace {

// What a control says of itself, for those that have a fixed caption.
QString told(const QWidget *control)
{
    const auto *button = qobject_cast<const QAbstractButton *>(control);
    const QString caption = button ? button->text() : QString();
    return (control->objectName() + u' ' + caption).trimmed();
}

// The controls that Tab reaches, in its order.
QStringList tabOrderOf(QWidget *screen)
{
    QStringList order;
    for (QWidget *at = screen->nextInFocusChain(); at != screen; at = at->nextInFocusChain()) {
        const bool reached = screen->isAncestorOf(at) && at->isVisibleTo(screen) &&
                             at->isEnabledTo(screen) && (at->focusPolicy() & Qt::TabFocus);
        // Parts of a control of the library have no name of ours, and it has no focus by itself.
        if (reached && !at->objectName().isEmpty() && !at->objectName().startsWith(u"qt_"_s))
            order << told(at);
    }
    return order;
}

// The declared screens: name, opener and caption, then the controls in the order of Tab.
QList<QStringList> declaredScreens()
{
    return blocksOf(testData(u"screens.txt"_s));
}

} // namespace

class TestScreens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyScreenIsDeclared()
    {
        QStringList declared;
        for (const QStringList &screen : declaredScreens())
            declared << screen[0].section(u'|', 0, 0);
        for (const QList<Entry> &entries : {transferEntries(), bigButtons(), definitionEntries()}) {
            for (const Entry &entry : entries)
                QVERIFY2(declared.contains(entry.screen), qPrintable(entry.screen));
        }
    }

    void aScreenOpensFromTheFrameShowsItsControlsAndIsClosedByEsc_data()
    {
        QTest::addColumn<QStringList>("declared");
        for (const QStringList &screen : declaredScreens())
            QTest::newRow(qPrintable(screen[0])) << screen;
    }

    void aScreenOpensFromTheFrameShowsItsControlsAndIsClosedByEsc()
    {
        QFETCH(QStringList, declared);
        const QStringList head = declared.takeFirst().split(u'|');
        TestProgram t;
        t.reachLogo();
        writeBytes(t.path(u"kasa.kvz"_s), "100\r\n");
        MainWindow frame(t.program);
        frame.show();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        for (const QString &opener : head[1].split(u'>')) {
            if (auto *button = frame.findChild<QAbstractButton *>(opener))
                QTest::mouseClick(button, Qt::LeftButton);
            else
                frame.findChild<QAction *>(opener)->trigger();
        }
        auto *screen = frame.findChild<QWidget *>(head[0]);
        QVERIFY(screen && screen->isVisible());
        QCOMPARE(screen->windowTitle(), head[2]);
        // A dialog blocks the frame, but for the one that stays beside it.
        QCOMPARE(screen->isModal(), screen->isWindow() && head[0] != u"kdvmu");
        QCOMPARE(tabOrderOf(screen).join(u'\n'), declared.join(u'\n'));
        QTRY_VERIFY(QApplication::activeWindow() == screen->window());
        QWidget *focus = QApplication::focusWidget();
        QVERIFY(focus && (focus == screen || screen->isAncestorOf(focus)));
        if (!screen->isWindow()) // a transfer starts at the button behind the closing one
            QCOMPARE(told(focus), declared[1]);
        QTest::keyClick(focus, Qt::Key_Escape);
        QTRY_VERIFY(!frame.findChild<QWidget *>(head[0]));
    }
};

QTEST_MAIN(TestScreens)
#include "tst_screens.moc"
