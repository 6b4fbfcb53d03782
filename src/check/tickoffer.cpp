#include "check/tickoffer.h"

#include <algorithm>

namespace kervan {

TickOffer::TickOffer(Grid &list, std::function<ListShape()> shape, QObject *parent)
    : QObject(parent)
    , m_list(list)
    , m_shape(std::move(shape))
{
    connect(&list, &Grid::aboutToClear, this, [this] {
        // A read that follows another leaves what stood before both.
        if (std::exchange(m_isTouched, false))
            m_ticks.take(m_list, m_shape());
    });
    connect(&list, &QAbstractItemModel::modelReset, this, &TickOffer::forgetRows);
    connect(&list, &QAbstractItemModel::rowsInserted, this, &TickOffer::forgetRows);
    connect(&list, &QAbstractItemModel::rowsRemoved, this, &TickOffer::forgetRows);
    connect(&list, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last) {
                if (first.column() > 0)
                    return;
                m_isTouched = true;
                forgetTicked(first.row(), last.row());
                Q_EMIT changed();
            });
}

// A row that is ticked again and then not is meant so.
void TickOffer::forgetTicked(int first, int last)
{
    if (rows() == 0)
        return;
    const ListShape shape = m_shape();
    const auto isTicked = [this](int row) {
        return m_list.ticked(row);
    };
    for (const int row : std::as_const(*m_found)) {
        if (first <= row && row <= last && isTicked(row))
            m_ticks.forget(m_list, row, shape);
    }
    m_found->removeIf(isTicked);
}

int TickOffer::rows() const
{
    if (m_ticks.isEmpty())
        return 0;
    if (!m_found)
        m_found = m_ticks.in(m_list, m_shape());
    return static_cast<int>(m_found->size());
}

void TickOffer::accept()
{
    m_ticks.giveBack(m_list, m_shape());
}

RememberedTicks TickOffer::ticks() const
{
    if (!m_isTouched)
        return m_ticks;
    RememberedTicks ticks;
    ticks.take(m_list, m_shape());
    return ticks;
}

void TickOffer::set(const RememberedTicks &ticks)
{
    m_ticks = ticks;
    m_isTouched = false;
    forgetRows();
}

void TickOffer::forgetRows()
{
    m_found.reset();
    Q_EMIT changed();
}

} // namespace kervan
