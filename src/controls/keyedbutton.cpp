#include "controls/keyedbutton.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace kervan {

namespace {

constexpr int gap = 8;

} // namespace

KeyedButton::KeyedButton(const QString &caption, const QString &keys)
    : QPushButton(caption)
    , m_keys(keys)
{
}

int KeyedButton::roomForKeys() const
{
    return m_keys.isEmpty() || text().isEmpty() ? 0 : fontMetrics().horizontalAdvance(m_keys) + gap;
}

QSize KeyedButton::sizeHint() const
{
    return QPushButton::sizeHint() + QSize(roomForKeys(), 0);
}

QSize KeyedButton::minimumSizeHint() const
{
    const int picture = icon().isNull() || text().isEmpty() ? 0 : iconSize().width() + 4;
    return QPushButton::sizeHint() - QSize(picture, 0);
}

void KeyedButton::paintEvent(QPaintEvent *event)
{
    const bool hasPicture = width() >= widthWithPicture();
    if (hasPicture && (roomForKeys() == 0 || width() < sizeHint().width()))
        return QPushButton::paintEvent(event);
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    if (!hasPicture) {
        option.icon = {};
        painter.drawControl(QStyle::CE_PushButton, option);
        return;
    }
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    option.rect.setRight(option.rect.right() - roomForKeys());
    painter.drawControl(QStyle::CE_PushButtonLabel, option);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect().adjusted(0, 0, -gap, 0), Qt::AlignRight | Qt::AlignVCenter, m_keys);
}

} // namespace kervan
