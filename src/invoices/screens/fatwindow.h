#pragma once

#include "check/checks.h"
#include "invoices/fat.h"

#include <QWidget>

#include <functional>
#include <memory>

class QComboBox;
class QPushButton;

namespace kervan {

class GridView;
class TitleStrip;

/// The window of the SAP invoice transfer.
class FatWindow : public QWidget
{
    Q_OBJECT

public:
    explicit FatWindow(Program &program, QWidget *parent = nullptr);
    /// What the opening of the screen does. It connects, so it comes when the window is seen.
    void load() { m_fat.load(); }

    Fat &fat() { return m_fat; }
    /// Whether another open screen counts with the cash counter too; the frame knows.
    void setSharesCounter(std::function<bool()> shares) { m_sharesCounter = std::move(shares); }

Q_SIGNALS:
    void closeWanted();
    /// "Fatura Liste Seçim" was pressed; its menu belongs at this place of the desktop.
    void listMenuWanted(const QPoint &place);

private:
    TitleStrip *strip();
    QWidget *commands();
    QWidget *choices();
    QWidget *filters();
    QWidget *lists(Program &program);
    QPushButton *command(const QString &name, const QString &caption, const QString &pictureName,
                         const QString &keys, void (Fat::*action)());
    QComboBox *chosen(QComboBox *box, void (Fat::*action)());

    Fat m_fat;
    std::function<bool()> m_sharesCounter;
    std::unique_ptr<Checks> m_checks;
    GridView *m_l1;
};

} // namespace kervan
