// Workbooks of BIFF8 records: containers as they are, records alone and in a container, which give
// the same sheets, and behind a "c" cells that are written and come back.

#include "workbook/xls.h"
#include "base/failure.h"
#include "support/book.h"
#include "support/harness.h"
#include "text/numbers.h"
#include "workbook/compoundfile.h"

#include <cmath>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// All sheets as one text, with the failures in their places.
QString told(const QByteArray &bytes)
{
    constexpr int most = 60;
    QStringList told;
    const auto failed = passOver([&] {
        for (const QString &name : xlsSheetNames(bytes)) {
            told << name;
            const auto unread = passOver([&] {
                const auto sheet = readXls(bytes, name);
                for (int record = 0; record < std::min(sheet->rows(), most); ++record) {
                    for (int field = 0; field < std::min(sheet->columns(), most); ++field)
                        told << sheet->text(record, field);
                }
            });
            if (unread)
                told << unread->description();
        }
    });
    if (failed)
        told << failed->description();
    return told.join(u'|');
}

// Small streams lie in sectors of their own, so both kinds are looked at.
void readInContainer(const QByteArray &records)
{
    const QString alone = told(records);
    const QByteArray behind = QByteArray::fromHex("0a000000");
    fuzz::expectSame(told(compoundFile({{u"Workbook"_s, records}})), alone,
                     "records in a container are others");
    fuzz::expectSame(told(compoundFile({{u"x"_s, behind}, {u"WORKBOOK"_s, records}}, 12)), alone,
                     "records in large sectors are others");
}

QString wanted(const BookCell &cell)
{
    if (const auto *text = std::get_if<QString>(&cell.value))
        return *text;
    if (const auto *truth = std::get_if<bool>(&cell.value))
        return *truth ? u"Doğru"_s : u"Yanlış"_s;
    if (const auto *formula = std::get_if<BookCell::Formula>(&cell.value))
        return std::get<QString>(formula->result);
    return {};
}

// Whether a cell gives a text, which makes its row and its column part of the sheet.
bool isFilled(const BookCell &cell)
{
    if (const auto *text = std::get_if<QString>(&cell.value))
        return !text->isEmpty();
    if (const auto *formula = std::get_if<BookCell::Formula>(&cell.value))
        return !std::get<QString>(formula->result).isEmpty();
    return true;
}

void readCellsBack(const QByteArray &cells)
{
    const QString path = fuzz::pathOf(u"kitap.xls"_s);
    QList<BookRow> rows = fuzz::rowsOf(cells);
    rows.prepend({u"kose"_s}); // so that records and fields count from the first corner
    writeXls(path, u"A"_s, rows);
    const auto sheet = readSheet(path, u"A"_s);
    qsizetype filledRows = 0;
    qsizetype filledColumns = 0;
    for (qsizetype row = 0; row < rows.size(); ++row) {
        for (qsizetype column = 0; column < rows[row].size(); ++column) {
            if (!isFilled(rows[row][column]))
                continue;
            filledRows = row + 1;
            filledColumns = std::max(filledColumns, column + 1);
        }
    }
    fuzz::expect(sheet->rows() == filledRows, "another count of records",
                 QString::number(sheet->rows()), QString::number(filledRows));
    fuzz::expect(sheet->columns() == filledColumns, "another count of fields",
                 QString::number(sheet->columns()), QString::number(filledColumns));
    for (int row = 0; row < sheet->rows(); ++row) {
        for (int column = 0; column < sheet->columns(); ++column) {
            const BookCell cell = rows[row].value(column);
            const QString text = sheet->text(row, column);
            const auto *number = std::get_if<double>(&cell.value);
            const auto *moment = std::get_if<QDateTime>(&cell.value);
            if (moment && moment->date().year() >= 1900) // what lies before is a number
                fuzz::expect(sheet->kind(row, column) == Sheet::Kind::Date, "a date is lost", text);
            else if (!moment && !number)
                fuzz::expectSame(text, wanted(cell), "another text comes back");
            else if (number && cell.format.isEmpty()) {
                fuzz::expect(sheet->number(row, column) == *number, "another number comes back",
                             text, QString::number(*number));
                fuzz::expect(std::abs(kervan::number(text).value_or(*number) - *number) <=
                                 std::abs(*number) * 1e-14,
                             "another number in words", text, QString::number(*number));
            }
        }
    }
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    const QByteArray bytes = input.toByteArray();
    if (bytes.startsWith('c'))
        return readCellsBack(bytes.sliced(1));
    if (bytes.startsWith(CompoundFile::mark))
        told(bytes);
    else
        readInContainer(bytes);
}
