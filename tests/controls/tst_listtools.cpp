// What a list can do on every transfer screen, driven by keys and the mouse over a real grid.

#include "controls/gridview.h"
#include "controls/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

using namespace Qt::StringLiterals;
using namespace kervan;

namespace {

QList<GridColumn> columns()
{
    return {{u"Kod"_s}, {u"Unvan"_s}, {u"Tutar"_s, 1440, Qt::AlignRight}};
}

/// A shown list of invoices, the rows given as "code|title|amount".
struct List
{
    Grid grid{columns(), Grid::Tickable};
    GridView view{grid, u"l1"_s};

    explicit List(const QStringList &rows)
    {
        fill(rows);
        view.resize(500, 300);
        view.show();
        if (!QTest::qWaitForWindowActive(&view))
            QTest::qFail("the list is not active", __FILE__, __LINE__);
    }
    void fill(const QStringList &rows)
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
};

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
    const auto [less, more] = std::minmax(luminance(one), luminance(other));
    return (more + 0.05) / (less + 0.05);
}

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
        QList<RowMark> marks{{}, {RowMark::Error, u"Tutar <0>\nve boş kod"_s}, {RowMark::Same, {}}};
        l.view.setMarker([&](int row) { return marks[row]; });
        l.view.marksChanged(true);
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
        l.view.marksChanged(true);
        tipAt(l.view.viewport());
        QTRY_VERIFY(!QToolTip::isVisible());
        l.view.marksChanged(false);
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
        l.view.marksChanged(true);
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
};

QTEST_MAIN(ListToolsTest)
#include "tst_listtools.moc"
