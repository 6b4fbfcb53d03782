#include "check/findingsfile.h"

#include "base/wholefile.h"

#include <QMap>
#include <QStringList>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString lineOf(const QStringList &cells)
{
    QStringList quoted;
    for (const QString &cell : cells)
        quoted << csvCell(cell);
    return quoted.join(u';') + u"\r\n"_s;
}

QStringList headingsOf(const Grid &grid)
{
    QStringList headings;
    for (const GridColumn &column : grid.columns())
        headings << column.heading;
    return headings;
}

QStringList cellsOf(const Grid &grid, int row)
{
    QStringList cells;
    for (int column = 0; column < grid.columnCount(); ++column)
        cells << grid.cell(row, column);
    return cells;
}

void write(const QString &path, const QString &text)
{
    WholeFile file(path);
    file.write("\xef\xbb\xbf");
    file.write(text.toUtf8());
    file.commit();
}

} // namespace

QString csvCell(const QString &text)
{
    const bool isPlain = !text.contains(u';') && !text.contains(u'"') && !text.contains(u'\n') &&
                         !text.contains(u'\r') && text.trimmed() == text;
    return isPlain ? text : u'"' + QString(text).replace(u'"', u"\"\""_s) + u'"';
}

void writeFindings(const QString &path, const Grid &list, const QList<Finding> &findings)
{
    QMap<int, QStringList> reasons;
    for (const Finding &finding : findings) {
        if (finding.row >= 0 && finding.row < list.rows() && finding.list == u"l1")
            reasons[finding.row] << finding.text;
    }
    QString text = lineOf(QStringList{u"Sıra"_s} + headingsOf(list) + QStringList{u"Nedenler"_s});
    for (auto row = reasons.cbegin(); row != reasons.cend(); ++row)
        text += lineOf(QStringList{QString::number(row.key() + 1)} + cellsOf(list, row.key()) +
                       QStringList{row->join(u" | "_s)});
    write(path, text);
}

void writeTable(const QString &path, const Grid &table)
{
    QString text = lineOf(headingsOf(table));
    for (int row = 0; row < table.rows(); ++row)
        text += lineOf(cellsOf(table, row));
    write(path, text);
}

} // namespace kervan
