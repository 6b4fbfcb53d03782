#include "controls/panes.h"

#include "controls/gridview.h"
#include "controls/remembered.h"

namespace kervan {

namespace {

constexpr double firstShare = 0.3;

} // namespace

Panes::Panes(QWidget *upper, QWidget *lower, GridView *lowerList, const QString &memoryKey)
    : QSplitter(Qt::Vertical)
    , m_lower(lower)
    , m_lowerList(lowerList)
    , m_memoryKey(memoryKey)
{
    addWidget(upper);
    addWidget(lower);
    setStretchFactor(0, 1);
    setStretchFactor(1, 0);
    setChildrenCollapsible(false);
    m_share = remembered(m_memoryKey).isValid() ? remembered(m_memoryKey).toDouble() : firstShare;
    lowerList->shrinkWhenEmpty();
    const auto follow = [this] {
        const bool isFilled = m_lowerList->model()->rowCount() > 0;
        if (isFilled == m_isFilled)
            return;
        m_isFilled = isFilled;
        share();
    };
    connect(lowerList->model(), &QAbstractItemModel::modelReset, this, follow);
    connect(lowerList->model(), &QAbstractItemModel::rowsInserted, this, follow);
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
    const int least = m_lower->minimumSizeHint().height();
    m_lower->setMaximumHeight(m_isFilled ? QWIDGETSIZE_MAX : least);
    const int lower = m_isFilled ? qMax(least, qRound(height() * m_share)) : least;
    setSizes({height() - lower - handleWidth(), lower});
}

} // namespace kervan
