#include "base/grid.h"

#include <utility>

namespace kervan {

// What was done to a list, and the way back. Ticks are kept as bits, and rows as they were taken
// out, so that each row of a source is held once, in the list or in a step.

namespace {

constexpr int mostSteps = 20;

quint64 now()
{
    static quint64 steps = 0;
    return ++steps;
}

} // namespace

void Grid::remember(QBitArray turned, QList<Taken> taken)
{
    if (!m_remembers || (turned.count(true) == 0 && taken.isEmpty()))
        return;
    if (m_steps.size() == mostSteps)
        m_steps.removeFirst();
    m_steps.append({now(), std::move(turned), std::move(taken)});
}

void Grid::turn(const QBitArray &turned)
{
    int first = -1;
    int last = -1;
    for (int row = 0; row < turned.size(); ++row) {
        if (!turned.testBit(row))
            continue;
        m_rows[row].ticked = !m_rows[row].ticked;
        first = first < 0 ? row : first;
        last = row;
    }
    if (first >= 0)
        changed(first, last, 0, 0);
}

void Grid::putBack(QList<Taken> taken)
{
    const Refill refill(*this);
    QList<Row> all;
    all.reserve(m_rows.size() + taken.size());
    auto next = m_rows.begin();
    for (Taken &back : taken) {
        while (all.size() < back.place)
            all.append(std::move(*next++));
        all.append(std::move(back.row));
    }
    while (next != m_rows.end())
        all.append(std::move(*next++));
    m_rows = std::move(all);
}

std::optional<Grid::Undone> Grid::undo()
{
    if (m_steps.isEmpty())
        return std::nullopt;
    Step step = m_steps.takeLast();
    const Undone back{.ticks = static_cast<int>(step.turned.count(true)),
                      .rows = static_cast<int>(step.taken.size()),
                      .firstRow = step.taken.isEmpty() ? 0 : step.taken.first().place};
    turn(step.turned);
    if (back.rows > 0)
        putBack(std::move(step.taken));
    Q_EMIT undone();
    return back;
}

} // namespace kervan
