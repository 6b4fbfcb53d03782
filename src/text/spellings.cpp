#include "text/spellings.h"

namespace kervan {

namespace {

QString twoCharacters(const QString &text)
{
    return text.size() < 2 ? u'0' + text : text;
}

} // namespace

QString tarihanahtari(const QString &year, const QString &month, const QString &day)
{
    return year + twoCharacters(month) + twoCharacters(day);
}

QString tarihcevir(QStringView fileDate)
{
    const auto piece = [&](int first, int length) {
        return cut(fileDate, first, length).toString();
    };
    return piece(7, 2) + u'.' + piece(5, 2) + u'.' + piece(1, 4);
}

QString tutarnoktasil(QString amount)
{
    return amount.remove(u'.').replace(u',', u'.');
}

QString sonbosluksil(QStringView text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text.toString();
}

QStringView trimmedBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

QStringView cut(QStringView text, int first, int length)
{
    const qsizetype from = first - 1;
    if (from >= text.size())
        return {};
    return text.sliced(from, qMin<qsizetype>(length, text.size() - from));
}

QString pointToComma(QStringView text)
{
    return text.toString().replace(u'.', u',');
}

QString commaToPoint(QStringView text)
{
    return text.toString().replace(u',', u'.');
}

} // namespace kervan
