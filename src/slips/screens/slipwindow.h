#pragma once

#include "check/checks.h"
#include "check/readreport.h"
#include "slips/slipscreen.h"

#include <QWidget>

class QGroupBox;

namespace kervan {

class GridView;

/// The window of a slip transfer; the form tells which of the four.
class SlipWindow : public QWidget
{
    Q_OBJECT

public:
    SlipWindow(Program &program, const SlipForm &form, QWidget *parent = nullptr);

    SlipScreen &screen() { return m_screen; }

    /// What the dialogs of these codes tell an open screen.
    void setBankaKodu(const QString &kod) { m_screen.bankaHesapKodu.setText(kod); }
    void setKasaKodu(const QString &kod) { m_screen.kasaKodu.setText(kod); }

Q_SIGNALS:
    void closeWanted();

private:
    QWidget *head();
    QWidget *commands();
    QWidget *settings();
    QWidget *lists(Program &program);
    QGroupBox *listFrame(const QString &name, const QString &caption, const QString &checkName,
                         CheckField &check, void (SlipScreen::*tickAll)(), GridView *view);
    GridView *movements();
    void addHidden();

    SlipScreen m_screen;
    Checks m_checks;
    ReadReport m_report;
};

} // namespace kervan
