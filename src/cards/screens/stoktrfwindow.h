#pragma once

#include "cards/stoktrf.h"
#include "check/checks.h"
#include "check/readreport.h"

#include <QWidget>

namespace kervan {

/// The window of the stock card transfer.
class StoktrfWindow : public QWidget
{
    Q_OBJECT

public:
    explicit StoktrfWindow(Program &program, QWidget *parent = nullptr);

    Stoktrf &stoktrf() { return m_stoktrf; }

Q_SIGNALS:
    void closeWanted();
    /// "Mey Stok Listesi" was pressed.
    void meyWanted();

private:
    QWidget *commands();
    QWidget *choices();
    QWidget *cards(Program &program);

    Stoktrf m_stoktrf;
    Checks m_checks;
    ReadReport m_report;
};

} // namespace kervan
