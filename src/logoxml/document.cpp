#include "logoxml/document.h"

#include "base/failure.h"

#include <QDir>
#include <QSaveFile>

namespace kervan {

using namespace Qt::StringLiterals;

void belgeyaz(const Belge &belge, Yol yol, const QString &path)
{
    QSaveFile file(path);
    bool fine = file.open(QIODevice::WriteOnly);
    const auto put = [&](const QByteArray &bytes) {
        fine = fine && file.write(bytes) == bytes.size();
    };
    put(belge.header);
    for (qsizetype i = 0; i < belge.body.size(); ++i) {
        if (i > 0)
            put(belge.separator);
        put(belge.body[i]);
    }
    put(belge.footer);
    if (yol == Yol::bir)
        put("\r\n");
    if (!fine || !file.commit())
        throw Failure(
            u"%1 yazılamadı: %2"_s.arg(QDir::toNativeSeparators(path), file.errorString()));
}

QString xmlAdi(const QString &name)
{
    return name.endsWith(u".xml"_s) ? name : name + u".xml"_s;
}

QString ilkKlasor(const QString &programFolder, const QString &xc, const QString &xf)
{
    return xc.isEmpty() ? programFolder + u"/logo xml"_s : xf;
}

} // namespace kervan
