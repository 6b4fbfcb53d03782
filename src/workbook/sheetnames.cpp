#include "workbook/sheetnames.h"

#include "base/failure.h"

#include <QLocale>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostNamesTold = 20;

bool sameButCase(const QString &one, const QString &other)
{
    // Under the Turkish rules i and İ are one letter, ı and I the other; under the common ones i
    // and I are.
    static const QLocale turkish(QLocale::Turkish);
    return one.compare(other, Qt::CaseInsensitive) == 0 ||
           turkish.toUpper(one) == turkish.toUpper(other);
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
    throw Failure(u"\"%1\" adlı sayfa yok; sayfaları: %2"_s.arg(wanted.left(100), told));
}

} // namespace kervan
