#include "check/leftdocuments.h"

#include "base/leftovers.h"
#include "check/documentshape.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <chrono>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Longer than any living writer pauses.
constexpr auto leftAlone = std::chrono::minutes(10);

enum class Content { Foreign, Empty, Half, Whole };

// A document of ours begins with the line of the XML and its root, and ends with that.
Content contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Content::Foreign;
    if (file.size() == 0)
        return Content::Empty;
    const QByteArray head = file.read(256);
    const qsizetype begin = head.indexOf('<', head.indexOf("?>") + 1) + 1;
    const QByteArray root =
        head.sliced(begin, std::max<qsizetype>(head.indexOf('>', begin), begin) - begin);
    const bool isOurs =
        std::ranges::any_of(shape::roots, [&](const auto &known) { return known.first == root; });
    if (!head.startsWith("<?xml") || !isOurs)
        return Content::Foreign;
    file.seek(std::max<qint64>(file.size() - root.size() - 16, 0));
    return file.readAll().trimmed().endsWith("</" + root + '>') ? Content::Whole : Content::Half;
}

bool isLeft(const Leftover &leftover)
{
    const auto age = leftover.file.lastModified().secsTo(QDateTime::currentDateTime());
    if (!leftover.whole.endsWith(u".xml"_s, Qt::CaseInsensitive) ||
        age < std::chrono::seconds(leftAlone).count())
        return false;
    const Content content = contentOf(leftover.file.filePath());
    return content == Content::Half || (content != Content::Foreign && leftover.isDrawn);
}

} // namespace

void sweepDocuments(const QString &folder)
{
    sweepLeftovers(folder, isLeft);
}

} // namespace kervan
