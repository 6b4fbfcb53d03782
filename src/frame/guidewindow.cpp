#include "frame/guidewindow.h"

#include "controls/pictures.h"
#include "controls/remembered.h"
#include "frame/guidepage.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <QWindow>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize wishedSize(1120, 780);
constexpr QSize roomForItsFrame(16, 40);
constexpr int contentsWidth = 270;
constexpr int leastPageWidth = 420;
constexpr QStringView placeKey = u"kilavuz/place";
constexpr QStringView panesKey = u"kilavuz/panes";
constexpr int anchorRole = Qt::UserRole;

QToolButton *arrow(Qt::ArrowType type, const QString &name, const QString &caption,
                   const QString &keys)
{
    auto *button = new QToolButton;
    button->setObjectName(name);
    button->setArrowType(type);
    button->setAutoRaise(true);
    button->setAccessibleName(caption);
    button->setToolTip(u"%1 (%2)"_s.arg(caption, keys));
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace

GuideWindow::GuideWindow()
    : m_page(new GuidePage)
    , m_contents(new QTreeWidget)
    , m_wanted(new QLineEdit)
    , m_told(new QLabel)
    , m_panes(new QSplitter)
{
    setObjectName(u"kilavuz"_s);
    setWindowTitle(
        u"Kervan Transfer %1 kılavuzu"_s.arg(QApplication::applicationVersion()).simplified());
    setWindowIcon(picture(u"kervan"_s));
    m_page->setObjectName(u"kilavuzmetni"_s);
    m_page->setAccessibleName(u"Kılavuz"_s);
    m_page->setMinimumWidth(leastPageWidth);
    m_contents->setObjectName(u"icindekiler"_s);
    m_contents->setAccessibleName(u"İçindekiler"_s);
    m_contents->setFrameShape(QFrame::NoFrame);
    m_contents->setHeaderHidden(true);
    m_contents->setStyleSheet(u"QTreeView::item { padding: 3px 0; }"_s);
    m_contents->setTextElideMode(Qt::ElideRight);
    m_panes->addWidget(m_contents);
    m_panes->addWidget(m_page);
    m_panes->setStretchFactor(1, 1);
    m_panes->setChildrenCollapsible(false);
    m_panes->setSizes({contentsWidth, wishedSize.width() - contentsWidth});
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(searchBar());
    column->addWidget(m_panes, 1);

    connect(m_contents, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) {
        m_page->goTo(item->data(0, anchorRole).toString());
        m_page->setFocus();
    });
    connect(m_contents, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem *item) { m_page->goTo(item->data(0, anchorRole).toString()); });
    connect(m_page, &GuidePage::sectionChanged, this, &GuideWindow::markSection);
    connect(this, &GuideWindow::blocked, this, &GuideWindow::standWithDialog, Qt::QueuedConnection);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);

    resize(wishedSize.boundedTo(screen()->availableSize() - roomForItsFrame));
    if (const QByteArray left = remembered(placeKey).toByteArray(); !left.isEmpty())
        restoreGeometry(left);
    if (const QByteArray left = remembered(panesKey).toByteArray(); !left.isEmpty())
        m_panes->restoreState(left);
}

