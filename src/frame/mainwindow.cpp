#include "frame/mainwindow.h"

#include "base/failure.h"
#include "check/screens/gapspage.h"
#include "controls/announcing.h"
#include "controls/bigbutton.h"
#include "controls/notestrip.h"
#include "controls/pictures.h"
#include "controls/remembered.h"
#include "controls/transferwidgets.h"
#include "frame/dropguide.h"
#include "frame/entries.h"
#include "frame/guidewindow.h"
#include "frame/resim.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "invoices/screens/fatwindow.h"
#include "stocktake/screens/urunwindow.h"
#include "store/screens/definitionwindow.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize wishedSize(1280, 860);
constexpr QSize roomForItsFrame(16, 40);
constexpr QStringView placeKey = u"MDIForm1/place";
constexpr QStringView guideFile = u"kilavuz/kullanim.md";
constexpr QStringView guideAtStart = u"bir-sabahın-akışı";
constexpr int readingTime = 20000;      // milliseconds
constexpr auto guideProperty = "guide"; // of a screen: its page

// With Alt held, the digits of the keypad are the number of a letter (Alt+0220): keys of the
// program on them would take the focus from the field that waits for it.
bool isOfALetterNumber(const QKeyEvent &key)
{
    return key.modifiers() == (Qt::AltModifier | Qt::KeypadModifier) && key.key() >= Qt::Key_0 &&
           key.key() <= Qt::Key_9;
}

} // namespace

MainWindow::MainWindow(Program &program, QWidget *parent)
    : QMainWindow(parent)
    , m_program(program)
    , m_area(new QMdiArea)
    , m_band(new ButtonBand)
    , m_seminmenu(new QMenu(u"secim"_s, this))
{
    setObjectName(u"MDIForm1"_s);
    setWindowTitle(u"Kervan Transfer v2.21"_s);
    QApplication::setWindowIcon(picture(u"kervan"_s)); // of boxes and dialogs, too
    // The keys of a screen work only inside it, also when the one above it has closed.
    connect(m_area, &QMdiArea::subWindowActivated, this, [](QMdiSubWindow *window) {
        if (!window)
            return;
        QWidget *at = screenIn(window)->focusWidget();
        window->setFocus();
        if (at)
            at->setFocus();
    });
    // Later: while a screen goes, it is told of as well, and is no child window any more.
    connect(m_area, &QMdiArea::subWindowActivated, this, &MainWindow::showFront,
            Qt::QueuedConnection);
    m_area->setBackground(QBrush(Qt::NoBrush)); // the window shows through
    m_area->viewport()->installEventFilter(this);
    m_resim = new Resim(m_area->viewport());
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    fillBand();
    column->addWidget(m_band);
    column->addWidget(m_area, 1);
    setCentralWidget(content);
    m_drops = new DropGuide(*this, *m_band);
    buildMenus();
    connect(&program.busy, &Busy::changed, this, &MainWindow::showBusy);
    connect(qApp, &QApplication::focusChanged, this, &MainWindow::bringIntoView);
    qApp->installEventFilter(this); // for F1, which dialogs have as well
    placeItself();
}

// Keys lead to controls that may be scrolled away.
void MainWindow::bringIntoView(QWidget *, QWidget *now)
{
    QMdiSubWindow *window = subWindowOf(now);
    if (!window || window->mdiArea() != m_area)
        return;
    auto *scroller = window->findChild<QScrollArea *>();
    if (!scroller || !scroller->widget()->isAncestorOf(now))
        return;
    const QPoint top = now->mapTo(scroller->widget(), QPoint());
    for (const int y : {top.y() + now->height(), top.y()}) // of what is too high, the upper part
        scroller->ensureVisible(top.x(), y, 4, 4);
}

// The screens go after it, and it no longer follows what becomes of them.
MainWindow::~MainWindow()
{
    disconnect(qApp, nullptr, this, nullptr);
    disconnect(m_area, nullptr, this, nullptr);
    for (const QPointer<QMdiSubWindow> &window : std::as_const(m_transfers)) {
        if (window)
            disconnect(window, nullptr, this, nullptr);
    }
}

