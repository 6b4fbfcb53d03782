#include "controls/linklabel.h"

#include "controls/binding.h"

#include <QEvent>
#include <QPainter>

namespace kervan {

using namespace Qt::StringLiterals;

LinkLabel::LinkLabel(const QString &name, TextField &durum)
{
    setObjectName(name);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setContentsMargins(fontMetrics().height() + 4, 0, 0, 0);
    bind(this, durum);
    connect(&durum, &TextField::changed, this, &LinkLabel::colour);
    colour();
}

bool LinkLabel::isConnected() const
{
    return text() == u"SQL Bağlantı Var";
}

void LinkLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colour();
}

void LinkLabel::colour()
{
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    const QColor good = isDark ? QColor(0x82, 0xd2, 0x9b) : QColor(0x1d, 0x73, 0x3c);
    const QColor bad = isDark ? QColor(0xf2, 0x95, 0x84) : QColor(0xa8, 0x35, 0x22);
    const QColor colour = isConnected() ? good : bad;
    if (colour == m_colour)
        return;
    m_colour = colour;
    setStyleSheet(u"color: %1"_s.arg(colour.name()));
}

void LinkLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal size = fontMetrics().ascent();
    painter.translate(1, (height() - size) / 2);
    painter.scale(size / 16, size / 16); // the picture is drawn on 16 by 16
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_colour);
    painter.drawEllipse(QRectF(0, 0, 16, 16));
    painter.setPen(QPen(palette().color(QPalette::Window), 2.2, Qt::SolidLine, Qt::RoundCap));
    if (isConnected()) {
        painter.drawPolyline(QPolygonF({{4.2, 8.4}, {7, 11.2}, {11.8, 5.2}}));
    } else {
        painter.drawLine(QPointF(5, 5), QPointF(11, 11));
        painter.drawLine(QPointF(11, 5), QPointF(5, 11));
    }
}

} // namespace kervan
