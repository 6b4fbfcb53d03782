#include "check/rememberedticks.h"

#include <QSet>

#include <algorithm>

namespace kervan {

namespace {

QString keyOf(const Grid &list, int row, const ListShape &shape)
{
    const auto cell = [&](int column) {
        return column >= 0 && column < list.columnCount() ? list.cell(row, column).trimmed()
                                                          : QString();
    };
    if (shape.number >= 0 && !shape.renumbered)
        return cell(shape.number);
    return cell(shape.date) + u'\n' + cell(shape.customer) + u'\n' +
           cell(shape.amounts.value(0, -1));
}

} // namespace

void RememberedTicks::take(const Grid &list, const ListShape &shape)
{
    m_rows.clear();
    m_places.clear();
    for (int row = 0; row < list.rows(); ++row) {
        if (!list.ticked(row))
            continue;
        const auto number = static_cast<int>(m_rows.size());
        Alike &alike = m_rows[keyOf(list, row, shape)];
        if (alike.ticked++ == 0)
            alike.number = number;
    }
    for (int row = 0; !m_rows.isEmpty() && row < list.rows(); ++row) {
        if (const auto at = m_rows.find(keyOf(list, row, shape)); at != m_rows.end())
            ++at->count;
    }
    QHash<int, int> seen;
    const bool someAreApart =
        std::ranges::any_of(m_rows, [](const Alike &alike) { return alike.ticked < alike.count; });
    for (int row = 0; someAreApart && row < list.rows(); ++row) {
        const auto at = m_rows.constFind(keyOf(list, row, shape));
        if (at == m_rows.cend() || at->ticked == at->count)
            continue;
        const int place = seen[at->number]++;
        if (list.ticked(row))
            m_places[at->number] << place;
    }
}

QList<int> RememberedTicks::in(const Grid &list, const ListShape &shape) const
{
    QList<int> rows;
    QList<int> seen(m_rows.size());
    QHash<int, QList<int>> apart; // rows of the kinds of which some were ticked
    QHash<int, int> counts;       // of these, then
    for (int row = 0; !m_rows.isEmpty() && row < list.rows(); ++row) {
        const auto at = m_rows.constFind(keyOf(list, row, shape));
        if (at == m_rows.cend())
            continue;
        if (at->ticked < at->count) {
            apart[at->number] << row;
            counts[at->number] = at->count;
        } else if (seen[at->number]++ < at->ticked && !list.ticked(row)) {
            rows << row;
        }
    }
    for (auto at = apart.cbegin(); at != apart.cend(); ++at) {
        if (at->size() != counts.value(at.key()))
            continue; // nobody knows which of them it was
        for (const int place : m_places.value(at.key())) {
            if (!list.ticked(at->at(place)))
                rows << at->at(place);
        }
    }
    std::ranges::sort(rows);
    return rows;
}

void RememberedTicks::forget(const Grid &list, int row, const ListShape &shape)
{
    const auto at = m_rows.find(keyOf(list, row, shape));
    if (at != m_rows.end() && at->count == 1)
        at->ticked = 0;
}

void RememberedTicks::giveBack(Grid &list, const ListShape &shape) const
{
    const QList<int> rows = in(list, shape);
    const QSet<int> back(rows.begin(), rows.end());
    list.tickWhere([&](int row) { return list.ticked(row) || back.contains(row); });
}

} // namespace kervan
