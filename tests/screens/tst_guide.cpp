#include "app/guidefiles.h"
#include "cards/screens/crwindow.h"
#include "frame/entries.h"
#include "frame/guidepage.h"
#include "frame/guidewindow.h"
#include "frame/mainwindow.h"
#include "support/driving.h"
#include "support/places.h"
#include "support/shownframe.h"

#include <QDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStatusBar>
#include <QTextBlock>
#include <QTreeWidget>
#include <QWindow>

using namespace kervan;

namespace {

GuideWindow *guideWindow()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *guide = qobject_cast<GuideWindow *>(window))
            return guide;
    }
    return nullptr;
}

// The anchor that the guide stands at; empty where it is not to be seen.
QString shownSection()
{
    const GuideWindow *guide = guideWindow();
    if (!guide || !guide->isVisible())
        return {};
    return guide->findChild<GuidePage *>()->section();
}

// What is read at the top of the page.
QString headingInSight(const GuidePage &page)
{
    QTextBlock block = page.cursorForPosition({page.viewport()->width() / 2, 40}).block();
    while (block.isValid() && block.blockFormat().headingLevel() == 0)
        block = block.previous();
    return GuidePage::anchorOf(block.text());
}

void pressF1()
{
    QWidget *focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : QApplication::activeWindow(), Qt::Key_F1);
}

/// The frame over a program folder with its guide.
struct Frame : ShownFrame
{
    Frame()
    {
        writeBytes(t.path(u"kasa.kvz"_s), "100\r\n");
        layOutGuide(t.folder.path());
        show();
    }
};

} // namespace

