#include "base/wholefile.h"

#include "base/filefault.h"
#include "base/filegate.h"
#include "base/rights.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <mutex>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr auto patience = std::chrono::seconds(2);

} // namespace

WholeFile::WholeFile(const QString &path)
    : m_file(path)
    , m_nameFault(faultOfName(path))
    , m_fine(m_nameFault.isEmpty())
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
#ifdef Q_OS_WIN // the other call knows only a mark that keeps nobody from reading
    m_isKept = m_fine && keepToUser(m_file.handle());
#else
    m_isKept = m_file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
#endif
}

void WholeFile::write(QByteArrayView bytes)
{
    attempt([&] { return m_file.write(bytes.data(), bytes.size()) == bytes.size(); });
}

void WholeFile::commit()
{
    // A share that is gone may hold the other side for long: then the system decides.
    std::unique_lock gate(fileGate(), patience);
    if (m_fine)
        waitWhileOpen(m_file.fileName());
    // The last buffer is flushed here, since commit() does not look at what its own flush gives.
    attempt([&] { return m_file.flush() && m_file.commit(); });
    if (!m_fine) {
        Failure failed =
            fileFailure(m_file.fileName(), u"yazılamadı"_s,
                        m_nameFault.isEmpty() ? filefault(m_file, m_fault) : m_nameFault);
        failed.setOfPlace(m_nameFault.isEmpty() &&
                          (isOfPlace(m_fault) || !QFileInfo(m_file.fileName()).dir().exists()));
        throw failed;
    }
    if (!m_isKept)
        throw Failure(
            u"%1 yazıldı, ama bu diskte dosyalara hak verilemiyor: klasörü açabilen herkes "
            "onu okuyabilir."_s.arg(QDir::toNativeSeparators(m_file.fileName())));
}

} // namespace kervan
