#include "controls/gridview.h"

#include <QHeaderView>
#include <QSignalBlocker>

namespace kervan {

// Rows that a list does not show for a while. They stay rows of its grid, with their numbers and
// ticks; what the user does to a selection is meant for those in sight.

bool GridView::isShown(int row) const
{
    return row >= m_outOfSight.size() || !m_outOfSight.testBit(row);
}

void GridView::filter(Filter filter)
{
    m_filter = std::move(filter);
    m_filling = m_grid.filling();
    refilter();
}

void GridView::endFilter()
{
    if (!isFiltered())
        return;
    m_filter = {};
    hideRows({});
    Q_EMIT filterChanged();
}

void GridView::refilter()
{
    if (!isFiltered())
        return;
    QBitArray hidden(m_grid.rows());
    for (int row = 0; row < m_grid.rows(); ++row)
        hidden.setBit(row, !m_filter.shows(row));
    hideRows(std::move(hidden));
    Q_EMIT filterChanged();
}

// Rows that went or came back leave a filter as it is; those of another reading were never asked
// for by it.
void GridView::filterAfterReset()
{
    if (isFiltered() && m_filling == m_grid.filling())
        return refilter();
    if (m_outOfSight.size() > 0)
        hideRows({});
    endFilter();
}

// The header tells of each row by itself, and the table would lay itself out as often.
void GridView::hideRows(QBitArray hidden)
{
    const QList<int> selected = selectedPositions();
    m_outOfSight = std::move(hidden);
    {
        const QSignalBlocker quiet(verticalHeader());
        verticalHeader()->setUpdatesEnabled(false);
        for (int row = 0; row < m_grid.rows(); ++row) {
            if (isRowHidden(row) == isShown(row))
                verticalHeader()->setSectionHidden(row, !isShown(row));
        }
        verticalHeader()->setUpdatesEnabled(true);
    }
    updateGeometries();
    viewport()->update();
    if (selectionModel()->hasSelection())
        selectionModel()->select(rangesOf(selected), QItemSelectionModel::ClearAndSelect);
    const QModelIndex current = currentIndex();
    if (current.isValid() && !isShown(current.row()))
        selectionModel()->setCurrentIndex(
            m_grid.index(nearestShown(current.row()), current.column()),
            QItemSelectionModel::NoUpdate);
}

int GridView::nearestShown(int row) const
{
    for (int below = row; below < m_grid.rows(); ++below) {
        if (isShown(below))
            return below;
    }
    for (int above = row; above >= 0; --above) {
        if (isShown(above))
            return above;
    }
    return -1;
}

int GridView::shownRows() const
{
    return m_grid.rows() - static_cast<int>(m_outOfSight.count(true));
}

int GridView::hiddenTicks() const
{
    int ticks = 0;
    for (int row = 0; row < qMin<qsizetype>(m_outOfSight.size(), m_grid.rows()); ++row) {
        if (m_outOfSight.testBit(row) && m_grid.ticked(row))
            ++ticks;
    }
    return ticks;
}

// In ranges, since a selection of thousands of single rows is slow at everything.
QItemSelection GridView::rangesOf(const QList<int> &rows) const
{
    QItemSelection ranges;
    const int last = m_grid.columnCount() - 1;
    for (const int row : rows) {
        if (!isShown(row))
            continue;
        const QModelIndex end = m_grid.index(row, last);
        if (!ranges.isEmpty() && ranges.last().bottom() == row - 1)
            ranges.last() = QItemSelectionRange(ranges.last().topLeft(), end);
        else
            ranges.append(QItemSelectionRange(m_grid.index(row, 0), end));
    }
    return ranges;
}

} // namespace kervan
