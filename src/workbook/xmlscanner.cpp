#include "workbook/xmlscanner.h"

#include "base/failure.h"

#include <QChar>

#include <charconv>
#include <cstring>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype usualBuffer = 256 * 1024;
constexpr qsizetype utf16Piece = 64 * 1024;

[[noreturn]] void fail(const QString &why)
{
    throw Failure(u"XML yapısı bozuk (%1)"_s.arg(why));
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

QByteArrayView withoutPrefix(QByteArrayView name)
{
    const qsizetype colon = name.indexOf(':');
    return colon < 0 ? name : name.sliced(colon + 1);
}

void appendCharacter(QByteArray &to, QByteArrayView digits, int base)
{
    quint32 code = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), code, base);
    if (error != std::errc() || end != digits.end() || code > QChar::LastValidCodePoint)
        fail(u"karakter numarası"_s);
    to += QString::fromUcs4(reinterpret_cast<const char32_t *>(&code), 1).toUtf8();
}

void appendReference(QByteArray &to, QByteArrayView name)
{
    if (name.startsWith("#x"))
        appendCharacter(to, name.sliced(2), 16);
    else if (name.startsWith('#'))
        appendCharacter(to, name.sliced(1), 10);
    else if (name == "lt")
        to += '<';
    else if (name == "gt")
        to += '>';
    else if (name == "amp")
        to += '&';
    else if (name == "quot")
        to += '"';
    else if (name == "apos")
        to += '\'';
    else
        fail(u"tanımsız varlık"_s);
}

// References resolved, and the line ends that XML makes of CR LF and CR.
void resolve(QByteArrayView raw, QByteArray &to)
{
    to.clear();
    for (qsizetype i = 0; i < raw.size(); ++i) {
        if (raw[i] == '&') {
            const qsizetype end = raw.indexOf(';', i);
            if (end < 0)
                fail(u"yarım varlık"_s);
            appendReference(to, raw.sliced(i + 1, end - i - 1));
            i = end;
        } else if (raw[i] == '\r') {
            to += '\n';
            if (i + 1 < raw.size() && raw[i + 1] == '\n')
                ++i;
        } else {
            to += raw[i];
        }
    }
}

} // namespace

XmlScanner::XmlScanner(Source source)
    : m_source(std::move(source))
    , m_buffer(usualBuffer, Qt::Uninitialized)
{
    readMark();
}

// UTF-16 is told by its mark; all else has to be UTF-8, whatever it says about itself.
void XmlScanner::readMark()
{
    fill();
    const QByteArrayView start(m_buffer.constData(), m_end);
    if (start.startsWith("\xEF\xBB\xBF")) {
        m_at = 3;
    } else if (start.startsWith("\xFF\xFE") || start.startsWith("\xFE\xFF")) {
        m_decoder = QStringDecoder(QStringDecoder::Utf16);
        const QString text = m_decoder(start);
        m_waiting = text.toUtf8();
        m_end = 0;
    }
}

qsizetype XmlScanner::read(char *to, qsizetype most)
{
    if (!m_decoder.isValid())
        return m_source(to, most);
    while (m_waiting.isEmpty()) {
        m_undecoded.resize(utf16Piece);
        const qsizetype got = m_source(m_undecoded.data(), utf16Piece);
        if (got == 0)
            return 0;
        const QString text = m_decoder(QByteArrayView(m_undecoded).first(got));
        m_waiting = text.toUtf8();
    }
    const qsizetype given = std::min(most, m_waiting.size());
    std::memcpy(to, m_waiting.constData(), static_cast<std::size_t>(given));
    m_waiting.remove(0, given);
    return given;
}

// Reads more behind the token, which moves to the front of the buffer; gives how far it moved, or
// -1 at the end of the part.
qsizetype XmlScanner::fill()
{
    if (m_exhausted)
        return -1;
    const qsizetype moved = m_at;
    std::memmove(m_buffer.data(), m_buffer.constData() + m_at,
                 static_cast<std::size_t>(m_end - m_at));
    m_end -= m_at;
    m_at = 0;
    if (m_end == m_buffer.size()) {
        if (m_end >= longestToken)
            fail(u"parça çok uzun"_s);
        m_buffer.resize(m_end * 2);
    }
    const qsizetype got = read(m_buffer.data() + m_end, m_buffer.size() - m_end);
    m_end += got;
    m_exhausted = got == 0;
    return m_exhausted ? -1 : moved;
}

char XmlScanner::at(qsizetype offset)
{
    while (m_at + offset >= m_end) {
        if (fill() < 0)
            fail(u"yarım kalmış"_s);
    }
    return m_buffer[m_at + offset];
}

// Both give the offset behind the token's beginning, and -1 if the part ends before.
qsizetype XmlScanner::find(char byte, qsizetype from)
{
    for (;;) {
        const char *const start = m_buffer.constData() + m_at;
        const qsizetype size = m_end - m_at;
        if (from < size) {
            const void *const found =
                std::memchr(start + from, byte, static_cast<std::size_t>(size - from));
            if (found)
                return static_cast<const char *>(found) - start;
            from = size;
        }
        if (fill() < 0)
            return -1;
    }
}

qsizetype XmlScanner::find(QByteArrayView mark, qsizetype from)
{
    for (;;) {
        from = find(mark.front(), from);
        if (from < 0)
            fail(u"yarım kalmış"_s);
        qsizetype same = 1;
        while (same < mark.size() && at(from + same) == mark[same])
            ++same;
        if (same == mark.size())
            return from;
        ++from;
    }
}

