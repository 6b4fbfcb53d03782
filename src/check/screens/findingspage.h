#pragma once

#include "base/grid.h"
#include "base/ports.h"
#include "check/checks.h"
#include "check/listshape.h"

#include <QWidget>

#include <functional>

class QCheckBox;
class QLabel;
class QPushButton;

namespace kervan {

class FlowLayout;
class GridView;

/// The page "Denetim": what is wrong with the list and the choices, and what to do about it. A
/// double click or Enter goes there, F8 and Shift+F8 from one to the next, anywhere on the window.
class FindingsPage : public QWidget
{
    Q_OBJECT

public:
    /// What it looks at on its window, and the doors to the outside.
    struct Window
    {
        QWidget *screen; ///< of the transfer: the frame holds several
        Grid &list;
        GridView *view;
        std::function<ListShape()> shape;
        FileDialogs &dialogs;
        std::function<void(const QString &text)> tell; ///< what failed
    };

    enum class Wanted { Findings, Lines };

    FindingsPage(Checks &checks, Window window, QWidget *parent = nullptr);

    /// Behind the commands, at the top.
    void addToHead(QWidget *part);
    /// To the next finding of the list, or the one before it; round at the end.
    void goOn(int step);
    /// Whether the rows without a finding are hidden, however that came.
    void setOnlyFound(bool only);

Q_SIGNALS:
    void titleChanged(const QString &title);
    /// A finding that was gone to is to be seen: on this page, or in the second list, which stands
    /// on a page of its own.
    void wanted(kervan::FindingsPage::Wanted page);
    /// The rows without a finding are to be hidden, or shown again.
    void onlyFoundWanted(bool only);

private:
    void show();
    void fill();
    void fillRows();
    bool stand(int place);
    void goTo(int place);
    void markCurrent();
    void write();

    Checks &m_checks;
    Window m_window;
    Grid m_rows;
    GridView *m_view;
    QLabel *m_counts;
    FlowLayout *m_head = nullptr;
    QPushButton *m_write;
    QCheckBox *m_only;
    QList<Finding> m_findings; // in the order shown
    int m_current = -1;        // of these
    Finding m_currentFinding;  // there
    bool m_isPlaced = false;   // it was gone to, and is not known to have gone
    bool m_isStale = true;

protected:
    void showEvent(QShowEvent *event) override;
};

} // namespace kervan
