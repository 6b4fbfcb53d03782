#include "text/ini.h"

#include "base/codepage.h"
#include "base/failure.h"
#include "base/wholefile.h"

#include <QFile>
#include <QStringList>

#include <optional>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestValue = 255;

std::optional<QStringList> linesOf(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return QStringList{};
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QString text = fromTextFile(file.readAll());
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

bool isNamed(QStringView name, const QString &wanted)
{
    return name.trimmed().compare(wanted, Qt::CaseInsensitive) == 0;
}

// Where the line of the key stands, or where it has to be inserted; -1 without the section.
struct Place
{
    qsizetype line = -1;
    bool found = false;
};

Place placeOf(const QStringList &lines, const QString &section, const QString &key)
{
    Place place;
    bool inside = false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QStringView line = QStringView(lines[i]).trimmed();
        if (isSection(line)) {
            if (inside)
                break;
            const qsizetype close = line.indexOf(u']');
            inside = close > 0 && isNamed(line.sliced(1, close - 1), section);
            if (inside)
                place.line = i + 1;
        } else if (inside) {
            const qsizetype equals = line.indexOf(u'=');
            if (equals > 0 && isNamed(line.first(equals), key))
                return {i, true};
            if (!line.isEmpty())
                place.line = i + 1;
        }
    }
    return place;
}

} // namespace

QString inioku(const QString &section, const QString &key, const QString &path)
{
    const QStringList lines = linesOf(path).value_or(QStringList{});
    const Place place = placeOf(lines, section, key);
    if (!place.found)
        return {};
    const QStringView line = lines[place.line];
    QStringView value = line.sliced(line.indexOf(u'=') + 1).trimmed();
    const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                        value.back() == value.front();
    if (quoted)
        value = value.sliced(1, value.size() - 2);
    return value.left(longestValue).toString();
}

int iniyaz(const QString &section, const QString &key, const QString &value, const QString &path)
{
    const auto read = linesOf(path);
    if (!read)
        return 0; // a file that can't be read is not replaced
    QStringList lines = *read;
    const Place place = placeOf(lines, section, key);
    const QString line = key + u'=' + value;
    if (place.found)
        lines[place.line] = line;
    else if (place.line >= 0)
        lines.insert(place.line, line);
    else
        lines << u'[' + section + u']' << line;
    passOver([&] {
        WholeFile file(path);
        file.write(toCodePage(lines.join(u"\r\n"_s) + u"\r\n"_s));
        file.commit();
    });
    return 0;
}

} // namespace kervan
