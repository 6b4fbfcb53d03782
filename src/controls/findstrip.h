#pragma once

#include "text/needle.h"

#include <QHash>
#include <QList>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace kervan {

class CutLabel;
class GridView;

/// A line below the lists of a window to search the one that had the focus last, in all columns in
/// sight; and while a list shows only some of its rows, a line that says so, whoever asked for it.
/// Esc in it closes it, shows all rows again and goes back to the list.
class FindStrip : public QWidget
{
    Q_OBJECT

public:
    explicit FindStrip(QList<GridView *> lists);

    /// Shows the search and takes the focus.
    void open();
    /// Goes to the next row that holds the text, or with -1 to the one before, around the ends.
    void step(int by);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makeSearch();
    QWidget *makeFilter();
    void follow(GridView *list);
    void followWhatIsShown();
    void type();
    void search();
    void goToHit(int hit);
    void showCount();
    void tickHits();
    void filterByText(bool on);
    bool isFilteredByText() const;
    void showOnly();
    void filterChanged(GridView *list);
    void showFilter();
    QString filterText() const;
    void close();

    QList<GridView *> m_lists;
    GridView *m_list; // that is searched
    QWidget *m_search;
    QLineEdit *m_text;
    QLabel *m_count;
    QPushButton *m_tick;
    QCheckBox *m_only;
    QWidget *m_filter;
    CutLabel *m_filterText;
    QList<int> m_hits; // rows in sight that hold the text
    bool m_isStale = true;
    int m_from = 0;                          // the row that the typed text is looked for from
    QString m_asked;                         // what the list was last filtered by here
    QHash<const GridView *, int> m_fillings; // of a filtered list, when it was filtered
};

/// Puts a FindStrip between the lists and the status bar of a transfer's window: Ctrl+F opens it,
/// F3 and Shift+F3 go on. The window has a column as its layout.
void installFind(QWidget *window);

} // namespace kervan
