#include "check/decimal.h"

#include <algorithm>
#include <array>

namespace kervan {

namespace {

constexpr int mostWhole = 13;
constexpr int decimals = 18;

char16_t codeOf(QChar c)
{
    return c.unicode();
}

char16_t codeOf(char c)
{
    return static_cast<unsigned char>(c);
}

} // namespace

template<class Text>
std::optional<Decimal> Decimal::read(Text text, char mark, bool grouped)
{
    Units units = 0;
    int whole = 0; // digits, without leading zeros
    int behind = -1;
    bool digits = false;
    bool negative = false;
    qsizetype i = 0;
    for (const auto each : text) {
        const auto c = codeOf(each);
        if (c >= u'0' && c <= u'9') {
            digits = true;
            if (behind >= decimals) {
                if (c != u'0') // zeros at the end change nothing
                    return std::nullopt;
            } else {
                units = units * 10 + (c - u'0');
                if (behind >= 0)
                    ++behind;
                else if (units != 0 && ++whole > mostWhole)
                    return std::nullopt;
            }
        } else if (c == static_cast<char16_t>(mark) && behind < 0) {
            behind = 0;
        } else if ((c == u'-' || c == u'+') && i == 0) {
            negative = c == u'-';
        } else if (!(grouped && c == u'.' && behind < 0 && digits)) {
            return std::nullopt;
        }
        ++i;
    }
    if (!digits)
        return std::nullopt;
    for (behind = std::max(behind, 0); behind < decimals; ++behind)
        units *= 10;
    Decimal result;
    result.m_units = negative ? -units : units;
    return result;
}

std::optional<Decimal> Decimal::ofCell(QStringView text)
{
    return read(text.trimmed(), ',', true);
}

std::optional<Decimal> Decimal::ofDocument(QByteArrayView text)
{
    return read(text.trimmed(), '.', false);
}

std::optional<Decimal> Decimal::product(qint64 a, qint64 b, int places)
{
    if (places < 0 || places > decimals)
        return std::nullopt;
    Decimal result;
    result.m_units = Units(a) * b;
    for (; places < decimals; ++places) {
        if (__builtin_mul_overflow(result.m_units, Units(10), &result.m_units))
            return std::nullopt;
    }
    return result;
}

std::optional<Decimal> Decimal::times(qint64 factor, int places) const
{
    Decimal result;
    if (__builtin_mul_overflow(m_units, Units(factor), &result.m_units))
        return std::nullopt;
    for (; places > 0; --places)
        result.m_units /= 10;
    return result;
}

Decimal Decimal::rounded(int places) const
{
    Units unit = 1;
    for (int left = decimals; left > places; --left)
        unit *= 10;
    Decimal result;
    result.m_units = (m_units + (isNegative() ? -unit : unit) / 2) / unit * unit;
    return result;
}

QString Decimal::text(int leastDecimals) const
{
    // From the last digit to the first, since the count of the decimals is known behind.
    std::array<QChar, 64> spelled;
    auto at = spelled.end();
    Units units = isNegative() ? -m_units : m_units;
    bool shown = false;
    for (int left = decimals; left > 0; --left, units /= 10) {
        const int digit = static_cast<int>(units % 10);
        if (digit != 0 || left <= leastDecimals)
            shown = true;
        if (shown)
            *--at = QChar(u'0' + digit);
    }
    if (shown)
        *--at = u',';
    int whole = 0;
    do {
        if (whole > 0 && whole % 3 == 0)
            *--at = u'.';
        *--at = QChar(u'0' + static_cast<int>(units % 10));
        ++whole;
        units /= 10;
    } while (units != 0);
    if (isNegative())
        *--at = u'-';
    return QString(&*at, spelled.end() - at);
}

} // namespace kervan