void MainWindow::placeItself()
{
    const QSize room = screen()->availableSize();
    resize(wishedSize.boundedTo(room));
    if (wishedSize.boundedTo(room - roomForItsFrame) != wishedSize)
        setWindowState(windowState() | Qt::WindowMaximized);
    if (const QByteArray left = remembered(placeKey).toByteArray(); !left.isEmpty())
        restoreGeometry(left);
}

void MainWindow::fillBand()
{
    int key = 1;
    for (const Entry &entry : bigButtons()) {
        const QString keys = u"Ctrl+%1"_s.arg(key++);
        auto *button = new BigButton;
        button->setObjectName(entry.name);
        button->setText(entry.caption);
        button->setIcon(picture(entry.picture));
        button->setToolTip(u"%1 (%2)"_s.arg(entry.caption, keys));
        button->setKeys(keys);
        const auto openScreen = [this, screen = entry.screen] {
            openByUser(screen);
        };
        connect(button, &QAbstractButton::clicked, this, openScreen);
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, openScreen);
        m_band->add(button);
    }
}

void MainWindow::buildMenus()
{
    addMenu(u"trans"_s, u"   Aktarım   "_s, u"Alt+A"_s, transferEntries());
    addMenu(u"ay"_s, u"İşlemler"_s, u"Alt+I"_s, definitionEntries());
    hintAtGuide();
    for (const ListEntry &entry : invoiceListEntries()) {
        QAction *action =
            entry.operation ? m_seminmenu->addAction(entry.caption) : m_seminmenu->addSeparator();
        action->setObjectName(entry.name);
        if (!entry.operation)
            continue;
        connect(action, &QAction::triggered, this, [this, operation = entry.operation] {
            InvoiceList *list = isAtWork() ? nullptr : activeList();
            const QMdiSubWindow *front = m_area->currentSubWindow();
            if (list && front)
                readIntoList(screenIn(front), [&] { (list->*operation)(); });
            else if (list)
                (list->*operation)();
        });
    }
    m_seminmenu->setObjectName(u"seminmenu"_s);
    auto *crhsp = new QMenu(u"carihesapfis"_s, this);
    crhsp->setObjectName(u"crhsp"_s);
    for (const Entry &entry : slipListEntries())
        crhsp->addAction(entry.caption)->setObjectName(entry.name);
}

void MainWindow::addMenu(const QString &name, const QString &caption, const QString &keys,
                         const QList<Entry> &entries)
{
    QMenu *menu = menuBar()->addMenu(caption);
    menu->setObjectName(name);
    menu->menuAction()->setObjectName(name);
    for (const Entry &entry : entries) {
        QAction *action = menu->addAction(entry.caption);
        action->setObjectName(entry.name);
        connect(action, &QAction::triggered, this,
                [this, screen = entry.screen] { openByUser(screen); });
    }
    connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, [this, menu] {
        menuBar()->setActiveAction(menu->menuAction());
        menu->setActiveAction(menu->actions().first());
    });
}

void MainWindow::tell(const QString &text)
{
    if (!text.isEmpty())
        statusBar()->showMessage(text);
}

void MainWindow::tellFault(const QString &sentence)
{
    const QMdiSubWindow *front = m_area->currentSubWindow();
    auto *strip = front ? front->findChild<NoteStrip *>() : nullptr;
    if (strip && !QApplication::activeModalWidget()) // else it is not of that screen
        strip->tell(sentence);
    tell(sentence);
    announce(this, sentence);
}

QWidget *MainWindow::screenAtWork() const
{
    const QMdiSubWindow *front = m_area->currentSubWindow();
    const bool isSeen = front && front->isVisible() && !QApplication::activeModalWidget();
    return isSeen ? screenIn(front) : nullptr;
}

void MainWindow::openByUser(QStringView screen)
{
    if (isAtWork()) // who reads menus to the blind triggers their entries past every filter
        return;
    if (!m_drops->bringTo(screen))
        open(screen);
}

void MainWindow::open(QStringView screen)
{
    if (const Screen *found = screenOf(screen))
        open(*found);
}

void MainWindow::open(const Screen &screen)
{
    endWithReport(m_program.boxes, [&] {
        if (screen.kind == Screen::Transfer)
            openTransfer(screen);
        else
            openDialog(screen);
    });
}

