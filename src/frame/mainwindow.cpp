#include "frame/mainwindow.h"

#include "base/failure.h"
#include "cards/screens/crwindow.h"
#include "cards/screens/stoktrfwindow.h"
#include "cards/screens/stwindow.h"
#include "controls/bigbutton.h"
#include "controls/pictures.h"
#include "frame/entries.h"
#include "frame/resim.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "invoices/screens/fatwindow.h"
#include "slips/screens/slipwindow.h"
#include "stocktake/screens/sayimwindow.h"
#include "stocktake/screens/urunwindow.h"
#include "store/screens/definitionwindow.h"
#include "store/screens/settingswindows.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The screen asks to be closed; the subwindow around it is what closes.
template<class Screen>
Screen *closable(Screen *screen)
{
    QObject::connect(screen, &Screen::closeWanted, screen,
                     [screen] { screen->parentWidget()->close(); });
    return screen;
}

// The invoice screen brings up the menu of the list operations.
template<class Screen>
Screen *withListMenu(Screen *screen, QMenu *menu)
{
    QObject::connect(screen, &Screen::listMenuWanted, menu,
                     [menu](const QPoint &place) { menu->popup(place); });
    return screen;
}

} // namespace

MainWindow::MainWindow(Program &program, QWidget *parent)
    : QMainWindow(parent)
    , m_program(program)
    , m_area(new QMdiArea)
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
    const auto addMenu = [this](const QString &name, const QString &caption, const QString &keys,
                                const QList<Entry> &entries) {
        QMenu *menu = menuBar()->addMenu(caption);
        menu->setObjectName(name);
        menu->menuAction()->setObjectName(name);
        for (const Entry &entry : entries) {
            QAction *action = menu->addAction(entry.caption);
            action->setObjectName(entry.name);
            connect(action, &QAction::triggered, this,
                    [this, screen = entry.screen] { open(screen); });
        }
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, [this, menu] {
            menuBar()->setActiveAction(menu->menuAction());
            menu->setActiveAction(menu->actions().first());
        });
    };
    addMenu(u"trans"_s, u"   Aktarım   "_s, u"Alt+A"_s, transferEntries());
    addMenu(u"ay"_s, u"İşlemler"_s, u"Alt+I"_s, definitionEntries());

    m_seminmenu = new QMenu(u"secim"_s, this);
    m_seminmenu->setObjectName(u"seminmenu"_s);
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
    auto *crhsp = new QMenu(u"carihesapfis"_s, this);
    crhsp->setObjectName(u"crhsp"_s);
    for (const Entry &entry : slipListEntries())
        crhsp->addAction(entry.caption)->setObjectName(entry.name);
}

void MainWindow::open(const QString &screen)
{
    endWithReport(m_program.boxes, [&] {
        openTransfer(screen);
        openDialog(screen);
    });
}

QWidget *MainWindow::makeTransfer(const QString &screen)
{
    if (screen == u"cr") {
        auto *cr = closable(new CrWindow(m_program));
        connect(cr, &CrWindow::guncellemeWanted, this, [this] {
            showDialog(u"sqlbaglanti"_s,
                       [this] { return makeSqlbaglanti(SqlbaglantiWindow::Way::Update); });
        });
        return cr;
    }
    if (screen == u"sayimform")
        return closable(new SayimWindow(m_program));
    if (screen == u"stoktrf") {
        auto *stoktrf = closable(new StoktrfWindow(m_program));
        connect(stoktrf, &StoktrfWindow::meyWanted, this, [this] { open(u"st"_s); });
        return stoktrf;
    }
    if (screen == u"st")
        return closable(new StWindow(m_program));
    if (screen == u"fat")
        return withListMenu(closable(new FatWindow(m_program)), m_seminmenu);
    if (screen == u"fatduz")
        return withListMenu(closable(new FatduzWindow(m_program)), m_seminmenu);
    for (const SlipForm *form : {&cafis(), &cafis2(), &cafis3(), &carifisduzey()}) {
        if (screen == form->screen)
            return closable(new SlipWindow(m_program, *form));
    }
    return nullptr;
}

