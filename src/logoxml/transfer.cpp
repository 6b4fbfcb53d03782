#include "logoxml/transfer.h"

#include "base/linereader.h"
#include "logoxml/document.h"

#include <QScopeGuard>

namespace kervan {

using namespace Qt::StringLiterals;

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

std::optional<QString> askTarget(Program &program, const QString &title)
{
    const Folders &folders = program.folders;
    const auto name =
        program.dialogs.saveName({.title = title,
                                  .filter = u"Xml Dosyaları (xml)|*.xml"_s,
                                  .start = ilkKlasor(program.folder, folders.xc, folders.xf)});
    if (!name || name->isEmpty())
        return std::nullopt;
    return xmlAdi(*name);
}

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

void tellDone(Boxes &boxes)
{
    boxes.show({u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
}

void addNote(TextField &bilgi, const std::optional<Failure> &failed)
{
    if (failed)
        bilgi.setText((bilgi.text() + u' ' + failed->description()).trimmed());
}

QString untouchedField(QStringView field)
{
    return field.toString();
}

} // namespace kervan
