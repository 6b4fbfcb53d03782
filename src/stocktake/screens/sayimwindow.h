#pragma once

#include "check/checks.h"
#include "check/readreport.h"
#include "stocktake/sayimform.h"

#include <QWidget>

namespace kervan {

/// The window of the stocktake transfer.
class SayimWindow : public QWidget
{
    Q_OBJECT

public:
    explicit SayimWindow(Program &program, QWidget *parent = nullptr);
    /// What the opening of the screen does. It connects, so it comes when the window is seen.
    void load() { m_sayimform.load(); }

    Sayimform &sayimform() { return m_sayimform; }

Q_SIGNALS:
    void closeWanted();

private:
    QWidget *commands();
    QWidget *counts(Program &program);

    Sayimform m_sayimform;
    Checks m_checks;
    ReadReport m_report;
};

} // namespace kervan
