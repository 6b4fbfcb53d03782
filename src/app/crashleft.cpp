#include "app/crashleft.h"

#include "base/crashreport.h"
#include "controls/remembered.h"

#include <QDateTime>
#include <QDir>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView toldKey = u"cokme/bildirilen";

} // namespace

QString leftByCrash(const QString &programFolder)
{
    const QDir folder(programFolder);
    const QFileInfo report(folder, crashReportName.toString());
    if (!report.isFile())
        return {};
    QString kept = folder.filePath(
        u"cokme-%1.txt"_s.arg(report.lastModified().toString(u"yyyyMMdd-hhmmss"_s)));
    if (QFile::rename(report.filePath(), kept))
        return kept;
    // Where nothing can be renamed it would be told at each start.
    if (remembered(toldKey) == kept)
        return {};
    remember(toldKey, kept);
    return report.filePath();
}

bool isOfCommand(const QString &report)
{
    QFile file(report);
    return file.open(QIODevice::ReadOnly) && file.readLine().startsWith("kervan-aktar ");
}

} // namespace kervan
