#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include <concepts>
#include <functional>
#include <variant>

namespace kervan {

/// A cell to write: a value and the number format that it stands under. Dates stand under
/// "dd.mm.yyyy" unless told otherwise. Without a value the cell is empty, and with a format it is
/// formatted all the same.
struct BookCell
{
    /// A formula and the number or text that it gave.
    struct Formula
    {
        QString text;
        std::variant<double, QString> result;
    };

    BookCell() = default;
    template<class Value>
    requires(std::is_arithmetic_v<Value> || std::same_as<Value, QString> ||
             std::same_as<Value, Formula>)
        BookCell(const Value &given, const QString &numberFormat = {})
        : format(numberFormat)
    {
        if constexpr (std::is_arithmetic_v<Value> && !std::same_as<Value, bool>)
            value = static_cast<double>(given);
        else
            value = given;
    }
    BookCell(QDate date, const QString &numberFormat = QStringLiteral("dd.mm.yyyy"))
        : value(date.startOfDay(Qt::UTC))
        , format(numberFormat)
    {
    }
    BookCell(const QDateTime &moment,
             const QString &numberFormat = QStringLiteral("dd.mm.yyyy hh:mm:ss"))
        : value(moment)
        , format(numberFormat)
    {
    }
    static BookCell emptyUnder(const QString &numberFormat)
    {
        BookCell cell;
        cell.format = numberFormat;
        return cell;
    }

    std::variant<std::monostate, QString, double, bool, QDateTime, Formula> value;
    QString format;
};

using BookRow = QList<BookCell>;

/// The number that stands for a moment: days since 30.12.1899.
double serialOf(const QDateTime &moment);

/// Rows from lines of cells parted by "|": #1234.5 is a number, @2021-03-15 a date,
/// @2021-03-15T10:30:00 one with its time, all else a text.
QList<BookRow> bookRows(const QString &lines);

struct BookSheet
{
    QString name;
    QList<BookRow> rows;
    bool hidden = false;
};

/// Writes an .xlsx workbook; ends the program when it can't.
void writeWorkbook(const QString &path, const QList<BookSheet> &sheets);
void writeWorkbook(const QString &path, const QString &sheetName, const QList<BookRow> &rows);
/// The same with rows made on demand, for sheets too large to hold twice.
void writeWorkbook(const QString &path, const QString &sheetName, int rows,
                   const std::function<BookRow(int row)> &makeRow);

} // namespace kervan
