#include "workbook/sheetbuilder.h"

#include "base/failure.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

SheetBuilder::Text SheetBuilder::keep(QByteArrayView utf8)
{
    QByteArray &texts = m_sheet.m_texts;
    if (texts.size() + utf8.size() > mostTextBytes || ++m_kept > mostCells)
        throw Failure(u"metinleri %1 MB ya da %2 adet sınırını aşıyor"_s.arg(
            QString::number(mostTextBytes / 1024 / 1024), QString::number(mostCells)));
    const Text text{.start = static_cast<quint32>(texts.size()),
                    .length = static_cast<quint32>(utf8.size())};
    texts.append(utf8);
    return text;
}

void SheetBuilder::add(Place place, Text text)
{
    if (text.length > 0)
        add(place, quint64(text.start) << 32U | text.length, Sheet::Kind::Text);
}

void SheetBuilder::add(Place place, double value, qsizetype format)
{
    const CellFormat meaning =
        format >= 0 && format < formats.size() ? formats[format] : CellFormat{};
    const double serial = starts1904 ? value + days1904 : value;
    if (meaning.isDate && value >= 0 && isDay(serial))
        addDate(place, serial);
    else
        add(place, std::bit_cast<quint64>(value), Sheet::Kind::Number, meaning.zeros);
}

void SheetBuilder::addDate(Place place, double serial)
{
    add(place, std::bit_cast<quint64>(serial), Sheet::Kind::Date);
}

void SheetBuilder::addTruth(Place place, bool value)
{
    add(place, value ? 1 : 0, Sheet::Kind::Boolean);
}

void SheetBuilder::add(Place place, quint64 bits, Sheet::Kind kind, quint8 zeros)
{
    if (place.row < 0 || place.row >= mostRows || place.column < 0 || place.column >= mostColumns)
        throw Failure(u"%1 satır ve %2 sütun sınırını aşıyor"_s.arg(mostRows).arg(mostColumns));
    QList<Sheet::Cell> &cells = m_sheet.m_cells;
    if (cells.size() >= mostCells)
        throw Failure(u"%1 hücre sınırını aşıyor"_s.arg(mostCells));
    const Sheet::Cell cell{.bits = bits,
                           .row = static_cast<quint32>(place.row),
                           .column = static_cast<quint16>(place.column),
                           .kind = kind,
                           .zeros = zeros};
    if (!cells.isEmpty()) {
        const Sheet::Cell &last = cells.constLast();
        m_sorted = m_sorted &&
                   (last.row < cell.row || (last.row == cell.row && last.column < cell.column));
    }
    cells.append(cell);
}

std::shared_ptr<const Sheet> SheetBuilder::finish()
{
    QList<Sheet::Cell> &cells = m_sheet.m_cells;
    const auto place = [](const Sheet::Cell &cell) {
        return quint64(cell.row) << 32U | cell.column;
    };
    if (!m_sorted) {
        // The last of those at one place comes to stand first among them.
        std::ranges::reverse(cells);
        std::ranges::stable_sort(cells, {}, place);
        const auto samePlace = [&](const Sheet::Cell &one, const Sheet::Cell &other) {
            return place(one) == place(other);
        };
        cells.erase(std::unique(cells.begin(), cells.end(), samePlace), cells.end());
    }
    if (!cells.isEmpty()) {
        const auto [first, last] = std::ranges::minmax(cells, {}, &Sheet::Cell::column);
        m_sheet.m_firstColumn = first.column;
        m_sheet.m_columns = last.column - first.column + 1;
        const quint32 firstRow = cells.constFirst().row;
        m_sheet.m_rowStarts.clear();
        for (qsizetype i = 0; i < cells.size(); ++i) {
            while (m_sheet.m_rowStarts.size() <= qsizetype(cells[i].row - firstRow))
                m_sheet.m_rowStarts.append(static_cast<quint32>(i));
        }
        m_sheet.m_rowStarts.append(static_cast<quint32>(cells.size()));
    }
    return std::make_shared<const Sheet>(std::exchange(m_sheet, {}));
}

} // namespace kervan
