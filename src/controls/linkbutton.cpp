#include "controls/linkbutton.h"

#include "controls/theme.h"

#include <QGuiApplication>
#include <QPainter>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int besides = 3; // pixels for the frame of the focus

} // namespace

LinkButton::LinkButton(QWidget *window, const QString &name, const QString &keys)
    : m_keys(keys)
{
    setObjectName(name);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    if (keys.isEmpty())
        return;
    m_shortcut = new QShortcut(QKeySequence(keys), window);
    m_shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(m_shortcut, &QShortcut::activated, this, [this] {
        if (isVisible())
            click();
    });
}

// The window outlives a link that has served.
LinkButton::~LinkButton()
{
    delete m_shortcut;
}

void LinkButton::setLink(const QString &text, const QString &hint)
{
    setText(text);
    setAccessibleName(text);
    setToolTip(m_keys.isEmpty() ? hint : u"%1 (%2)"_s.arg(hint, m_keys));
    updateGeometry();
}

QSize LinkButton::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()) + 2 * besides, fontMetrics().height() + 2};
}

void LinkButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    // What a desktop of high contrast leaves for links may not stand out from its ground.
    const QPalette theme = QGuiApplication::palette();
    const QColor colour =
        theme.color(isHighContrast(theme) ? QPalette::WindowText : QPalette::Link);
    QFont underlined = font();
    underlined.setUnderline(true);
    painter.setFont(underlined);
    painter.setPen(colour);
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (hasFocus())
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace kervan
