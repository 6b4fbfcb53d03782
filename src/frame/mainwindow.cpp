#include "frame/mainwindow.h"

#include "base/failure.h"
#include "controls/bigbutton.h"
#include "controls/pictures.h"
#include "frame/entries.h"
#include "frame/resim.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "invoices/screens/fatwindow.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QStatusBar>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

MainWindow::MainWindow(Program &program, QWidget *parent)
    : QMainWindow(parent)
    , m_program(program)
    , m_area(new QMdiArea)
    , m_seminmenu(new QMenu(u"secim"_s, this))
{
    setObjectName(u"MDIForm1"_s);
    setWindowTitle(u"Kervan Transfer v2.21"_s);
    setWindowIcon(picture(u"kervan"_s));
    // The keys of a screen work only inside it, also when the one above it has closed.
    connect(m_area, &QMdiArea::subWindowActivated, this, [](QMdiSubWindow *window) {
        if (window)
            window->setFocus();
    });
    // A screen keeps its size when the frame gets smaller; what then lies beyond is scrolled to.
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setBackground(palette().brush(QPalette::Window));
    m_resim = new Resim(m_area->viewport());
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(buttonBand());
    column->addWidget(m_area, 1);
    setCentralWidget(content);
    buildMenus();
    connect(&program.busy, &Busy::changed, this, &MainWindow::showBusy);
    resize(1280, 860);
}

QWidget *MainWindow::buttonBand()
{
    auto *band = new QWidget;
    auto *row = new QHBoxLayout(band);
    row->setContentsMargins(8, 6, 8, 6);
    row->setSpacing(6);
    int key = 1;
    for (const Entry &entry : bigButtons()) {
        const QString keys = u"Ctrl+%1"_s.arg(key++);
        auto *button = new BigButton;
        button->setObjectName(entry.name);
        button->setText(entry.caption);
        button->setIcon(picture(entry.picture));
        button->setToolTip(u"%1 (%2)"_s.arg(entry.caption, keys));
        const auto openScreen = [this, screen = entry.screen] {
            open(screen);
        };
        connect(button, &QAbstractButton::clicked, this, openScreen);
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, openScreen);
        row->addWidget(button);
    }
    return band;
}

void MainWindow::buildMenus()
{
    addMenu(u"trans"_s, u"   Aktarım   "_s, u"Alt+A"_s, transferEntries());
    addMenu(u"ay"_s, u"İşlemler"_s, u"Alt+I"_s, definitionEntries());
    for (const ListEntry &entry : invoiceListEntries()) {
        QAction *action =
            entry.operation ? m_seminmenu->addAction(entry.caption) : m_seminmenu->addSeparator();
        action->setObjectName(entry.name);
        if (!entry.operation)
            continue;
        connect(action, &QAction::triggered, this, [this, operation = entry.operation] {
            if (InvoiceList *list = activeList())
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
        connect(action, &QAction::triggered, this, [this, screen = entry.screen] { open(screen); });
    }
    connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, [this, menu] {
        menuBar()->setActiveAction(menu->menuAction());
        menu->setActiveAction(menu->actions().first());
    });
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
        window = m_area->addSubWindow(screen.make(*this, screen.word));
        m_transfers[screen.word] = window;
        window->setWindowIcon(windowIcon());
        window->setGeometry(m_area->viewport()->rect());
    }
    return window;
}

void MainWindow::openTransfer(const Screen &screen)
{
    const bool isNew = !m_transfers.value(screen.word);
    QMdiSubWindow *window = transfer(screen);
    if (window->isMinimized())
        window->showNormal();
    window->show();
    m_area->setActiveSubWindow(window);
    window->raise();
    window->setFocus(); // from the button back to the screen, whose keys work only there
    if (isNew && screen.load) {
        // Laid out and painted, in the two rounds that a list takes; nothing else comes in.
        for (int round = 0; round < 2; ++round) {
            QApplication::sendPostedEvents();
            window->repaint();
        }
        screen.load(window->widget());
    }
}

void MainWindow::openDialog(const Screen &screen)
{
    QDialog *dialog = m_dialogs.value(screen.word);
    if (!dialog) {
        dialog = qobject_cast<QDialog *>(screen.make(*this, screen.word));
        m_dialogs[screen.word] = dialog;
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
    if (!m_busyBar) {
        const QMdiSubWindow *window = m_area->currentSubWindow();
        m_busyBar = window ? window->findChild<QStatusBar *>(u"sb1"_s) : nullptr;
    }
    if (!m_busyBar)
        return;
    m_busyBar->showMessage(text);
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    m_busyBar->repaint();
    if (text.isEmpty())
        m_busyBar = nullptr;
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

bool MainWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        m_resim->place(size());
    return QMainWindow::event(event);
}

// The whole program ends with the frame; open screens are not asked.
void MainWindow::closeEvent(QCloseEvent *event)
{
    QMainWindow::closeEvent(event);
    QApplication::quit();
}

} // namespace kervan
