#include "aktar/listing.h"

#include "check/findingsfile.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Headings and rows alike, the tick in front.
QList<QStringList> linesOf(const Grid &list, bool ticks)
{
    QStringList headings{u"Seçili"_s};
    for (const GridColumn &column : list.columns())
        headings << column.heading;
    QList<QStringList> lines{headings};
    for (int row = 0; row < list.rows(); ++row) {
        QStringList cells{list.ticked(row) ? u"x"_s : QString()};
        for (int column = 0; column < list.columns().size(); ++column)
            cells << list.cell(row, column);
        lines << cells;
    }
    if (!ticks) {
        for (QStringList &line : lines)
            line.removeFirst();
    }
    return lines;
}

QString asTable(const QList<QStringList> &lines)
{
    QList<qsizetype> widths(lines.first().size());
    for (const QStringList &line : lines) {
        for (qsizetype i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], line[i].size());
    }
    QString text;
    for (const QStringList &line : lines) {
        QString row;
        for (qsizetype i = 0; i < line.size(); ++i)
            row += line[i].leftJustified(widths[i] + 2);
        text += row.trimmed().isEmpty() ? row.trimmed() : row;
        while (text.endsWith(u' '))
            text.chop(1);
        text += u'\n';
    }
    return text;
}

QString asCsv(const QList<QStringList> &lines)
{
    QString text;
    for (const QStringList &line : lines) {
        QStringList cells;
        for (const QString &cell : line)
            cells << csvCell(cell);
        text += cells.join(u';') + u'\n';
    }
    return text;
}

QString asJson(const QList<QStringList> &lines)
{
    QString text;
    for (const QStringList &line : lines.sliced(1)) {
        QJsonObject object;
        for (qsizetype i = 0; i < line.size(); ++i)
            object[lines.first()[i]] = line[i];
        text += QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n';
    }
    return text;
}

} // namespace

QString listing(const Grid &list, bool ticks, const QString &form)
{
    const QList<QStringList> lines = linesOf(list, ticks);
    if (form == u"csv")
        return asCsv(lines);
    if (form == u"json")
        return asJson(lines);
    return asTable(lines);
}

} // namespace kervan
