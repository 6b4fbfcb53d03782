#include "base/codepage.h"

#include <algorithm>
#include <array>

namespace kervan {

namespace {

// Bytes 0x80 to 0x9F; the undefined ones hold their own number.
constexpr std::array<char16_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x008E, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x009E, 0x0178};

constexpr std::array<char16_t, 256> toCharacter = [] {
    std::array<char16_t, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte)
        table[byte] = static_cast<char16_t>(byte);
    for (std::size_t i = 0; i < upperControls.size(); ++i)
        table[0x80 + i] = upperControls[i];
    // Where Turkish departs from Latin-1.
    table[0xD0] = u'Ğ';
    table[0xDD] = u'İ';
    table[0xDE] = u'Ş';
    table[0xF0] = u'ğ';
    table[0xFD] = u'ı';
    table[0xFE] = u'ş';
    return table;
}();

// The highest character of the code page is U+2122.
constexpr std::array<char, 0x2123> toByte = [] {
    std::array<char, 0x2123> table{};
    table.fill('?');
    for (std::size_t byte = 0; byte < toCharacter.size(); ++byte)
        table[toCharacter[byte]] = static_cast<char>(byte);
    return table;
}();

} // namespace

void appendFromCodePage(QString &text, QByteArrayView bytes)
{
    const qsizetype start = text.size();
    text.resize(start + bytes.size());
    QChar *out = text.data() + start;
    for (const char byte : bytes)
        *out++ = QChar(toCharacter[static_cast<unsigned char>(byte)]);
}

QString fromCodePage(QByteArrayView bytes)
{
    QString text;
    appendFromCodePage(text, bytes);
    return text;
}

char *writeInCodePage(char *out, QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        if (unit < toByte.size()) {
            *out++ = toByte[unit];
            continue;
        }
        *out++ = '?';
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i; // one character beyond the basic plane is one "?"
    }
    return out;
}

void appendToCodePage(QByteArray &bytes, QStringView text)
{
    const qsizetype start = bytes.size();
    bytes.resize(start + text.size());
    const char *const end = writeInCodePage(bytes.data() + start, text);
    bytes.truncate(end - bytes.constData());
}

QByteArray toCodePage(QStringView text)
{
    QByteArray bytes;
    appendToCodePage(bytes, text);
    return bytes;
}

bool isOfCodePage(QStringView text)
{
    return std::ranges::all_of(text, [](QChar c) {
        return c == u'?' || (c.unicode() < toByte.size() && toByte[c.unicode()] != '?');
    });
}

QString fromTextFile(QByteArrayView bytes)
{
    if (bytes.startsWith(utf8Mark))
        return QString::fromUtf8(bytes.sliced(utf8Mark.size()));
    return fromCodePage(bytes);
}

} // namespace kervan
