#include "logoxml/template.h"

#include "base/codepage.h"

#include <QFile>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

QByteArray sablon(const QString &name)
{
    QFile file(u":/logoxml/templates/%1.xml"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("template %s is missing", qPrintable(name));
    return toCodePage(QString::fromUtf8(file.readAll()));
}

namespace {

// Marks are control characters: no placeholder holds one, and those of values go.
constexpr char ampersand = 1;
constexpr char less = 2;
constexpr char greater = 3;
constexpr char nothing = 4;

char markOf(char byte)
{
    switch (byte) {
    case '&':
        return ampersand;
    case '<':
        return less;
    case '>':
        return greater;
    case '\t':
    case '\n':
        return byte;
    default:
        break;
    }
    // The last seven are controls by their number: the code page has no letter there.
    const auto code = static_cast<unsigned char>(byte);
    const bool control = code < 0x20 || code == 0x7F || code == 0x81 || code == 0x90 ||
                         code == 0x9D || code == 0x9E || (code >= 0x8D && code <= 0x8F);
    return control ? nothing : byte;
}

void mark(QByteArray &bytes)
{
    std::transform(bytes.cbegin(), bytes.cend(), bytes.begin(), &markOf);
}

bool isElement(QByteArrayView placeholder)
{
    return placeholder.startsWith('<');
}

} // namespace

QByteArray valueBytes(QStringView value, Values values)
{
    QByteArray bytes = toCodePage(value);
    if (values == Values::AsXml)
        mark(bytes);
    return bytes;
}

QByteArray spellMarks(QByteArrayView bytes)
{
    QByteArray text;
    text.reserve(bytes.size());
    const auto isMark = [](char byte) {
        return byte >= ampersand && byte <= nothing;
    };
    for (auto at = bytes.begin(); at != bytes.end();) {
        const auto found = std::find_if(at, bytes.end(), isMark);
        text.append(at, found - at);
        if (found == bytes.end())
            break;
        if (*found == ampersand)
            text += "&amp;";
        else if (*found == less)
            text += "&lt;";
        else if (*found == greater)
            text += "&gt;";
        at = found + 1;
    }
    return text;
}

QByteArray sablondoldur(QByteArray text, std::span<const Fill> fills)
{
    for (const Fill &fill : fills)
        text.replace(fill.find, fill.value);
    return text;
}

QList<Fill> fillsOf(const QList<QByteArray> &placeholders, std::span<const QString> values,
                    Values spelling)
{
    QList<Fill> fills;
    for (qsizetype i = 0; i < placeholders.size(); ++i) {
        const QByteArray &find = placeholders[i];
        const QString &value = values[static_cast<std::size_t>(i)];
        if (spelling == Values::AsTheyStand || !isElement(find)) {
            fills.append({find, valueBytes(value, spelling)});
            continue;
        }
        // A value that spells such a placeholder is found too, by its marks.
        QByteArray marked = find;
        mark(marked);
        fills.append({find, toCodePage(value)});
        fills.append({marked, toCodePage(value)});
    }
    return fills;
}

namespace {

// Nearly every placeholder holds a small letter (a to z), which most values do not.
bool hasSmallLetter(const QString &text)
{
    return std::ranges::any_of(text, [](QChar c) { return c >= u'a' && c <= u'z'; });
}

// Whether the word could be found across an end of the text, with whatever stands there.
bool mayReachOut(QByteArrayView word, QByteArrayView text)
{
    for (qsizetype inside = 1; inside < word.size(); ++inside) {
        const qsizetype seen = std::min(inside, text.size());
        if (seen == 0)
            return true;
        // The first letters mostly tell that it is not.
        const QByteArrayView behind = word.last(inside).first(seen);
        const QByteArrayView before = word.first(inside).last(seen);
        if ((text.front() == behind.front() && text.first(seen) == behind) ||
            (text.back() == before.back() && text.last(seen) == before))
            return true;
    }
    return false;
}

} // namespace

Sablon::Sablon(QByteArray text, QList<QByteArray> placeholders, Values spelling)
    : m_text(std::move(text))
    , m_placeholders(std::move(placeholders))
    , m_spelling(spelling)
    , m_literals{m_text}
{
    for (qsizetype i = 0; i < m_placeholders.size(); ++i)
        split(i);
    m_separates = std::ranges::none_of(m_placeholders, [this](const QByteArray &word) {
        return std::ranges::any_of(
            m_literals, [&](const QByteArray &literal) { return mayReachOut(word, literal); });
    });
    for (const QByteArray &literal : std::as_const(m_literals))
        m_literalSize += literal.size();
    m_lettered = std::ranges::all_of(m_placeholders, [](const QByteArray &word) {
        return hasSmallLetter(QString::fromLatin1(word));
    });
}

void Sablon::split(qsizetype placeholder)
{
    const QByteArray &find = m_placeholders[placeholder];
    for (qsizetype i = 0; i < m_literals.size(); ++i) {
        const qsizetype at = m_literals[i].indexOf(find);
        if (at < 0)
            continue;
        m_literals.insert(i + 1, m_literals[i].sliced(at + find.size()));
        m_literals[i].truncate(at);
        m_slots.insert(i, placeholder);
    }
}

bool Sablon::mayChange(std::span<const QString> values, Steps steps) const
{
    if (!m_separates)
        return true;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (m_lettered && !hasSmallLetter(values[i]))
            continue;
        const QByteArray value = toCodePage(values[i]);
        const qsizetype first = steps == Steps::All ? 0 : static_cast<qsizetype>(i) + 1;
        for (qsizetype word = first; word < m_placeholders.size(); ++word) {
            if (value.contains(m_placeholders[word]))
                return true;
        }
    }
    return false;
}

void Sablon::doldur(std::span<const QString> values, QByteArray &out) const
{
    Q_ASSERT(static_cast<qsizetype>(values.size()) == m_placeholders.size());
    if (mayChange(values, Steps::Later)) {
        out += sablondoldur(m_text, fillsOf(m_placeholders, values, m_spelling));
        return;
    }
    yerlestir(values, out);
}

// Room is made once for all that comes.
void Sablon::yerlestir(std::span<const QString> values, QByteArray &out) const
{
    const auto valueOf = [&](qsizetype slot) -> const QString & {
        return values[static_cast<std::size_t>(m_slots[slot])];
    };
    qsizetype room = m_literalSize;
    for (qsizetype i = 0; i < m_slots.size(); ++i)
        room += valueOf(i).size();
    const qsizetype start = out.size();
    out.resize(start + room);
    char *at = out.data() + start;
    for (qsizetype i = 0; i < m_slots.size(); ++i) {
        // As one block, which std::ranges::copy does not make of it.
        at = std::copy(m_literals[i].begin(), m_literals[i].end(), at);
        char *const value = at;
        at = writeInCodePage(at, valueOf(i));
        if (m_spelling == Values::AsXml && !isElement(m_placeholders[m_slots[i]])) [[unlikely]]
            std::transform(value, at, value, &markOf);
    }
    at = std::copy(m_literals.last().begin(), m_literals.last().end(), at);
    out.truncate(at - out.constData());
}

} // namespace kervan
