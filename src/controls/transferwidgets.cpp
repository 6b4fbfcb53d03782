#include "controls/transferwidgets.h"

#include "controls/announcing.h"
#include "controls/binding.h"
#include "controls/findstrip.h"
#include "controls/gridview.h"
#include "controls/keyedbutton.h"
#include "controls/notestrip.h"
#include "controls/pictures.h"
#include "controls/undo.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int readingTime = 10000; // milliseconds
constexpr int lookedAgain = 100;   // milliseconds

} // namespace

TitleStrip *titleStrip(const QString &title)
{
    auto *strip = new TitleStrip;
    strip->caption()->setObjectName(u"bart"_s);
    strip->caption()->setAlignment(Qt::AlignCenter);
    strip->caption()->setText(title);
    return strip;
}

QPushButton *commandButton(QWidget *window, const QString &name, const QString &caption,
                           const QString &pictureName, const QString &keys)
{
    auto *button = new KeyedButton(caption, keys);
    if (!pictureName.isEmpty())
        button->setIcon(picture(pictureName));
    button->setObjectName(name);
    button->setToolTip(u"%1 (%2)"_s.arg(caption, keys));
    button->setAutoDefault(true); // Enter presses it
    auto *shortcut = new QShortcut(QKeySequence(keys), window);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, button, &QAbstractButton::click);
    return button;
}

QLabel *valueLabel(const QString &name, const QString &caption, TextField &field, Changes changes)
{
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    bind(label, field);
    nameValue(label, caption, field, changes == Changes::Seldom);
    return label;
}

QLabel *labelFor(QWidget *buddy, const QString &text)
{
    auto *label = new QLabel(text);
    label->setBuddy(buddy);
    if (buddy->accessibleName().isEmpty())
        buddy->setAccessibleName(text);
    if (auto *box = qobject_cast<QComboBox *>(buddy); box && box->isEditable())
        box->lineEdit()->setAccessibleName(text);
    return label;
}

QFrame *plainFrame(GridView *view)
{
    auto *frame = new QFrame;
    frame->setObjectName(u"f2"_s);
    frame->setFrameShape(QFrame::StyledPanel);
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(4, 4, 4, 4);
    column->addWidget(view);
    return frame;
}

QStatusBar *transferStatusBar(const QString &countCaption, TextField &count, Notes &notes,
                              ProgressField &progress)
{
    auto *bar = new QStatusBar;
    bar->setObjectName(u"sb1"_s);
    bar->setSizeGripEnabled(false);
    if (!countCaption.isEmpty()) {
        QLabel *value = valueLabel(u"sb1_2"_s, countCaption, count);
        bar->addWidget(labelFor(value, countCaption));
        bar->addWidget(value);
    }
    auto *source = new QLabel;
    source->setObjectName(u"dosya"_s);
    source->setTextFormat(Qt::PlainText);
    source->setTextInteractionFlags(Qt::TextSelectableByMouse);
    source->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    source->setAccessibleName(u"Dosya:"_s);
    QObject::connect(&notes.source, &TextField::changed, source, [source, &notes] {
        const QString &path = notes.source.text();
        source->setText(u"Dosya: %1"_s.arg(QFileInfo(path).fileName()));
        source->setAccessibleName(source->text());
        source->setToolTip(QDir::toNativeSeparators(path).toHtmlEscaped());
    });
    bar->addWidget(source, 1);
    auto *pr1 = new QProgressBar;
    pr1->setObjectName(u"pr1"_s);
    pr1->setAccessibleName(u"İlerleme"_s);
    pr1->setMaximumWidth(260);
    bar->addPermanentWidget(pr1);
    bind(pr1, progress);
    return bar;
}

DropDownFirst::DropDownFirst(QWidget *window)
    : QObject(window)
{
    QCoreApplication::instance()->installEventFilter(this);
}

// A combo box closes its list at this event already, and lets the shortcut follow all the same.
bool DropDownFirst::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride || !QApplication::activePopupWidget() ||
        static_cast<QKeyEvent *>(event)->key() != Qt::Key_Escape)
        return QObject::eventFilter(watched, event);
    event->accept();
    return true;
}

namespace {

bool isReached(const QWidget *control)
{
    return control->isVisible() && control->isEnabled() && control->focusPolicy() & Qt::TabFocus;
}

QList<QWidget *> panesOf(const QWidget *window)
{
    QList<QWidget *> panels{window->findChild<NoteStrip *>()};
    const QLayout *scrolled = window->findChild<QScrollArea *>()->widget()->layout();
    for (int i = 0; i < scrolled->count(); ++i)
        panels << scrolled->itemAt(i)->widget();
    QList<QWidget *> panes;
    for (QWidget *panel : panels) {
        QList<GridView *> lists = panel->findChildren<GridView *>();
        lists.removeIf([](const GridView *list) { return !list->isVisible(); });
        std::ranges::sort(lists, {}, [window](const GridView *list) {
            return list->mapTo(window, QPoint()).y();
        });
        for (GridView *list : lists)
            panes << list;
        if (lists.isEmpty())
            panes << panel;
    }
    return panes;
}

bool goInto(QWidget *pane)
{
    if (auto *list = qobject_cast<GridView *>(pane)) {
        list->enter();
        return true;
    }
    const QList<QWidget *> controls = pane->findChildren<QWidget *>();
    const auto first = std::ranges::find_if(controls, isReached);
    if (first != controls.end())
        (*first)->setFocus(Qt::ShortcutFocusReason);
    return first != controls.end();
}

void goToPane(const QWidget *window, int step)
{
    const QList<QWidget *> panes = panesOf(window);
    const auto count = static_cast<int>(panes.size());
    const auto here = std::ranges::find_if(panes, [at = window->focusWidget()](QWidget *pane) {
        return at && (pane == at || pane->isAncestorOf(at));
    });
    auto next = static_cast<int>(here == panes.end() ? 0 : here - panes.begin());
    for (int tries = 0; tries < count; ++tries) {
        next = (next + step + count) % count;
        if (goInto(panes[next]))
            return;
    }
}

} // namespace

