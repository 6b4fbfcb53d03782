#include "controls/bigbutton.h"

#include <QEvent>
#include <QPainter>
#include <QStyleOption>

namespace kervan {

namespace {

constexpr int pictureSize = 48;
constexpr int margin = 7;
constexpr int captionLines = 3;

} // namespace

BigButton::BigButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize BigButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * 22 + 2 * margin,
            pictureSize + captionLines * metrics.lineSpacing() + 3 * margin};
}

QSize BigButton::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 16 + 2 * margin, sizeHint().height()};
}

void BigButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    QColor fill = palette().color(QPalette::Button);
    if (isDown())
        fill = fill.darker(108);
    const bool marked = hasFocus() || (underMouse() && isEnabled());
    painter.setPen(QPen(marked ? accent : palette().color(QPalette::Mid), hasFocus() ? 2 : 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 8, 8);

    const QRect inside = rect().adjusted(margin, margin, -margin, -margin);
    QRect pictureRect(0, 0, pictureSize, pictureSize);
    pictureRect.moveCenter({inside.center().x(), inside.top() + pictureSize / 2});
    icon().paint(&painter, pictureRect);
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(inside.adjusted(0, pictureSize + margin, 0, 0),
                     Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextWordWrap, text());
}

} // namespace kervan
