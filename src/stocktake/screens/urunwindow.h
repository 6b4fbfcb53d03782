#pragma once

#include "stocktake/urunform.h"

#include <QDialog>

class QLabel;

namespace kervan {

class GridView;

/// The window of the dealer prices, modal over the frame.
class UrunWindow : public QDialog
{
    Q_OBJECT

public:
    explicit UrunWindow(Program &program, QWidget *parent = nullptr);

    Urunform &urunform() { return m_urunform; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    GridView *makeView();
    void save();

    Urunform m_urunform;
    QLabel *m_note;
    bool m_changed = false; // something was typed since the table was read
};

} // namespace kervan
