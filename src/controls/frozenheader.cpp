#include "controls/frozenheader.h"

#include <QMouseEvent>
#include <QPainter>

namespace kervan {

FrozenHeader::FrozenHeader(QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
    setHighlightSections(false);
}

int FrozenHeader::widthOf(int columns) const
{
    int width = 0;
    for (int visual = 0; visual < qMin(columns, count()); ++visual)
        width += sectionSize(logicalIndex(visual)); // 0 for a hidden one
    return width;
}

int FrozenHeader::frozen() const
{
    return offset() > 0 && widthOf(m_frozen) <= viewport()->width() * 3 / 5 ? m_frozen : 0;
}

int FrozenHeader::frozenWidth() const
{
    return widthOf(frozen());
}

void FrozenHeader::paintEvent(QPaintEvent *event)
{
    QHeaderView::paintEvent(event);
    QPainter painter(viewport());
    int x = 0;
    for (int visual = 0; visual < frozen(); ++visual) {
        const int section = logicalIndex(visual);
        const QRect rect(x, 0, sectionSize(section), viewport()->height());
        if (rect.isEmpty())
            continue;
        painter.save();
        painter.fillRect(rect, palette().window());
        paintSection(&painter, rect, section);
        painter.restore();
        x += rect.width();
    }
}

// The header finds a heading by its place as if all were scrolled.
QMouseEvent FrozenHeader::overFrozen(const QMouseEvent &event) const
{
    const int shift = m_dragged.value_or(event.position().x() < frozenWidth() + 3 ? offset() : 0);
    return {event.type(),          event.position() - QPointF(shift, 0),
            event.scenePosition(), event.globalPosition(),
            event.button(),        event.buttons(),
            event.modifiers()};
}

void FrozenHeader::mousePressEvent(QMouseEvent *event)
{
    QMouseEvent moved = overFrozen(*event);
    m_dragged = qRound(event->position().x() - moved.position().x());
    QHeaderView::mousePressEvent(&moved);
}

void FrozenHeader::mouseMoveEvent(QMouseEvent *event)
{
    QMouseEvent moved = overFrozen(*event);
    QHeaderView::mouseMoveEvent(&moved);
}

void FrozenHeader::mouseReleaseEvent(QMouseEvent *event)
{
    QMouseEvent moved = overFrozen(*event);
    m_dragged.reset();
    QHeaderView::mouseReleaseEvent(&moved);
}

void FrozenHeader::mouseDoubleClickEvent(QMouseEvent *event)
{
    QMouseEvent moved = overFrozen(*event);
    QHeaderView::mouseDoubleClickEvent(&moved);
}

} // namespace kervan
