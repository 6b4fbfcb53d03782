#pragma once

#include "support/harness.h"
#include "support/xlswriter.h"

#include <cmath>

namespace kervan::fuzz {

/// Rows of typed cells: lines of cells parted by "|". "#" begins a number, "@" a day
/// (2024-03-07, or its number), "!" a truth, "=" a formula's text; all else is a text.
inline QList<BookRow> rowsOf(const QByteArray &lines)
{
    constexpr qsizetype mostColumns = 40;
    constexpr qsizetype mostRows = 60;
    QList<BookRow> rows;
    for (const QString &line :
         QString::fromUtf8(lines).split(u'\n').first(qMin(mostRows, lines.count('\n') + 1))) {
        BookRow &row = rows.emplaceBack();
        for (const QString &cell : line.split(u'|')) {
            const QString value = cell.mid(1);
            const double number = value.toDouble();
            if (row.size() == mostColumns)
                break;
            if (cell.startsWith(u'#') && std::isfinite(number))
                row << BookCell(number);
            else if (const auto day = QDate::fromString(value, Qt::ISODate);
                     cell.startsWith(u'@') && day.isValid())
                row << BookCell(day);
            else if (cell.startsWith(u'@') && std::isfinite(number))
                row << BookCell(number, QStringLiteral("dd.mm.yyyy"));
            else if (cell.startsWith(u'!'))
                row << BookCell(!value.isEmpty());
            else if (cell.startsWith(u'='))
                row << BookCell(BookCell::Formula{QStringLiteral("A1"), value});
            else
                row << BookCell(cell.left(30000));
        }
    }
    return rows;
}

} // namespace kervan::fuzz
