#pragma once

#include <QPointer>
#include <QShortcut>
#include <QToolButton>

namespace kervan {

/// A command that looks like a link in a sentence, with keys that press it anywhere on the window
/// while it is shown, if it has any.
class LinkButton : public QToolButton
{
    Q_OBJECT

public:
    LinkButton(QWidget *window, const QString &name, const QString &keys);
    ~LinkButton() override;

    /// What it says; `hint` tells the rest in its tool tip, the keys behind it.
    void setLink(const QString &text, const QString &hint);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_keys;
    QPointer<QShortcut> m_shortcut;
};

} // namespace kervan
