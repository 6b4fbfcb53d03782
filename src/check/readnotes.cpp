#include "check/readnotes.h"

#include "text/spellings.h"

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

void addEmptyCells(ReadReport &report, const Grid &grid, int row, QStringView line,
                   std::span<const WantedField> wanted)
{
    const auto isEmpty = [&](const WantedField &field) {
        const QString &cell = grid.cell(row, field.column);
        return cell.isEmpty() || (cell.front() == u' ' && trimmedBlanks(cell).isEmpty());
    };
    if (std::ranges::none_of(wanted, isEmpty))
        return;
    if (trimmedBlanks(line).isEmpty())
        return report.add(row + 1, line, u"Satır boş: listede boş bir satır oldu."_s);
    for (const WantedField &field : wanted) {
        if (!isEmpty(field))
            continue;
        const bool isShort = trimmedBlanks(line).size() < field.first;
        report.add(row + 1, line,
                   (isShort ? u"Satır kısa: %1 yok."_s : u"%1 boş."_s).arg(field.name));
    }
}

void addEnd(ReadReport &report, qint64 line, const std::optional<Failure> &failed)
{
    if (!failed)
        return;
    report.add(line, failed->headline(), u"Okuma burada bitti."_s);
    report.cutShort();
}

} // namespace kervan
