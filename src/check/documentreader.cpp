#include "check/documentreader.h"

#include "base/filefault.h"
#include "base/filegate.h"
#include "check/documentscanner.h"

#include <QDateTime>
#include <QFile>

#include <mutex>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype pieceSize = 1'048'576;
constexpr qsizetype longestLine = 64 * pieceSize;

// Whether there is a "&" or a control character at all, which whole pieces seldom hold. Simple
// enough to be done for many bytes at once.
bool isSuspicious(const char *at, const char *end)
{
    unsigned found = 0;
    for (; at != end; ++at) {
        const auto c = static_cast<unsigned char>(*at);
        const bool control = (c < 0x20) & (c != '\n') & (c != '\r') & (c != '\t');
        found |= static_cast<unsigned>(control | (c == '&'));
    }
    return found != 0;
}

// Feeds whole lines of the bytes; gives how many were taken, or -1 once there is no sense in more.
qsizetype feed(DocumentScanner &scanner, const char *begin, const char *end)
{
    const char *at = begin;
    while (const char *feedAt = xml::find(at, end, '\n')) {
        if (!scanner.line(at, feedAt))
            return -1;
        at = feedAt + 1;
    }
    return at - begin;
}

void feedLast(DocumentScanner &scanner, const char *begin, const char *end)
{
    if (begin == end || scanner.line(begin, end))
        scanner.finish();
}

// The pieces of a file, which is open for none longer than it takes to read it.
class Pieces
{
public:
    explicit Pieces(QString path)
        : m_path(std::move(path))
    {
    }
    const QString &fault() const { return m_fault; }

    /// As many bytes as were read; 0 at the end, and -1 where there is a fault.
    qint64 read(char *buffer)
    {
        const std::lock_guard gate(fileGate());
        QFile file(m_path);
        clearFault();
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return fail(filefault(file, lastFault()));
        const auto state = std::pair(file.size(), file.fileTime(QFile::FileModificationTime));
        if (m_place == 0)
            m_state = state;
        else if (state != m_state)
            return fail(u"Okunurken değişti."_s);
        const qint64 count = file.seek(m_place) ? file.read(buffer, pieceSize) : -1;
        if (count < 0)
            return fail(filefault(file, lastFault()));
        m_place += count;
        return count;
    }

private:
    qint64 fail(const QString &why)
    {
        m_fault = why;
        return -1;
    }

    QString m_path;
    QString m_fault;
    qint64 m_place = 0;
    std::pair<qint64, QDateTime> m_state; // size and time
};

} // namespace

bool isSameAmount(DocumentFamily family, Decimal listed, Decimal written, qint64 lines)
{
    if (family != DocumentFamily::Invoices)
        return listed == written;
    const Decimal difference = listed < written ? written - listed : listed - written;
    const auto part = (written.isNegative() ? -written : written).times(2, 6);
    const auto perLine = Decimal::product(5, lines, 3); // each is spelled by a price of its own
    return difference <=
           part.value_or(Decimal()) + *Decimal::product(1, 1, 2) + perLine.value_or(Decimal());
}

// Pieces are read and not mapped: a file that shrinks or a share that goes away would end the
// program at the next look at a mapped byte.
DocumentReading readDocument(const QString &path, const TakeRecord &take,
                             const std::atomic_bool *stop)
{
    DocumentReading reading;
    Pieces pieces(path);
    DocumentScanner scanner(take, reading);
    std::vector<char> buffer(static_cast<std::size_t>(pieceSize));
    qsizetype kept = 0; // of the line that the last piece began
    while (true) {
        if (stop && stop->load(std::memory_order_relaxed)) {
            reading.fault = u"Okuma yarıda bırakıldı."_s;
            return reading;
        }
        if (static_cast<qsizetype>(buffer.size()) - kept < pieceSize) {
            if (kept > longestLine) {
                reading.fault = u"Satırları bir belge için çok uzun."_s;
                return reading;
            }
            buffer.resize(buffer.size() * 2);
        }
        char *const begin = buffer.data();
        const qint64 count = pieces.read(begin + kept);
        if (count < 0) {
            reading.fault = pieces.fault();
            return reading;
        }
        if (count == 0)
            break;
        reading.bytes += count;
        const char *const end = begin + kept + count;
        scanner.setSuspicious(isSuspicious(begin, end));
        const qsizetype taken = feed(scanner, begin, end);
        if (taken < 0)
            return reading;
        kept = end - begin - taken;
        std::memmove(begin, begin + taken, static_cast<std::size_t>(kept));
    }
    feedLast(scanner, buffer.data(), buffer.data() + kept);
    return reading;
}

DocumentReading readDocumentBytes(QByteArrayView bytes, const TakeRecord &take)
{
    DocumentReading reading;
    reading.bytes = bytes.size();
    DocumentScanner scanner(take, reading);
    const char *const end = bytes.data() + bytes.size();
    const qsizetype taken = feed(scanner, bytes.data(), end);
    if (taken >= 0)
        feedLast(scanner, bytes.data() + taken, end);
    return reading;
}

} // namespace kervan
