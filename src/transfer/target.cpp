#include "transfer/target.h"

namespace kervan {

using namespace Qt::StringLiterals;

QString xmlAdi(const QString &name)
{
    return name.endsWith(u".xml"_s) ? name : name + u".xml"_s;
}

QString ilkKlasor(const QString &programFolder, const QString &xc, const QString &xf)
{
    return xc.isEmpty() ? programFolder + u"/logo xml"_s : xf;
}

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

void tellDone(Boxes &boxes)
{
    boxes.show({u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
}

} // namespace kervan
