#include "support/ziparchive.h"

#include <QFile>

#include <zip.h>

namespace kervan {

void writeZip(const QString &path, const ZipEntries &entries)
{
    zip_t *const archive =
        zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto &[name, contents] : entries) {
        zip_source_t *const source = zip_source_buffer(
            archive, contents.constData(), static_cast<zip_uint64_t>(contents.size()), 0);
        if (zip_file_add(archive, name.constData(), source, ZIP_FL_ENC_UTF_8) < 0)
            qFatal("not added: %s", name.constData());
    }
    if (zip_close(archive) != 0)
        qFatal("not written: %s", qPrintable(path));
}

} // namespace kervan
