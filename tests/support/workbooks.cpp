#include "support/workbooks.h"

#include <QHash>

#include <xlsxwriter.h>

namespace kervan {

namespace {

class Writer
{
public:
    explicit Writer(const QString &path)
        : m_path(path.toUtf8())
        , m_book(workbook_new(m_path.constData()))
    {
    }

    void write(const BookSheet &sheet, int rows, const std::function<BookRow(int)> &makeRow)
    {
        lxw_worksheet *target = workbook_add_worksheet(m_book, sheet.name.toUtf8().constData());
        if (!target)
            qFatal("no such sheet name: %s", qPrintable(sheet.name));
        if (sheet.hidden)
            worksheet_hide(target);
        for (int row = 0; row < rows; ++row) {
            const BookRow cells = makeRow(row);
            for (qsizetype column = 0; column < cells.size(); ++column)
                write(target, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column),
                      cells[column]);
        }
    }

    void close()
    {
        if (workbook_close(m_book) != LXW_NO_ERROR)
            qFatal("not written: %s", m_path.constData());
    }

private:
    lxw_format *format(const QString &code)
    {
        if (code.isEmpty())
            return nullptr;
        lxw_format *&format = m_formats[code];
        if (!format) {
            format = workbook_add_format(m_book);
            format_set_num_format(format, code.toUtf8().constData());
        }
        return format;
    }

    void write(lxw_worksheet *sheet, lxw_row_t row, lxw_col_t column, const BookCell &cell)
    {
        lxw_format *under = format(cell.format);
        if (const auto *text = std::get_if<QString>(&cell.value)) {
            worksheet_write_string(sheet, row, column, text->toUtf8().constData(), under);
        } else if (const auto *number = std::get_if<double>(&cell.value)) {
            worksheet_write_number(sheet, row, column, *number, under);
        } else if (const auto *truth = std::get_if<bool>(&cell.value)) {
            worksheet_write_boolean(sheet, row, column, *truth, under);
        } else if (const auto *moment = std::get_if<QDateTime>(&cell.value)) {
            worksheet_write_number(sheet, row, column, serialOf(*moment), under);
        } else if (const auto *formula = std::get_if<BookCell::Formula>(&cell.value)) {
            const QByteArray code = formula->text.toUtf8();
            if (const auto *result = std::get_if<QString>(&formula->result))
                worksheet_write_formula_str(sheet, row, column, code.constData(), under,
                                            result->toUtf8().constData());
            else
                worksheet_write_formula_num(sheet, row, column, code.constData(), under,
                                            std::get<double>(formula->result));
        } else if (under) {
            worksheet_write_blank(sheet, row, column, under);
        }
    }

    QByteArray m_path;
    lxw_workbook *m_book;
    QHash<QString, lxw_format *> m_formats;
};

BookCell bookCell(const QString &text)
{
    if (text.startsWith(u'#'))
        return text.mid(1).toDouble();
    if (text.startsWith(u'@') && text.contains(u'T'))
        return QDateTime::fromString(text.mid(1), Qt::ISODate);
    if (text.startsWith(u'@'))
        return QDate::fromString(text.mid(1), Qt::ISODate);
    return text.isEmpty() ? BookCell() : BookCell(text);
}

} // namespace

double serialOf(const QDateTime &moment)
{
    const auto day = static_cast<double>(QDate(1899, 12, 30).daysTo(moment.date()));
    return day + moment.time().msecsSinceStartOfDay() / 86400000.0;
}

QList<BookRow> bookRows(const QString &lines)
{
    QList<BookRow> rows;
    for (const QString &line : lines.split(u'\n')) {
        BookRow &row = rows.emplaceBack();
        for (const QString &cell : line.split(u'|'))
            row << bookCell(cell);
    }
    return rows;
}

void writeWorkbook(const QString &path, const QList<BookSheet> &sheets)
{
    Writer writer(path);
    for (const BookSheet &sheet : sheets)
        writer.write(sheet, static_cast<int>(sheet.rows.size()),
                     [&](int row) { return sheet.rows[row]; });
    writer.close();
}

void writeWorkbook(const QString &path, const QString &sheetName, const QList<BookRow> &rows)
{
    writeWorkbook(path, {{.name = sheetName, .rows = rows}});
}

void writeWorkbook(const QString &path, const QString &sheetName, int rows,
                   const std::function<BookRow(int)> &makeRow)
{
    Writer writer(path);
    writer.write({.name = sheetName, .rows = {}}, rows, makeRow);
    writer.close();
}

} // namespace kervan
