#include "base/wholefile.h"

#include "base/filefault.h"

#include <QFile>

namespace kervan {

using namespace Qt::StringLiterals;

WholeFile::WholeFile(const QString &path)
    : m_file(path)
{
    attempt([&] { return m_file.open(QIODevice::WriteOnly); });
}

template<class Step>
void WholeFile::attempt(Step &&step)
{
    if (!m_fine)
        return;
    clearFault();
    m_fine = step();
    if (!m_fine)
        m_fault = lastFault();
}

void WholeFile::keepToOwner()
{
    attempt([&] { return m_file.setPermissions(QFile::ReadOwner | QFile::WriteOwner); });
}

void WholeFile::write(QByteArrayView bytes)
{
    attempt([&] { return m_file.write(bytes.data(), bytes.size()) == bytes.size(); });
}

void WholeFile::commit()
{
    // The last buffer is flushed here, since commit() does not look at what its own flush gives.
    attempt([&] { return m_file.flush() && m_file.commit(); });
    if (!m_fine)
        throw fileFailure(m_file.fileName(), u"yazılamadı"_s, filefault(m_file, m_fault));
}

} // namespace kervan
