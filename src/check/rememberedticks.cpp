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
    if (list.tickedCount() == 0)
        return;
    for (int row = 0; row < list.rows(); ++row) {
        Alike &alike = m_rows[keyOf(list, row, shape)];
        if (list.ticked(row))
            alike.ticked << alike.count;
        ++alike.count;
    }
    m_rows.removeIf([](const auto &at) { return at.value().ticked.isEmpty(); });
}

QList<int> RememberedTicks::in(const Grid &list, const ListShape &shape) const
{
    if (m_rows.isEmpty())
        return {};
    QHash<QString, QList<int>> found;
    for (int row = 0; row < list.rows(); ++row) {
        const QString key = keyOf(list, row, shape);
        if (m_rows.contains(key))
            found[key] << row;
    }
    QList<int> rows;
    for (auto at = found.cbegin(); at != found.cend(); ++at) {
        const Alike &alike = m_rows[at.key()];
        const bool wereAll = alike.ticked.size() == alike.count;
        if (!wereAll && at->size() != alike.count)
            continue; // nobody knows which of them it was
        for (const int place : alike.ticked) {
            if (place < at->size() && !list.ticked(at->at(place)))
                rows << at->at(place);
        }
    }
    std::ranges::sort(rows);
    return rows;
}

void RememberedTicks::giveBack(Grid &list, const ListShape &shape) const
{
    const QList<int> rows = in(list, shape);
    const QSet<int> back(rows.begin(), rows.end());
    list.tickWhere([&](int row) { return list.ticked(row) || back.contains(row); });
}

} // namespace kervan
