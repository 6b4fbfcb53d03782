#pragma once

#include "check/checks.h"
#include "invoices/duzey/fatduz.h"

#include <QWidget>

#include <memory>

class QPushButton;

namespace kervan {

class GridView;
class TitleStrip;

/// The window of the Düzey invoice transfer.
class FatduzWindow : public QWidget
{
    Q_OBJECT

public:
    explicit FatduzWindow(Program &program, QWidget *parent = nullptr);
    /// What the opening of the screen does. It connects, so it comes when the window is seen.
    void load() { m_fatduz.load(); }

    Fatduz &fatduz() { return m_fatduz; }

Q_SIGNALS:
    void closeWanted();
    /// "Fatura Liste Seçim" was pressed; its menu belongs at this place of the desktop.
    void listMenuWanted(const QPoint &place);

private:
    TitleStrip *strip();
    QWidget *commands();
    QWidget *choices();
    QWidget *sheetName();
    QWidget *filters();
    QWidget *lists(Program &program);
    QPushButton *command(const QString &name, const QString &caption, const QString &pictureName,
                         const QString &keys, void (Fatduz::*action)());

    Fatduz m_fatduz;
    std::unique_ptr<Checks> m_checks;
    GridView *m_l1;
};

} // namespace kervan
