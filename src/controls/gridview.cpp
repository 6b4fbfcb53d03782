#include "controls/gridview.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int twipsPerPixel = 15;
constexpr int rowsLookedAt = 200; // for the width of a column
constexpr int widestColumn = 420;

// Where whole rows are chosen, no single cell stands out.
class RowDelegate : public QStyledItemDelegate
{
public:
    explicit RowDelegate(GridView *view)
        : QStyledItemDelegate(view)
        , m_view(view)
    {
    }
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        QStyleOptionViewItem shown = option;
        if (m_view->selectionBehavior() == QAbstractItemView::SelectRows)
            shown.state &= ~QStyle::State_HasFocus;
        QStyledItemDelegate::paint(painter, shown, index);
    }

private:
    GridView *m_view;
};

} // namespace

GridView::GridView(Grid &grid, const QString &name, QWidget *parent)
    : QTableView(parent)
    , m_grid(grid)
{
    setObjectName(name);
    setModel(&grid);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setEditTriggers(NoEditTriggers);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setResizeContentsPrecision(rowsLookedAt);
    for (int column = 0; column < grid.columnCount(); ++column)
        setColumnWidth(column, grid.columns()[column].twips / twipsPerPixel);
    connect(&grid, &QAbstractItemModel::modelReset, this, &GridView::fitColumns);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        if (m_fitted && !m_fitting)
            m_setByUser << column;
    });
    setItemDelegate(new RowDelegate(this));
}

void GridView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

// The first fill fits the columns; later ones only widen them, and never one that the user has set.
void GridView::fitColumns()
{
    if (m_grid.isEmpty())
        return;
    m_fitting = true;
    for (int column = 0; column < m_grid.columnCount(); ++column) {
        const int contents =
            qMax(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column)) + 8;
        const int wanted = qMin(contents, widestColumn);
        if (!m_setByUser.contains(column) && (!m_fitted || wanted > columnWidth(column)))
            setColumnWidth(column, wanted);
    }
    m_fitting = false;
    m_fitted = true;
}

QList<int> GridView::selectedPositions() const
{
    QSet<int> rows;
    for (const QItemSelectionRange &range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows << row;
    }
    QList<int> sorted = rows.values();
    std::ranges::sort(sorted);
    return sorted;
}

void GridView::markRows(const QList<int> &rows)
{
    QItemSelection marked;
    const int last = m_grid.columnCount() - 1;
    for (const int row : rows) {
        const QModelIndex first = m_grid.index(row, 0);
        if (!marked.isEmpty() && marked.last().bottom() == row - 1)
            marked.last() = QItemSelectionRange(marked.last().topLeft(), m_grid.index(row, last));
        else
            marked.append(QItemSelectionRange(first, m_grid.index(row, last)));
    }
    selectionModel()->select(marked, QItemSelectionModel::Select);
    if (!rows.isEmpty())
        scrollTo(m_grid.index(rows.first(), 0), PositionAtCenter);
}

void GridView::copySelection() const
{
    QStringList lines;
    for (const int row : selectedPositions()) {
        QStringList cells;
        for (int column = 0; column < m_grid.columnCount(); ++column) {
            if (!isColumnHidden(column) && selectionModel()->isSelected(m_grid.index(row, column)))
                cells << m_grid.cell(row, column);
        }
        lines << cells.join(u'\t');
    }
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

// All selected rows take the state that the current one does not have.
void GridView::tickSelection()
{
    const QList<int> rows = selectedPositions();
    if (rows.isEmpty())
        return;
    const int leading = rows.contains(currentIndex().row()) ? currentIndex().row() : rows.first();
    const bool tick = !m_grid.ticked(leading);
    for (const int row : rows)
        m_grid.setTicked(row, tick);
}

void GridView::keyPressEvent(QKeyEvent *event)
{
    const bool tickable = m_grid.flags(m_grid.index(0, 0)).testFlag(Qt::ItemIsUserCheckable);
    if (event->matches(QKeySequence::Copy))
        copySelection();
    else if (event->key() == Qt::Key_Space && tickable)
        tickSelection();
    else
        moveByKey(event);
}

void GridView::moveByKey(QKeyEvent *event)
{
    const bool isMove = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (isMove && selectionBehavior() == SelectRows && currentIndex().isValid() &&
        selectionModel()->selection().isEmpty()) {
        selectRow(currentIndex().row()); // the first key chooses, the next ones move
        Q_EMIT movedTo(currentIndex().row());
        return;
    }
    const int before = currentIndex().row();
    QTableView::keyPressEvent(event);
    const int now = currentIndex().row();
    if (now >= 0 && now != before)
        Q_EMIT movedTo(now);
}

void GridView::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (!m_grid.isEmpty() || m_emptyText.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(20, 20, -20, -20),
                     Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
}

} // namespace kervan
