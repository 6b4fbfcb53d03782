#pragma once

#include "cards/st.h"
#include "check/checks.h"
#include "check/readreport.h"

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
    QWidget *cards(Program &program);

    St m_st;
    Checks m_checks;
    ReadReport m_report;
    TextField m_nothing; // the status bar has no caption of its own to show
};

} // namespace kervan
