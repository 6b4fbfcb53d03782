#pragma once

#include "check/screens/listmemory.h"
#include "frame/screens.h"
#include "invoices/invoicelist.h"
#include "store/program.h"

#include <QHash>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>

#include <memory>

class QDialog;
class QMenu;
class QStatusBar;

namespace kervan {

class ButtonBand;
class DropGuide;
class GuideWindow;
class Resim;
struct Entry;

/// The frame `MDIForm1`: holds every transfer screen as a child and opens the definition screens
/// over itself. Each screen is one instance, made when it is first asked for.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(Program &program, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Makes the screen or brings the one that is open forward. A failure at its opening is shown
    /// in a plain box, and the screen is then not there.
    void open(QStringView screen);
    void open(const Screen &screen);
    /// Opens the screen that gives a definition, at this code.
    void openAt(const QString &screen, const QString &code);

    /// Tells it in a line below the screens; an empty text leaves the line away.
    void tell(const QString &text);
    /// Tells in the strip of the screen in front what went wrong in it.
    void tellFault(const QString &sentence);
    /// The screen in front, on which a step can tell what it waits for; null where none is seen or
    /// a dialog lies before it.
    QWidget *screenAtWork() const;

    Program &program() { return m_program; }
    /// The menu `seminmenu` of the operations on an invoice list.
    QMenu *listMenu() const { return m_seminmenu; }
    /// The transfer's window if it is open, else null.
    template<class Window>
    Window *openScreen(QStringView screen) const
    {
        const auto window = m_transfers.value(screen);
        return window ? qobject_cast<Window *>(screenIn(window)) : nullptr;
    }
    /// The transfer's window, which is made unseen if it isn't open, and stays so; the user goes on
    /// where he was.
    template<class Window>
    Window *inBackground(QStringView screen)
    {
        QMdiSubWindow *active = m_area->activeSubWindow();
        const QPointer<QWidget> focus = focusWidget();
        auto *window = qobject_cast<Window *>(screenIn(transfer(*screenOf(screen))));
        if (active) {
            m_area->setActiveSubWindow(active);
            active->setFocus();
            if (focus)
                focus->setFocus();
        }
        return window;
    }
    /// A step of some screen is not yet done: it works, or it waits behind a box for an answer. No
    /// screen may close before.
    bool isAtWork() const;
    /// Remembers what a transfer holds, and offers it when the screen is opened the next time.
    void rememberList(const QWidget *screen);
    /// The child of the frame that a transfer's window stands in.
    static QMdiSubWindow *subWindowOf(QWidget *screen);

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    static QWidget *screenIn(const QMdiSubWindow *window);
    bool isBehindABox(const QObject *shortcut) const;
    /// Opens it as the user asks for it: with the file that waits for a screen, if it fits.
    void openByUser(QStringView screen);
    void fillBand();
    void buildMenus();
    /// Tells at the end of the menu bar that there is a guide.
    void hintAtGuide();
    /// Opens the guide at the page of the screen that this is a part of.
    void showGuide(const QWidget *part);
    QString guideOf(const QWidget *part) const;
    void addMenu(const QString &name, const QString &caption, const QString &keys,
                 const QList<Entry> &entries);
    /// As large as it was left, and never larger than the screen that it opens on.
    void placeItself();
    /// Shows by the buttons whether a screen is open, and which one is in front.
    void showFront();
    void bringIntoView(QWidget *before, QWidget *now);
    /// The transfer's window in the frame, made unseen if it isn't open.
    QMdiSubWindow *transfer(const Screen &screen);
    void openTransfer(const Screen &screen);
    void openDialog(const Screen &screen);
    void showBusy();
    /// The status bar of the screen in front, or null.
    QStatusBar *frontStatusBar() const;
    /// The list of the open invoice screen that `aktifform` points at, or null.
    InvoiceList *activeList();

    Program &m_program;
    QMdiArea *m_area;
    ButtonBand *m_band;
    DropGuide *m_drops;
    QMenu *m_seminmenu;
    Resim *m_resim;
    std::unique_ptr<GuideWindow> m_guide; // once it was asked for
    bool m_isBusy = false;
    QString m_busyWith;
    QPointer<QStatusBar> m_busyBar; // tells what is being done
    QString m_frontWord;            // of the screen in front
    QHash<QStringView, QPointer<QMdiSubWindow>> m_transfers;
    QHash<QStringView, QPointer<QWidget>> m_starts; // where work begins on screens not yet shown
    QHash<QStringView, QPointer<QDialog>> m_dialogs;
    QHash<QString, LastList> m_lastLists; // by the screen's word
};

} // namespace kervan
