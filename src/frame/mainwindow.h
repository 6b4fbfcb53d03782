#pragma once

#include "invoices/invoicelist.h"
#include "logolink/screens/sqlbaglantiwindow.h"
#include "store/definition.h"
#include "store/program.h"

#include <QHash>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>

#include <functional>

class QDialog;

namespace kervan {

class Resim;
struct ValueDialog;

/// The frame `MDIForm1`: holds every transfer screen as a child and opens the definition screens
/// over itself. Each screen is one instance, made when it is first asked for.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(Program &program, QWidget *parent = nullptr);

    /// Makes the screen or brings the one that is open forward. A failure at its opening is shown
    /// in a plain box, and the screen is then not there.
    void open(const QString &screen);

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *buttonBand();
    void buildMenus();
    void openTransfer(const QString &screen);
    /// The screen's window in the frame, made unseen if it isn't open; null if there is none.
    QMdiSubWindow *transfer(const QString &screen);
    void openDialog(const QString &screen);
    QWidget *makeTransfer(const QString &screen);
    QDialog *makeDialog(const QString &screen);
    QDialog *makeKdvmu();
    QDialog *makeSqlbaglanti(SqlbaglantiWindow::Way way);
    /// Shows the dialog modally; kdvmu alone stays beside the frame.
    void showDialog(const QString &screen, const std::function<QDialog *()> &make);
    QDialog *makeValueDialog(const ValueDialog &dialog);
    /// An open screen loads its definitions again.
    void refresh(Definition::Refresh refresh);
    /// The screen's window if it is open, else null.
    template<class Window>
    Window *openScreen(const QString &screen) const
    {
        const auto window = m_transfers.value(screen);
        return window ? qobject_cast<Window *>(window->widget()) : nullptr;
    }
    /// The screen, which is made unseen if it isn't open, and stays so; the user goes on where he
    /// was.
    template<class Window>
    Window *inBackground(const QString &screen)
    {
        QMdiSubWindow *active = m_area->activeSubWindow();
        auto *window = qobject_cast<Window *>(transfer(screen)->widget());
        if (active) {
            m_area->setActiveSubWindow(active);
            active->setFocus();
        }
        return window;
    }
    /// The list of the open invoice screen that `aktifform` points at, or null.
    InvoiceList *activeList();

    Program &m_program;
    QMdiArea *m_area;
    Resim *m_resim;
    QMenu *m_seminmenu = nullptr;
    QHash<QString, QPointer<QMdiSubWindow>> m_transfers;
    QHash<QString, QPointer<QDialog>> m_dialogs;
};

} // namespace kervan
