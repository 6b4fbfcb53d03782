#pragma once

#include <QIcon>
#include <QWidget>

namespace kervan {

/// The decorative picture behind the screens.
class Resim : public QWidget
{
    Q_OBJECT

public:
    explicit Resim(QWidget *parent);

    /// Places it for this size of the frame: in the middle across, and above the middle down.
    void place(const QSize &frame);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QIcon m_picture;
};

} // namespace kervan
