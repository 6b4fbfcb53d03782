#include "text/dates.h"

#include "base/failure.h"

#include <QLocale>
#include <QRegularExpression>

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

QString systemDate(QDate date)
{
    const QLocale machine = QLocale::system();
    if (machine.language() == QLocale::Turkish)
        return machine.toString(date, QLocale::ShortFormat);
    return date.toString(u"dd.MM.yyyy"_s);
}

} // namespace kervan
