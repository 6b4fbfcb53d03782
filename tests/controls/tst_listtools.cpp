// What a list can do on every transfer screen, driven by keys and the mouse over a real grid.

#include "base/failure.h"
#include "controls/gridview.h"
#include "controls/theme.h"
#include "controls/transferwidgets.h"
#include "text/needle.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace kervan;

namespace {

QList<GridColumn> columns()
{
    return {{u"Kod"_s}, {u"Unvan"_s}, {u"Tutar"_s, 1440, Qt::AlignRight}};
}

// Reads a list anew, the rows given as "code|title|amount".
void fill(Grid &grid, const QStringList &rows)
{
    const Grid::Refill refill(grid);
    grid.clear();
    for (const QString &text : rows) {
        const QStringList cells = text.split(u'|');
        const int row = grid.addRow(cells[0]);
        for (int column = 1; column < cells.size(); ++column)
            grid.setCell(row, column, cells[column]);
    }
}

/// A list that is shown by itself.
struct List
{
    Grid grid{columns(), Grid::Tickable};
    GridView view{grid, u"l1"_s};

    explicit List(const QStringList &rows)
    {
        fill(grid, rows);
        view.resize(500, 300);
        view.show();
        if (!QTest::qWaitForWindowActive(&view))
            QTest::qFail("the list is not active", __FILE__, __LINE__);
    }
};

/// The two lists, a field and the status bar of a screen that Esc closes.
struct Screen
{
    Grid l1{columns(), Grid::Tickable};
    Grid l2{columns(), Grid::Tickable};
    QWidget window;
    GridView *upper = new GridView(l1, u"l1"_s);
    GridView *lower = new GridView(l2, u"l2"_s);
    QLineEdit *field = new QLineEdit;
    QStatusBar *bar = new QStatusBar;
    int closings = 0;

    explicit Screen(const QStringList &rows)
    {
        auto *column = new QVBoxLayout(&window);
        bar->setObjectName(u"sb1"_s);
        for (QWidget *part : {static_cast<QWidget *>(field), static_cast<QWidget *>(upper),
                              static_cast<QWidget *>(lower), static_cast<QWidget *>(bar)})
            column->addWidget(part);
        auto *escape = new QShortcut(Qt::Key_Escape, &window);
        escape->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(escape, &QShortcut::activated, &window, [this] { ++closings; });
        addListTools(&window);
        fill(l1, rows);
        window.resize(900, 600);
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            QTest::qFail("the screen is not active", __FILE__, __LINE__);
        upper->enter();
    }
    static void key(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
    }
    static void type(const QString &text)
    {
        for (const QChar letter : text) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, letter);
            QApplication::sendEvent(QApplication::focusWidget(), &press);
        }
    }
    void find(const QString &text)
    {
        key(Qt::Key_F, Qt::ControlModifier);
        type(text);
    }
    template<class Widget>
    Widget *get(const QString &name)
    {
        return window.findChild<Widget *>(name);
    }
    QString count() { return get<QLabel>(u"bulunan"_s)->text(); }
    QString filterText()
    {
        auto *label = get<QLabel>(u"suzmebilgi"_s);
        return label->isVisible() ? label->text() : QString();
    }
};

QList<int> ticksOf(const Grid &grid)
{
    QList<int> ticks;
    for (int row = 0; row < grid.rows(); ++row) {
        if (grid.ticked(row))
            ticks << row;
    }
    return ticks;
}

/// A row's title, or so, of each row that a list shows.
QString shown(const GridView &view)
{
    QStringList codes;
    for (int row = 0; row < view.grid().rows(); ++row) {
        if (!view.isRowHidden(row))
            codes << view.grid().cell(row, 0);
    }
    return codes.join(u' ');
}

void dress(bool dark)
{
    applyTheme(*static_cast<QApplication *>(QCoreApplication::instance()), dark);
}

