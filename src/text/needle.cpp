#include "text/needle.h"

namespace kervan {

namespace {

char16_t folded(char16_t letter)
{
    constexpr char16_t dotlessSmall = 0x131;
    constexpr char16_t dottedCapital = 0x130;
    if (letter == u'I')
        return dotlessSmall;
    if (letter == dottedCapital)
        return u'i';
    if (letter < 0x80)
        return letter >= u'A' && letter <= u'Z' ? static_cast<char16_t>(letter + 0x20) : letter;
    return static_cast<char16_t>(QChar::toLower(static_cast<char32_t>(letter)));
}

} // namespace

Needle::Needle(QStringView text)
{
    m_folded.reserve(text.size());
    for (const QChar letter : text)
        m_folded += QChar(folded(letter.unicode()));
}

// Folds as it goes: a list has more cells than a copy of each would be worth.
bool Needle::isIn(QStringView text) const
{
    const char16_t *needle = QStringView(m_folded).utf16();
    const qsizetype length = m_folded.size();
    const char16_t *from = text.utf16();
    for (qsizetype start = 0; length > 0 && start + length <= text.size(); ++start) {
        qsizetype same = 0;
        while (same < length && folded(from[start + same]) == needle[same])
            ++same;
        if (same == length)
            return true;
    }
    return false;
}

} // namespace kervan
