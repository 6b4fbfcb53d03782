#include "text/numbers.h"

#include "base/failure.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int doubleDigits = 15;
constexpr int singleDigits = 7;

// A number as it prints: its significant digits without zeros at either end, and the place of the
// decimal mark among them (0 is in front of the first digit, negative further left).
struct Decimal
{
    std::array<char, doubleDigits> digits{};
    int count = 0;
    int point = 0;
    bool negative = false;

    char digit(int i) const
    {
        return i >= 0 && i < count ? digits[static_cast<std::size_t>(i)] : '0';
    }
};

Decimal decimal(double value, int significant)
{
    if (!std::isfinite(value))
        throw Failure(u"Sayı taşması."_s);
    std::array<char, 40> text{};
    const char *const end = std::to_chars(text.begin(), text.end(), std::abs(value),
                                          std::chars_format::scientific, significant - 1)
                                .ptr;
    Decimal result;
    result.negative = value < 0;
    const char *at = text.begin();
    for (; *at != 'e'; ++at) {
        if (*at != '.')
            result.digits[static_cast<std::size_t>(result.count++)] = *at;
    }
    int exponent = 0;
    std::from_chars(at[1] == '+' ? at + 2 : at + 1, end, exponent);
    result.point = exponent + 1;
    while (result.count > 0 && result.digit(result.count - 1) == '0')
        --result.count;
    if (result.count == 0)
        result = {};
    return result;
}

// Cut to so many decimals, the last one rounded half away from zero.
void roundTo(Decimal &number, int decimals)
{
    int keep = number.point + decimals;
    if (keep >= number.count)
        return;
    const bool up = keep >= 0 && number.digit(keep) >= '5';
    keep = std::max(keep, 0);
    number.count = keep;
    if (up) {
        int i = keep - 1;
        while (i >= 0 && number.digit(i) == '9')
            --i;
        number.count = i + 1;
        if (i >= 0) {
            ++number.digits[static_cast<std::size_t>(i)];
        } else {
            number.digits[0] = '1';
            number.count = 1;
            ++number.point;
        }
    }
    while (number.count > 0 && number.digit(number.count - 1) == '0')
        --number.count;
    if (number.count == 0)
        number = {};
}

QString spelled(const Decimal &number, int leadingDigits, int decimals, bool grouped)
{
    const int whole = std::max(number.point, leadingDigits);
    const int marks = (grouped ? std::max(whole - 1, 0) / 3 : 0) + (decimals > 0 ? 1 : 0);
    QString text((number.negative ? 1 : 0) + whole + marks + decimals, Qt::Uninitialized);
    QChar *at = text.data();
    if (number.negative)
        *at++ = u'-';
    for (int left = whole; left > 0; --left) {
        *at++ = QLatin1Char(number.digit(number.point - left));
        if (grouped && left > 1 && left % 3 == 1)
            *at++ = u'.';
    }
    if (decimals > 0)
        *at++ = u',';
    for (int i = 0; i < decimals; ++i)
        *at++ = QLatin1Char(number.digit(number.point + i));
    return text;
}

QString shortest(const Decimal &number)
{
    return spelled(number, 1, std::max(number.count - number.point, 0), false);
}

QString underMask(Decimal number, Mask mask)
{
    roundTo(number, mask.decimals);
    return spelled(number, mask.leadingDigits, mask.decimals, mask.grouped);
}

// A number's text with a point for the mark and without group marks; empty if it spells none.
struct PlainText
{
    std::array<char, 64> text{};
    std::size_t length = 0;

    std::string_view view() const { return {text.data(), length}; }
};

PlainText plainText(QStringView spelled)
{
    spelled = spelled.trimmed();
    PlainText plain;
    if (static_cast<std::size_t>(spelled.size()) > plain.text.size())
        return {};
    bool digits = false;
    bool behindMark = false;
    for (qsizetype i = 0; i < spelled.size(); ++i) {
        const char16_t c = spelled[i].unicode();
        if (c >= u'0' && c <= u'9') {
            plain.text[plain.length++] = static_cast<char>(c);
            digits = true;
        } else if (c == u',' && !behindMark) {
            plain.text[plain.length++] = '.';
            behindMark = true;
        } else if (c == u'-' && i == 0) {
            plain.text[plain.length++] = '-';
        } else if (c == u'.' ? behindMark || !digits : c != u'+' || i > 0) {
            return {};
        }
    }
    return digits ? plain : PlainText{};
}

// A text of so few digits prints from its double with the very same ones, so they are taken as they
// stand; nothing if there are more.
std::optional<Decimal> decimal(std::string_view plain)
{
    Decimal result;
    result.negative = plain.starts_with('-');
    bool behindPoint = false;
    int zeros = 0; // not yet known to stand between digits
    for (const char c : plain) {
        if (c == '.') {
            behindPoint = true;
        } else if (c == '0' && result.count == 0) {
            result.point -= behindPoint ? 1 : 0;
        } else if (c != '-') {
            result.point += behindPoint ? 0 : 1;
            if (c == '0') {
                ++zeros;
                continue;
            }
            if (result.count + zeros >= doubleDigits)
                return std::nullopt;
            for (; zeros > 0; --zeros)
                result.digits[static_cast<std::size_t>(result.count++)] = '0';
            result.digits[static_cast<std::size_t>(result.count++)] = c;
        }
    }
    return result.count == 0 ? Decimal{} : result;
}

double toDouble(std::string_view plain)
{
    double value = 0;
    std::from_chars(plain.data(), plain.data() + plain.size(), value);
    return value;
}

} // namespace

std::optional<double> number(QStringView text)
{
    const PlainText plain = plainText(text);
    if (plain.length == 0)
        return std::nullopt;
    return toDouble(plain.view());
}

double toNumber(QStringView text)
{
    const auto value = number(text);
    if (!value)
        throw Failure(u"\"%1\" bir sayı değil."_s.arg(text.left(100)));
    return *value;
}

float toSingleNumber(QStringView text)
{
    return toSingle(toNumber(text));
}

float toSingle(double value)
{
    if (!(std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max())))
        throw Failure(u"Sayı taşması."_s);
    return static_cast<float>(value);
}

double divided(double dividend, double divisor)
{
    if (divisor == 0)
        throw Failure(u"Sıfıra bölme."_s);
    return dividend / divisor;
}

QString toText(double value)
{
    return shortest(decimal(value, doubleDigits));
}

QString toText(float value)
{
    return shortest(decimal(static_cast<double>(value), singleDigits));
}

QString masked(double value, Mask mask)
{
    return underMask(decimal(value, doubleDigits), mask);
}

QString masked(float value, Mask mask)
{
    return underMask(decimal(static_cast<double>(value), singleDigits), mask);
}

QString masked(const QString &text, Mask mask)
{
    const PlainText plain = plainText(text);
    if (plain.length == 0)
        return text;
    const auto digits = decimal(plain.view());
    return digits ? underMask(*digits, mask) : masked(toDouble(plain.view()), mask);
}

} // namespace kervan
