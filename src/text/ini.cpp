#include "text/ini.h"

#include "base/codepage.h"
#include "base/failure.h"
#include "base/wholefile.h"

#include <QFile>

#include <optional>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestValue = 255;

QStringList linesIn(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QStringList lines = text.split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

bool isSection(QStringView line)
{
    return line.trimmed().startsWith(u'[');
}

// Two texts are the same without case when these are, letter by letter: a whole text's folding
// makes two letters of some.
QString folded(QStringView text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair = text[i].isLowSurrogate() && i > 0 && text[i - 1].isHighSurrogate();
        const char32_t letter =
            pair ? QChar::surrogateToUcs4(text[i - 1], text[i]) : char32_t(text[i].unicode());
        const char32_t fold = QChar::toCaseFolded(letter);
        if (pair)
            result += QChar::lowSurrogate(fold);
        else
            result += QChar(static_cast<char16_t>(fold));
    }
    return result;
}

std::optional<QString> nameOfHeader(QStringView line)
{
    const QStringView header = line.trimmed();
    const qsizetype close = header.indexOf(u']');
    if (close <= 0)
        return std::nullopt;
    return folded(header.sliced(1, close - 1).trimmed());
}

// Empty for a line that has none.
QString keyOf(QStringView line)
{
    const QStringView trimmed = line.trimmed();
    return folded(trimmed.first(qMax(trimmed.indexOf(u'='), 0)).trimmed());
}

} // namespace

IniFile::IniFile(const QString &path)
    : m_path(path)
{
    QFile file(path);
    if (!file.exists()) {
        m_isReadable = true;
    } else if (file.open(QIODevice::ReadOnly)) {
        m_isReadable = true;
        const QStringList lines = linesIn(fromTextFile(file.readAll()));
        m_lines.assign(lines.cbegin(), lines.cend());
    }
}

QByteArray IniFile::bytes() const
{
    QByteArray result = m_bytes;
    if (!result.isEmpty())
        return result;
    for (const QString &line : m_lines)
        appendToCodePage(result, line + u"\r\n"_s);
    return result;
}

// What is written is not always what comes back: letters that have no place in the code page, line
// ends within a value, a second mark of UTF-8 behind the first.
void IniFile::readAgain()
{
    m_bytes = bytes();
    const QStringList lines = linesIn(fromTextFile(m_bytes));
    m_lines.assign(lines.cbegin(), lines.cend());
    m_isPlain = !m_bytes.startsWith(utf8Mark);
    m_isIndexed = false;
}

void IniFile::index()
{
    m_sections.clear();
    m_unsure.clear();
    Section *section = nullptr;
    for (auto line = m_lines.begin(); line != m_lines.end(); ++line) {
        if (isSection(*line)) {
            const auto name = nameOfHeader(*line);
            section = name && !m_sections.contains(*name) ? &*m_sections.insert(*name, {line, {}})
                                                          : nullptr;
        } else if (section && !QStringView(*line).trimmed().isEmpty()) {
            take(*section, line);
        }
    }
    m_isIndexed = true;
}

void IniFile::take(Section &section, Lines::iterator line)
{
    section.last = line;
    const QString key = keyOf(*line);
    if (!key.isEmpty() && !section.keys.contains(key))
        section.keys.insert(key, line);
}

IniFile::Section *IniFile::sectionOf(const QString &name)
{
    if (m_isChanged && !m_isPlain)
        readAgain();
    if (!m_isIndexed || m_unsure.contains(name))
        index();
    const auto place = m_sections.find(name);
    return place == m_sections.end() ? nullptr : &*place;
}

QString IniFile::value(const QString &section, const QString &key)
{
    const Section *inside = sectionOf(folded(section));
    const auto line = inside ? inside->keys.value(folded(key), m_lines.end()) : m_lines.end();
    if (line == m_lines.end())
        return {};
    QStringView value = QStringView(*line).sliced(line->indexOf(u'=') + 1).trimmed();
    const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                        value.back() == value.front();
    if (quoted)
        value = value.sliced(1, value.size() - 2);
    return value.left(longestValue).toString();
}

void IniFile::set(const QString &section, const QString &key, const QString &value)
{
    if (!m_isReadable)
        return;
    const QString name = folded(section);
    Section *inside = sectionOf(name);
    m_isChanged = true;
    m_bytes.clear();
    if (!inside) {
        m_lines.push_back(u'[' + section + u']');
        m_lines.push_back(key + u'=' + value);
        m_isPlain = false;
        return;
    }
    const QString line = key + u'=' + value;
    const QStringList stored = linesIn(fromCodePage(toCodePage(line)) + u"\r\n"_s);
    const auto found = inside->keys.constFind(folded(key));
    const bool isNew = found == inside->keys.cend();
    if (isNew && m_isPlain && stored.size() == 1)
        return insert(name, *inside, stored.first());
    if (isNew)
        m_lines.insert(std::next(inside->last), line);
    else
        **found = line;
    m_isPlain = !isNew && m_isPlain && stored == QStringList(line);
}

// A key may look like a header, and then begins a section.
void IniFile::insert(const QString &name, Section &section, const QString &line)
{
    const auto place = m_lines.insert(std::next(section.last), line);
    if (!isSection(line))
        return take(section, place);
    const auto header = nameOfHeader(line);
    if (!header || *header == name)
        return;
    if (m_sections.contains(*header))
        m_unsure.insert(*header);
    else
        m_sections.insert(*header, {place, {}});
}

bool IniFile::save()
{
    if (!m_isReadable || !m_isChanged)
        return m_isReadable;
    const auto failed = passOver([&] {
        WholeFile file(m_path);
        file.write(bytes());
        file.commit();
    });
    return !failed;
}

QString inioku(const QString &section, const QString &key, const QString &path)
{
    return IniFile(path).value(section, key);
}

int iniyaz(const QString &section, const QString &key, const QString &value, const QString &path)
{
    IniFile file(path);
    file.set(section, key, value);
    file.save(); // a file that can't be read is not replaced
    return 0;
}

} // namespace kervan
