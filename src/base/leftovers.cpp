#include "base/leftovers.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype letters = 6;

bool isSmall(QChar c)
{
    return c >= u'a' && c <= u'z';
}

bool isCapital(QChar c)
{
    return c >= u'A' && c <= u'Z';
}

// Small and capital letters as they fall; people write all small, all capital, or one capital.
bool isDrawn(QStringView end)
{
    return std::ranges::any_of(end, isSmall) && std::ranges::any_of(end.sliced(1), isCapital);
}

// A whole one ends with the tag that it begins with, behind the line of the XML.
bool isHalfDocument(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray head = file.read(256);
    const qsizetype tag = head.indexOf('<', head.indexOf("?>") + 1);
    const QByteArray root = head.mid(tag + 1, head.indexOf('>', tag) - tag - 1);
    const qint64 end = std::max<qint64>(file.size() - root.size() - 16, 0);
    return head.startsWith("<?xml") && file.seek(end) &&
           !file.readAll().trimmed().endsWith("</" + root + '>');
}

bool isLeftover(const QFileInfo &file, const std::function<bool(QStringView name)> &isOurs)
{
    const QString name = file.fileName();
    const qsizetype point = name.size() - letters - 1;
    if (point <= 0 || name[point] != u'.')
        return false;
    const QStringView end = QStringView(name).sliced(point + 1);
    const QStringView whole = QStringView(name).first(point);
    if (!std::ranges::all_of(end, [](QChar c) { return isSmall(c) || isCapital(c); }) ||
        !isOurs(whole))
        return false;
    return isDrawn(end) || file.size() == 0 ||
           (whole.endsWith(u".xml"_s, Qt::CaseInsensitive) && isHalfDocument(file.filePath()));
}

} // namespace

void sweepLeftovers(const QString &folder, const std::function<bool(QStringView name)> &isOurs,
                    std::chrono::minutes untouched)
{
    const QDateTime latest = QDateTime::currentDateTime().addSecs(
        -std::chrono::duration_cast<std::chrono::seconds>(untouched).count());
    QDirIterator entries(folder, QDir::Files | QDir::Hidden);
    while (entries.hasNext()) {
        entries.next();
        const QFileInfo file = entries.fileInfo();
        if (isLeftover(file, isOurs) && (untouched.count() == 0 || file.lastModified() < latest))
            QFile::remove(file.filePath());
    }
}

} // namespace kervan
