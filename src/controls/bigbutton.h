#pragma once

#include <QAbstractButton>

namespace kervan {

/// A big button of the main window: a picture, and its caption in lines under it; or, compact, a
/// small picture with the caption beside it.
class BigButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit BigButton(QWidget *parent = nullptr);

    /// The keys that press it, shown in a corner of a button that has room.
    void setKeys(const QString &keys) { m_keys = keys; }
    void setCompact(bool compact);
    /// Marks the button of the screen that is in front.
    void setFront(bool front);
    /// Lights up one that may be given what the user holds.
    void setLit(bool lit);
    bool isLit() const { return m_lit; }
    /// The least width that shows the caption in so many lines, or in as few as it can be turned
    /// to.
    int widthFor(int lines) const;
    int heightFor(int lines) const;
    /// In how many lines the caption is to be shown.
    void setLines(int lines) { m_lines = lines; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QFont captionFont(int lines) const;
    void paintBig(QPainter &painter, const QRect &inside);
    void paintCompact(QPainter &painter, const QRect &inside);

    QString m_keys;
    int m_lines = 1;
    bool m_compact = false;
    bool m_front = false;
    bool m_lit = false;
};

/// The row of big buttons: as wide as it is, and as high as the captions then need.
class ButtonBand : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    void add(BigButton *button);
    void setCompact(bool compact);
    /// The buttons in their order.
    const QList<BigButton *> &buttons() const { return m_buttons; }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Arrangement
    {
        int rows;
        int lines;         ///< of each caption
        QList<int> widths; ///< of the buttons
    };
    Arrangement arrangementFor(int width) const;
    int gap() const;

    QList<BigButton *> m_buttons;
    bool m_compact = false;
};

} // namespace kervan
