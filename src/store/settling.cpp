#include "store/settling.h"

#include "base/failure.h"
#include "base/leftovers.h"
#include "store/localdb.h"

#include <QDir>
#include <QFile>

namespace kervan {

using namespace Qt::StringLiterals;

void settle(const QString &programFolder)
{
    const QDir folder(programFolder);
    sweepLeftovers(programFolder, [](const Leftover &leftover) {
        return leftover.whole.endsWith(u".kvz") && leftover.isRest();
    });
    for (const QString &trial : folder.entryList({u"kervan-??????.tmp"_s}, QDir::Files)) {
        const QString path = folder.filePath(trial); // of a look whether the folder can be written
        if (QFileInfo(path).size() == 0)
            QFile::remove(path);
    }
    for (const QString &database : folder.entryList({u"*.dbs"_s}, QDir::Files)) {
        const QString path = folder.filePath(database);
        if (QFile::exists(path + u"-wal"_s) || QFile::exists(path + u"-journal"_s))
            passOver([&] { LocalDb().foldIn(path); });
    }
}

} // namespace kervan
