#pragma once

#include "base/fields.h"

#include <QLabel>

namespace kervan {

/// Shows whether a screen is connected to the server: the words, their colour, and a tick or a
/// cross in front of them, so that nobody has to tell the colours apart.
class LinkLabel : public QLabel
{
    Q_OBJECT

public:
    LinkLabel(const QString &name, TextField &durum);

    bool isConnected() const;

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void colour();

    QColor m_colour;
};

} // namespace kervan