double luminance(const QColor &colour)
{
    const auto part = [](double share) {
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
           0.0722 * part(colour.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [less, more] = std::minmax({luminance(one), luminance(other)});
    return (more + 0.05) / (less + 0.05);
}

const QStringList six{u"A|IŞIK MARKET|10"_s, u"B|Deniz|20"_s,     u"C|ışık büfe|30"_s,
                      u"D|İnci|40"_s,        u"E|Işık Gıda|50"_s, u"F|Deniz|60"_s};
const QStringList three{u"F1|IŞIK MARKET|10,00"_s, u"F2|Deniz Büfe|20,00"_s,
                        u"F3|<Ada & Oğlu>|30,00"_s};

} // namespace

class ListToolsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { dress(false); }

    void aMarkedRowIsSeenHeardAndTold()
    {
        List l(three);
        QVERIFY(!l.view.verticalHeader()->isVisible());
        QList<RowMark> marks{
            {}, {RowMark::Error, u"Tutar <0>\nve boş kod"_s}, {.written = RowMark::Same}};
        l.view.setMarker([&](int row) { return marks[row]; });
        l.view.marksChanged(1);
        QVERIFY(l.view.verticalHeader()->isVisible());

        auto *table = QAccessible::queryAccessibleInterface(&l.view)->tableInterface();
        QCOMPARE(table->cellAt(1, 1)->text(QAccessible::Description),
                 u"Hata: Tutar <0>\nve boş kod"_s);
        QCOMPARE(table->cellAt(0, 1)->text(QAccessible::Description), QString());

        const auto tipAt = [&](QWidget *over) {
            const QPoint place(5, l.view.visualRect(l.grid.index(1, 0)).center().y());
            QHelpEvent help(QEvent::ToolTip, place, over->mapToGlobal(place));
            QApplication::sendEvent(over, &help);
            return QToolTip::text();
        };
        const QString told = u"<qt>Hata: Tutar &lt;0&gt;<br>ve boş kod</qt>"_s;
        QCOMPARE(tipAt(l.view.viewport()), told);
        QCOMPARE(tipAt(l.view.verticalHeader()->viewport()), told);
        marks[1] = {};
        l.view.marksChanged(1);
        tipAt(l.view.viewport());
        QTRY_VERIFY(!QToolTip::isVisible());
        l.view.marksChanged(0);
        QVERIFY(!l.view.verticalHeader()->isVisible());
        QCOMPARE(l.view.markOf(2).kind, RowMark::None);
    }

    void onlyRowsInViewAreAskedForTheirMarks()
    {
        List l(QStringList(20000, three[0]));
        int last = 0;
        l.view.setMarker([&](int row) {
            last = qMax(last, row);
            return RowMark{RowMark::Warning, {}};
        });
        l.view.marksChanged(1);
        l.view.grab();
        QVERIFY(last > 0 && last < 50);
    }

    void lettersStandOutFromTheGroundOfEachMark()
    {
        for (const bool dark : {false, true}) {
            dress(dark);
            const QPalette palette = QApplication::palette();
            for (const auto kind :
                 {RowMark::Warning, RowMark::Error, RowMark::Same, RowMark::Differs}) {
                for (const bool isTicked : {false, true}) {
                    const QColor ground = groundOf(palette, kind, isTicked);
                    QVERIFY(contrast(ground, palette.color(QPalette::Text)) > 4.5);
                    QVERIFY(ground != groundOf(palette, RowMark::None, isTicked));
                }
            }
        }
        QPalette plain(Qt::white, Qt::black);
        plain.setColor(QPalette::Window, Qt::black);
        QVERIFY(!groundOf(plain, RowMark::Error, false).isValid());
    }

    void onlyRowsInSightAreMeantByWhatIsDoneToASelection()
    {
        Screen s(six);
        GridView &list = *s.upper;
        s.l1.setTicked({1, 2}, true);
        list.selectRow(1);
        list.filter({u"ışık"_s, [](int row) {
                         return row % 2 == 0;
                     }});
        QCOMPARE(shown(list), u"A C E"_s);
        QCOMPARE(s.filterText(),
                 u"Süzüldü: ışık • 6 satırdan 3 görünüyor • 1 işaretli satır gizli • "
                 "\"Tümünü Seç\" gizli satırları da kapsar"_s);
        QCOMPARE(list.selectedPositions(), QList<int>());
        QCOMPARE(list.currentIndex().row(), 2); // the next in sight

        s.key(Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(list.currentIndex().row(), 0);
        s.key(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(list.selectedPositions(), (QList<int>{0, 2}));
        s.key(Qt::Key_Space);
        QCOMPARE(ticksOf(s.l1), QList<int>{1}); // C was ticked and leads
        s.key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"A\tIŞIK MARKET\t10\nC\tışık büfe\t30"_s);
        s.key(Qt::Key_A, Qt::ControlModifier);
        s.key(Qt::Key_Space);
        QCOMPARE(ticksOf(s.l1), (QList<int>{0, 1, 2, 4}));
        s.key(Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(list.currentIndex().row(), 4);
        list.markRows({3, 4, 5});
        QCOMPARE(list.selectedPositions(), QList<int>{4});
        list.enter(3);
        QCOMPARE(list.currentIndex().row(), 4);

        s.upper->selectRow(0);
        s.key(Qt::Key_B); // looks for a code, and B is hidden
        s.key(Qt::Key_Space);
        QCOMPARE(ticksOf(s.l1), (QList<int>{1, 2, 4})); // A

        s.l1.setAllTicked(true); // means all rows
        QVERIFY(s.filterText().contains(u"3 işaretli satır gizli"_s));
        s.key(Qt::Key_A, Qt::ControlModifier);
        list.endFilter();
        QCOMPARE(shown(list), u"A B C D E F"_s);
        QCOMPARE(list.selectedPositions(), (QList<int>{0, 2, 4}));
        QCOMPARE(s.filterText(), QString());
    }

    void aFilterOutlivesRemovalsAndEndsWhenItsRowsAreAskedForOrReadAnew()
    {
        Screen s(six);
        GridView &list = *s.upper;
        const auto filter = [&] {
            list.filter({u"Deniz"_s, [&](int row) {
                             return s.l1.cell(row, 1) == u"Deniz";
                         }});
        };
        filter();
        s.l1.keepWhere([](int row) { return row > 1; });
        QCOMPARE(shown(list), u"F"_s);
        s.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(shown(list), u"B F"_s);
        list.goTo(3);
        QCOMPARE(shown(list), u"A B C D E F"_s);
        filter();
        list.markRows({0, 2});
        QCOMPARE(list.selectedPositions(), (QList<int>{0, 2}));
        filter();
        fill(s.l1, {six[1], six[0], six[5], six[2], six[3], six[4]});
        QCOMPARE(shown(list), u"B A F C D E"_s);
        QVERIFY(!list.isFiltered());
        QVERIFY(s.bar->currentMessage().startsWith(u"Liste yeniden okundu"));
    }

    void theMenuFiltersByTheCellThatWasClicked()
    {
        Screen s(six);
        const QPoint place = s.upper->visualRect(s.l1.index(5, 1)).center();
        QTest::mouseClick(s.upper->viewport(), Qt::LeftButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                s.upper->viewport()->mapToGlobal(place));
        QApplication::sendEvent(s.upper->viewport(), &event);
        auto *menu = s.upper->findChild<QMenu *>();
        for (QAction *entry : menu->actions()) {
            if (entry->text() == u"Bu değere göre süz")
                entry->trigger();
        }
        menu->close();
        QCOMPARE(shown(*s.upper), u"B F"_s);
        QVERIFY(s.filterText().startsWith(u"Süzüldü: Unvan: Deniz •"_s));
        QTest::mouseClick(s.get<QPushButton>(u"suzmekaldir"_s), Qt::LeftButton);
        QCOMPARE(shown(*s.upper), u"A B C D E F"_s);
        QVERIFY(s.upper->hasFocus());
    }

    void lettersAreFoundByTheTurkishCase()
    {
        QVERIFY(Needle(u"IŞIK"_s).isIn(u"ışık büfe"_s));
        QVERIFY(Needle(u"ışık"_s).isIn(u"x IŞIK"_s));
        QVERIFY(Needle(u"inci"_s).isIn(u"İNCİ"_s));
        QVERIFY(Needle(u"ĞÜÖÇ"_s).isIn(u"ğüöç"_s));
        QVERIFY(!Needle(u"isik"_s).isIn(u"ISIK"_s));
        QVERIFY(!Needle(u"kk"_s).isIn(u"k"_s));
        QVERIFY(Needle(u"aab"_s).isIn(u"aaab"_s));
        QVERIFY(!Needle(u""_s).isIn(u"a"_s));
    }

    void theSearchGoesAroundCountsTicksAndFilters()
    {
        Screen s(six);
        s.l1.setTicked(3, true);
        s.upper->enter(1);
        s.find(u"IŞIK"_s);
        QCOMPARE(s.upper->currentIndex().row(), 2); // from where the user was
        QCOMPARE(s.upper->selectedPositions(), QList<int>{2});
        QCOMPARE(s.count(), u"2 / 3"_s);
        QSignalSpy moved(s.upper, &GridView::movedTo);
        s.key(Qt::Key_F3);
        s.key(Qt::Key_Return);
        QCOMPARE(s.count(), u"1 / 3"_s);
        s.key(Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(s.upper->currentIndex().row(), 4);
        QCOMPARE(moved.size(), 3);
        s.upper->goTo(1);
        s.key(Qt::Key_F3); // from between two of them
        QCOMPARE(s.count(), u"2 / 3"_s);

        QTest::mouseClick(s.get<QPushButton>(u"bulunanlariisaretle"_s), Qt::LeftButton);
        QCOMPARE(ticksOf(s.l1), (QList<int>{0, 2, 3, 4}));
        QTest::mouseClick(s.get<QCheckBox>(u"suz"_s), Qt::LeftButton, {}, {8, 8});
        QCOMPARE(shown(*s.upper), u"A C E"_s);
        QCOMPARE(s.count(), u"2 / 3"_s);
        QVERIFY(s.filterText().contains(u"1 işaretli satır gizli"_s));
        s.get<QLineEdit>(u"aranan"_s)->setFocus();
        s.type(u" "_s); // goes on filtering
        QCOMPARE(shown(*s.upper), u"A C E"_s);
        s.type(u"b"_s);
        QCOMPARE(shown(*s.upper), u"C"_s);
        s.type(u"q"_s);
        QCOMPARE(s.count(), u"Bulunamadı"_s);
        QVERIFY(!s.get<QPushButton>(u"bulunanlariisaretle"_s)->isEnabled());

        s.key(Qt::Key_Escape);
        QCOMPARE(shown(*s.upper), u"A B C D E F"_s);
        QVERIFY(s.upper->hasFocus());
        QVERIFY(!s.get<QLineEdit>(u"aranan"_s)->isVisible());
        QCOMPARE(s.closings, 0);
        s.key(Qt::Key_Escape);
        QCOMPARE(s.closings, 1);
    }

    void rowsOutOfSightAreNeitherFoundNorTicked()
    {
        Screen s(six);
        s.upper->filter({u"çift"_s, [](int row) {
                             return row % 2 == 1;
                         }});
        s.find(u"deniz"_s);
        QCOMPARE(s.count(), u"1 / 2"_s);
        s.upper->filter({u"tek"_s, [](int row) {
                             return row % 2 == 0 || row == 5;
                         }});
        s.key(Qt::Key_F3);
        QCOMPARE(s.count(), u"1 / 1"_s);
        s.upper->enter(3); // out of sight, as the hit behind it is not
        QCOMPARE(s.upper->currentIndex().row(), 5);
        QTest::mouseClick(s.get<QPushButton>(u"bulunanlariisaretle"_s), Qt::LeftButton);
        QCOMPARE(ticksOf(s.l1), QList<int>{5});
        QVERIFY(!s.get<QCheckBox>(u"suz"_s)->isChecked()); // it is another's filter
    }

    void theListWithTheFocusLastIsSearched()
    {
        Screen s(six);
        fill(s.l2, {u"X|Deniz|1"_s, u"Y|Deniz|2"_s});
        s.find(u"deniz"_s);
        QCOMPARE(s.count(), u"1 / 2"_s);
        QCOMPARE(s.upper->currentIndex().row(), 1);
        s.lower->enter(1);
        s.key(Qt::Key_F3);
        QCOMPARE(s.lower->currentIndex().row(), 0);
        QCOMPARE(s.upper->currentIndex().row(), 1);
        // Hidden columns are none of what is seen, and a list read anew is searched as it now is.
        s.lower->setColumnHidden(1, true);
        fill(s.l2, {u"X|Deniz|1"_s, u"Deniz|Y|2"_s});
        s.key(Qt::Key_F3);
        QCOMPARE(s.count(), u"1 / 1"_s);
        QCOMPARE(s.lower->currentIndex().row(), 1);
        s.lower->hide(); // behind another page
        s.key(Qt::Key_F3);
        QCOMPARE(s.count(), u"2 / 2"_s);
        QCOMPARE(s.upper->currentIndex().row(), 5);
    }

    void cellsWithHeadingsAreRightInASpreadsheet()
    {
        List l({u"00120|a \"b\"\tc|1.250,00"_s, u"1|<x>\ny|1.5"_s, u"2|12,5|007"_s, u"3||-0,5000"_s,
                u"4||12,50 (PKT)"_s, u"5||1234567890123456"_s});
        l.view.selectAll();
        QTest::keyClick(&l.view, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        const QMimeData *copied = QApplication::clipboard()->mimeData();
        QCOMPARE(copied->text(), u"Kod\tUnvan\tTutar\n"
                                 "00120\t\"a \"\"b\"\"\tc\"\t1250,00\n"
                                 "1\t\"<x>\ny\"\t1.5\n"
                                 "2\t12,5\t007\n"
                                 "3\t\t-0,5000\n"
                                 "4\t\t12,50 (PKT)\n"
                                 "5\t\t1234567890123456"_s);
        const QStringList rows = copied->html().split(u"<tr>"_s).sliced(2);
        QCOMPARE(rows.size(), 6);
        const QString text = u"mso-number-format:'\\@'"_s;
        QCOMPARE(rows[0].count(text), 2); // the amount alone is a number
        QVERIFY(rows[0].contains(u"x:num=\"1250.00\""_s));
        QVERIFY(rows[1].contains(u"&lt;x&gt;<br"_s));
        QVERIFY(rows[3].contains(u"x:num=\"-0.5000\""_s));
        for (const int row : {1, 2, 4, 5}) // no plain amounts
            QCOMPARE(rows[row].count(text), 3);
        QTest::keyClick(&l.view, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QApplication::clipboard()->text().startsWith(u"00120\ta \"b\"\tc\t1.250,00\n"_s));
    }

    void eachStepIsTakenBackByItself()
    {
        Screen s(six);
        const auto undo = [&s] {
            s.key(Qt::Key_Z, Qt::ControlModifier);
            return s.bar->currentMessage();
        };
        s.l1.setTag(2, u"yedi"_s);
        s.upper->enter(2);
        s.key(Qt::Key_Space); // C
        s.l1.keepWhere([](int row) { return row == 0 || row == 4; });
        s.key(Qt::Key_A, Qt::ControlModifier);
        s.key(Qt::Key_Space); // A, E
        s.l1.tickWhere([](int row) { return row == 1; });
        QVERIFY_THROWS_EXCEPTION(
            Failure, s.l1.keepWhere([](int row) { return row == 1 ? throw Failure({}) : false; }));
        QCOMPARE(shown(*s.upper), u"E"_s);

        QCOMPARE(undo(), u"Geri alındı: 1 satır"_s);
        QCOMPARE(shown(*s.upper), u"A E"_s);
        QCOMPARE(ticksOf(s.l1), QList<int>{1});
        QCOMPARE(undo(), u"Geri alındı: 1 işaret"_s);
        QCOMPARE(ticksOf(s.l1), (QList<int>{0, 1}));
        QCOMPARE(undo(), u"Geri alındı: 2 işaret"_s);
        QSignalSpy undone(&s.l1, &Grid::undone);
        QCOMPARE(undo(), u"Geri alındı: 4 satır"_s);
        QCOMPARE(undone.size(), 1); // who shows their number shows it again
        QCOMPARE(shown(*s.upper), u"A B C D E F"_s);
        QCOMPARE(s.l1.cell(3, 1), u"İnci"_s);
        QCOMPARE(s.l1.tag(2), u"yedi"_s);
        QCOMPARE(ticksOf(s.l1), QList<int>{2});
        undo();
        QCOMPARE(ticksOf(s.l1), QList<int>());
        QCOMPARE(undo(), u"Geri alınacak bir işaret ya da satır yok."_s);
    }

    void twentyStepsOfBothListsAreKeptUntilTheNextRead()
    {
        Screen s(six);
        fill(s.l2, six);
        const auto undo = [&s] {
            s.key(Qt::Key_Z, Qt::ControlModifier);
        };
        s.l1.setTicked(0, true);
        s.l2.setTicked(0, true);
        s.l1.setTicked(0, true); // changes nothing and is no step
        undo();                  // whichever list has the focus
        QVERIFY(s.l1.ticked(0) && !s.l2.ticked(0));
        for (int i = 0; i < 21; ++i)
            s.l1.setTicked(5, i % 2 == 0);
        for (int i = 0; i < 30; ++i)
            undo();
        QVERIFY(s.l1.ticked(0) && s.l1.ticked(5));

        s.l2.setTicked(1, true);
        s.l1.setTicked(1, true);
        s.field->setFocus();
        s.type(u"x"_s);
        undo(); // what was typed
        QCOMPARE(s.field->text(), QString());
        QVERIFY(s.l1.ticked(1));
        s.upper->enter();
        fill(s.l1, six);
        undo();
        QCOMPARE(ticksOf(s.l1), QList<int>());
        QCOMPARE(ticksOf(s.l2), QList<int>());
    }
};

QTEST_MAIN(ListToolsTest)
#include "tst_listtools.moc"
