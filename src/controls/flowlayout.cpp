#include "controls/flowlayout.h"

#include "controls/keyedbutton.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QHBoxLayout>

#include <algorithm>

namespace kervan {

namespace {

constexpr int spaceBetween = 6;
constexpr int narrowColumn = 215; // of a panel of fields, in which labels still leave room

bool isSpace(QLayoutItem *item)
{
    return item->spacerItem();
}

// How much of itself a button shows: its caption alone, its picture beside it, or its keys as well.
enum class Show { Caption, Picture, Keys };

int widthOf(QLayoutItem *item, Show what)
{
    const auto *button = qobject_cast<QAbstractButton *>(item->widget());
    if (!button || what == Show::Keys)
        return item->sizeHint().width();
    const auto *keyed = qobject_cast<const KeyedButton *>(button);
    return keyed && what == Show::Picture ? keyed->widthWithPicture()
                                          : button->minimumSizeHint().width();
}

int leastWidth(QLayoutItem *item)
{
    return widthOf(item, Show::Caption);
}

bool grows(QLayoutItem *item)
{
    return item->expandingDirections().testFlag(Qt::Horizontal);
}

} // namespace

FlowLayout::FlowLayout(QWidget *parent)
    : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spaceBetween);
}

FlowLayout::~FlowLayout()
{
    while (!m_items.isEmpty()) // a layout among them takes itself out as well
        delete m_items.takeFirst();
}

void FlowLayout::addPair(QWidget *label, QWidget *control)
{
    auto *pair = new QHBoxLayout;
    addChildLayout(pair);
    label->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    pair->addWidget(label);
    pair->addWidget(control, 1);
    addItem(pair);
}

void FlowLayout::addSpacing(int width)
{
    addItem(new QSpacerItem(width, 0, QSizePolicy::Fixed));
}

void FlowLayout::addStretch()
{
    addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding));
}

void FlowLayout::addItem(QLayoutItem *item)
{
    m_items << item;
    invalidate();
}

QLayoutItem *FlowLayout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

int FlowLayout::widthOf(const Line &line) const
{
    int width = -spacing();
    for (QLayoutItem *item : line)
        width += leastWidth(item) + spacing();
    return width;
}

QList<FlowLayout::Line> FlowLayout::linesFor(int width) const
{
    QList<Line> lines;
    bool breaks = true;
    for (int i = 0; i < count(); ++i) {
        QLayoutItem *item = m_items[i];
        if (!isSpace(item) && item->isEmpty())
            continue;
        breaks = breaks || !fits(lines.last(), i, width);
        if (isSpace(item) && breaks)
            continue; // a line does not begin with a space
        if (breaks)
            lines.emplaceBack();
        breaks = false;
        lines.last() << item;
    }
    return lines;
}

bool FlowLayout::fits(const Line &line, int next, int width) const
{
    Line longer = line;
    const bool together = isSpace(m_items[next]) && grows(m_items[next]);
    longer << (together ? m_items.sliced(next) : Line{m_items[next]});
    return widthOf(longer) <= width;
}

int FlowLayout::heightForWidth(int width) const
{
    int height = -spacing();
    for (const Line &line : linesFor(width)) {
        int high = 0;
        for (QLayoutItem *item : line)
            high = qMax(high, item->sizeHint().height());
        height += high + spacing();
    }
    return qMax(height, 0);
}

QSize FlowLayout::sizeHint() const
{
    const int width = widthOf(m_items);
    return {width, heightForWidth(width)};
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (QLayoutItem *item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::place(const Line &line, const QRect &rect) const
{
    int extra = qMax(0, rect.width() - widthOf(line));
    Show shown = Show::Caption;
    for (const Show more : {Show::Keys, Show::Picture}) {
        int needed = 0;
        for (QLayoutItem *item : line)
            needed += kervan::widthOf(item, more) - leastWidth(item);
        if (needed > extra)
            continue;
        extra -= needed;
        shown = more;
        break;
    }
    const auto stretch =
        std::ranges::find_if(line, [](QLayoutItem *item) { return isSpace(item) && grows(item); });
    const auto growing = std::ranges::count_if(
        line, [](QLayoutItem *item) { return !isSpace(item) && grows(item); });
    int x = rect.left();
    for (QLayoutItem *item : line) {
        QSize size(kervan::widthOf(item, shown), item->sizeHint().height());
        size = size.boundedTo({rect.width(), rect.height()});
        if (stretch != line.end())
            size.rwidth() += item == *stretch ? extra : 0;
        else if (grows(item))
            size.rwidth() =
                qMin(item->maximumSize().width(), size.width() + extra / static_cast<int>(growing));
        item->setGeometry({{x, rect.top() + (rect.height() - size.height()) / 2}, size});
        x += size.width() + spacing();
    }
}

void FlowLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    int y = rect.top();
    for (const Line &line : linesFor(rect.width())) {
        int high = 0;
        for (QLayoutItem *item : line)
            high = qMax(high, item->sizeHint().height());
        place(line, {rect.left(), y, rect.width(), high});
        y += high + spacing();
    }
}

FieldPanel::FieldPanel(int columns)
    : m_columns(columns)
    , m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(8);
    m_grid->setVerticalSpacing(4);
}

void FieldPanel::add(QWidget *label, QWidget *field)
{
    m_fields << Field{label, field};
    arrange(m_columns);
}

// That of the narrow arrangement, however it stands now.
QSize FieldPanel::minimumSizeHint() const
{
    return {(m_columns + 1) / 2 * narrowColumn, QWidget::minimumSizeHint().height()};
}

void FieldPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int columns = width() < m_columns * narrowColumn ? (m_columns + 1) / 2 : m_columns;
    if (columns != m_arranged)
        arrange(columns);
}

void FieldPanel::arrange(int columns)
{
    m_arranged = columns;
    for (int i = 0; i < m_fields.size(); ++i) {
        const int row = i / columns;
        const int column = i % columns * 2;
        const auto &[label, field] = m_fields[i];
        if (label)
            m_grid->addWidget(label, row, column);
        m_grid->addWidget(field, row, label ? column + 1 : column, 1, label ? 1 : 2);
    }
    for (int column = 0; column < 2 * m_columns; ++column)
        m_grid->setColumnStretch(column, column % 2 && column < 2 * columns ? 1 : 0);
}

} // namespace kervan
