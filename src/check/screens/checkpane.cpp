#include "check/screens/checkpane.h"

#include "controls/gridview.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolButton>

namespace kervan {

using namespace Qt::StringLiterals;

CheckPane::CheckPane(QWidget *parent)
    : LowerPane(parent)
    , m_line(new QHBoxLayout)
    , m_tabs(new QTabBar)
    , m_handle(new QToolButton)
    , m_pages(new QStackedWidget)
{
    setObjectName(u"denetimPaneli"_s);
    m_tabs->setObjectName(u"sekmeler"_s);
    m_tabs->setAccessibleName(u"Liste altındaki sayfalar"_s);
    m_tabs->setExpanding(false);
    m_tabs->setDrawBase(false);
    m_tabs->setUsesScrollButtons(true);
    m_handle->setObjectName(u"panelAc"_s);
    m_handle->setAutoRaise(true);
    m_handle->setFocusPolicy(Qt::NoFocus);
    m_line->setSpacing(8);
    m_line->addWidget(m_handle);
    m_line->addWidget(m_tabs);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addLayout(m_line);
    column->addWidget(m_pages, 1);
    // A tab that is clicked opens the pane; the one that is shown shuts it again.
    connect(m_tabs, &QTabBar::tabBarClicked, this, [this](int page) {
        if (page >= 0)
            setOpen(!m_isOpen || page != m_pages->currentIndex() || page == 0);
    });
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int page) { show(page); });
    connect(m_handle, &QAbstractButton::clicked, this, [this] { setOpen(!m_isOpen); });
    setOpen(false);
}

void CheckPane::addPage(QWidget *page, const QString &title, Opening opening)
{
    // Only the page in front asks for room.
    page->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_pages->addWidget(page);
    const int place = m_tabs->addTab(title);
    const QString keys = u"Alt+%1"_s.arg(place + 1);
    m_tabs->setTabToolTip(place, u"%1 (%2)"_s.arg(title, keys));
    if (opening == Opening::Open)
        setOpen(true);
    show(m_tabs->currentIndex());
}

void CheckPane::setTitle(const QWidget *page, const QString &title)
{
    const int place = m_pages->indexOf(const_cast<QWidget *>(page));
    if (m_tabs->tabText(place) == title)
        return;
    m_tabs->setTabText(place, title);
    m_tabs->setTabToolTip(place, u"%1 (Alt+%2)"_s.arg(title).arg(place + 1));
}

void CheckPane::showPage(QWidget *page)
{
    m_tabs->setCurrentIndex(m_pages->indexOf(page));
    setOpen(true);
}

void CheckPane::addToLine(QWidget *part)
{
    m_line->addWidget(part, 1);
}

GridView *CheckPane::listOfPage() const
{
    return m_pages->currentWidget() ? m_pages->currentWidget()->findChild<GridView *>() : nullptr;
}

void CheckPane::show(int page)
{
    if (page < 0 || page >= m_pages->count())
        return;
    if (QWidget *before = m_pages->currentWidget())
        before->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_pages->setCurrentIndex(page);
    m_pages->currentWidget()->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    Q_EMIT roomChanged();
}

void CheckPane::setOpen(bool open)
{
    m_isOpen = open;
    m_pages->setVisible(open);
    m_handle->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
    const QString what = open ? u"Alt bölmeyi kapat (Alt+0)"_s : u"Alt bölmeyi aç (Alt+0)"_s;
    m_handle->setToolTip(what);
    m_handle->setAccessibleName(what);
    Q_EMIT roomChanged();
}

// The keys are the window's that the pane stands on.
void CheckPane::showEvent(QShowEvent *event)
{
    LowerPane::showEvent(event);
    if (std::exchange(m_hasKeys, true))
        return;
    QWidget *screen = this;
    while (screen->parentWidget() && !screen->findChild<QWidget *>(u"sb1"_s))
        screen = screen->parentWidget();
    const auto key = [&](int digit, auto &&action) {
        auto *shortcut = new QShortcut(QKeySequence(u"Alt+%1"_s.arg(digit)), screen);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    key(0, [this] { setOpen(!m_isOpen); });
    for (int place = 0; place < m_pages->count(); ++place)
        key(place + 1, [this, place] {
            showPage(m_pages->widget(place));
            if (GridView *list = listOfPage())
                list->enter();
        });
}

} // namespace kervan
