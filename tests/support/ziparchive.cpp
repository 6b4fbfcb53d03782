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

ZipEntries readZip(const QString &path)
{
    ZipEntries entries;
    zip_t *const archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, nullptr);
    if (!archive)
        qFatal("no archive: %s", qPrintable(path));
    const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(archive, 0));
    for (zip_uint64_t i = 0; i < count; ++i) {
        zip_stat_t about;
        zip_stat_index(archive, i, 0, &about);
        QByteArray contents(static_cast<qsizetype>(about.size), '\0');
        zip_file_t *const file = zip_fopen_index(archive, i, 0);
        if (!file || zip_fread(file, contents.data(), about.size) != qint64(about.size))
            qFatal("not read: %s", about.name);
        zip_fclose(file);
        entries.append({about.name, contents});
    }
    zip_discard(archive);
    return entries;
}

} // namespace kervan