QMdiSubWindow *MainWindow::transfer(const QString &screen)
{
    QPointer<QMdiSubWindow> &window = m_transfers[screen];
    QWidget *content = window ? nullptr : makeTransfer(screen);
    if (content) {
        window = m_area->addSubWindow(content);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->setWindowIcon(windowIcon());
        window->setGeometry(m_area->viewport()->rect());
    }
    return window;
}

void MainWindow::openTransfer(const QString &screen)
{
    QMdiSubWindow *window = transfer(screen);
    if (!window)
        return;
    if (window->isMinimized())
        window->showNormal();
    window->show();
    m_area->setActiveSubWindow(window);
    window->raise();
    window->setFocus(); // from the button back to the screen, whose keys work only there
}

QDialog *MainWindow::makeDialog(const QString &screen)
{
    if (screen == u"urunform")
        return new UrunWindow(m_program, this);
    if (screen == u"ayr")
        return new AyrWindow(m_program, this);
    if (screen == u"kdvmu")
        return makeKdvmu();
    if (screen == u"sqlbaglanti")
        return makeSqlbaglanti(SqlbaglantiWindow::Way::Settings);
    if (const Definition *definition = definitionOf(screen)) {
        auto *window = new DefinitionWindow(m_program, *definition, this);
        connect(window, &DefinitionWindow::refreshWanted, this, &MainWindow::refresh);
        return window;
    }
    for (const ValueDialog &dialog : valueDialogs()) {
        if (dialog.screen == screen)
            return makeValueDialog(dialog);
    }
    return nullptr;
}

QDialog *MainWindow::makeKdvmu()
{
    auto *window = new KdvmuWindow(m_program, this);
    connect(window, &KdvmuWindow::saved, this, [this](const QString &head, const QString &line) {
        if (auto *fat = openScreen<FatWindow>(u"fat"_s)) {
            fat->fat().tanimlar.kdvmuafiyetgenel = head;
            fat->fat().tanimlar.kdvmuafiyetsatir = line;
        }
    });
    return window;
}

QDialog *MainWindow::makeSqlbaglanti(SqlbaglantiWindow::Way way)
{
    auto *cr = openScreen<CrWindow>(u"cr"_s);
    auto *window = new SqlbaglantiWindow(m_program, cr ? &cr->cr().l1 : nullptr, way, this);
    connect(window, &SqlbaglantiWindow::saved, this, [this] {
        if (auto *fat = openScreen<FatWindow>(u"fat"_s))
            fat->fat().sqlyukle();
    });
    return window;
}

QDialog *MainWindow::makeValueDialog(const ValueDialog &dialog)
{
    auto *window = new ValueWindow(m_program, dialog, this);
    if (dialog.screen == u"brmset")
        connect(window, &ValueWindow::saved, this, [this](const QString &value) {
            inBackground<StoktrfWindow>(u"stoktrf"_s)->stoktrf().brmseti.setText(value);
        });
    if (dialog.screen == u"bankakodu")
        connect(window, &ValueWindow::saved, this, [this](const QString &value) {
            inBackground<SlipWindow>(u"cafis2"_s)->setBankaKodu(value);
        });
    if (dialog.screen == u"kskod")
        connect(window, &ValueWindow::saved, this, [this](const QString &value) {
            inBackground<SlipWindow>(u"cafis2"_s)->setKasaKodu(value);
        });
    return window;
}

void MainWindow::refresh(Definition::Refresh refresh)
{
    auto *fat = openScreen<FatWindow>(u"fat"_s);
    auto *stock = openScreen<StoktrfWindow>(u"stoktrf"_s);
    if (fat && refresh != Definition::StockScreen)
        fat->fat().yukle();
    if (stock && refresh == Definition::StockScreen)
        stock->stoktrf().ozkodyukle();
}

void MainWindow::openDialog(const QString &screen)
{
    showDialog(screen, [&] { return makeDialog(screen); });
}

void MainWindow::showDialog(const QString &screen, const std::function<QDialog *()> &make)
{
    QDialog *dialog = m_dialogs.value(screen);
    if (!dialog) {
        dialog = make();
        if (!dialog)
            return;
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setModal(screen != u"kdvmu");
        m_dialogs[screen] = dialog;
    }
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

InvoiceList *MainWindow::activeList()
{
    auto *fat = openScreen<FatWindow>(u"fat"_s);
    auto *fatduz = openScreen<FatduzWindow>(u"fatduz"_s);
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
