#include "controls/gridview.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QSet>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int twipsPerPixel = 15;
constexpr int rowsLookedAt = 200; // for the width of a column
constexpr int widestColumn = 420;

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
}

void GridView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void GridView::fitColumns()
{
    if (m_fitted || m_grid.isEmpty())
        return;
    m_fitted = true;
    for (int column = 0; column < m_grid.columnCount(); ++column) {
        const int wanted =
            qMax(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column)) + 8;
        setColumnWidth(column, qMin(wanted, widestColumn));
    }
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
    const int before = currentIndex().row();
    QTableView::keyPressEvent(event);
    const int now = currentIndex().row();
    if (now >= 0 && now != before)
        Q_EMIT movedTo(now);
}

// Whole rows are chosen, so no single cell is to stand out.
void GridView::initViewItemOption(QStyleOptionViewItem *option) const
{
    QTableView::initViewItemOption(option);
    if (selectionBehavior() == SelectRows)
        option->state &= ~QStyle::State_HasFocus;
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