QWidget *GuideWindow::searchBar()
{
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(8, 5, 8, 5);
    auto *back = arrow(Qt::LeftArrow, u"geri"_s, u"Geri"_s, u"Alt+Sol"_s);
    auto *forward = arrow(Qt::RightArrow, u"ileri"_s, u"İleri"_s, u"Alt+Sağ"_s);
    for (QToolButton *button : {back, forward}) {
        button->setEnabled(false);
        row->addWidget(button);
    }
    connect(back, &QAbstractButton::clicked, m_page, &QTextBrowser::backward);
    connect(forward, &QAbstractButton::clicked, m_page, &QTextBrowser::forward);
    connect(m_page, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(m_page, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);

    m_wanted->setObjectName(u"kilavuzdaara"_s);
    m_wanted->setAccessibleName(u"Kılavuzda ara"_s);
    m_wanted->setPlaceholderText(u"Kılavuzda ara (Ctrl+F)"_s);
    m_wanted->setClearButtonEnabled(true);
    m_wanted->setMaximumWidth(280);
    row->addStretch();
    row->addWidget(m_told);
    row->addWidget(m_wanted, 1);
    auto *up = arrow(Qt::UpArrow, u"onceki"_s, u"Öncekini bul"_s, u"Shift+F3"_s);
    auto *down = arrow(Qt::DownArrow, u"sonraki"_s, u"Sonrakini bul"_s, u"F3"_s);
    row->addWidget(up);
    row->addWidget(down);
    connect(m_wanted, &QLineEdit::returnPressed, this, [this] { search(false); });
    connect(m_wanted, &QLineEdit::textEdited, m_told, &QLabel::clear);
    connect(up, &QAbstractButton::clicked, this, [this] { search(true); });
    connect(down, &QAbstractButton::clicked, this, [this] { search(false); });
    const auto key = [this](const QKeySequence &keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    key(Qt::Key_F3, [this] { search(false); });
    key(Qt::SHIFT | Qt::Key_F3, [this] { search(true); });
    key(Qt::CTRL | Qt::Key_F, [this] {
        m_wanted->setFocus();
        m_wanted->selectAll();
    });
    return bar;
}

bool GuideWindow::open(const QString &path)
{
    if (!m_page->open(path))
        return false;
    fillContents();
    return true;
}

bool GuideWindow::isEmpty() const
{
    return m_page->headings().isEmpty();
}

void GuideWindow::fillContents()
{
    QTreeWidgetItem *chapter = nullptr;
    for (const GuidePage::Heading &heading : m_page->headings()) {
        if (heading.level < 2) // the title
            continue;
        auto *item = heading.level == 2 || !chapter ? new QTreeWidgetItem(m_contents)
                                                    : new QTreeWidgetItem(chapter);
        item->setText(0, heading.title);
        item->setToolTip(0, heading.title);
        item->setData(0, anchorRole, heading.anchor);
        if (heading.level == 2)
            chapter = item;
    }
}

void GuideWindow::markSection()
{
    const QString anchor = m_page->section();
    for (QTreeWidgetItemIterator item(m_contents); *item; ++item) {
        if ((*item)->data(0, anchorRole) == anchor)
            m_contents->setCurrentItem(*item);
    }
}

void GuideWindow::search(bool backward)
{
    const QString wanted = m_wanted->text();
    if (wanted.isEmpty())
        return m_wanted->setFocus();
    const QTextDocument::FindFlags way =
        backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    const QTextCursor before = m_page->textCursor();
    m_told->clear();
    if (!m_page->find(wanted, way)) {
        m_page->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
        if (!m_page->find(wanted, way)) {
            m_page->setTextCursor(before);
            return m_told->setText(u"Bulunamadı"_s);
        }
        m_told->setText(backward ? u"Sondan başlandı"_s : u"Baştan başlandı"_s);
    }
    m_page->showCursorAmidst();
}

void GuideWindow::showSection(const QString &anchor)
{
    show();
    standWithDialog();
    if (!anchor.isEmpty())
        m_page->goTo(anchor);
    if (isMinimized())
        showNormal();
    raise();
    activateWindow();
    m_page->setFocus();
}

void GuideWindow::standWithDialog()
{
    const QWidget *dialog = QApplication::activeModalWidget();
    if (windowHandle())
        windowHandle()->setTransientParent(dialog ? dialog->window()->windowHandle() : nullptr);
}

bool GuideWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowBlocked) // the dialog is not there yet
        Q_EMIT blocked();
    return QWidget::event(event);
}

void GuideWindow::closeEvent(QCloseEvent *event)
{
    remember(placeKey, saveGeometry());
    remember(panesKey, m_panes->saveState());
    QWidget::closeEvent(event);
}

} // namespace kervan
