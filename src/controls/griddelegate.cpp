#include "controls/griddelegate.h"

#include "controls/gridview.h"

#include <QPainter>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int air = 5; // beside the margin that the style leaves
constexpr int roundTickBox = 2;

QStyleOptionViewItem inner(const QStyleOptionViewItem &option)
{
    QStyleOptionViewItem shrunk = option;
    shrunk.rect.adjust(air - 2, 0, -air, 0); // the style leaves a little at the left
    return shrunk;
}

// Where the unit begins in a text like "12,50 (PKT)", or -1.
qsizetype unitIn(const QStyleOptionViewItem &option)
{
    const bool isAmount = option.displayAlignment.testFlag(Qt::AlignRight);
    return isAmount && option.text.endsWith(u')') ? option.text.lastIndexOf(u'(') : -1;
}

int unitWidth(const QStyleOptionViewItem &option, qsizetype unit)
{
    return qMax(option.fontMetrics.horizontalAdvance(u"(PKT)"_s),
                option.fontMetrics.horizontalAdvance(option.text.sliced(unit))) +
           air;
}

} // namespace

GridDelegate::GridDelegate(GridView *view)
    : QStyledItemDelegate(view)
    , m_view(view)
{
}

void GridDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem shown = inner(option);
    initStyleOption(&shown, index);
    const QPalette &palette = option.palette;
    if (shown.state.testFlag(QStyle::State_Selected)) {
        painter->fillRect(option.rect, palette.highlight());
        shown.palette.setBrush(QPalette::Text, palette.highlightedText());
        shown.state &= ~QStyle::State_Selected;
        if (shown.features.testFlag(QStyleOptionViewItem::HasCheckIndicator)) {
            const QRect box = m_view->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator,
                                                              &shown, m_view);
            painter->fillRect(
                box.marginsAdded({roundTickBox, roundTickBox, roundTickBox, roundTickBox}),
                palette.base());
        }
    } else if (const QColor ground = groundOf(palette, m_view->groundOfRow(index.row()),
                                              m_view->isTicked(index.row()));
               ground.isValid()) {
        painter->fillRect(option.rect, ground);
    }
    if (m_view->selectionBehavior() == QAbstractItemView::SelectRows)
        shown.state &= ~QStyle::State_HasFocus; // the whole row stands out, and no cell of it
    if (const qsizetype unit = unitIn(shown); unit > 0) {
        const int width = unitWidth(shown, unit);
        const QRect place(shown.rect.right() - width + air, shown.rect.top(), width,
                          shown.rect.height());
        painter->setPen(shown.palette.color(QPalette::Text));
        painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter, shown.text.sliced(unit));
        shown.text = shown.text.first(unit).trimmed();
        shown.rect.setRight(shown.rect.right() - width);
    }
    m_view->style()->drawControl(QStyle::CE_ItemViewItem, &shown, painter, m_view);
}

QString GridDelegate::headingOf(const QModelIndex &index)
{
    return index.model()->headerData(index.column(), Qt::Horizontal).toString();
}

QWidget *GridDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                    const QModelIndex &index) const
{
    QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
    editor->setAccessibleName(headingOf(index));
    return editor;
}

QSize GridDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, index);
    if (const qsizetype unit = unitIn(shown); unit > 0)
        size.rwidth() +=
            unitWidth(shown, unit) - shown.fontMetrics.horizontalAdvance(shown.text.sliced(unit));
    return size.grownBy({air, 0, air, 0});
}

bool GridDelegate::editorEvent(QEvent *event, QAbstractItemModel *model,
                               const QStyleOptionViewItem &option, const QModelIndex &index)
{
    return QStyledItemDelegate::editorEvent(event, model, inner(option), index);
}

} // namespace kervan
