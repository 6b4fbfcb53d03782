#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace kervan {

/// A line over a transfer screen, below its caption and its notes, while an answer from outside is
/// long in coming: what is awaited, and the button that ends the wait. It lies over what can't be
/// used just then, so nothing of the screen moves.
class WaitStrip : public QFrame
{
    Q_OBJECT

public:
    /// Stands on the screen at once.
    explicit WaitStrip(QWidget *screen);

    /// The wait has taken so many seconds.
    void showTime(int seconds);
    QPushButton *button() const { return m_button; }
    /// Press the button wherever the focus is.
    static bool isKey(int key, Qt::KeyboardModifiers modifiers);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();

    QLabel *m_text;
    QPushButton *m_button;
};

} // namespace kervan
