#pragma once

#include "cards/cr.h"
#include "check/checks.h"
#include "check/readreport.h"

#include <QWidget>

class QStatusBar;

namespace kervan {

/// The window of the cari card transfer.
class CrWindow : public QWidget
{
    Q_OBJECT

public:
    explicit CrWindow(Program &program, QWidget *parent = nullptr);

    Cr &cr() { return m_cr; }

Q_SIGNALS:
    void closeWanted();
    /// "Cari Güncelleme" was pressed over a filled list.
    void guncellemeWanted();

private:
    QWidget *commands();
    QWidget *cards(Program &program);
    QStatusBar *statusBar();
    void showTime();

    Program &m_program;
    Cr m_cr;
    Checks m_checks;
    ReadReport m_report;
    TextField m_date; // panels 3 and 4
    TextField m_time;
};

} // namespace kervan
