#include "app/guidefiles.h"

#include "base/failure.h"
#include "base/wholefile.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace kervan {

using namespace Qt::StringLiterals;

void layOutGuide(const QString &programFolder)
{
    const QString guide = u":/kilavuz"_s; // as the build took it in
    const QDir folder(programFolder + u"/kilavuz"_s);
    QDirIterator files(guide, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile from(files.next());
        const QString to = folder.filePath(QDir(guide).relativeFilePath(from.fileName()));
        if (!from.open(QIODevice::ReadOnly) || !QDir().mkpath(QFileInfo(to).path()))
            throw Failure(u"%1 kurulamadı."_s.arg(QDir::toNativeSeparators(to)));
        WholeFile file(to);
        file.write(from.readAll());
        file.commit();
    }
}

} // namespace kervan
