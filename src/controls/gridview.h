#pragma once

#include "base/grid.h"
#include "controls/rowmarks.h"

#include <QBitArray>
#include <QSet>
#include <QTableView>

#include <functional>

namespace kervan {

class FrozenHeader;

/// A list over a Grid: whole rows are selected, the blank key ticks them, Ctrl+C copies them as
/// tab-separated text, a menu offers this too, and the columns fit their contents at the first
/// fill. What the user makes of the columns is there again when the list is shown the next time.
class GridView : public QTableView
{
    Q_OBJECT

public:
    GridView(Grid &grid, const QString &name, QWidget *parent = nullptr);

    /// What an empty list says.
    void setEmptyText(const QString &text);
    const QString &emptyText() const { return m_emptyText; }
    /// Selects these rows and no others, and makes the first of them visible. Those that a filter
    /// hides are left out; if it hides them all, it ends.
    void markRows(const QList<int> &rows);
    /// The rows in sight that are selected, rising. The selection itself may reach over hidden
    /// ones.
    QList<int> selectedPositions() const;
    enum class Headings { Without, With };
    /// Copies the selected rows in sight; with headings, in a form that spreadsheets take.
    void copySelection(Headings headings = Headings::Without);
    /// The first columns stay in view while the others are scrolled.
    void freeze(int columns);
    /// Rows with the same text in this column belong to one customer.
    void setCustomerColumn(int column) { m_customerColumn = column; }
    /// An empty list takes only the room of what it says.
    void shrinkWhenEmpty();
    /// These columns share the room that the others leave, as far as their contents need it.
    void spread(const QList<int> &columns) { m_spread = columns; }
    /// Takes the focus with this row, or its first one; it is not selected by that. For a row that
    /// a filter hides, it is the first selected one, or the next in sight.
    void enter(int row = -1);
    Grid &grid() const { return m_grid; }
    bool isTickable() const { return m_grid.isTickable(); }
    bool isTicked(int row) const;
    /// Goes to a row and a cell of it, and selects the row; a filter that hides it ends.
    void goTo(int row, int column = 0);
    /// Shows only some of the rows: those that `shows` answers true for, in one walk when it is set
    /// and after rows went or came back. `what` tells the user which: "\"IŞIK\" geçenler". There is
    /// one at a time, and it ends when the list is read anew. The grid knows nothing of it.
    struct Filter
    {
        QString what;
        std::function<bool(int row)> shows;
    };
    void filter(Filter filter);
    void endFilter();
    /// What `shows` answers has changed.
    void refilter();
    bool isFiltered() const { return m_filter.shows != nullptr; }
    const QString &filteredBy() const { return m_filter.what; }
    bool isShown(int row) const;
    int shownRows() const;
    int hiddenTicks() const;
    /// The menu offers to show the rows with the value of a cell; where something on the screen
    /// tells that rows are hidden.
    void offerFilter() { m_offersFilter = true; }
    /// Tells the mark of a row; it is asked for rows in view, often, and always with the rows as
    /// they are now. Nothing is shown of it before `marksChanged`.
    void setMarker(std::function<RowMark(int row)> marker);
    /// Marks came, went or changed; the column in front of the list has room for so many pictures
    /// side by side, and is away where there are none.
    void marksChanged(int pictures);
    RowMark markOf(int row) const;
    /// What tints the row, asked once for all its cells while the list is painted.
    RowMark::Kind groundOfRow(int row) const;
    /// Shows the text of a row's mark, or takes away what is shown.
    void showMarkText(const QPoint &globalPlace, int row);
    /// Keeps the current row in view where the list has less room than before.
    void showCurrentRow();
    /// Its height with so many rows, its headings and its scroll bar.
    int heightWith(int rows) const;

    QModelIndex indexAt(const QPoint &point) const override;
    QRect visualRect(const QModelIndex &index) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The current row was moved by a key, or by the mouse otherwise than by a click, which is told
    /// of as such.
    void movedTo(int row);
    /// Rows were hidden or shown, or the filter ended.
    void filterChanged();
    /// So many rows went to the clipboard with their headings.
    void copiedAsSheet(int rows);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void describe();
    int leastHeight() const;
    void paintFrozen(QPainter &painter, const QRect &area);
    QList<int> copiedColumns(int row) const;
    void copyAsSheet(const QList<int> &rows) const;
    void hideRows(QBitArray hidden);
    void filterAfterReset();
    int nearestShown(int row) const;
    QItemSelection rangesOf(const QList<int> &rows) const;
    bool isAlternate(int row) const;
    void tickRows(bool tick);
    void tickCustomer();
    void filterByCell(const QModelIndex &index);
    void showColumnMenu(const QPoint &place);
    QString memoryKey(QStringView what) const;
    void recallColumns();
    void keepColumns() const;
    void tickSelection();
    void moveByKey(QKeyEvent *event);
    void paintCurrentRow(QPainter &painter);
    void fitColumns();
    void spreadColumns();

    Grid &m_grid;
    QString m_emptyText;
    FrozenHeader *m_header;
    MarkHeader *m_marks;
    int m_customerColumn = -1;
    int m_rowAtPress = -1;
    bool m_shrinks = false;
    bool m_recalled = false;
    QSet<int> m_hiddenByUser;
    bool m_fitted = false;
    bool m_fitting = false;
    QList<int> m_spread;
    bool m_isRefilled = false; // just now
    Filter m_filter;
    int m_filling = 0;      // of the grid, when the filter was set
    QBitArray m_outOfSight; // by row, those that it hides
    bool m_offersFilter = false;
    std::function<RowMark(int row)> m_marker;
    bool m_hasMarks = false;
    mutable int m_paintedRow = -1;
    mutable RowMark::Kind m_paintedGround = RowMark::None;
    QSet<int> m_setByUser; // columns whose width the user has set
};

} // namespace kervan
