#include "controls/panes.h"

#include "controls/gridview.h"
#include "controls/remembered.h"

namespace kervan {

namespace {

constexpr int rowsFirst = 14; // of the upper list, before its lines have more than their least
constexpr int rowsBeside = 9; // before another page has
constexpr int rowsKept = 6;   // of the upper list, whatever the user's share
constexpr int rowsAlways = 2; // of the lower one
constexpr double firstShare = 0.3;
constexpr double shareBeside = 0.45;

// The height of so many rows of the list, and of what stands around it.
int heightWith(const QWidget *frame, const GridView *list, int rows)
{
    return frame->minimumSizeHint().height() - list->minimumSizeHint().height() +
           list->heightWith(rows);
}

} // namespace

Panes::Panes(QWidget *upper, LowerPane *lower, GridView *lines, const QString &memoryKey)
    : QSplitter(Qt::Vertical)
    , m_upper(upper)
    , m_lower(lower)
    , m_upperList(upper->findChild<GridView *>())
    , m_lines(lines)
    , m_memoryKey(memoryKey)
{
    addWidget(upper);
    addWidget(lower);
    setStretchFactor(0, 1);
    setStretchFactor(1, 0);
    setChildrenCollapsible(false);
    if (const QVariant share = remembered(m_memoryKey); share.isValid())
        m_share = share.toDouble();
    if (m_lines)
        m_lines->shrinkWhenEmpty();
    for (const GridView *list : {m_upperList, m_lines}) {
        if (!list)
            continue;
        connect(list->model(), &QAbstractItemModel::modelReset, this, &Panes::follow);
        connect(list->model(), &QAbstractItemModel::rowsInserted, this, &Panes::follow);
    }
    connect(m_lower, &LowerPane::roomChanged, this, &Panes::share);
    connect(this, &QSplitter::splitterMoved, this, [this] {
        if (!needsRoom() || height() == 0)
            return;
        m_share = double(sizes().last()) / height();
        remember(m_memoryKey, m_share);
    });
    share();
}

void Panes::resizeEvent(QResizeEvent *event)
{
    QSplitter::resizeEvent(event);
    share();
}

// The lines of a row need none before there are rows.
bool Panes::needsRoom() const
{
    if (!m_lower->isOpen())
        return false;
    const GridView *shown = m_lower->listOfPage();
    return !m_lines || shown != m_lines || m_upperList->model()->rowCount() > 0 ||
           m_lines->model()->rowCount() > 0;
}

// Later fills move nothing.
void Panes::follow()
{
    if (needsRoom() != m_hadRoom)
        share();
}

void Panes::share()
{
    m_hadRoom = needsRoom();
    if (!m_hadRoom) {
        const int least = m_lower->minimumSizeHint().height();
        m_lower->setMaximumHeight(least);
        setSizes({height() - least - handleWidth(), least});
        return;
    }
    m_lower->setMaximumHeight(QWIDGETSIZE_MAX);
    const int room = height() - handleWidth();
    const GridView *shown = m_lower->listOfPage();
    const int least =
        shown ? heightWith(m_lower, shown, rowsAlways) : m_lower->minimumSizeHint().height();
    const bool isOfList = m_lines && shown == m_lines;
    const double share = m_share > 0 ? m_share : isOfList ? firstShare : shareBeside;
    const int rowsLeft = m_share > 0 ? rowsKept : isOfList ? rowsFirst : rowsBeside;
    const int wanted =
        qMin(qRound(height() * share), room - heightWith(m_upper, m_upperList, rowsLeft));
    const int lower = qMax(least, wanted);
    if (sizes() == QList<int>{room - lower, lower})
        return;
    setSizes({room - lower, lower});
    m_upperList->showCurrentRow();
}

} // namespace kervan
