#include "transfer/linewalk.h"

#include "base/linereader.h"

#include <QScopeGuard>

namespace kervan {

namespace {

int lineCount(const QString &path)
{
    LineReader reader(path);
    int count = 0;
    while (reader.next())
        ++count;
    return count;
}

} // namespace

// Read twice, so that the bar has a true maximum.
void walkLines(const QString &path, ProgressField &progress,
               const std::function<void(QStringView line)> &take)
{
    progress.start(0);
    const auto hide = qScopeGuard([&] { progress.finish(); });
    progress.start(lineCount(path));
    LineReader reader(path);
    while (reader.next()) {
        progress.step();
        take(reader.line());
    }
}

} // namespace kervan
