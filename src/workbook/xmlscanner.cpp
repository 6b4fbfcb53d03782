#include "workbook/xmlscanner.h"

#include "base/failure.h"

#include <QChar>

#include <charconv>
#include <cstring>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype usualBuffer = 256LL * 1024;
constexpr qsizetype utf16Piece = 64LL * 1024;

[[noreturn]] void fail(const QString &why)
{
    throw Failure(u"XML yapısı bozuk (%1)"_s.arg(why));
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
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

// Parts of a workbook are written in UTF-8 or UTF-16.
void checkDeclaration(QByteArrayView instruction)
{
    const QByteArray words = instruction.toByteArray().toLower();
    const qsizetype at = words.indexOf("encoding");
    if (words.startsWith("<?xml ") && at >= 0 && words.indexOf("utf-", at) < 0 &&
        words.indexOf("ascii", at) < 0)
        fail(u"UTF-8 değil"_s);
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

// UTF-16 is told by its mark; all else is UTF-8.
void XmlScanner::readMark()
{
    constexpr qsizetype longestMark = 3;
    while (m_end < longestMark && fill() >= 0) // it may come in pieces
        ;
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

// The offset of the mark behind the token's beginning.
qsizetype XmlScanner::find(QByteArrayView mark, qsizetype from)
{
    for (;; ++from) {
        qsizetype same = 0;
        while (same < mark.size() && at(from + same) == mark[same])
            ++same;
        if (same == mark.size())
            return from;
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

// How far the text reaches; notes whether there is something to resolve in it.
qsizetype XmlScanner::findTextEnd()
{
    m_isPlain = true;
    for (qsizetype i = 0;;) {
        const char *const start = m_buffer.constData() + m_at;
        const qsizetype size = m_end - m_at;
        for (; i < size && start[i] != '<'; ++i) {
            if (start[i] == '&' || start[i] == '\r')
                m_isPlain = false;
        }
        if (i < size || fill() < 0)
            return i;
    }
}

// Blanks around the root element are passed over.
bool XmlScanner::takeText()
{
    const qsizetype length = findTextEnd();
    m_text = QByteArrayView(m_buffer.constData() + m_at, length);
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
    qsizetype prefix = 0;
    for (; length < tag.size() && !isBlank(tag[length]); ++length) {
        if (tag[length] == ':')
            prefix = length + 1;
    }
    m_name = tag.sliced(prefix, length - prefix);
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
        const qsizetype end = find("?>", 2) + 2;
        checkDeclaration(QByteArrayView(m_buffer.constData() + m_at, end));
        m_at += end;
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
    m_isPlain = true;
    m_at += end + 3;
    return m_depth > 0;
}

QByteArrayView XmlScanner::text()
{
    if (m_isPlain)
        return m_text;
    resolve(m_text, m_resolved);
    return m_resolved;
}

std::optional<XmlScanner::Attribute> XmlScanner::takeAttribute(QByteArrayView &rest)
{
    const char *at = rest.begin();
    const char *const end = rest.end();
    const auto skipBlanks = [&] {
        while (at != end && isBlank(*at))
            ++at;
    };
    skipBlanks();
    if (at == end)
        return std::nullopt;
    const char *name = at;
    for (; at != end && *at != '=' && !isBlank(*at); ++at) {
        if (*at == ':')
            name = at + 1;
    }
    const char *const nameEnd = at;
    skipBlanks();
    if (at == end || *at++ != '=')
        fail(u"öznitelik"_s);
    skipBlanks();
    if (at == end || (*at != '"' && *at != '\''))
        fail(u"öznitelik"_s);
    const char quote = *at++;
    const char *const value = at;
    while (at != end && *at != quote)
        ++at;
    if (at == end)
        fail(u"öznitelik"_s);
    rest = QByteArrayView(at + 1, end);
    return Attribute{QByteArrayView(name, nameEnd), QByteArrayView(value, at)};
}

std::optional<XmlScanner::Attribute> XmlScanner::nextAttribute()
{
    return takeAttribute(m_attributes);
}

QByteArray XmlScanner::attribute(std::string_view name) const
{
    QByteArrayView rest = m_attributes;
    while (const auto attribute = takeAttribute(rest)) {
        if (attribute->isNamed(name)) {
            QByteArray value;
            resolve(attribute->raw, value);
            return value;
        }
    }
    return {};
}

} // namespace kervan
