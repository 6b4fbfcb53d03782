#pragma once

#include <QPushButton>

namespace kervan {

/// A button that shows, behind its caption, the keys that press it, where there is room for them.
class KeyedButton : public QPushButton
{
    Q_OBJECT

public:
    KeyedButton(const QString &caption, const QString &keys);

    QSize sizeHint() const override;
    /// That of the caption alone: without its keys and its picture it is still a button.
    QSize minimumSizeHint() const override;
    int widthWithPicture() const { return QPushButton::sizeHint().width(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int roomForKeys() const;

    QString m_keys;
};

/// A button of a dialog, with the name of its control, that its keys press while it is shown.
KeyedButton *dialogButton(const QString &name, const QString &caption, const QString &keys,
                          const QString &pictureName = {});

} // namespace kervan