QMdiSubWindow *MainWindow::transfer(const Screen &screen)
{
    QMdiSubWindow *window = m_transfers.value(screen.word);
    if (!window) {
        QWidget *made = screen.make(*this, screen.word);
        made->setProperty(guideProperty, screen.guide.toString());
        m_starts[screen.word] = made->focusWidget(); // forgotten when it is put into the frame
        // It fills the frame, and its own strip tells its name: a title bar would only take room.
        window = m_area->addSubWindow(made, Qt::SubWindow | Qt::FramelessWindowHint);
        m_transfers[screen.word] = window;
        window->setWindowIcon(windowIcon());
        window->setWindowTitle(made->windowTitle());
        window->setGeometry(m_area->viewport()->rect());
        connect(window, &QObject::destroyed, this, &MainWindow::showFront, Qt::QueuedConnection);
        auto *memory = made->findChild<ListMemory *>();
        if (const auto last = m_lastLists.constFind(made->objectName());
            memory && last != m_lastLists.cend())
            memory->offer(*last);
        if (const auto *gaps = made->findChild<GapsPage *>())
            connect(gaps, &GapsPage::screenWanted, this, &MainWindow::openAt);
    }
    return window;
}

void MainWindow::rememberList(const QWidget *screen)
{
    if (const auto *memory = screen->findChild<ListMemory *>()) {
        if (const auto last = memory->take())
            m_lastLists[screen->objectName()] = *last;
    }
}

QMdiSubWindow *MainWindow::subWindowOf(QWidget *screen)
{
    while (screen && !qobject_cast<QMdiSubWindow *>(screen))
        screen = screen->parentWidget();
    return static_cast<QMdiSubWindow *>(screen);
}

QWidget *MainWindow::screenIn(const QMdiSubWindow *window)
{
    return window->widget();
}

void MainWindow::showFront()
{
    const QMdiSubWindow *front = nullptr;
    for (const QPointer<QMdiSubWindow> &window : std::as_const(m_transfers)) {
        if (window && window->isVisible() && (!front || window == m_area->activeSubWindow()))
            front = window;
    }
    m_band->setCompact(front);
    const QString word = front ? screenIn(front)->objectName() : QString();
    const QString before = std::exchange(m_frontWord, word);
    for (int i = 0; i < m_band->buttons().size(); ++i) {
        BigButton *button = m_band->buttons()[i];
        button->setFront(bigButtons()[i].screen == word);
        if (!front && !focusWidget() && bigButtons()[i].screen == before)
            button->setFocus(); // the way back
    }
}

void MainWindow::openTransfer(const Screen &screen)
{
    const bool isNew = !m_transfers.value(screen.word);
    QMdiSubWindow *window = transfer(screen);
    window->show();
    m_area->setActiveSubWindow(window);
    window->raise();
    window->setFocus(); // from the button back to the screen, whose keys work only there
    if (const QPointer<QWidget> start = m_starts.take(screen.word))
        start->setFocus();
    if (isNew && screen.load) {
        // Laid out and painted, in the two rounds that a list takes; nothing else comes in.
        for (int round = 0; round < 2; ++round) {
            QApplication::sendPostedEvents();
            window->repaint();
        }
        screen.load(screenIn(window));
    }
}

void MainWindow::openAt(const QString &screen, const QString &code)
{
    open(screen);
    QDialog *dialog = m_dialogs.value(screen);
    if (auto *definitions = qobject_cast<DefinitionWindow *>(dialog))
        definitions->goTo(code);
    else if (auto *prices = qobject_cast<UrunWindow *>(dialog))
        prices->goTo(code);
}

