#pragma once

#include <QDate>
#include <QObject>
#include <QString>
#include <QStringList>

namespace kervan {

// The values of a screen that stand outside its grids. A screen's procedures read and set them;
// its window shows them and writes back what the user enters. Setting one tells the window, and
// never runs a procedure: those are run by what the user does.

/// A text: label, text box, or caption.
class TextField : public QObject
{
    Q_OBJECT

public:
    explicit TextField(QString text = {})
        : m_text(std::move(text))
    {
    }
    const QString &text() const { return m_text; }
    void setText(const QString &text)
    {
        if (text == m_text)
            return;
        m_text = text;
        Q_EMIT changed();
    }

Q_SIGNALS:
    void changed();
    /// The procedure wants the user to go on here.
    void focusWanted();

protected:
    QString m_text;
};

/// A list to choose from, and the text that it shows.
class ChoiceField : public TextField
{
    Q_OBJECT

public:
    const QStringList &entries() const { return m_entries; }
    /// Replaces the entries and empties the shown text.
    void setEntries(const QStringList &entries)
    {
        m_entries = entries;
        m_text.clear();
        Q_EMIT entriesChanged();
        Q_EMIT changed();
    }

Q_SIGNALS:
    void entriesChanged();
    /// The procedure wants the user to choose now.
    void dropWanted();

private:
    QStringList m_entries;
};

/// A check box.
class CheckField : public QObject
{
    Q_OBJECT

public:
    bool isChecked() const { return m_checked; }
    void setChecked(bool checked)
    {
        if (checked == m_checked)
            return;
        m_checked = checked;
        Q_EMIT changed();
    }

Q_SIGNALS:
    void changed();

private:
    bool m_checked = false;
};

/// A date picker; without a valid date while it shows one that is impossible.
class DateField : public QObject
{
    Q_OBJECT

public:
    QDate date() const { return m_date; }
    void setDate(QDate date)
    {
        if (date == m_date)
            return;
        m_date = date;
        Q_EMIT changed();
    }

Q_SIGNALS:
    void changed();

private:
    QDate m_date;
};

/// A progress bar: runs from 0 to its maximum, shown only while work is on.
class ProgressField : public QObject
{
    Q_OBJECT

public:
    int maximum() const { return m_maximum; }
    int value() const { return m_value; }
    bool isShown() const { return m_shown; }

    void start(int maximum)
    {
        m_maximum = maximum;
        m_value = 0;
        m_shown = true;
        Q_EMIT changed();
    }
    void step() { setValue(m_value + 1); }
    void setValue(int value)
    {
        m_value = value;
        Q_EMIT changed();
    }
    /// Hides it and sets it back to 0.
    void finish()
    {
        m_value = 0;
        m_shown = false;
        Q_EMIT changed();
    }

Q_SIGNALS:
    void changed();

private:
    int m_maximum = 0;
    int m_value = 0;
    bool m_shown = false;
};

} // namespace kervan
