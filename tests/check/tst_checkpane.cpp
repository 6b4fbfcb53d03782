// The pages below a list, in the window of the invoices: what the keys lead to, what stays where it
// is, and what is told of a document that was written.

#include "check/screens/checkpane.h"
#include "controls/gridview.h"
#include "controls/notestrip.h"
#include "invoices/desk.h"
#include "invoices/screens/fatwindow.h"
#include "support/driving.h"
#include "support/shownframe.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QStatusBar>

using namespace kervan;

namespace {

/// The invoice screen in the frame, over a list whose second title holds an "&" and whose fourth
/// number is its first one.
struct InvoiceScreen : ShownFrame
{
    FatWindow *screen = nullptr;

    explicit InvoiceScreen(const QStringList &titles = {u"Deniz"_s, u"Işık & Oğul"_s, u"Ada"_s,
                                                        u"Deniz"_s})
    {
        t.fill({u"insert into firma values (Null,'1','','Merkez','','D1','','120','')"_s,
                u"insert into muh values (Null,'','18','','600','','','','391','','')"_s,
                u"insert into odm values (Null,'30','Otuz','','','','','','')"_s,
                u"insert into birim values (Null,'','','PK','PAKET','','','','')"_s,
                u"insert into per values (Null,'LP1','S1')"_s,
                u"insert into urun values ('P1','','','10')"_s});
        writeBytes(t.path(u"kasa.kvz"_s), "K1");
        t.program.folders.xf = t.folder.path();
        window.resize(1366, 768);
        show();
        window.open(u"fat"_s);
        screen = window.findChild<FatWindow *>();
        QByteArray source;
        for (int i = 0; i < titles.size(); ++i)
            source += header({.no = u"F%1"_s.arg(i % 3), .total = u"11.80"_s, .title = titles[i]}) +
                      goods(u"P1", u"1", u"11.80", u"11.80");
        writeBytes(t.path(u"a.bif"_s), source);
        fat().dosyaac(t.path(u"a.bif"_s));
    }
    Fat &fat() { return screen->fat(); }
    template<class Widget>
    Widget *part(const QString &name)
    {
        return screen->findChild<Widget *>(name);
    }
    // How grave each finding is that is shown.
    QStringList shown()
    {
        const auto *rows = part<GridView>(u"bulgular"_s)->model();
        QStringList words;
        for (int row = 0; row < rows->rowCount(); ++row)
            words << rows->index(row, 0).data().toString();
        return words;
    }
    QString marked()
    {
        const auto *view = part<GridView>(u"bulgular"_s);
        const QList<int> rows = view->selectedPositions();
        return rows.size() == 1 ? view->model()->index(rows[0], 3).data().toString() : QString();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers with = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, with);
    }
    QString below() { return part<QStatusBar>(u"sb1"_s)->currentMessage(); }
};

} // namespace

class CheckPaneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysLeadFromFindingToFindingAndThePlaceStays()
    {
        InvoiceScreen s;
        auto *list = s.part<GridView>(u"l1"_s);
        auto *page = s.part<QWidget>(u"denetim"_s);
        QTRY_VERIFY(list->markOf(3).kind == RowMark::Error);
        QVERIFY(!page->isVisible());
        list->setFocus();
        s.press(Qt::Key_F8);
        QTRY_VERIFY(page->isVisible()); // its cure is to be seen
        QStringList sorted = s.shown();
        QVERIFY(sorted.contains(u"Hata"_s) && sorted.contains(u"Uyarı"_s));
        QCOMPARE(sorted.lastIndexOf(u"Hata"_s) + 1, sorted.indexOf(u"Uyarı"_s));
        for (int i = 0; i < sorted.size() && !s.marked().contains(u"\"F0\""_s); ++i)
            s.press(Qt::Key_F8);
        const QString there = s.marked();
        QVERIFY(s.below().endsWith(there));
        QVERIFY(list->hasFocus());
        QVERIFY(list->currentIndex().row() == 0 || list->currentIndex().row() == 3);
        s.fat().odemePlaniKodu.setText(u"30"_s); // one finding of the screen less
        QTRY_VERIFY(s.shown().size() < sorted.size());
        QCOMPARE(s.marked(), there);
        s.fat().okunurBicim.setChecked(true); // all is looked at anew
        s.fat().okunurBicim.setChecked(false);
        QTRY_COMPARE(s.marked(), there);
        s.press(Qt::Key_F8, Qt::ShiftModifier);
        QVERIFY(s.marked() != there);
        s.press(Qt::Key_F8);
        QCOMPARE(s.marked(), there);
        // A click is a place as well.
        auto *view = s.part<GridView>(u"bulgular"_s);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(0, 3)).center());
        s.press(Qt::Key_F8);
        QCOMPARE(s.marked(), view->model()->index(1, 3).data().toString());
        // It leaves the selecting to the list.
        for (const int row : {0, 1})
            QTest::mouseClick(view->viewport(), Qt::LeftButton,
                              row == 0 ? Qt::NoModifier : Qt::ShiftModifier,
                              view->visualRect(view->model()->index(row, 3)).center());
        QCOMPARE(view->selectedPositions().size(), 2);
    }

    void aDocumentThatNoReaderTakesIsToldInRed()
    {
        for (const bool isBroken : {true, false}) {
            InvoiceScreen s({u"Deniz"_s, isBroken ? u"Işık & Oğul"_s : u"Işık"_s});
            s.fat().odemePlaniKodu.setText(u"30"_s);
            s.fat().liste.l1.setAllTicked(true);
            s.t.boxes.expectDone(u"Kasa Nakit "_s);
            s.t.boxes.expectDone();
            s.fat().kaydet(s.t.path(u"belge.xml"_s));
            auto *red = s.part<CutLabel>(u"tutmayan"_s);
            const auto *view = s.part<GridView>(u"l1"_s);
            // Both documents are read: the rows are found in the one, the slips are in the other.
            QTRY_VERIFY(view->markOf(1).written == RowMark::Same);
            QCOMPARE(view->markOf(1).kind == RowMark::Error, isBroken);
            QVERIFY(view->markOf(1).text.contains(u"Bu klasörde"_s));
            if (isBroken)
                QTRY_VERIFY(red->text().contains(u"belge-KASANAKIT.xml belgesini okuyamaz"_s));
            const QString good = s.part<CutLabel>(u"belge"_s)->text();
            QVERIFY(good.startsWith(u"belge.xml yazıldı: 2 fatura"_s));
            QCOMPARE(good.contains(u"belge-KASANAKIT.xml"_s), !isBroken);
            QTRY_VERIFY(s.part<CutLabel>(u"belge"_s)->isVisible());
            QCOMPARE(red->isVisible(), isBroken);
            QCOMPARE(view->verticalHeader()->width() > 30, isBroken); // one picture or two
        }
    }

    void aDocumentIsOpenedFromEveryPage()
    {
        InvoiceScreen s;
        const auto *page = s.part<QWidget>(u"belgeOzeti"_s);
        QVERIFY(!page->isVisible());
        s.t.dialogs.answers = {std::nullopt};
        s.press(Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(page->isVisible());
    }
};

QTEST_MAIN(CheckPaneTest)
#include "tst_checkpane.moc"
