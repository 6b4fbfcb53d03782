#include "controls/panes.h"

#include "controls/gridview.h"
#include "controls/remembered.h"

namespace kervan {

namespace {

constexpr int rowsFirst = 14; // of the upper list, before the lower one has more than its least
constexpr int rowsKept = 6;   // of the upper list, whatever the user's share
constexpr int rowsAlways = 2; // of the lower one
constexpr double firstShare = 0.3;

// The height of so many rows of the list, and of what stands around it.
int heightWith(const QWidget *frame, const GridView *list, int rows)
{
    return frame->minimumSizeHint().height() - list->minimumSizeHint().height() +
           list->heightWith(rows);
}

} // namespace

Panes::Panes(QWidget *upper, QWidget *lower, const QString &memoryKey)
    : QSplitter(Qt::Vertical)
    , m_upper(upper)
    , m_lower(lower)
    , m_upperList(upper->findChild<GridView *>())
    , m_lowerList(lower->findChild<GridView *>())
    , m_memoryKey(memoryKey)
{
    addWidget(upper);
    addWidget(lower);
    setStretchFactor(0, 1);
    setStretchFactor(1, 0);
    setChildrenCollapsible(false);
    if (const QVariant share = remembered(m_memoryKey); share.isValid())
        m_share = share.toDouble();
    m_lowerList->shrinkWhenEmpty();
    const auto follow = [this] {
        const bool isFilled =
            m_upperList->model()->rowCount() > 0 || m_lowerList->model()->rowCount() > 0;
        if (isFilled == m_isFilled)
            return;
        m_isFilled = isFilled;
        share();
    };
    for (const GridView *list : {m_upperList, m_lowerList}) {
        connect(list->model(), &QAbstractItemModel::modelReset, this, follow);
        connect(list->model(), &QAbstractItemModel::rowsInserted, this, follow);
    }
    connect(this, &QSplitter::splitterMoved, this, [this] {
        if (!m_isFilled || height() == 0)
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

void Panes::share()
{
    if (!m_isFilled) {
        const int least = m_lower->minimumSizeHint().height();
        m_lower->setMaximumHeight(least);
        setSizes({height() - least - handleWidth(), least});
        return;
    }
    m_lower->setMaximumHeight(QWIDGETSIZE_MAX);
    const int room = height() - handleWidth();
    const int least = heightWith(m_lower, m_lowerList, rowsAlways);
    const int wanted = m_share > 0 ? qMin(qRound(height() * m_share),
                                          room - heightWith(m_upper, m_upperList, rowsKept))
                                   : qMin(qRound(height() * firstShare),
                                          room - heightWith(m_upper, m_upperList, rowsFirst));
    const int lower = qMax(least, wanted);
    setSizes({room - lower, lower});
    m_upperList->showCurrentRow();
}

} // namespace kervan
