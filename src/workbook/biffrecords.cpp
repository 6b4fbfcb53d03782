#include "workbook/biffrecords.h"

#include "workbook/damage.h"

#include <algorithm>
#include <bit>

namespace kervan {

namespace {

constexpr quint8 wideFlag = 0x01;
constexpr quint8 aidFlag = 0x04; // reading aids of East Asian signs follow
constexpr quint8 runsFlag = 0x08;
constexpr int bytesOfRun = 4;

} // namespace

BiffRecords::Record BiffRecords::next()
{
    constexpr qsizetype header = 4;
    if (m_at + header > m_stream.size())
        failDamaged();
    const auto type = numberAt<quint16>(m_stream, m_at);
    const auto size = numberAt<quint16>(m_stream, m_at + 2);
    if (m_at + header + size > m_stream.size())
        failDamaged();
    const QByteArrayView data = m_stream.sliced(m_at + header, size);
    m_at += header + size;
    return {.type = type, .data = data};
}

std::optional<QByteArrayView> BiffRecords::nextContinuation()
{
    const qsizetype at = m_at;
    const Record record = next();
    if (record.type == Continue)
        return record.data;
    m_at = at;
    return std::nullopt;
}

void BiffBytes::goOn()
{
    const auto more = m_records.nextContinuation();
    if (!more)
        failDamaged();
    m_data = *more;
}

quint8 BiffBytes::takeByte()
{
    while (m_data.isEmpty())
        goOn();
    const auto byte = static_cast<quint8>(m_data.front());
    m_data = m_data.sliced(1);
    return byte;
}

void BiffBytes::skip(qint64 count)
{
    while (count > 0) {
        while (m_data.isEmpty())
            goOn();
        const qsizetype step = std::min<qint64>(count, m_data.size());
        m_data = m_data.sliced(step);
        count -= step;
    }
}

QString BiffBytes::takeText()
{
    const auto count = take<quint16>();
    const auto flags = take<quint8>();
    const qint64 runs = (flags & runsFlag) != 0 ? take<quint16>() : 0;
    const qint64 aid = (flags & aidFlag) != 0 ? take<quint32>() : 0;
    QString text;
    takeCharacters(text, count, (flags & wideFlag) != 0);
    skip(runs * bytesOfRun + aid);
    return text;
}

QString BiffBytes::takeShortText()
{
    const auto count = take<quint8>();
    const auto flags = take<quint8>();
    QString text;
    takeCharacters(text, count, (flags & wideFlag) != 0);
    return text;
}

// A continuation in the midst of characters says anew how wide they are.
void BiffBytes::takeCharacters(QString &text, qsizetype count, bool areWide)
{
    text.reserve(count);
    while (count > 0) {
        while (m_data.isEmpty()) {
            goOn();
            areWide = (takeByte() & wideFlag) != 0;
        }
        const qsizetype width = areWide ? 2 : 1;
        const qsizetype here = std::min(count, m_data.size() / width);
        if (here == 0)
            failDamaged(); // half a character
        if (areWide) {
            for (qsizetype i = 0; i < here; ++i)
                text += QChar(numberAt<quint16>(m_data, i * width));
        } else {
            text += QLatin1String(m_data.first(here));
        }
        m_data = m_data.sliced(here * width);
        count -= here;
    }
}

double biffDouble(QByteArrayView data, qsizetype at)
{
    return std::bit_cast<double>(numberAt<quint64>(data, at));
}

// The lowest bit divides by 100, the next tells a whole number from the upper part of a double.
double biffPacked(QByteArrayView data, qsizetype at)
{
    const auto packed = numberAt<quint32>(data, at);
    const double number = (packed & 2U) != 0 ? static_cast<double>(static_cast<qint32>(packed) >> 2)
                                             : std::bit_cast<double>(quint64(packed & ~3U) << 32U);
    return (packed & 1U) != 0 ? number / 100 : number;
}

} // namespace kervan
