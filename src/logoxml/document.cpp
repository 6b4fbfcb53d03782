#include "logoxml/document.h"

#include "base/wholefile.h"

namespace kervan {

using namespace Qt::StringLiterals;

void belgeyaz(const Belge &belge, Yol yol, const QString &path)
{
    belgeyaz(belge, yol, path, [&](const TakePiece &take) {
        for (qsizetype i = 0; i < belge.body.size(); ++i) {
            if (i > 0)
                take(belge.separator);
            take(belge.body[i]);
        }
    });
}

void belgeyaz(const Belge &frame, Yol yol, const QString &path,
              const std::function<void(const TakePiece &take)> &makeBody)
{
    WholeFile file(path);
    file.write(frame.header);
    makeBody([&](QByteArrayView piece) { file.write(piece); });
    file.write(frame.footer);
    if (yol == Yol::bir)
        file.write("\r\n");
    file.commit();
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
