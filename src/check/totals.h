#pragma once

#include "base/grid.h"
#include "check/decimal.h"
#include "check/listshape.h"

#include <QBitArray>
#include <QObject>
#include <QStringList>

#include <functional>

namespace kervan {

/// What some rows of a list come to.
struct RowSums
{
    int rows = 0;
    int belowLimit = 0;
    QList<Decimal> amounts; ///< one to each column of amounts of the list's shape
    int unreadable = 0;     ///< cells of them that spell no amount, and are in no sum

    bool operator==(const RowSums &) const = default;
};

/// What a list comes to, of its cells as they are shown. A tick costs as much as its row has
/// amounts, however long the list is: sums run along, and of the rows only their ticks are kept.
class Totals : public QObject
{
    Q_OBJECT

public:
    /// `shape` is asked again whenever rows are others.
    Totals(Grid &list, std::function<ListShape()> shape, QObject *parent = nullptr);

    /// Which rows lie below a limit; one for which it throws a Failure does not.
    void setBelowLimit(std::function<bool(int row)> isBelow);

    /// Of the rows that go into a document: the ticked ones, or all of a list without ticks.
    const RowSums &taken() const;
    bool isTickable() const { return m_list.isTickable(); }
    /// Of the rows for which `rows` gives ranges, the first and the last of each.
    RowSums of(const QList<std::pair<int, int>> &rows) const;

    /// The sum of the first column of amounts in words, in cents: "12.345,67"; where there are
    /// more, with its heading.
    QString told(const RowSums &sums) const;
    /// All sums, exact, each behind the heading of its column.
    QStringList amountsOf(const RowSums &sums) const;
    /// The whole list in words: how many rows, how many go into a document with their sums, how
    /// many lie below the limit, how many amounts can't be read. An empty list says nothing.
    QStringList told() const;
    QString toldOfSelected(const RowSums &sums) const;

Q_SIGNALS:
    /// Rows, ticks or amounts are others; once for each change.
    void changed();

private:
    enum class Way { In, Out };
    RowSums none() const;
    void count(RowSums &sums, int row, Way way) const;
    void follow(const QModelIndex &first, const QModelIndex &last);
    QString headingOf(qsizetype amount) const;
    void recount() const;
    void forget();

    Grid &m_list;
    std::function<ListShape()> m_shapeOf;
    std::function<bool(int row)> m_isBelow;
    // Brought up to date when it is asked for: reading a list does not wait for it.
    mutable ListShape m_shape;
    mutable RowSums m_taken;
    mutable QBitArray m_ticks; // as they are counted in m_taken
    mutable bool m_isCounted = false;
};

} // namespace kervan
