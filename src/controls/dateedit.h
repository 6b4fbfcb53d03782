#pragma once

#include <QDate>
#include <QLineEdit>

namespace kervan {

/// A date as people type it: in any usual spelling, pasted, or part by part; the arrow keys step
/// the part at the cursor, and a calendar drops down by its button or F4. What was typed counts
/// when Enter is pressed or the focus leaves. An impossible date stays as typed, is marked, and
/// makes the date invalid.
class DateEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit DateEdit(QWidget *parent = nullptr);

    QDate date() const { return m_date; }
    void setDate(QDate date);

Q_SIGNALS:
    /// The user has changed it; an invalid date stands for an impossible one.
    void dateChanged(QDate date);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void take(QDate date);
    void takeText();
    void mark(bool impossible);
    void pasteDate();
    bool stepPart(int by);
    void makeWay();
    void dropCalendar();

    QDate m_date;
    QAction *m_warning;
    QString m_typed;            // in one go, without moving the cursor
    bool m_clickedInto = false; // by the press that gave it the focus
};

} // namespace kervan
