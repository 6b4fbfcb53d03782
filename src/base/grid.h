#pragma once

#include <QAbstractTableModel>
#include <QBitArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace kervan {

/// Heading, width in twips and alignment of one column.
struct GridColumn
{
    QString heading;
    int twips = 1440;
    Qt::Alignment alignment = Qt::AlignLeft;
};

/// The in-memory model of a transfer: rows by position, cells by column number, all text; a tick
/// and a tag per row. Views and procedures use the same object. Rows count from 0.
class Grid : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Kind { Plain, Tickable };

    explicit Grid(QList<GridColumn> columns, Kind kind = Plain, QObject *parent = nullptr);

    int rows() const { return static_cast<int>(m_rows.size()); }
    bool isEmpty() const { return m_rows.isEmpty(); }
    bool isTickable() const { return m_kind == Tickable; }
    const QList<GridColumn> &columns() const { return m_columns; }

    /// Adds a row with the text of its column 0; returns its position.
    int addRow(const QString &text);
    /// Text of a cell; empty if it was never set. A missing row or column is a Failure. Holds until
    /// a cell of the row is set, or the row goes.
    const QString &cell(int row, int column) const;
    /// Sets a cell; a missing row or column is a Failure.
    void setCell(int row, int column, const QString &text);

    bool ticked(int row) const;
    void setTicked(int row, bool ticked);
    /// The same for these rows, as one change.
    void setTicked(const QList<int> &rows, bool ticked);
    void setAllTicked(bool ticked);
    /// Ticks each row for which the function answers true and unticks the others.
    void tickWhere(const std::function<bool(int row)> &belongs);
    int tickedCount() const;

    const QString &tag(int row) const;
    void setTag(int row, const QString &tag);

    void clear();
    /// Clears the grid and gives it other columns.
    void setColumns(QList<GridColumn> columns);
    /// Keeps the rows for which the function answers true, in their order, in one walk. When it
    /// throws at a row, that row and those after it stay, and the exception goes on.
    void keepWhere(const std::function<bool(int row)> &belongs);

    /// Which filling its rows are of: another one after each `clear`.
    int filling() const { return m_filling; }

    /// From now on it remembers what was ticked and which rows were taken out, 20 steps back. The
    /// steps of a list that is cleared are forgotten with it.
    void rememberSteps() { m_remembers = true; }
    /// Those of a read itself can't be taken back: rows that it took out lack what it did behind.
    void forgetSteps() { m_steps.clear(); }
    /// When the last step was made, counted over all grids; 0 for none.
    quint64 lastStep() const { return m_steps.isEmpty() ? 0 : m_steps.last().when; }
    struct Undone
    {
        int ticks = 0;    ///< of so many rows
        int rows = 0;     ///< so many came back
        int firstRow = 0; ///< where the first of them is
    };
    /// Takes the last step back: ticks are as they were, and rows that were taken out are in their
    /// places again with cells, tags and ticks. Nothing if there is none.
    std::optional<Undone> undo();

    /// Holds back the views while many rows change; they are told once at the end.
    class Refill
    {
    public:
        explicit Refill(Grid &grid);
        ~Refill();
        Refill(const Refill &) = delete;
        Refill &operator=(const Refill &) = delete;

    private:
        Grid &m_grid;
    };

    /// What a reader is told of a row besides its cells, and at its number; empty for nothing.
    void setRowText(std::function<QString(int row)> textOf) { m_rowText = std::move(textOf); }

    /// Columns whose cells a view may edit.
    void setEditable(QList<int> columns) { m_editable = std::move(columns); }

Q_SIGNALS:
    /// All rows are about to go, as they do when a list is read anew; they are still there.
    void aboutToClear();

public:
    // QAbstractTableModel
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

Q_SIGNALS:
    /// A step was taken back; who shows how many rows there are shows it again.
    void undone();

private:
    struct Row
    {
        QStringList cells; // up to the last one that was set
        QString tag;
        bool ticked = false;
    };
    struct Taken
    {
        int place;
        Row row;
    };
    struct Step
    {
        quint64 when;
        QBitArray turned;   // ticks, by row
        QList<Taken> taken; // rising by place
    };

    const Row &at(int row) const;
    Row &at(int row);
    void checkColumn(int column) const;
    void remember(QBitArray turned, QList<Taken> taken);
    void putBack(QList<Taken> taken);
    void turn(const QBitArray &rows);
    void changed(int firstRow, int lastRow, int firstColumn, int lastColumn);

    QList<GridColumn> m_columns;
    Kind m_kind;
    QList<int> m_editable;
    std::function<QString(int row)> m_rowText;
    QList<Row> m_rows;
    QList<Step> m_steps;
    bool m_remembers = false;
    int m_filling = 0;
    int m_refills = 0;
};

} // namespace kervan
