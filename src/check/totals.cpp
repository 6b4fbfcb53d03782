#include "check/totals.h"

#include "base/failure.h"

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

Totals::Totals(Grid &list, std::function<ListShape()> shape, QObject *parent)
    : QObject(parent)
    , m_list(list)
    , m_shapeOf(std::move(shape))
{
    connect(&list, &QAbstractItemModel::modelReset, this, &Totals::forget);
    connect(&list, &QAbstractItemModel::rowsInserted, this, &Totals::forget);
    connect(&list, &QAbstractItemModel::rowsRemoved, this, &Totals::forget);
    connect(&list, &QAbstractItemModel::dataChanged, this, &Totals::follow);
}

void Totals::setBelowLimit(std::function<bool(int row)> isBelow)
{
    m_isBelow = std::move(isBelow);
    forget();
}

const RowSums &Totals::taken() const
{
    if (!m_isCounted)
        recount();
    return m_taken;
}

RowSums Totals::none() const
{
    RowSums sums;
    sums.amounts.resize(m_shape.amounts.size());
    return sums;
}

RowSums Totals::of(const QList<std::pair<int, int>> &rows) const
{
    if (!m_isCounted)
        recount();
    RowSums sums = none();
    for (const auto &[first, last] : rows) {
        for (int row = first; row <= std::min(last, m_list.rows() - 1); ++row)
            count(sums, row, Way::In);
    }
    return sums;
}

void Totals::count(RowSums &sums, int row, Way way) const
{
    const int by = way == Way::In ? 1 : -1;
    sums.rows += by;
    for (qsizetype i = 0; i < m_shape.amounts.size(); ++i) {
        const int column = m_shape.amounts[i];
        const auto amount = column < m_list.columnCount()
                                ? Decimal::ofCell(m_list.cell(row, column))
                                : std::nullopt;
        if (!amount)
            sums.unreadable += by;
        else if (way == Way::In)
            sums.amounts[i] += *amount;
        else
            sums.amounts[i] -= *amount;
    }
    if (m_isBelow)
        passOver([&] { sums.belowLimit += m_isBelow(row) ? by : 0; });
}

void Totals::recount() const
{
    const int rows = m_list.rows();
    const bool tickable = isTickable();
    m_shape = m_shapeOf();
    m_taken = none();
    m_ticks.fill(false, rows);
    for (int row = 0; row < rows; ++row) {
        if (tickable && !m_list.ticked(row))
            continue;
        m_ticks.setBit(row);
        count(m_taken, row, Way::In);
    }
    m_isCounted = true;
}

void Totals::forget()
{
    m_isCounted = false;
    Q_EMIT changed();
}

// A tick is told by the first column alone. What an amount was before it changed nobody knows.
void Totals::follow(const QModelIndex &first, const QModelIndex &last)
{
    if (!m_isCounted) {
        Q_EMIT changed();
        return;
    }
    const bool isOfAmounts = std::ranges::any_of(m_shape.amounts, [&](int column) {
        return first.column() <= column && column <= last.column();
    });
    if (isOfAmounts || (m_isBelow && last.column() > 0)) // what a limit looks at isn't known
        return forget();
    if (first.column() > 0)
        return;
    if (isTickable()) {
        for (int row = first.row(); row <= last.row(); ++row) {
            const bool ticked = m_list.ticked(row);
            if (ticked == m_ticks.testBit(row))
                continue;
            m_ticks.setBit(row, ticked);
            count(m_taken, row, ticked ? Way::In : Way::Out);
        }
    }
    Q_EMIT changed();
}

namespace {

constexpr int cents = 2;

QString counted(int number)
{
    return Decimal::ofCell(QString::number(number))->text(0);
}

} // namespace

QString Totals::headingOf(qsizetype amount) const
{
    const int column = m_shape.amounts[amount];
    return column < m_list.columnCount() ? m_list.columns()[column].heading : QString();
}

QStringList Totals::amountsOf(const RowSums &sums) const
{
    QStringList amounts;
    for (qsizetype i = 0; i < sums.amounts.size(); ++i) {
        amounts
            << u"%1 %2"_s.arg(headingOf(i), sums.amounts[i].text(isTickable() ? 2 : 0)).trimmed();
    }
    return amounts;
}

// The only amount of a document is what the list is about, and needs no heading; one of several
// does, and a count's quantity.
QString Totals::told(const RowSums &sums) const
{
    if (sums.amounts.isEmpty())
        return {};
    if (!isTickable())
        return amountsOf(sums).constFirst();
    const QString sum = sums.amounts.first().rounded(cents).text();
    return sums.amounts.size() == 1 ? sum : u"%1 %2"_s.arg(headingOf(0), sum).trimmed();
}

QStringList Totals::told() const
{
    if (m_list.isEmpty())
        return {};
    const RowSums sums = taken();
    QStringList parts{u"%1 %2"_s.arg(counted(m_list.rows()), m_shape.what)};
    if (!isTickable())
        parts += QStringList(told(sums));
    else if (sums.rows == 0)
        parts << u"işaretli yok"_s;
    else
        parts << u"%1 işaretli %2"_s.arg(counted(sums.rows), told(sums)).trimmed();
    if (m_isBelow && sums.rows > 0)
        parts << u"%1 kasa sınırı altında"_s.arg(counted(sums.belowLimit));
    if (sums.unreadable > 0)
        parts << u"%1 %2 okunamadı"_s.arg(counted(sums.unreadable), m_shape.amountIs);
    return parts;
}

QString Totals::toldOfSelected(const RowSums &sums) const
{
    QString text = u"vurgulu %1 satır %2"_s.arg(counted(sums.rows), told(sums)).trimmed();
    if (sums.unreadable > 0)
        text += u" (%1 %2 okunamadı)"_s.arg(counted(sums.unreadable), m_shape.amountIs);
    return text;
}

} // namespace kervan
