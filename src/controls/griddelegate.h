#pragma once

#include <QStyledItemDelegate>

namespace kervan {

class GridView;

/// Paints the cells of a list: with air on both sides, ticked rows tinted, and a tick box that can
/// be seen in a selected row too. An amount with its unit behind it, "12,50 (PKT)", stands under
/// the amounts of the other rows.
class GridDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit GridDelegate(GridView *view);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

protected:
    /// What the editor of a cell is called.
    static QString headingOf(const QModelIndex &index);

private:
    GridView *m_view;
};

} // namespace kervan
