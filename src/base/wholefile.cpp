#include "base/wholefile.h"

#include "base/failure.h"
#include "base/filefault.h"

#include <QDir>

namespace kervan {

using namespace Qt::StringLiterals;

WholeFile::WholeFile(const QString &path)
    : m_file(path)
    , m_fine(m_file.open(QIODevice::WriteOnly))
{
}

void WholeFile::keepToOwner()
{
    m_fine = m_fine && m_file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

void WholeFile::write(QByteArrayView bytes)
{
    m_fine = m_fine && m_file.write(bytes.data(), bytes.size()) == bytes.size();
}

void WholeFile::commit()
{
    // The last buffer is flushed here, since commit() does not look at what its own flush gives.
    m_fine = m_fine && m_file.flush() && m_file.commit();
    if (!m_fine)
        throw Failure(u"%1 yazılamadı: %2"_s.arg(QDir::toNativeSeparators(m_file.fileName()),
                                                 filefault(m_file)));
}

} // namespace kervan