class TestGuide : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theGuideHoldsWhatItAndTheScreensPointAt()
    {
        const QTemporaryDir folder;
        layOutGuide(folder.path());
        GuidePage page;
        QVERIFY(page.open(folder.filePath(u"kilavuz/kullanim.md"_s)));
        QStringList anchors;
        for (const GuidePage::Heading &heading : page.headings())
            anchors << heading.anchor;
        QVERIFY(anchors.contains(u"bir-sabahın-akışı"_s)); // where no screen is open
        for (const Screen &screen : allScreens())
            QVERIFY2(anchors.contains(screen.guide), qPrintable(screen.word.toString()));
        const QString text =
            QString::fromUtf8(readBytes(folder.filePath(u"kilavuz/kullanim.md"_s)));
        static const QRegularExpression link(u"\\]\\(([^)]*)\\)"_s);
        qsizetype pictures = 0;
        for (const auto &match : link.globalMatch(text)) {
            const QString to = match.captured(1);
            const QFileInfo file(folder.filePath(u"kilavuz/"_s + to));
            const bool isPicture = to.endsWith(u".png"_s);
            pictures += isPicture;
            QVERIFY2(isPicture ? file.size() > 0 && file.size() < 120 * 1024
                               : to.startsWith(u'#') && anchors.contains(to.mid(1)),
                     qPrintable(to));
            if (isPicture) // is numbered, in its order
                QVERIFY2(text.contains(u"%1)\n\n*Resim %2: "_s.arg(to).arg(pictures)),
                         qPrintable(to));
        }
        QCOMPARE(page.pictures().size(), pictures);
        QVERIFY(pictures > 10);
    }

    void anchorsAreSpelledAsLinksAre()
    {
        QCOMPARE(GuidePage::anchorOf(u"Cari unvanlarını Logo'da güncelleme"_s),
                 u"cari-unvanlarını-logoda-güncelleme"_s);
        QCOMPARE(GuidePage::anchorOf(u"Neden, nasıl? (2)"_s), u"neden-nasıl-2"_s);
    }

    void layingOutReplacesAnOlderGuideAndLeavesWhatIsNoneOfIt()
    {
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(u"kilavuz"_s));
        writeBytes(folder.filePath(u"kilavuz/kullanim.md"_s), "# Eski\n");
        writeBytes(folder.filePath(u"kilavuz/notlarim.txt"_s), "benim");
        layOutGuide(folder.path());
        QVERIFY(readBytes(folder.filePath(u"kilavuz/kullanim.md"_s))
                    .startsWith("# Kervan Transfer kılavuzu"));
        QCOMPARE(readBytes(folder.filePath(u"kilavuz/notlarim.txt"_s)), QByteArray("benim"));
    }

    void f1OpensThePageOfTheScreenInFrontAndEscClosesTheGuideAlone_data()
    {
        QTest::addColumn<QStringList>("openers");
        QTest::addColumn<QString>("section");
        for (const QStringList &declared : blocksOf(testData(u"screens.txt"_s))) {
            const QStringList head = declared[0].split(u'|');
            QTest::newRow(qPrintable(head[0]))
                << head[1].split(u'>') << screenOf(head[0])->guide.toString();
        }
        QTest::newRow("no screen") << QStringList() << u"bir-sabahın-akışı"_s;
    }
    void f1OpensThePageOfTheScreenInFrontAndEscClosesTheGuideAlone()
    {
        QFETCH(QStringList, openers);
        QFETCH(QString, section);
        Frame frame;
        for (const QString &opener : openers) {
            if (auto *button = frame.window.findChild<QAbstractButton *>(opener))
                QTest::mouseClick(button, Qt::LeftButton);
            else
                frame.window.findChild<QAction *>(opener)->trigger();
        }
        const QString word = QString::fromUtf8(QTest::currentDataTag()).section(u'|', 0, 0);
        QWidget *screen = frame.window.findChild<QWidget *>(word);
        QWidget *window = screen ? screen->window() : &frame.window;
        QTRY_VERIFY(QApplication::activeWindow() == window);
        pressF1();
        QCOMPARE(shownSection(), section);
        GuideWindow *guide = guideWindow();
        QVERIFY(!guide->isModal());
        QTRY_VERIFY(QApplication::activeWindow() == guide); // also beside a dialog that blocks
        QCOMPARE(headingInSight(*guide->findChild<GuidePage *>()), section);
        QCOMPARE(guide->findChild<QTreeWidget *>()->currentItem()->data(0, Qt::UserRole), section);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY(!guide->isVisible());
        QVERIFY(window->isVisible() && (!screen || screen->isVisible()));
    }

    void f1OverTheUpdateOfTitlesTellsOfTheUpdate()
    {
        Frame frame;
        frame.window.open(u"cr"_s);
        auto *cards = frame.window.findChild<CrWindow *>();
        cards->cr().l1.addRow(u"1"_s);
        press(*cards, u"chameleonButton3"_s);
        QTRY_VERIFY(qobject_cast<QDialog *>(QApplication::activeWindow()));
        pressF1();
        QCOMPARE(shownSection(), u"cari-unvanlarını-logoda-güncelleme"_s);
    }

    void f1OverABoxOpensThePageOfTheScreenBehindIt()
    {
        Frame frame;
        frame.window.open(u"sayimform"_s);
        QMessageBox box(&frame.window);
        box.open();
        QVERIFY(QTest::qWaitForWindowActive(&box));
        pressF1();
        QCOMPARE(shownSection(), u"sayım"_s);
        QTRY_VERIFY(QApplication::activeWindow() == guideWindow());
        QVERIFY(box.isVisible());
    }

    void theGuideStaysOfUseBesideADialogThatOpensBehindIt()
    {
        Frame frame;
        pressF1();
        frame.window.open(u"ayr"_s);
        const auto *dialog = frame.window.findChild<QDialog *>(u"ayr"_s);
        QTRY_COMPARE(guideWindow()->windowHandle()->transientParent(), dialog->windowHandle());
        QVERIFY(guideWindow()->isVisible());
    }

    void theButtonOfTheMenuBarOpensItToo()
    {
        Frame frame;
        frame.window.open(u"cafis3"_s);
        press(frame.window, u"kilavuzac"_s);
        QCOMPARE(shownSection(), u"pos-analizi"_s);
    }

    void f1OverAnOpenMenuLeavesTheMenu()
    {
        Frame frame;
        auto *menu = frame.window.findChild<QMenu *>(u"ay"_s);
        menu->popup({});
        QTest::keyClick(menu, Qt::Key_F1);
        QCOMPARE(shownSection(), u"bir-sabahın-akışı"_s);
        QVERIFY(!menu->isVisible());
    }

    void theGuideIsReadByContentsLinksSearchAndBack()
    {
        Frame frame;
        pressF1();
        GuideWindow *guide = guideWindow();
        auto *page = guide->findChild<GuidePage *>();
        auto *contents = guide->findChild<QTreeWidget *>();
        QVERIFY(contents->topLevelItemCount() > 15);
        QTreeWidgetItem *item = contents->findItems(u"Klavye"_s, Qt::MatchExactly).first();
        QTest::mouseClick(contents->viewport(), Qt::LeftButton, {},
                          contents->visualItemRect(item).center());
        QCOMPARE(shownSection(), u"klavye"_s);
        Q_EMIT page->anchorClicked(QUrl(u"#fiş-numaraları"_s)); // as a link does
        QCOMPARE(headingInSight(*page), u"fiş-numaraları"_s);
        press(*guide, u"geri"_s);
        QCOMPARE(shownSection(), u"klavye"_s);
        press(*guide, u"ileri"_s);
        QCOMPARE(headingInSight(*page), u"fiş-numaraları"_s);
        const QString text = page->toPlainText();
        for (const QString &elsewhere : {u"https://example.com/#klavye"_s, u"baska.md"_s})
            Q_EMIT page->anchorClicked(QUrl(elsewhere)); // nothing is fetched
        QCOMPARE(page->toPlainText(), text);
        QCOMPARE(shownSection(), u"fiş-numaraları"_s);

        type(*guide, u"kilavuzdaara"_s, u"Not Defteri"_s);
        QCOMPARE(page->textCursor().selectedText(), u"Not Defteri"_s);
        type(*guide, u"kilavuzdaara"_s, u"kaplumba"_s);
        QCOMPARE(page->textCursor().selectedText(), u"Not Defteri"_s);
        bool told = false;
        for (const QLabel *label : guide->findChildren<QLabel *>())
            told = told || label->text() == u"Bulunamadı"_s;
        QVERIFY(told);
    }

    void picturesFitTheColumnAndNoLineIsTooWide()
    {
        Frame frame;
        pressF1();
        GuideWindow *guide = guideWindow();
        auto *page = guide->findChild<GuidePage *>();
        for (const int width : {1600, 700}) {
            guide->resize(width, 700);
            QTest::qWait(200);
            QTRY_COMPARE(page->horizontalScrollBar()->maximum(), 0);
            const QTextFrameFormat margins = page->document()->rootFrame()->frameFormat();
            const double column =
                page->viewport()->width() - margins.leftMargin() - margins.rightMargin();
            QVERIFY(column <= 820 && column > 200);
        }
    }

    void aMissingGuideIsToldInTheStatusLineWithItsCure_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::newRow("of a screen") << u"cr"_s;
        QTest::newRow("of the frame") << QString();
    }
    void aMissingGuideIsToldInTheStatusLineWithItsCure()
    {
        QFETCH(QString, screen);
        TestProgram t;
        MainWindow frame(t.program);
        frame.show();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        if (!screen.isEmpty())
            frame.open(screen);
        pressF1();
        auto *bar = frame.findChild<QStatusBar *>(screen.isEmpty() ? QString() : u"sb1"_s);
        QCOMPARE(bar->currentMessage(),
                 u"Kılavuz yok: %1. kervan-kurulum'u bu program klasörü için yeniden çalıştırın, "
                 "sonra F1'e basın."_s.arg(asTold(t.path(u"kilavuz/kullanim.md"_s))));
        QCOMPARE(shownSection(), QString());
        layOutGuide(t.folder.path());
        pressF1();
        QVERIFY(!shownSection().isEmpty());
    }
};

QTEST_MAIN(TestGuide)
#include "tst_guide.moc"