qsizetype XmlScanner::findTagEnd()
{
    char quote = 0;
    for (qsizetype i = 1;;) {
        const char *const start = m_buffer.constData() + m_at;
        const qsizetype size = m_end - m_at;
        for (; i < size; ++i) {
            const char c = start[i];
            if (quote != 0) {
                if (c == quote)
                    quote = 0;
            } else if (c == '>') {
                return i;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '<') {
                fail(u"etiket"_s);
            }
        }
        if (fill() < 0)
            fail(u"yarım kalmış"_s);
    }
}

XmlScanner::Token XmlScanner::next()
{
    if (m_endFollows) {
        m_endFollows = false;
        --m_depth;
        return Token::End;
    }
    for (;;) {
        if (m_at == m_end && fill() < 0) {
            if (m_depth > 0)
                fail(u"yarım kalmış"_s);
            return Token::Finished;
        }
        if (m_buffer[m_at] != '<') {
            if (takeText())
                return Token::Text;
        } else {
            const char second = at(1);
            if (second != '!' && second != '?')
                return takeTag();
            if (takeMarkup())
                return Token::Text;
        }
    }
}

// Blanks around the root element are passed over.
bool XmlScanner::takeText()
{
    const qsizetype found = find('<', 0);
    const qsizetype length = found < 0 ? m_end - m_at : found;
    m_text = QByteArrayView(m_buffer.constData() + m_at, length);
    m_plainText = false;
    m_at += length;
    if (m_depth > 0)
        return true;
    if (!m_text.trimmed().isEmpty())
        fail(u"kök öğenin dışında metin"_s);
    return false;
}

XmlScanner::Token XmlScanner::takeTag()
{
    const qsizetype end = findTagEnd();
    QByteArrayView tag(m_buffer.constData() + m_at + 1, end - 1);
    m_at += end + 1;
    const bool closes = !tag.isEmpty() && tag.front() == '/';
    if (closes)
        tag = tag.sliced(1);
    else if (!tag.isEmpty() && tag.back() == '/') {
        m_endFollows = true;
        tag.chop(1);
    }
    qsizetype length = 0;
    while (length < tag.size() && !isBlank(tag[length]))
        ++length;
    m_name = withoutPrefix(tag.first(length));
    m_attributes = tag.sliced(length);
    if (m_name.isEmpty())
        fail(u"adsız öğe"_s);
    if (!closes) {
        ++m_depth;
        return Token::Start;
    }
    if (--m_depth < 0)
        fail(u"fazla kapanış"_s);
    return Token::End;
}

// Comments and instructions are passed over; true for a CDATA section.
bool XmlScanner::takeMarkup()
{
    if (at(1) == '?') {
        m_at += find("?>", 2) + 2;
        return false;
    }
    if (at(2) == '-' && at(3) == '-') {
        m_at += find("-->", 4) + 3;
        return false;
    }
    constexpr QByteArrayView section = "<![CDATA[";
    for (qsizetype i = 2; i < section.size(); ++i) {
        if (at(i) != section[i])
            fail(u"belge türü bildirimi kabul edilmez"_s);
    }
    const qsizetype end = find("]]>", section.size());
    m_text = QByteArrayView(m_buffer.constData() + m_at + section.size(), end - section.size());
    m_plainText = true;
    m_at += end + 3;
    return m_depth > 0;
}

QByteArrayView XmlScanner::text()
{
    if (m_plainText || (!m_text.contains('&') && !m_text.contains('\r')))
        return m_text;
    resolve(m_text, m_resolved);
    return m_resolved;
}

std::optional<XmlScanner::Attribute> XmlScanner::takeAttribute(QByteArrayView &rest)
{
    qsizetype start = 0;
    while (start < rest.size() && isBlank(rest[start]))
        ++start;
    if (start == rest.size())
        return std::nullopt;
    qsizetype mark = start;
    while (mark < rest.size() && rest[mark] != '=')
        ++mark;
    qsizetype open = mark + 1;
    while (open < rest.size() && isBlank(rest[open]))
        ++open;
    if (open >= rest.size() || (rest[open] != '"' && rest[open] != '\''))
        fail(u"öznitelik"_s);
    const char quote = rest[open];
    qsizetype close = open + 1;
    while (close < rest.size() && rest[close] != quote)
        ++close;
    if (close == rest.size())
        fail(u"öznitelik"_s);
    qsizetype nameEnd = mark;
    while (nameEnd > start && isBlank(rest[nameEnd - 1]))
        --nameEnd;
    const Attribute attribute{withoutPrefix(rest.sliced(start, nameEnd - start)),
                              rest.sliced(open + 1, close - open - 1)};
    rest = rest.sliced(close + 1);
    return attribute;
}

std::optional<XmlScanner::Attribute> XmlScanner::nextAttribute()
{
    return takeAttribute(m_attributes);
}

QByteArray XmlScanner::attribute(QByteArrayView name) const
{
    QByteArrayView rest = m_attributes;
    while (const auto attribute = takeAttribute(rest)) {
        if (attribute->name == name) {
            QByteArray value;
            resolve(attribute->raw, value);
            return value;
        }
    }
    return {};
}

} // namespace kervan
