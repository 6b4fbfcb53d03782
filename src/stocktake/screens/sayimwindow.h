#pragma once

#include "check/checks.h"
#include "stocktake/sayimform.h"

#include <QWidget>

#include <memory>

namespace kervan {

/// The window of the stocktake transfer.
class SayimWindow : public QWidget
{
    Q_OBJECT

public:
    explicit SayimWindow(Program &program, QWidget *parent = nullptr);
    /// What the opening of the screen does. It connects, so it comes when the window is seen.
    void load() { m_sayimform.load(); }

    Sayimform &sayimform() { return m_sayimform; }

Q_SIGNALS:
    void closeWanted();

private:
    QWidget *commands();
    QWidget *counts(Program &program);
    Rule writtenRule() const;

    Sayimform m_sayimform;
    std::unique_ptr<Checks> m_checks;
};

} // namespace kervan
