#pragma once

#include "check/checks.h"
#include "slips/slipchecks.h"
#include "slips/slipscreen.h"

#include <QWidget>

#include <memory>

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

    /// Who knows whether another open screen counts with the cash counter too.
    void setSharesCounter(SharesCounter shares) { m_sharesCounter = std::move(shares); }

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
    SharesCounter m_sharesCounter;
    std::unique_ptr<Checks> m_checks;
};

} // namespace kervan