void addListTools(QWidget *window)
{
    installFind(window);
    installUndo(window);
    for (const GridView *list : window->findChildren<GridView *>())
        QObject::connect(list, &GridView::copiedAsSheet, window, [window](int rows) {
            tellBelow(window, u"%1 satır başlıklarıyla kopyalandı."_s.arg(rows));
        });
}

void leadThroughPanes(QWidget *window)
{
    const auto step = [window](const QKeySequence &keys, int by) {
        auto *shortcut = new QShortcut(keys, window);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, window,
                         [window, by] { goToPane(window, by); });
    };
    step(Qt::Key_F6, 1);
    step(Qt::SHIFT | Qt::Key_F6, -1);
    auto *list = window->findChild<GridView *>(u"l1"_s);
    QObject::connect(list->model(), &QAbstractItemModel::modelReset, window, [window, list] {
        const QWidget *at = window->focusWidget();
        const bool wasRead = at == list || qobject_cast<const QPushButton *>(at);
        if (wasRead && list->model()->rowCount() > 0)
            list->enter();
    });
}

void tellBelow(const QWidget *window, const QString &text)
{
    auto *bar = window->findChild<QStatusBar *>(u"sb1"_s);
    bar->showMessage(text, readingTime);
    announce(bar, text);
}

void readIntoList(QWidget *window, const std::function<void()> &command)
{
    auto *list = window->findChild<GridView *>(u"l1"_s);
    bool wasRead = false;
    const QObject watcher; // ends the connection with the command
    QObject::connect(list->model(), &QAbstractItemModel::modelReset, &watcher,
                     [&wasRead] { wasRead = true; });
    command();
    const bool isAtAButton = qobject_cast<const QPushButton *>(window->focusWidget());
    if (wasRead && (list->model()->rowCount() > 0 || !isAtAButton))
        list->enter();
}

FileDrop::FileDrop(QWidget *window)
    : QObject(window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

// On a small desktop the panels are scrolled rather than cut off; what is told stays in view.
QScrollArea *scroller(const QList<QWidget *> &panels)
{
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins({});
    column->setSpacing(screenSpacing);
    for (QWidget *panel : panels)
        column->addWidget(panel, panel == panels.last() ? 1 : 0);
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(content);
    return area;
}

void layOutParts(QWidget *window, const TransferParts &parts)
{
    auto *column = new QVBoxLayout(window);
    column->setContentsMargins(screenMargins);
    column->setSpacing(screenSpacing);
    column->addWidget(parts.strip);
    column->addWidget(new NoteStrip(*parts.notes));
    column->addWidget(scroller(parts.panels), 1);
    column->addWidget(parts.statusBar);
    QObject::connect(new FileDrop(window), &FileDrop::dropped, window,
                     [window, open = parts.openFile](const QString &path) {
                         readIntoList(window, [&] { open(path); });
                     });
    leadThroughPanes(window);
    addListTools(window);
    window->findChild<QPushButton *>(parts.firstButton)->setFocus();
}

bool FileDrop::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove &&
        event->type() != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto *drop = static_cast<QDropEvent *>(event); // a drag that enters is one too
    const QList<QUrl> files = drop->mimeData()->urls();
    if (files.isEmpty() || !files.first().isLocalFile() || QApplication::activeModalWidget())
        return false;
    acceptCopy(*drop);
    if (event->type() != QEvent::Drop)
        return true;
    const QString path = files.first().toLocalFile();
    auto *const window = static_cast<QWidget *>(watched);
    takeBehindDrop(this, [this, window, path, count = files.size()] {
        Q_EMIT dropped(path);
        if (count > 1)
            tellBelow(window, u"%1 dosya bırakıldı, yalnız ilki alındı: %2"_s.arg(count).arg(
                                  QFileInfo(path).fileName()));
    });
    return true;
}

void acceptCopy(QDropEvent &event)
{
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

// By a timer, which whoever waits for an answer of Logo holds back like all that the user does.
void takeBehindDrop(QObject *owner, std::function<void()> take, std::function<bool()> isFree)
{
    auto *const timer = new QTimer(owner);
    timer->setObjectName(u"birakilan"_s);
    QObject::connect(timer, &QTimer::timeout, owner,
                     [timer, take = std::move(take), isFree = std::move(isFree)] {
                         if (QApplication::activeModalWidget() || !isFree())
                             return timer->setInterval(lookedAgain);
                         timer->stop();
                         timer->deleteLater();
                         take();
                     });
    timer->start(0);
}

} // namespace kervan
