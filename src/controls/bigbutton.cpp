#include "controls/bigbutton.h"

#include "controls/theme.h"

#include <QPainter>
#include <QSet>

#include <algorithm>
#include <numeric>

namespace kervan {

namespace {

constexpr int pictureSize = 48;
constexpr int smallPicture = 22;
constexpr int margin = 7;
constexpr int smallMargin = 5;
constexpr int mostLines = 3;
constexpr QMargins bandMargins(8, 2, 8, 2);
constexpr int spacing = 6;
constexpr int smallSpacing = 3;

// Lines that the words take when none may be wider than this.
int linesAt(const QList<int> &words, int blank, int width)
{
    int lines = 1;
    int filled = -blank;
    for (const int word : words) {
        if (filled + blank + word > width && filled > 0) {
            ++lines;
            filled = -blank;
        }
        filled += blank + word;
    }
    return lines;
}

int captionWidth(const QFontMetrics &metrics, const QString &caption, int lines)
{
    const int blank = metrics.horizontalAdvance(u' ');
    QList<int> words;
    for (const QString &word : caption.split(u' '))
        words << metrics.horizontalAdvance(word);
    int width = *std::ranges::max_element(words);
    while (linesAt(words, blank, width) > lines)
        width += 2;
    return width + 2; // a caption may be drawn a little wider than its words add up to
}

} // namespace

BigButton::BigButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void BigButton::setCompact(bool compact)
{
    m_compact = compact;
    update();
}

void BigButton::setFront(bool front)
{
    m_front = front;
    update();
}

void BigButton::setLit(bool lit)
{
    m_lit = lit;
    setAccessibleDescription(lit ? QStringLiteral("Dosya buraya bırakılabilir") : QString());
    update();
}

// A little smaller where captions have to be turned.
QFont BigButton::captionFont(int lines) const
{
    QFont chosen = font();
    if (m_compact && lines > 1)
        chosen.setPointSizeF(chosen.pointSizeF() * 0.9);
    return chosen;
}

int BigButton::widthFor(int lines) const
{
    const int caption = captionWidth(QFontMetrics(captionFont(lines)), text(), lines);
    return m_compact ? caption + smallPicture + 3 * smallMargin : caption + 2 * margin;
}

int BigButton::heightFor(int lines) const
{
    const int caption = lines * QFontMetrics(captionFont(lines)).lineSpacing();
    return m_compact ? qMax(smallPicture, caption) + 2 * smallMargin - 2
                     : pictureSize + caption + 3 * margin;
}

QSize BigButton::sizeHint() const
{
    return {widthFor(1), heightFor(1)};
}

void BigButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    QColor fill = palette().color(QPalette::Button);
    if (m_lit)
        fill = tint(palette());
    if (isDown())
        fill = fill.darker(108);
    const bool marked = hasFocus() || m_front || m_lit || (underMouse() && isEnabled());
    painter.setPen(
        QPen(marked ? accent : palette().color(QPalette::Mid), hasFocus() || m_lit ? 2 : 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), m_compact ? 5 : 8,
                            m_compact ? 5 : 8);
    if (m_front)
        painter.fillRect(QRect(6, height() - 4, width() - 12, 3), accent);
    const int gap = m_compact ? smallMargin : margin;
    const QRect inside = rect().adjusted(gap, gap - 2, -gap, -gap + 2);
    if (m_compact)
        paintCompact(painter, inside);
    else
        paintBig(painter, inside);
}

void BigButton::paintBig(QPainter &painter, const QRect &inside)
{
    QRect pictureRect(0, 0, pictureSize, pictureSize);
    pictureRect.moveCenter({inside.center().x(), inside.top() + pictureSize / 2});
    icon().paint(&painter, pictureRect);
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(inside.adjusted(0, pictureSize + margin, 0, 0),
                     Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextWordWrap, text());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    if (fontMetrics().horizontalAdvance(m_keys) < (inside.width() - pictureSize) / 2)
        painter.drawText(inside, Qt::AlignRight | Qt::AlignTop, m_keys);
}

void BigButton::paintCompact(QPainter &painter, const QRect &inside)
{
    QRect pictureRect(0, 0, smallPicture, smallPicture);
    pictureRect.moveCenter({inside.left() + smallPicture / 2, rect().center().y()});
    icon().paint(&painter, pictureRect);
    painter.setFont(captionFont(m_lines));
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(inside.adjusted(smallPicture + smallMargin, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, text());
}

int ButtonBand::gap() const
{
    return m_compact ? smallSpacing : spacing;
}

void ButtonBand::add(BigButton *button)
{
    button->setParent(this);
    m_buttons << button;
}

void ButtonBand::setCompact(bool compact)
{
    if (m_compact == compact)
        return;
    m_compact = compact;
    for (BigButton *button : std::as_const(m_buttons))
        button->setCompact(compact);
    updateGeometry();
    resizeEvent(nullptr);
}

// One row with the fewest lines of captions in which they are whole, else two rows.
ButtonBand::Arrangement ButtonBand::arrangementFor(int width) const
{
    const int count = static_cast<int>(m_buttons.size());
    for (int rows = 1; rows <= 2; ++rows) {
        const int inRow = (count + rows - 1) / rows;
        const int room = width - bandMargins.left() - bandMargins.right() - (inRow - 1) * gap();
        for (int lines = m_compact ? 1 : 2; lines <= mostLines; ++lines) {
            QList<int> widths;
            for (const BigButton *button : m_buttons)
                widths << button->widthFor(lines);
            int needed = *std::ranges::max_element(widths) * inRow;
            if (m_compact)
                needed = qMax(std::accumulate(widths.begin(), widths.begin() + inRow, 0),
                              std::accumulate(widths.begin() + inRow, widths.end(), 0));
            if (needed > room && (lines < mostLines || rows == 1))
                continue;
            for (int &each : widths)
                each = m_compact ? each + (room - needed) / inRow : room / inRow;
            return {rows, lines, widths};
        }
    }
    return {1, 1, {}};
}

int ButtonBand::heightForWidth(int width) const
{
    if (m_buttons.isEmpty())
        return 0;
    const Arrangement found = arrangementFor(width);
    return found.rows * m_buttons.first()->heightFor(found.lines) + (found.rows - 1) * gap() +
           bandMargins.top() + bandMargins.bottom();
}

QSize ButtonBand::sizeHint() const
{
    return {1000, heightForWidth(1000)};
}

QSize ButtonBand::minimumSizeHint() const
{
    return {480, heightForWidth(qMax(width(), 480))};
}

void ButtonBand::resizeEvent(QResizeEvent *)
{
    if (m_buttons.isEmpty())
        return;
    const Arrangement found = arrangementFor(width());
    const int inRow = (static_cast<int>(m_buttons.size()) + found.rows - 1) / found.rows;
    const int high = m_buttons.first()->heightFor(found.lines);
    int x = bandMargins.left();
    int y = bandMargins.top();
    for (int i = 0; i < m_buttons.size(); ++i) {
        if (i > 0 && i % inRow == 0) {
            x = bandMargins.left();
            y += high + gap();
        }
        m_buttons[i]->setLines(found.lines);
        m_buttons[i]->setGeometry(x, y, found.widths[i], high);
        x += found.widths[i] + gap();
    }
}

} // namespace kervan
