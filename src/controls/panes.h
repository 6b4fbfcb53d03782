#pragma once

#include <QSplitter>

namespace kervan {

class GridView;

/// Two lists above each other with a handle between. The lower one takes a line while it is empty;
/// once filled it has the share that the user has given it, the last time too.
class Panes : public QSplitter
{
    Q_OBJECT

public:
    Panes(QWidget *upper, QWidget *lower, GridView *lowerList, const QString &memoryKey);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void share();

    QWidget *m_lower;
    GridView *m_lowerList;
    QString m_memoryKey;
    bool m_isFilled = false;
    double m_share; // of the lower one
};

} // namespace kervan
