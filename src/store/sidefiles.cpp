#include "store/sidefiles.h"

#include "base/codepage.h"
#include "base/failure.h"
#include "base/linereader.h"
#include "base/wholefile.h"

#include <QDir>
#include <QFileInfo>

#include <limits>

namespace kervan {

using namespace Qt::StringLiterals;

QString readSingleValue(const QString &path)
{
    const QString line = readFirstLines(path, 1).value(0);
    QString value = line.left(line.indexOf(u','));
    if (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"'))
        value = value.sliced(1, value.size() - 2);
    return value;
}

void writeSingleValue(const QString &path, const QString &value)
{
    writeLines(path, {value});
}

QString readCounter(const QString &path)
{
    return QFileInfo::exists(path) ? readSingleValue(path) : QString();
}

std::optional<Failure> unreadable(const QString &path)
{
    return passOver([&] { readCounter(path); });
}

QStringList readLines(const QString &path, int count)
{
    QStringList lines = readFirstLines(path, count);
    if (lines.size() < count)
        throw Failure(u"%1 dosyasında %2. satır yok."_s.arg(QDir::toNativeSeparators(path),
                                                            QString::number(lines.size() + 1)));
    return lines;
}

QStringList readAllLines(const QString &path)
{
    return readFirstLines(path, std::numeric_limits<qsizetype>::max());
}

QStringList readFirstLines(const QString &path, qsizetype count)
{
    LineReader reader(path);
    QStringList lines;
    while (lines.size() < count && reader.next())
        lines << reader.line().toString();
    return lines;
}

void writeLines(const QString &path, const QStringList &lines, Readers readers)
{
    QByteArray bytes;
    for (const QString &line : lines) {
        if (line.contains(u'\n') || line.contains(u'\r')) // it would be read back as two
            throw Failure(u"%1 yazılamadı: \"%2\" tek satır değil."_s.arg(
                QDir::toNativeSeparators(path), line));
        appendToCodePage(bytes, line);
        bytes += "\r\n";
    }
    WholeFile file(path);
    if (readers == Readers::Owner)
        file.keepToOwner();
    file.write(bytes);
    file.commit();
}

} // namespace kervan
