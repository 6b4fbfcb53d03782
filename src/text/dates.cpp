#include "text/dates.h"

#include "base/failure.h"

#include <QLocale>
#include <QRegularExpression>

#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

QDate toDate(QStringView text)
{
    static const QRegularExpression form(u"^\\s*(\\d{1,2})[./-](\\d{1,2})[./-](\\d{1,4})\\s*$"_s);
    const auto match = form.match(text.toString());
    int year = match.capturedView(3).toInt();
    if (match.hasMatch() && match.capturedLength(3) <= 2)
        year += year < 30 ? 2000 : 1900;
    const QDate date(year, match.capturedView(2).toInt(), match.capturedView(1).toInt());
    if (!match.hasMatch() || !date.isValid())
        throw Failure(u"\"%1\" bir tarih değil."_s.arg(text.left(100)));
    return date;
}

std::optional<QDate> typedDate(QStringView text, int year)
{
    static const QString time = u"(?:[ T]\\d{1,2}:\\d{2}(?::\\d{2})?)?$"_s;
    static const std::array<QRegularExpression, 3> forms{
        QRegularExpression(
            u"^(?<d>\\d{1,2})[ ./,-](?<m>\\d{1,2})[ ./,-]?(?<y>(?<=\\D)(\\d{2}){1,2})?"_s + time),
        QRegularExpression(u"^(?<d>\\d{2})(?<m>\\d{2})(?<y>(\\d{2}){1,2})?$"_s),
        QRegularExpression(u"^(?<y>\\d{4})[./-]?(?<m>\\d{2})[./-]?(?<d>\\d{2})"_s + time),
    };
    for (const QRegularExpression &form : forms) {
        const auto match = form.match(text.trimmed().toString());
        const QString digits = match.captured(u"y"_s);
        int meant = digits.isEmpty() ? year : digits.toInt();
        if (digits.size() == 2)
            meant += meant < 80 ? 2000 : 1900;
        const QDate date(meant, match.captured(u"m"_s).toInt(), match.captured(u"d"_s).toInt());
        if (match.hasMatch() && date.isValid() && meant >= 1900 && meant < 2100)
            return date;
    }
    return std::nullopt;
}

QString systemDate(QDate date)
{
    const QLocale machine = QLocale::system();
    if (machine.language() == QLocale::Turkish)
        return machine.toString(date, QLocale::ShortFormat);
    return date.toString(u"dd.MM.yyyy"_s);
}

} // namespace kervan
