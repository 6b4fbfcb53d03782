#pragma once

#include "store/definitionscreen.h"

#include <QDialog>

class QGroupBox;
class QPushButton;

namespace kervan {

class GridView;

/// The window of any definition screen: the list and the record share one spot of it.
class DefinitionWindow : public QDialog
{
    Q_OBJECT

public:
    enum class Closing { ByButton, Otherwise };

    DefinitionWindow(Program &program, const Definition &definition, QWidget *parent = nullptr);

    DefinitionScreen &screen() { return m_screen; }
    /// Goes to the record that a source calls so, or begins a new one with that code typed in.
    void goTo(const QString &code);

Q_SIGNALS:
    /// The window was closed: by its button, or by Esc or the frame's cross.
    void closed(kervan::DefinitionWindow::Closing how);

protected:
    void done(int result) override;

private:
    QGroupBox *listFrame();
    QGroupBox *recordFrame();
    QWidget *sideValue(const SideValue &value);
    QPushButton *button(const QString &name, const QString &caption, const QString &keys,
                        void (DefinitionWindow::*action)());
    void showFrame();
    void chooseRow();
    void showChoice();
    int selectedRow() const;
    void yeni();
    void degistir();
    void sil();
    void kaydet();
    void iptal();
    void kapat();

    DefinitionScreen m_screen;
    GridView *m_list = nullptr;
    QList<QPushButton *> m_ofARow; // rest while no row is selected
    int m_row = 0;                 // the one selected last
    bool m_toLast = false;         // a new record is being edited
    QGroupBox *m_listFrame;
    QGroupBox *m_recordFrame;
    Closing m_how = Closing::Otherwise;
};

} // namespace kervan
