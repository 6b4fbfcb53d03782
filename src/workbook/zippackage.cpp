#include "workbook/zippackage.h"

#include "base/failure.h"
#include "workbook/damage.h"

#include <zip.h>

namespace kervan {

using namespace Qt::StringLiterals;

void ZipPackage::Discard::operator()(zip *archive) const
{
    zip_discard(archive);
}

void ZipPackage::Part::Close::operator()(zip_file *file) const
{
    zip_fclose(file);
}

ZipPackage::ZipPackage(const QByteArray &bytes)
{
    zip_source_t *const source = zip_source_buffer_create(
        bytes.constData(), static_cast<zip_uint64_t>(bytes.size()), 0, nullptr);
    if (source)
        m_archive.reset(zip_open_from_source(source, ZIP_RDONLY, nullptr));
    if (!m_archive) {
        zip_source_free(source);
        failDamaged();
    }
    const zip_int64_t count = zip_get_num_entries(m_archive.get(), 0);
    for (zip_int64_t i = count - 1; i >= 0; --i) { // of two with one name the first counts
        const auto place = static_cast<zip_uint64_t>(i);
        if (const char *const name = zip_get_name(m_archive.get(), place, 0))
            m_places.insert(plainName(name), place);
    }
}

ZipPackage::Part ZipPackage::open(const QByteArray &name, qint64 most) const
{
    const auto found = m_places.constFind(plainName(name));
    if (found == m_places.constEnd())
        throw Failure(u"içinde \"%1\" parçası yok"_s.arg(QString::fromUtf8(name)));
    const zip_uint64_t index = *found;
    Part part;
    zip_stat_t about;
    if (zip_stat_index(m_archive.get(), index, 0, &about) != 0)
        failDamaged();
    part.m_most = most;
    part.m_packed = static_cast<qint64>(about.comp_size);
    part.m_file.reset(zip_fopen_index(m_archive.get(), index, 0));
    if (!part.m_file) {
        const int error = zip_error_code_zip(zip_get_error(m_archive.get()));
        if (error == ZIP_ER_NOPASSWD || error == ZIP_ER_ENCRNOTSUPP)
            throw Failure(u"parola ile korunuyor"_s);
        failDamaged();
    }
    return part;
}

qsizetype ZipPackage::Part::read(char *to, qsizetype most)
{
    const zip_int64_t got = zip_fread(m_file.get(), to, static_cast<zip_uint64_t>(most));
    if (got < 0)
        failDamaged();
    m_unpacked += got;
    if (m_unpacked > m_most ||
        (m_unpacked > ratioMattersFrom && m_unpacked / highestRatio > m_packed))
        throw Failure(u"açılmış boyutu sınırı aşıyor"_s);
    return static_cast<qsizetype>(got);
}

} // namespace kervan
