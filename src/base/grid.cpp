#include "base/grid.h"

#include "base/failure.h"

#include <algorithm>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// By themselves, so that looking for a fault costs each cell next to nothing.
[[noreturn, gnu::cold]] void failWithoutRow(int row)
{
    throw Failure(u"Listede %1. satır yok."_s.arg(row + 1));
}

[[noreturn, gnu::cold]] void failWithoutColumn(int column)
{
    throw Failure(u"Listede %1 numaralı sütun yok."_s.arg(column));
}

} // namespace

Grid::Grid(QList<GridColumn> columns, Kind kind, QObject *parent)
    : QAbstractTableModel(parent)
    , m_columns(std::move(columns))
    , m_kind(kind)
{
}

const Grid::Row &Grid::at(int row) const
{
    if (row < 0 || row >= rows())
        failWithoutRow(row);
    return m_rows[row];
}

Grid::Row &Grid::at(int row)
{
    return const_cast<Row &>(std::as_const(*this).at(row));
}

void Grid::checkColumn(int column) const
{
    if (column < 0 || column >= m_columns.size())
        failWithoutColumn(column);
}

int Grid::addRow(const QString &text)
{
    const int row = rows();
    if (m_refills == 0)
        beginInsertRows({}, row, row);
    // The rows of a list are alike: room for as many cells as the one before has.
    const qsizetype likely = row == 0 ? m_columns.size() : m_rows.last().cells.size();
    Row &added = m_rows.emplaceBack();
    added.cells.reserve(likely);
    added.cells << text;
    if (m_refills == 0)
        endInsertRows();
    return row;
}

const QString &Grid::cell(int row, int column) const
{
    static const QString neverSet;
    checkColumn(column);
    const QStringList &cells = at(row).cells;
    return column < cells.size() ? cells[column] : neverSet;
}

void Grid::setCell(int row, int column, const QString &text)
{
    checkColumn(column);
    QStringList &cells = at(row).cells;
    if (column < cells.size()) {
        cells[column] = text;
    } else {
        QString kept = text; // it may be a cell of this very row
        cells.resize(column);
        cells << std::move(kept);
    }
    changed(row, row, column, column);
}

bool Grid::ticked(int row) const
{
    return at(row).ticked;
}

void Grid::setTicked(int row, bool ticked)
{
    Row &one = at(row);
    if (one.ticked == ticked)
        return;
    one.ticked = ticked; // a tick costs the same however long the list is
    changed(row, row, 0, 0);
    if (m_remembers) {
        QBitArray turned(row + 1);
        turned.setBit(row);
        remember(std::move(turned), {});
    }
}

void Grid::setTicked(const QList<int> &rows, bool ticked)
{
    QBitArray turned(rows.isEmpty() ? 0 : std::ranges::max(rows) + 1);
    for (const int row : rows)
        turned.setBit(row, at(row).ticked != ticked);
    turn(turned);
    remember(std::move(turned), {});
}

void Grid::setAllTicked(bool ticked)
{
    tickWhere([ticked](int) { return ticked; });
}

void Grid::tickWhere(const std::function<bool(int)> &belongs)
{
    QBitArray turned(rows());
    for (int row = 0; row < rows(); ++row)
        turned.setBit(row, belongs(row) != m_rows[row].ticked);
    turn(turned);
    remember(std::move(turned), {});
}

int Grid::tickedCount() const
{
    return static_cast<int>(std::ranges::count_if(m_rows, &Row::ticked));
}

const QString &Grid::tag(int row) const
{
    return at(row).tag;
}

void Grid::setTag(int row, const QString &tag)
{
    at(row).tag = tag;
}

void Grid::clear()
{
    Q_EMIT aboutToClear();
    const Refill refill(*this);
    m_rows.clear();
    m_steps.clear();
    ++m_filling;
}

void Grid::setColumns(QList<GridColumn> columns)
{
    Q_EMIT aboutToClear();
    const Refill refill(*this);
    clear();
    m_columns = std::move(columns);
}

void Grid::keepWhere(const std::function<bool(int)> &belongs)
{
    const Refill refill(*this);
    QList<Taken> taken;
    int kept = 0;
    int row = 0;
    const auto closeGap = [&] {
        m_rows.remove(kept, row - kept);
        remember({}, std::move(taken));
    };
    try {
        for (; row < rows(); ++row) {
            if (!belongs(row)) {
                taken.append({row, std::move(m_rows[row])});
                continue;
            }
            if (kept != row)
                m_rows[kept] = std::move(m_rows[row]);
            ++kept;
        }
    } catch (...) {
        closeGap();
        throw;
    }
    closeGap();
}

Grid::Refill::Refill(Grid &grid)
    : m_grid(grid)
{
    if (m_grid.m_refills++ == 0)
        m_grid.beginResetModel();
}

Grid::Refill::~Refill()
{
    if (--m_grid.m_refills == 0)
        m_grid.endResetModel();
}

void Grid::changed(int firstRow, int lastRow, int firstColumn, int lastColumn)
{
    if (m_refills == 0)
        Q_EMIT dataChanged(index(firstRow, firstColumn), index(lastRow, lastColumn));
}

int Grid::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : rows();
}

int Grid::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant Grid::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rows())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return cell(index.row(), index.column());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(m_columns[index.column()].alignment | Qt::AlignVCenter);
    case Qt::CheckStateRole:
        if (m_kind == Tickable && index.column() == 0)
            return ticked(index.row()) ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::AccessibleDescriptionRole:
        return m_rowText ? m_rowText(index.row()) : QString();
    default:
        return {};
    }
}

bool Grid::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || index.row() >= rows())
        return false;
    if (role == Qt::CheckStateRole && m_kind == Tickable && index.column() == 0) {
        setTicked(index.row(), value.toInt() == Qt::Checked);
        return true;
    }
    if (role == Qt::EditRole && m_editable.contains(index.column())) {
        setCell(index.row(), index.column(), value.toString());
        return true;
    }
    return false;
}

QVariant Grid::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && section < m_columns.size()) {
        if (role == Qt::DisplayRole)
            return m_columns[section].heading;
        if (role == Qt::TextAlignmentRole)
            return QVariant::fromValue(m_columns[section].alignment | Qt::AlignVCenter);
    }
    if (orientation == Qt::Vertical && role == Qt::AccessibleTextRole && m_rowText &&
        section < rows()) {
        const QString text = m_rowText(section);
        return text.isEmpty() ? QVariant() : u"%1: %2"_s.arg(section + 1).arg(text);
    }
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags Grid::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (m_kind == Tickable && index.column() == 0)
        flags |= Qt::ItemIsUserCheckable;
    if (m_editable.contains(index.column()))
        flags |= Qt::ItemIsEditable;
    return flags;
}

} // namespace kervan
