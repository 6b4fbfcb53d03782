#include "workbook/cellformat.h"

#include "text/numbers.h"

#include <QDateTime>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 secondsOfDay = 86400;
constexpr qint64 dayAfterLast = 2958466;   // 1.1.10000
constexpr qint64 leapDayThatNeverWas = 60; // 29.2.1900, which the 1900 system counts
constexpr qint64 epoch = 25569;            // 1.1.1970
constexpr double exactIntegers = 9007199254740992.0;

bool isBuiltInDate(int id)
{
    return (id >= 14 && id <= 22) || (id >= 27 && id <= 36) || (id >= 45 && id <= 47) ||
           (id >= 50 && id <= 58);
}

// Looks for a part of a date or time, outside quotes, brackets and escaped characters.
bool hasDatePart(QStringView code)
{
    for (qsizetype i = 0; i < code.size(); ++i) {
        switch (code[i].toLower().unicode()) {
        case u'"':
        case u'[': {
            const qsizetype end = code.indexOf(code[i] == u'"' ? u'"' : u']', i + 1);
            if (end < 0)
                return false;
            i = end;
            break;
        }
        case u'\\': // shows the next character
        case u'_':  // leaves its width blank
        case u'*':  // fills the cell with it
            ++i;
            break;
        case u'y':
        case u'm':
        case u'd':
        case u'h':
        case u's':
            return true;
        default:
            break;
        }
    }
    return false;
}

void append(QString &text, qint64 number, int digits)
{
    std::array<QChar, 4> spelled;
    for (int i = digits - 1; i >= 0; --i, number /= 10)
        spelled[static_cast<std::size_t>(i)] = QChar(u'0' + static_cast<int>(number % 10));
    text.append(spelled.data(), digits);
}

void appendDate(QString &text, qint64 day)
{
    using namespace std::chrono;
    if (day == leapDayThatNeverWas) {
        text += u"29.02.1900"_s;
        return;
    }
    if (day < leapDayThatNeverWas)
        ++day;
    const year_month_day date{sys_days{days{day - epoch}}};
    append(text, static_cast<unsigned>(date.day()), 2);
    text += u'.';
    append(text, static_cast<unsigned>(date.month()), 2);
    text += u'.';
    append(text, static_cast<int>(date.year()), 4);
}

} // namespace

CellFormat cellFormat(int id, QStringView code)
{
    if (code.isEmpty())
        return {.isDate = isBuiltInDate(id), .zeros = 0};
    const bool zerosOnly = std::ranges::all_of(code, [](QChar c) { return c == u'0'; });
    return {.isDate = hasDatePart(code),
            .zeros =
                zerosOnly ? static_cast<quint8>(std::min<qsizetype>(code.size(), 255)) : quint8(0)};
}

bool isDay(double serial)
{
    return serial >= 0 && std::round(serial * secondsOfDay) < dayAfterLast * secondsOfDay;
}

QString dateText(double serial)
{
    const qint64 seconds = std::llround(serial * secondsOfDay);
    const qint64 day = seconds / secondsOfDay;
    const qint64 time = seconds % secondsOfDay;
    QString text;
    text.reserve(19);
    if (day > 0)
        appendDate(text, day);
    if (day > 0 && time > 0)
        text += u' ';
    if (day == 0 || time > 0) {
        append(text, time / 3600, 2);
        text += u':';
        append(text, time / 60 % 60, 2);
        text += u':';
        append(text, time % 60, 2);
    }
    return text;
}

QString numberText(double value, int zeros)
{
    // Whole numbers are often codes, so they keep every digit; of the others a workbook shows no
    // more than the 15 that a double carries.
    const bool isExact = std::abs(value) < exactIntegers && value == std::trunc(value);
    QString text = isExact ? QString::number(static_cast<qint64>(value)) : toText(value);
    if (zeros > 1) {
        const qsizetype sign = text.startsWith(u'-') ? 1 : 0;
        const qsizetype mark = text.indexOf(u',');
        const qsizetype whole = (mark < 0 ? text.size() : mark) - sign;
        if (whole < zeros)
            text.insert(sign, QString(zeros - whole, u'0'));
    }
    return text;
}

double isoSerial(QStringView text)
{
    const QString iso = text.trimmed().toString();
    const qsizetype timeAt = iso.indexOf(u'T');
    const QString dayText = iso.contains(u':') && timeAt < 0 ? QString() : iso.left(timeAt);
    QString timeText = timeAt < 0 ? (dayText.isEmpty() ? iso : QString()) : iso.mid(timeAt + 1);
    if (timeText.endsWith(u'Z'))
        timeText.chop(1);
    const QDate date = QDate::fromString(dayText, Qt::ISODate);
    const QTime time = QTime::fromString(timeText, Qt::ISODateWithMs);
    if ((!dayText.isEmpty() && !date.isValid()) || (!timeText.isEmpty() && !time.isValid()))
        return std::numeric_limits<double>::quiet_NaN();
    double serial = time.isValid() ? time.msecsSinceStartOfDay() / 86400000.0 : 0;
    if (date.isValid()) {
        const qint64 day = QDate(1970, 1, 1).daysTo(date) + epoch;
        serial += static_cast<double>(day <= leapDayThatNeverWas ? day - 1 : day);
    }
    return serial;
}

} // namespace kervan
