#pragma once

#include "stocktake/urunform.h"

#include <QDialog>

namespace kervan {

/// The window of the dealer prices, modal over the frame.
class UrunWindow : public QDialog
{
    Q_OBJECT

public:
    /// Reads the table; that it can't be read is a Failure, and the window is then not to be shown.
    explicit UrunWindow(Program &program, QWidget *parent = nullptr);

    Urunform &urunform() { return m_urunform; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void save();

    Urunform m_urunform;
};

} // namespace kervan
