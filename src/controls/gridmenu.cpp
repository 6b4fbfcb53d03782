#include "controls/frozenheader.h"
#include "controls/gridview.h"
#include "controls/remembered.h"

#include <QContextMenuEvent>
#include <QMenu>

namespace kervan {

using namespace Qt::StringLiterals;

// The menus of a list, and what the user made of its columns.

namespace {

QMenu *menuOver(QWidget *widget)
{
    auto *menu = new QMenu(widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    return menu;
}

QVariantList asVariants(const QSet<int> &numbers)
{
    QVariantList list;
    for (const int number : numbers)
        list << number;
    return list;
}

} // namespace

bool GridView::isTicked(int row) const
{
    return row >= 0 && row < m_grid.rows() && m_grid.isTickable() && m_grid.ticked(row);
}

void GridView::tickRows(bool tick)
{
    m_grid.setTicked(selectedPositions(), tick);
}

void GridView::tickCustomer()
{
    const QString customer = m_grid.cell(currentIndex().row(), m_customerColumn);
    m_grid.tickWhere([&](int row) {
        return m_grid.ticked(row) || m_grid.cell(row, m_customerColumn) == customer;
    });
}

void GridView::contextMenuEvent(QContextMenuEvent *event)
{
    if (selectedPositions().isEmpty())
        return;
    QMenu *menu = menuOver(this);
    menu->addAction(u"Kopyala\tCtrl+C"_s, this, [this] { copySelection(); });
    menu->addAction(u"Başlıklarla Kopyala\tCtrl+Shift+C"_s, this,
                    [this] { copySelection(Headings::With); });
    if (isTickable()) {
        menu->addSeparator();
        menu->addAction(u"Seç"_s, this, [this] { tickRows(true); });
        menu->addAction(u"Seçimi Kaldır"_s, this, [this] { tickRows(false); });
        if (m_customerColumn >= 0 && currentIndex().isValid())
            menu->addAction(u"Aynı Carinin Hepsini Seç"_s, this, &GridView::tickCustomer);
    }
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex clicked = byKey ? currentIndex() : indexAt(event->pos());
    if (m_offersFilter && (clicked.isValid() || isFiltered())) {
        menu->addSeparator();
        if (clicked.isValid())
            menu->addAction(u"Bu değere göre süz"_s, this,
                            [this, clicked = QPersistentModelIndex(clicked)] {
                                if (clicked.isValid())
                                    filterByCell(clicked);
                            });
        if (isFiltered())
            menu->addAction(u"Süzmeyi kaldır"_s, this, &GridView::endFilter);
    }
    if (!actions().isEmpty()) { // what the screen adds
        menu->addSeparator();
        menu->addActions(actions());
    }
    const QRect row = visualRect(currentIndex());
    menu->popup(byKey ? viewport()->mapToGlobal(row.bottomLeft()) : event->globalPos());
}

void GridView::filterByCell(const QModelIndex &index)
{
    const int column = index.column();
    const QString value = m_grid.cell(index.row(), column);
    const QString heading = m_grid.columns()[column].heading;
    filter({value.isEmpty() ? u"%1 boş"_s.arg(heading) : u"%1: %2"_s.arg(heading, value),
            [this, column, value](int row) {
                return m_grid.cell(row, column) == value;
            }});
}

void GridView::showColumnMenu(const QPoint &place)
{
    QMenu *menu = menuOver(this);
    for (int column = 1; column < m_grid.columnCount(); ++column) {
        if (isColumnHidden(column) && !m_hiddenByUser.contains(column))
            continue; // it is none of the user's
        QAction *shown = menu->addAction(m_grid.columns()[column].heading);
        shown->setCheckable(true);
        shown->setChecked(!isColumnHidden(column));
        connect(shown, &QAction::toggled, this, [this, column](bool show) {
            setColumnHidden(column, !show);
            if (show)
                m_hiddenByUser.remove(column);
            else
                m_hiddenByUser.insert(column);
            keepColumns();
        });
    }
    menu->popup(place);
}

// By the screen that the list stands on; a list that changes its columns has a memory for each.
QString GridView::memoryKey(QStringView what) const
{
    const QWidget *screen = this;
    while (!screen->isWindow() && screen->parentWidget() &&
           screen->parentWidget()->objectName() != u"qt_scrollarea_viewport")
        screen = screen->parentWidget();
    return u"%1/%2-%3-%4"_s.arg(screen->objectName(), objectName(),
                                QString::number(m_grid.columnCount()), what);
}

void GridView::recallColumns()
{
    const QVariantMap widths = remembered(memoryKey(u"widths")).toMap();
    m_fitting = true;
    for (auto width = widths.begin(); width != widths.end(); ++width) {
        setColumnWidth(width.key().toInt(), width.value().toInt());
        m_setByUser << width.key().toInt();
    }
    m_fitting = false;
    for (const QVariant &column : remembered(memoryKey(u"hidden")).toList()) {
        setColumnHidden(column.toInt(), true);
        m_hiddenByUser << column.toInt();
    }
}

void GridView::keepColumns() const
{
    QVariantMap widths;
    for (const int column : m_setByUser) {
        if (columnWidth(column) > 0)
            widths[QString::number(column)] = columnWidth(column);
    }
    remember(memoryKey(u"widths"), widths);
    remember(memoryKey(u"hidden"), asVariants(m_hiddenByUser));
}

void GridView::showEvent(QShowEvent *event)
{
    QTableView::showEvent(event);
    if (!m_recalled)
        recallColumns();
    m_recalled = true;
}

void GridView::hideEvent(QHideEvent *event)
{
    if (m_recalled && !m_setByUser.isEmpty() && model() == &m_grid)
        keepColumns();
    QTableView::hideEvent(event);
}

} // namespace kervan
