#pragma once

#include "base/grid.h"

namespace kervan {

/// Cells of a row, joined by "|".
inline QString cells(const Grid &grid, int row, const QList<int> &columns)
{
    QStringList texts;
    for (const int column : columns)
        texts << grid.cell(row, column);
    return texts.join(u'|');
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
