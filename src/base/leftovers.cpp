#include "base/leftovers.h"

#include <QDirIterator>
#include <QFile>

#include <algorithm>
#include <optional>

namespace kervan {

namespace {

constexpr qsizetype letters = 6;

bool isCapital(QChar c)
{
    return c >= u'A' && c <= u'Z';
}

bool isLetter(QChar c)
{
    return isCapital(c) || (c >= u'a' && c <= u'z');
}

std::optional<Leftover> leftoverOf(const QFileInfo &file)
{
    const QString name = file.fileName();
    const qsizetype point = name.size() - letters - 1;
    if (point <= 0 || name[point] != u'.')
        return std::nullopt;
    const QStringView end = QStringView(name).sliced(point + 1);
    if (!std::ranges::all_of(end, isLetter))
        return std::nullopt;
    const auto capitals = std::ranges::count_if(end, isCapital);
    return Leftover{file, name.first(point), capitals == 3 || capitals == 4};
}

} // namespace

void sweepLeftovers(const QString &folder,
                    const std::function<bool(const Leftover &leftover)> &isOurs)
{
    QDirIterator entries(folder, QDir::Files | QDir::Hidden);
    while (entries.hasNext()) {
        entries.next();
        const auto leftover = leftoverOf(entries.fileInfo());
        if (leftover && isOurs(*leftover))
            QFile::remove(leftover->file.filePath());
    }
}

} // namespace kervan
