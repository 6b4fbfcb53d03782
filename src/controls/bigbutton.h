#pragma once

#include <QAbstractButton>

namespace kervan {

/// A big button of the main window: a picture, and its caption in lines under it.
class BigButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit BigButton(QWidget *parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace kervan
