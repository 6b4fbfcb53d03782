#include "controls/keyedbutton.h"

#include "controls/pictures.h"

#include <QGuiApplication>
#include <QShortcut>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace kervan {

using namespace Qt::StringLiterals;

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
    // The program's: where a style sheet colours the caption, the button's own would be half of it.
    painter.setPen(QGuiApplication::palette().color(QPalette::PlaceholderText));
    painter.drawText(rect().adjusted(0, 0, -gap, 0), Qt::AlignRight | Qt::AlignVCenter, m_keys);
}

KeyedButton *dialogButton(const QString &name, const QString &caption, const QString &keys,
                          const QString &pictureName)
{
    auto *button = new KeyedButton(caption, keys);
    button->setObjectName(name);
    button->setToolTip(u"%1 (%2)"_s.arg(caption, keys));
    if (!pictureName.isEmpty())
        button->setIcon(picture(pictureName));
    QObject::connect(new QShortcut(QKeySequence(keys), button), &QShortcut::activated, button,
                     &QAbstractButton::click);
    return button;
}

} // namespace kervan
