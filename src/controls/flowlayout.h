#pragma once

#include <QLayout>
#include <QWidget>

class QGridLayout;

namespace kervan {

/// A row of controls that goes on in the next line where the window is too narrow for it.
class FlowLayout : public QLayout
{
    Q_OBJECT

public:
    explicit FlowLayout(QWidget *parent);
    ~FlowLayout() override;

    /// A label and its control, which stay beside each other.
    void addPair(QWidget *label, QWidget *control);
    void addSpacing(int width);
    /// What follows it stands at the right end of its line.
    void addStretch();

    void addItem(QLayoutItem *item) override;
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem *itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem *takeAt(int index) override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    void setGeometry(const QRect &rect) override;

private:
    using Line = QList<QLayoutItem *>;
    QList<Line> linesFor(int width) const;
    int widthOf(const Line &line) const;
    /// That line with what would follow behind a stretch, if it is one.
    bool fits(const Line &line, int next, int width) const;
    void place(const Line &line, const QRect &rect) const;

    QList<QLayoutItem *> m_items;
};

/// A panel of fields, each with its label, that stand under each other in columns: in as many as
/// were told, and in half as many where the panel is too narrow for them.
class FieldPanel : public QWidget
{
    Q_OBJECT

public:
    explicit FieldPanel(int columns);

    /// A field behind its label.
    void add(QWidget *label, QWidget *field);
    /// A field that takes the room of a label too.
    void add(QWidget *field) { add(nullptr, field); }
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Field
    {
        QWidget *label;
        QWidget *field;
    };
    void arrange(int columns);

    int m_columns;
    int m_arranged = 0;
    QGridLayout *m_grid;
    QList<Field> m_fields;
};

} // namespace kervan
