#pragma once

#include "base/grid.h"

#include <numeric>

namespace kervan {

/// Cells of a row, joined by "|".
inline QString cells(const Grid &grid, int row, const QList<int> &columns)
{
    QStringList texts;
    for (const int column : columns)
        texts << grid.cell(row, column);
    return texts.join(u'|');
}

/// The first cells of a row, or all, joined by "|".
inline QString rowOf(const Grid &grid, int row, int columns = -1)
{
    QList<int> first(columns < 0 ? grid.columnCount() : columns);
    std::iota(first.begin(), first.end(), 0);
    return cells(grid, row, first);
}

/// All rows of a grid, one a line.
inline QString textOf(const Grid &grid)
{
    QStringList rows;
    for (int row = 0; row < grid.rows(); ++row)
        rows << rowOf(grid, row);
    return rows.join(u'\n');
}

/// One column of all rows, joined by ",".
inline QString column(const Grid &grid, int column)
{
    QStringList texts;
    for (int row = 0; row < grid.rows(); ++row)
        texts << grid.cell(row, column);
    return texts.join(u',');
}

} // namespace kervan
