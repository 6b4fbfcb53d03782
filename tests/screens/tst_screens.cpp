#include "frame/entries.h"
#include "frame/mainwindow.h"
#include "support/fakes.h"

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

/// A declared screen: how it is opened, its caption, and its controls in the order of Tab.
struct Declared
{
    QString screen, opener, caption;
    QStringList controls;
};

QList<Declared> declaredScreens()
{
    QList<Declared> screens;
    const QString all = QString::fromUtf8(readBytes(QStringLiteral(TEST_DATA "/screens.txt")));
    for (const QString &line : all.split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList parts = line.split(u'|');
        if (line.startsWith(u'#'))
            continue;
        if (parts.size() == 3)
            screens << Declared{parts[0], parts[1], parts[2], {}};
        else
            screens.last().controls << line;
    }
    return screens;
}

} // namespace

class TestScreens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyScreenIsDeclared()
    {
        QStringList declared;
        for (const Declared &screen : declaredScreens())
            declared << screen.screen;
        for (const QList<Entry> &entries : {transferEntries(), bigButtons(), definitionEntries()}) {
            for (const Entry &entry : entries)
                QVERIFY2(declared.contains(entry.screen), qPrintable(entry.screen));
        }
    }

    void aScreenOpensFromTheFrameShowsItsControlsAndIsClosedByEsc_data()
    {
        QTest::addColumn<int>("place");
        const QList<Declared> all = declaredScreens();
        for (int i = 0; i < all.size(); ++i)
            QTest::newRow(qPrintable(all[i].screen)) << i;
    }

    void aScreenOpensFromTheFrameShowsItsControlsAndIsClosedByEsc()
    {
        QFETCH(int, place);
        const Declared declared = declaredScreens()[place];
        TestProgram t;
        t.reachLogo();
        writeBytes(t.path(u"kasa.kvz"_s), "100\r\n");
        MainWindow frame(t.program);
        frame.show();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        for (const QString &opener : declared.opener.split(u'>')) {
            if (auto *button = frame.findChild<QAbstractButton *>(opener))
                QTest::mouseClick(button, Qt::LeftButton);
            else
                frame.findChild<QAction *>(opener)->trigger();
        }
        auto *screen = frame.findChild<QWidget *>(declared.screen);
        QVERIFY(screen && screen->isVisible());
        QCOMPARE(screen->windowTitle(), declared.caption);
        QCOMPARE(tabOrderOf(screen).join(u'\n'), declared.controls.join(u'\n'));
        QTRY_VERIFY(QApplication::activeWindow() == screen->window());
        QWidget *focus = QApplication::focusWidget();
        QVERIFY(focus && (focus == screen || screen->isAncestorOf(focus))); // where work starts
        QTest::keyClick(focus, Qt::Key_Escape);
        QTRY_VERIFY(!frame.findChild<QWidget *>(declared.screen));
    }
};

QTEST_MAIN(TestScreens)
#include "tst_screens.moc"
