#include "base/sqlserver.h"

#include "base/failure.h"

namespace kervan {

using namespace Qt::StringLiterals;

const QString &SqlRows::value(int row, QStringView column) const
{
    for (qsizetype i = 0; i < columns.size(); ++i) {
        if (columns[i].compare(column, Qt::CaseInsensitive) == 0)
            return rows.at(row).at(i);
    }
    throw Failure(u"Sonuçta %1 alanı yok."_s.arg(column));
}

SqlRows SqlConnection::run(const Statement &statement)
{
    if (const auto &value = statement.breakingValue())
        throw Failure(u"Bu değer SQL komutunu bozar, komut gönderilmedi: %1"_s.arg(*value));
    return send(statement.text());
}

} // namespace kervan
