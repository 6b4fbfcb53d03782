#pragma once

#include <QSplitter>

namespace kervan {

class GridView;

/// Two lists above each other with a handle between. The lower one takes a line while both are
/// empty. Once either is filled, the upper one has the rows that work needs, and the lower one what
/// is left: the share that the user has given it, the last time too, and two rows at least.
class Panes : public QSplitter
{
    Q_OBJECT

public:
    Panes(QWidget *upper, QWidget *lower, const QString &memoryKey);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void share();

    QWidget *m_upper;
    QWidget *m_lower;
    GridView *m_upperList;
    GridView *m_lowerList;
    QString m_memoryKey;
    bool m_isFilled = false;
    double m_share = 0; // of the lower one, if the user has given it one
};

} // namespace kervan
