#pragma once

#include <QFrame>

class QLabel;
class QToolButton;

namespace kervan {

/// The strip `bar1` on top of a transfer screen: its caption, and the button that closes it.
class TitleStrip : public QFrame
{
    Q_OBJECT

public:
    explicit TitleStrip(QWidget *parent = nullptr);

    QLabel *caption() const { return m_caption; }
    /// Shown in front of the closing button.
    void addNote(QWidget *note);
    QToolButton *closeButton() const { return m_close; }

private:
    QLabel *m_caption;
    QToolButton *m_close;
};

} // namespace kervan
