#include "logoxml/document.h"

#include "base/wholefile.h"

namespace kervan {

using namespace Qt::StringLiterals;

void belgeyaz(const Belge &belge, Yol yol, const QString &path)
{
    WholeFile file(path);
    file.write(belge.header);
    for (qsizetype i = 0; i < belge.body.size(); ++i) {
        if (i > 0)
            file.write(belge.separator);
        file.write(belge.body[i]);
    }
    file.write(belge.footer);
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
