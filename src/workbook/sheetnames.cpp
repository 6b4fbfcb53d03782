#include "workbook/sheetnames.h"

#include "base/failure.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostNamesTold = 20;

// A locale of Qt's knows this only where Qt was built with ICU, which it is not on Windows.
QString turkishCapitals(QString text)
{
    return text.replace(u'i', u'İ').toUpper();
}

bool sameButCase(const QString &one, const QString &other)
{
    // Under the Turkish rules i and İ are one letter, ı and I the other; under the common ones i
    // and I are.
    return one.compare(other, Qt::CaseInsensitive) == 0 ||
           turkishCapitals(one) == turkishCapitals(other);
}

} // namespace

qsizetype findSheet(const QStringList &names, const QString &wanted)
{
    const qsizetype exact = names.indexOf(wanted);
    if (exact >= 0)
        return exact;
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (sameButCase(names[i], wanted))
            return i;
    }
    if (names.isEmpty())
        throw Failure(u"içinde hiç çalışma sayfası yok"_s);
    QString told =
        u"\""_s + names.first(std::min(names.size(), mostNamesTold)).join(u"\", \"") + u'"';
    if (names.size() > mostNamesTold)
        told += u" ve %1 sayfa daha"_s.arg(names.size() - mostNamesTold);
    throw Failure(u"\"%1\" adlı sayfa yok; sayfaları: %2"_s.arg(wanted.left(100), told), {},
                  names.first(std::min(names.size(), mostNamesTold)));
}

} // namespace kervan
