#pragma once

#include <QHeaderView>

#include <optional>

namespace kervan {

/// The headings over a list, of which the first ones stay in view while the others are scrolled.
class FrozenHeader : public QHeaderView
{
    Q_OBJECT

public:
    explicit FrozenHeader(QWidget *parent);

    void setFrozen(int columns) { m_frozen = columns; }
    /// How many columns stay: none while nothing is scrolled, or when they would fill the view.
    int frozen() const;
    /// The right end of those that stay.
    int frozenWidth() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    int widthOf(int columns) const;
    QMouseEvent overFrozen(const QMouseEvent &event) const;

    int m_frozen = 0;
    std::optional<int> m_dragged; // how far what is dragged stands from where it would be
};

} // namespace kervan
