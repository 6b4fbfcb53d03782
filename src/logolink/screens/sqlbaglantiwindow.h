#pragma once

#include "logolink/sqlbaglanti.h"

#include <QDialog>

class QLabel;
class QPushButton;

namespace kervan {

/// The window of the connection settings and of the title update, modal over the frame.
class SqlbaglantiWindow : public QDialog
{
    Q_OBJECT

public:
    /// What the user came for: the settings alone, or the update beside them.
    enum class Way { Settings, Update };

    /// `cards` is the list of the card screen, or null if it isn't open.
    SqlbaglantiWindow(Program &program, const Grid *cards, Way way, QWidget *parent = nullptr);

    Sqlbaglanti &sqlbaglanti() { return m_sqlbaglanti; }

Q_SIGNALS:
    /// "Kaydet" wrote the settings.
    void saved();

private:
    QWidget *settings();
    QWidget *settingsButtons();
    QWidget *update();
    void showPanels();

    Sqlbaglanti m_sqlbaglanti;
    QWidget *m_guncelleme;
    QWidget *m_ayarlar;
    QLabel *m_busyNote = nullptr; // tells what is being done
    QPushButton *m_toUpdate;      // leads from the settings to the update
};

} // namespace kervan
