#pragma once

#include <QSplitter>

namespace kervan {

class GridView;

/// What may stand below a list: a page with a list of its own, or, while it is shut, a line.
class LowerPane : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;
    virtual bool isOpen() const = 0;
    /// The list of the page in front; null where it has none.
    virtual GridView *listOfPage() const = 0;

Q_SIGNALS:
    /// It was opened or shut, or another page came to the front.
    void roomChanged();
};

/// A list and what stands below it, with a handle between. The lower one takes a line while it is
/// shut, and as long as both lists are empty. Else the upper one has the rows that work needs, and
/// the lower one what is left: the share that the user has given it, the last time too, and two
/// rows at least.
class Panes : public QSplitter
{
    Q_OBJECT

public:
    /// `lines`, if any, is the list that the lower pane shows of a row of the upper one.
    Panes(QWidget *upper, LowerPane *lower, GridView *lines, const QString &memoryKey);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    bool needsRoom() const;
    void follow();
    void share();

    QWidget *m_upper;
    LowerPane *m_lower;
    GridView *m_upperList;
    GridView *m_lines;
    QString m_memoryKey;
    bool m_hadRoom = false;
    double m_share = 0; // of the lower one, if the user has given it one
};

} // namespace kervan
