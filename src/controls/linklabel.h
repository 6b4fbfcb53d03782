#pragma once

#include "base/fields.h"

#include <QLabel>

namespace kervan {

/// Shows whether a screen is connected to the server: the words, their colour, and a tick or a
/// cross in front of them, so that nobody has to tell the colours apart. A change is announced.
class LinkLabel : public QLabel
{
    Q_OBJECT

public:
    /// A banner has a bright green and a bright red, on a dark ground of its own.
    enum class Look { Quiet, Banner };

    LinkLabel(const QString &name, TextField &durum, Look look = Look::Quiet);

    bool isConnected() const;

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void colour();

    Look m_look;
    QColor m_colour;
};

} // namespace kervan
