#pragma once

#include "base/grid.h"

#include <QDialog>

namespace kervan {

/// The list of Logo personnel; nothing fills or opens it.
class LogoperWindow : public QDialog
{
    Q_OBJECT

public:
    explicit LogoperWindow(QWidget *parent = nullptr);

    Grid l1;
};

} // namespace kervan
