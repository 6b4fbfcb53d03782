#include "controls/linklabel.h"

#include "controls/announcing.h"
#include "controls/binding.h"
#include "controls/theme.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPainter>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int bannerMargin = 7;
constexpr QColor bannerGround(0x20, 0x24, 0x28);

} // namespace

LinkLabel::LinkLabel(const QString &name, TextField &durum, Look look)
    : m_look(look)
{
    setObjectName(name);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    const int beside = fontMetrics().height() + 4;
    if (look == Look::Quiet) {
        setContentsMargins(beside, 0, 0, 0);
    } else {
        setContentsMargins(beside + bannerMargin, bannerMargin, beside + bannerMargin,
                           bannerMargin);
        setAlignment(Qt::AlignCenter);
    }
    bind(this, durum);
    nameValue(this, {}, durum);
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
    const QPalette theme = QGuiApplication::palette();
    const bool onDark = isDark(theme);
    QColor good = goodText(theme);
    QColor bad = onDark ? QColor(0xf2, 0x95, 0x84) : QColor(0xa8, 0x35, 0x22);
    if (isHighContrast(theme))
        good = bad = theme.color(QPalette::WindowText);
    if (m_look == Look::Banner) {
        good = QColor(0x00, 0xff, 0x00);
        bad = QColor(0xff, 0x00, 0x00);
    }
    const QColor colour = isConnected() ? good : bad;
    if (colour == m_colour)
        return;
    m_colour = colour;
    QString style = u"color: %1;"_s.arg(colour.name());
    if (m_look == Look::Banner)
        style +=
            u"background: %1; border-radius: 4px; font-weight: bold;"_s.arg(bannerGround.name());
    setStyleSheet(style);
}

void LinkLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal size = fontMetrics().ascent();
    const bool isBanner = m_look == Look::Banner;
    painter.translate(1 + (isBanner ? bannerMargin : 0), (height() - size) / 2);
    painter.scale(size / 16, size / 16); // the picture is drawn on 16 by 16
    const QColor ground =
        isBanner ? bannerGround : QGuiApplication::palette().color(QPalette::Window);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_colour);
    painter.drawEllipse(QRectF(0, 0, 16, 16));
    painter.setPen(QPen(ground, 2.2, Qt::SolidLine, Qt::RoundCap));
    if (isConnected()) {
        painter.drawPolyline(QPolygonF({{4.2, 8.4}, {7, 11.2}, {11.8, 5.2}}));
    } else {
        painter.drawLine(QPointF(5, 5), QPointF(11, 11));
        painter.drawLine(QPointF(11, 5), QPointF(5, 11));
    }
}

} // namespace kervan
