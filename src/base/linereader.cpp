#include "base/linereader.h"

#include "base/codepage.h"
#include "base/failure.h"
#include "base/filefault.h"

#include <cstring>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 chunk = 65536;

Failure readFailure(const QFile &file)
{
    return fileFailure(file.fileName(), u"okunamadı"_s, filefault(file, lastFault()));
}

} // namespace

LineReader::LineReader(const QString &path)
    : m_file(path)
{
    if (path.isEmpty())
        throw Failure(u"Dosya seçilmedi."_s);
    clearFault();
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw readFailure(m_file);
    fill();
    m_utf8 = m_buffer.startsWith(utf8Mark);
    if (m_utf8)
        m_at = utf8Mark.size();
}

bool LineReader::fill()
{
    m_bufferOffset += m_buffer.size();
    m_buffer.resize(chunk);
    clearFault();
    const qint64 count = m_file.read(m_buffer.data(), chunk);
    if (count < 0) {
        m_buffer.clear();
        throw readFailure(m_file);
    }
    m_buffer.resize(count);
    m_at = 0;
    return count > 0;
}

bool LineReader::next()
{
    if (m_at == m_buffer.size() && !fill())
        return false;
    m_lineOffset = m_bufferOffset + m_at;
    m_bytes.clear();
    QByteArrayView part = takePart();
    if (m_at == m_buffer.size()) {
        // The line may go on in the next buffer, which takes this one's place.
        append(part);
        while (fill()) {
            append(takePart());
            if (m_at < m_buffer.size())
                break;
        }
        part = m_bytes;
    }
    decode(part.first(qMin(part.size(), longestLine)));
    skipEnd();
    return true;
}

// The bytes up to the line's end or the buffer's.
QByteArrayView LineReader::takePart()
{
    const char *const begin = m_buffer.constData() + m_at;
    const char *const end = m_buffer.constData() + m_buffer.size();
    const auto find = [begin](char c, const char *before) {
        const void *found = std::memchr(begin, c, static_cast<std::size_t>(before - begin));
        return found ? static_cast<const char *>(found) : before;
    };
    const char *const mark = find('\r', find('\n', end));
    m_at = mark - m_buffer.constData();
    return {begin, mark};
}

void LineReader::append(QByteArrayView bytes)
{
    m_bytes.append(bytes.first(qMin(bytes.size(), longestLine - m_bytes.size())));
}

void LineReader::decode(QByteArrayView bytes)
{
    if (m_utf8) {
        m_line = QString::fromUtf8(bytes);
    } else {
        m_line.resize(0);
        appendFromCodePage(m_line, bytes);
    }
}

void LineReader::skipEnd()
{
    if (m_at == m_buffer.size())
        return;
    const bool carriageReturn = m_buffer[m_at++] == '\r';
    if (carriageReturn && (m_at < m_buffer.size() || fill()) && m_buffer[m_at] == '\n')
        ++m_at;
}

void LineReader::seek(qint64 offset)
{
    if (offset >= m_bufferOffset && offset < m_bufferOffset + m_buffer.size()) {
        m_at = offset - m_bufferOffset;
        return;
    }
    clearFault();
    if (!m_file.seek(offset))
        throw readFailure(m_file);
    m_bufferOffset = offset;
    m_buffer.clear();
    m_at = 0;
}

} // namespace kervan
