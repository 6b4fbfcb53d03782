#pragma once

#include "cards/st.h"

#include <QWidget>

namespace kervan {

/// The window of the Mey stock list.
class StWindow : public QWidget
{
    Q_OBJECT

public:
    explicit StWindow(Program &program, QWidget *parent = nullptr);

    St &st() { return m_st; }

Q_SIGNALS:
    void closeWanted();

private:
    QWidget *commands();
    QWidget *choices();
    QWidget *cards();

    St m_st;
    TextField m_nothing; // the status bar has no caption of its own to show
};

} // namespace kervan
