#pragma once

#include "base/grid.h"
#include "check/listshape.h"

#include <QHash>
#include <QString>

namespace kervan {

/// Which rows of a list were ticked, told again in a list that was read anew: by their number, and
/// where each read gives new numbers by date, customer and amount. Of rows that look alike, those
/// at the same places among them. It ticks nothing by itself.
class RememberedTicks
{
public:
    /// Remembers the ticked rows, and no others any more.
    void take(const Grid &list, const ListShape &shape);
    bool isEmpty() const { return m_rows.isEmpty(); }

    /// The rows of this list that were ticked then and are not now.
    QList<int> in(const Grid &list, const ListShape &shape) const;
    /// The user has decided on this row anew; one that others look like is left as it was.
    void forget(const Grid &list, int row, const ListShape &shape);
    /// Ticks them too, and leaves the other ticks as they are.
    void giveBack(Grid &list, const ListShape &shape) const;

private:
    /// Rows that look alike; of most there is one.
    struct Alike
    {
        int number = 0; ///< of this kind among all
        int count = 0;
        int ticked = 0;
    };

    QHash<QString, Alike> m_rows;
    QHash<int, QList<int>> m_places; ///< of the ticked ones, where some are and some are not
};

} // namespace kervan
