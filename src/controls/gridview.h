#pragma once

#include "base/grid.h"

#include <QSet>
#include <QTableView>

namespace kervan {

/// A list over a Grid: whole rows are selected, the blank key ticks them, Ctrl+C copies them as
/// tab-separated text, and the columns fit their contents at the first fill.
class GridView : public QTableView
{
    Q_OBJECT

public:
    GridView(Grid &grid, const QString &name, QWidget *parent = nullptr);

    /// What an empty list says.
    void setEmptyText(const QString &text);
    /// Adds these rows to the selection and makes the first of them visible.
    void markRows(const QList<int> &rows);
    void copySelection() const;

Q_SIGNALS:
    /// The current row was moved by a key.
    void movedTo(int row);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QList<int> selectedPositions() const;
    void tickSelection();
    void moveByKey(QKeyEvent *event);
    void fitColumns();

    Grid &m_grid;
    QString m_emptyText;
    bool m_fitted = false;
    bool m_fitting = false;
    QSet<int> m_setByUser; // columns whose width the user has set
};

} // namespace kervan
