#include "logoxml/document.h"

#include "base/wholefile.h"

namespace kervan {

void belgeyaz(const Belge &belge, DocumentEnd end, const QString &path)
{
    belgeyaz(belge, end, path, [&](const TakePiece &take) {
        for (qsizetype i = 0; i < belge.body.size(); ++i) {
            if (i > 0)
                take(belge.separator);
            take(belge.body[i]);
        }
    });
}

void belgeyaz(const Belge &frame, DocumentEnd end, const QString &path,
              const std::function<void(const TakePiece &take)> &makeBody)
{
    WholeFile file(path);
    const auto write = [&](QByteArrayView piece) {
        if (frame.spelling == Values::AsXml)
            file.write(spellMarks(piece));
        else
            file.write(piece);
    };
    write(frame.header);
    makeBody(write);
    write(frame.footer);
    if (end == DocumentEnd::LineEnd)
        file.write("\r\n");
    file.commit();
}

} // namespace kervan
