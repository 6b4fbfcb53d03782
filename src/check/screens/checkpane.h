#pragma once

#include "controls/panes.h"

#include <QList>
#include <QString>

class QBoxLayout;
class QStackedWidget;
class QTabBar;
class QToolButton;

namespace kervan {

/// The lower pane of a transfer window: pages behind tabs, and beside these, in the same line, what
/// the list comes to. Where it has no page that belongs to the list itself, it is shut at first and
/// takes that line only.
class CheckPane : public LowerPane
{
    Q_OBJECT

public:
    explicit CheckPane(QWidget *parent = nullptr);

    /// Adds a page; the keys Alt+1, Alt+2 and so on, anywhere on the window, lead to it. `lead`
    /// pages are open from the beginning.
    enum class Opening { Shut, Open };
    void addPage(QWidget *page, const QString &title, Opening opening = Opening::Shut);
    void setTitle(const QWidget *page, const QString &title);
    /// Opens it if need be.
    void showPage(QWidget *page);
    /// Stands to the right of the tabs.
    void addToLine(QWidget *part);

    bool isOpen() const override { return m_isOpen; }
    GridView *listOfPage() const override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void show(int page);
    void setOpen(bool open);

    QBoxLayout *m_line;
    QTabBar *m_tabs;
    QToolButton *m_handle;
    QStackedWidget *m_pages;
    bool m_isOpen = false;
    bool m_hasKeys = false;
};

} // namespace kervan
