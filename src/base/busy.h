#pragma once

#include <QFileInfo>
#include <QObject>
#include <QString>

#include <utility>

namespace kervan {

/// What the program is doing while nothing else can be done: the frame shows it, with a busy
/// pointer. Boxes are shown outside of it.
class Busy : public QObject
{
    Q_OBJECT

public:
    /// Says so as long as it lives; what was said before comes back behind it.
    class Work
    {
    public:
        Work(Busy &busy, const QString &text)
            : m_busy(busy)
            , m_before(busy.m_text)
        {
            m_busy.say(text);
        }
        ~Work() { m_busy.say(m_before); }
        Work(const Work &) = delete;
        Work &operator=(const Work &) = delete;

    private:
        Busy &m_busy;
        QString m_before;
    };

    /// Empty while nothing is being done.
    const QString &text() const { return m_text; }
    [[nodiscard]] Work with(const QString &text) { return {*this, text}; }
    /// A file is being read; none is no work.
    [[nodiscard]] Work reading(const QString &path)
    {
        const QString name = QFileInfo(path).fileName();
        return {*this, name.isEmpty() ? m_text : name + QStringLiteral(" okunuyor…")};
    }

Q_SIGNALS:
    void changed();

private:
    void say(const QString &text)
    {
        if (text == m_text)
            return;
        m_text = text;
        Q_EMIT changed();
    }

    QString m_text;
};

} // namespace kervan
