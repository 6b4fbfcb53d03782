#pragma once

#include <QString>

#include <algorithm>
#include <optional>

namespace kervan {

/// A statement that is put together from fixed text and values that go between quotes as they
/// stand. It watches the values, so that whoever runs it can refuse one that would end its own
/// quotes and turn the text into another statement.
class Statement
{
public:
    explicit Statement(QStringView fixed)
        : m_text(fixed.toString())
    {
    }

    Statement &text(QStringView fixed)
    {
        m_text += fixed;
        return *this;
    }
    Statement &value(QStringView text)
    {
        if (!m_breaking && endsItsQuotes(text))
            m_breaking = text.toString();
        m_text += text;
        return *this;
    }

    /// A part of a table's name: letters, digits and underscores alone stay inside it.
    Statement &name(QStringView part)
    {
        const bool stays =
            std::ranges::all_of(part, [](QChar c) { return c.isLetterOrNumber() || c == u'_'; });
        if (!m_breaking && !stays) {
            m_breaking = part.toString();
            m_isOfName = true;
        }
        m_text += part;
        return *this;
    }

    /// The whole statement, word for word.
    const QString &text() const { return m_text; }
    /// The first value or name that does not stay in its place, if there is one.
    const std::optional<QString> &breakingValue() const { return m_breaking; }
    /// Whether that is one, and no name: another row may do.
    bool isOfItsValue() const { return m_breaking && !m_isOfName; }

private:
    // Apostrophes in pairs stand for one each, and stay inside. A NUL ends the text for an engine,
    // half a pair of surrogates for a driver that spells it in another encoding.
    static bool endsItsQuotes(QStringView text)
    {
        if (!text.isValidUtf16())
            return true;
        bool paired = true;
        for (const QChar c : text) {
            if (c.isNull() || (c != u'\'' && !paired))
                return true;
            if (c == u'\'')
                paired = !paired;
        }
        return !paired;
    }

    QString m_text;
    std::optional<QString> m_breaking;
    bool m_isOfName = false; // and not of a value
};

} // namespace kervan