void MainWindow::openDialog(const Screen &screen)
{
    QDialog *dialog = m_dialogs.value(screen.word);
    if (!dialog) {
        dialog = qobject_cast<QDialog *>(screen.make(*this, screen.word));
        m_dialogs[screen.word] = dialog;
        dialog->setProperty(guideProperty, screen.guide.toString());
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setModal(screen.kind == Screen::Modal);
    }
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

// Nothing comes in while work goes on, so the bar is painted at once.
void MainWindow::showBusy()
{
    const QString &text = m_program.busy.text();
    if (m_isBusy == text.isEmpty()) {
        m_isBusy = !m_isBusy;
        if (m_isBusy)
            QApplication::setOverrideCursor(Qt::WaitCursor);
        else
            QApplication::restoreOverrideCursor();
    }
    announce(this, text.isEmpty() ? m_busyWith + u" bitti"_s : text);
    m_busyWith = text;
    if (!m_busyBar)
        m_busyBar = frontStatusBar();
    if (!m_busyBar)
        return;
    m_busyBar->showMessage(text);
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    m_busyBar->repaint();
    if (text.isEmpty())
        m_busyBar = nullptr;
}

QStatusBar *MainWindow::frontStatusBar() const
{
    const QMdiSubWindow *window = m_area->currentSubWindow();
    return window ? window->findChild<QStatusBar *>(u"sb1"_s) : nullptr;
}

void MainWindow::hintAtGuide()
{
    auto *hint = new QToolButton;
    hint->setObjectName(u"kilavuzac"_s);
    hint->setText(u"Kılavuz: F1"_s);
    hint->setToolTip(u"Öndeki ekranın kılavuzdaki sayfasını açar (F1)"_s);
    hint->setAutoRaise(true);
    hint->setFocusPolicy(Qt::NoFocus); // the screen keeps its place
    connect(hint, &QAbstractButton::clicked, this, [this] { showGuide(this); });
    menuBar()->setCornerWidget(hint);
}

QString MainWindow::guideOf(const QWidget *part) const
{
    for (; part && part != this; part = part->parentWidget()) {
        if (QString page = part->property(guideProperty).toString(); !page.isEmpty())
            return page;
    }
    const QMdiSubWindow *front = m_area->currentSubWindow();
    if (part && front && front->isVisible())
        return screenIn(front)->property(guideProperty).toString();
    return part ? guideAtStart.toString() : QString();
}

void MainWindow::showGuide(const QWidget *part)
{
    if (!m_guide)
        m_guide = std::make_unique<GuideWindow>();
    const QString path = m_program.path(guideFile);
    if (m_guide->isEmpty() && !m_guide->open(path)) {
        QStatusBar *bar = frontStatusBar();
        return (bar ? bar : statusBar())
            ->showMessage(u"Kılavuz yok: %1. kervan-kurulum'u bu program klasörü için yeniden "
                          "çalıştırın, sonra F1'e basın."_s.arg(QDir::toNativeSeparators(path)),
                          readingTime);
    }
    while (QWidget *popup = QApplication::activePopupWidget())
        popup->close();
    m_guide->showSection(guideOf(part));
}

InvoiceList *MainWindow::activeList()
{
    auto *fat = openScreen<FatWindow>(u"fat");
    auto *fatduz = openScreen<FatduzWindow>(u"fatduz");
    if (m_program.aktifform == u"1" && fat)
        return &fat->fat().liste;
    if (m_program.aktifform == u"2" && fatduz)
        return &fatduz->fatduz().liste;
    return nullptr;
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    m_resim->place(size());
}

bool MainWindow::isAtWork() const
{
    return QApplication::activeModalWidget() || !m_program.busy.text().isEmpty();
}

// The keys of a screen go on working until a box in front of it has the focus, and work that shows
// a box goes on behind it.
bool MainWindow::isBehindABox(const QObject *shortcut) const
{
    const auto *owner = qobject_cast<const QWidget *>(shortcut->parent());
    return owner && owner->window() == this && QApplication::activeModalWidget();
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        isOfALetterNumber(*static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::Shortcut && isBehindABox(watched))
        return true;
    if (event->type() == QEvent::KeyPress && watched->isWidgetType()) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier) {
            showGuide(static_cast<QWidget *>(watched));
            return true;
        }
    }
    if (watched == m_area->viewport() && event->type() == QEvent::Resize) {
        for (QMdiSubWindow *window : m_area->subWindowList())
            window->setGeometry(m_area->viewport()->rect());
    }
    return QMainWindow::eventFilter(watched, event);
}

bool MainWindow::event(QEvent *event)
{
    // A menu that the mouse passes would clear the status bar, which tells what is told once.
    if (event->type() == QEvent::StatusTip)
        return true;
    if (event->type() == QEvent::WindowActivate)
        m_resim->place(size());
    return QMainWindow::event(event);
}

// The whole program ends with the frame; open screens are not asked.
void MainWindow::closeEvent(QCloseEvent *event)
{
    remember(placeKey, saveGeometry());
    QMainWindow::closeEvent(event);
    QApplication::quit();
}

} // namespace kervan
