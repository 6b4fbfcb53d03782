#include "app/folderstate.h"

#include "app/crashleft.h"

#include <QDir>
#include <QStringList>
#include <QTemporaryFile>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

bool canBeWritten(const QString &folder)
{
    QTemporaryFile file(folder + u"/kervan-XXXXXX.tmp"_s);
    return file.open();
}

} // namespace

QString folderState(const QString &folder, const QString &recovered)
{
    QStringList sentences;
    if (const QString report = leftByCrash(folder); !report.isEmpty())
        sentences << u"%1 geçen sefer yarıda kapandı; raporu: %2"_s.arg(
            isOfCommand(report) ? u"kervan-aktar"_s : u"Program"_s,
            QDir::toNativeSeparators(report));
    if (!canBeWritten(folder))
        sentences
            << u"Program klasörüne yazılamıyor, ayarlar ve numaralar saklanamaz. Yazma hakkınız "
               "olan bir yere taşıyın ya da bu hakkı isteyin: %1"_s.arg(
                   QDir::toNativeSeparators(folder));
    if (!recovered.isEmpty())
        sentences << recovered;
    return sentences.join(u"  "_s);
}

} // namespace kervan
