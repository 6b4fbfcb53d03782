#pragma once

#include <QByteArray>
#include <QList>
#include <QStringDecoder>

#include <functional>
#include <optional>
#include <string_view>

namespace kervan {

/// Walks an XML part token by token, in a buffer of its own size whatever the part's. Knows what
/// the parts of workbooks use, and refuses what they must not have: document types, and with them
/// entities of their own. Nesting is counted but names of end tags are not compared.
class XmlScanner
{
public:
    enum class Token : quint8 { Start, End, Text, Finished };
    /// Gives the next bytes of the part, at most so many; 0 at its end.
    using Source = std::function<qsizetype(char *to, qsizetype most)>;

    static constexpr qsizetype longestToken = 16LL * 1024 * 1024;

    explicit XmlScanner(Source source);

    /// Moves on. A part that is cut off or is no XML is a Failure.
    Token next();
    /// Elements that are open, the one that starts here included and the one that ends here not.
    int depth() const { return m_depth; }

    // What they give is valid until the next call of next().
    /// The element's name without its prefix.
    QByteArrayView name() const { return m_name; }
    bool isNamed(std::string_view name) const { return same(m_name, name); }
    /// The text, with its references resolved.
    QByteArrayView text();
    struct Attribute
    {
        QByteArrayView name; ///< without its prefix
        QByteArrayView raw;  ///< references not resolved
        bool isNamed(std::string_view wanted) const { return same(name, wanted); }
    };
    /// The next attribute of the element that starts here.
    std::optional<Attribute> nextAttribute();
    /// The value of an attribute with its references resolved; empty if it is not there.
    QByteArray attribute(std::string_view name) const;

private:
    // Asked many times for each cell, so it has to be seen through by the compiler.
    static bool same(QByteArrayView one, std::string_view other)
    {
        return std::string_view(one.data(), static_cast<std::size_t>(one.size())) == other;
    }
    static std::optional<Attribute> takeAttribute(QByteArrayView &rest);
    qsizetype fill();
    qsizetype read(char *to, qsizetype most);
    void readMark();
    qsizetype find(QByteArrayView mark, qsizetype from);
    qsizetype findTagEnd();
    qsizetype findTextEnd();
    bool takeText();
    Token takeTag();
    bool takeMarkup();
    char at(qsizetype offset);

    Source m_source;
    QStringDecoder m_decoder; // for UTF-16
    QByteArray m_undecoded;
    QByteArray m_waiting; // decoded and not yet asked for
    QByteArray m_buffer;
    qsizetype m_at = 0;  // where the token begins
    qsizetype m_end = 0; // where the bytes end
    bool m_exhausted = false;

    QByteArrayView m_name;
    QByteArrayView m_attributes;
    QByteArrayView m_text;
    QByteArray m_resolved;
    int m_depth = 0;
    bool m_isPlain = false; // the text holds nothing to resolve
    bool m_endFollows = false;
};

} // namespace kervan
