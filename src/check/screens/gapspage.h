#pragma once

#include "base/grid.h"
#include "base/ports.h"
#include "check/checks.h"

#include <QWidget>

#include <functional>

class QPushButton;

namespace kervan {

class GridView;

/// The page "Eksikler": each definition that is missing, once, with the way to the screen that
/// gives it.
class GapsPage : public QWidget
{
    Q_OBJECT

public:
    GapsPage(Checks &checks, FileDialogs &dialogs,
             const std::function<void(const QString &text)> &tell, QWidget *parent = nullptr);

Q_SIGNALS:
    void titleChanged(const QString &title);
    /// The screen is to be opened at this code.
    void screenWanted(const QString &screen, const QString &code);
    /// The source is to be read again, the ticks kept.
    void rereadWanted();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void show();
    void fill();
    void open();
    void write();

    Checks &m_checks;
    FileDialogs &m_dialogs;
    std::function<void(const QString &text)> m_tell;
    Grid m_rows;
    GridView *m_view;
    QPushButton *m_open;
    QPushButton *m_reread;
    QPushButton *m_write;
    bool m_isStale = true;
};

} // namespace kervan
