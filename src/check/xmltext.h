#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <algorithm>
#include <array>
#include <cstring>

namespace kervan::xml {

// The letters of a document: its tags, its values and what an XML reader makes of them.

inline bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Logo's tags are in capitals, which tells them from values.
constexpr auto ofNames = [] {
    std::array<bool, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c)
        table[c] = (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    return table;
}();

inline bool isOfName(char c)
{
    return ofNames[static_cast<unsigned char>(c)];
}

inline const char *endOfName(const char *at, const char *end)
{
    if (at == end || *at < 'A' || *at > 'Z')
        return at;
    while (at != end && isOfName(*at))
        ++at;
    return at;
}

inline const char *find(const char *from, const char *end, char c)
{
    if (from >= end) // an empty document has no bytes to point at
        return nullptr;
    return static_cast<const char *>(std::memchr(from, c, static_cast<std::size_t>(end - from)));
}

inline bool same(const char *at, const char *end, QByteArrayView name)
{
    return end - at == name.size() &&
           std::memcmp(at, name.data(), static_cast<std::size_t>(name.size())) == 0;
}

inline bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 && !isBlank(c);
}

/// A "&" that XML takes, with the character that it stands for: its length, 0 for any other.
qsizetype entity(QByteArrayView text, char &meant);
/// The text with its entities replaced.
void resolve(QByteArrayView text, QByteArray &out);

/// A number of a document in so small a form that sums of products stay fast: digits of 10 to the
/// minus `decimals`.
struct Small
{
    qint64 digits = 0;
    int decimals = 0;
    bool fine = false;

    friend bool operator==(const Small &a, const Small &b)
    {
        return a.digits == b.digits && a.decimals == b.decimals;
    }
};

/// Not `fine` where the text is no number of at most 18 digits.
Small smallNumber(QByteArrayView text);

/// Whether the tags in a value open and close each other, so that an XML reader takes them as such.
bool isBalanced(QByteArrayView value);

} // namespace kervan::xml
