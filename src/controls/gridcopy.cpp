#include "controls/gridview.h"
#include "text/numbers.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

// Copying. Without headings the cells are copied as they stand. With them they are meant for a
// spreadsheet, which gets them twice: as text, and as a table that tells which cells are numbers,
// so that a code like "00120" keeps its zeros there.

namespace {

constexpr int surestDigits = 15; // more of them no spreadsheet holds

// The amount with no marks but "," before its decimals; nothing if the text is no plain amount, as
// a code with zeros in front or one with points where no groups are.
std::optional<QString> plainAmount(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (!number(trimmed))
        return std::nullopt;
    const QString whole = trimmed.section(u',', 0, 0);
    QStringList groups = whole.split(u'.');
    const bool hasSign = whole.startsWith(u'-') || whole.startsWith(u'+');
    const QString first = groups.takeFirst().sliced(hasSign ? 1 : 0);
    const bool isGrouped =
        std::ranges::all_of(groups, [](const QString &g) { return g.size() == 3; });
    const auto digits = std::ranges::count_if(trimmed, [](QChar c) { return c.isDigit(); });
    if (!isGrouped || (!groups.isEmpty() && first.size() > 3) || first.isEmpty() ||
        (first.size() > 1 && first.startsWith(u'0')) || digits > surestDigits)
        return std::nullopt;
    QString plain = trimmed;
    return plain.remove(u'.');
}

QString quoted(const QString &text)
{
    if (!text.contains(u'\t') && !text.contains(u'\n') && !text.contains(u'\r') &&
        !text.contains(u'"'))
        return text;
    QString doubled = text;
    return u'"' + doubled.replace(u'"', u"\"\""_s) + u'"';
}

QString htmlOf(const QString &text)
{
    QString html = text.toHtmlEscaped();
    html.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    return html.replace(u'\n', u"<br style=\"mso-data-placement:same-cell\">"_s);
}

/// A table in the making, in both forms.
class Sheet
{
public:
    void addText(const QString &text)
    {
        m_texts << quoted(text);
        m_html +=
            u"<td style=\"mso-number-format:'\\@'\" sdnum=\"1055;0;@\">%1</td>"_s.arg(htmlOf(text));
    }
    void addAmount(const QString &plain)
    {
        m_texts << plain;
        m_html += u"<td align=\"right\" x:num=\"%1\" sdval=\"%1\" sdnum=\"1055;\">%2</td>"_s.arg(
            QString(plain).replace(u',', u'.'), plain);
    }
    void endLine()
    {
        m_lines << m_texts.join(u'\t');
        m_texts.clear();
        m_rows += u"<tr>%1</tr>\n"_s.arg(std::exchange(m_html, {}));
    }
    std::unique_ptr<QMimeData> mime() const
    {
        auto data = std::make_unique<QMimeData>();
        data->setText(m_lines.join(u'\n'));
        data->setHtml(
            u"<html xmlns:x=\"urn:schemas-microsoft-com:office:excel\" lang=\"tr\"><head>"
            "<meta charset=\"utf-8\"></head><body><table>\n%1</table></body></html>"_s.arg(m_rows));
        return data;
    }

private:
    QStringList m_texts; // of the line in hand
    QStringList m_lines;
    QString m_html; // of the line in hand
    QString m_rows;
};

} // namespace

void GridView::copySelection(Headings headings)
{
    const QList<int> rows = selectedPositions();
    if (rows.isEmpty())
        return;
    if (headings == Headings::With) {
        copyAsSheet(rows);
        Q_EMIT copiedAsSheet(static_cast<int>(rows.size()));
        return;
    }
    QStringList lines;
    for (const int row : rows) {
        QStringList cells;
        for (const int column : copiedColumns(row))
            cells << m_grid.cell(row, column);
        lines << cells.join(u'\t');
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

QList<int> GridView::copiedColumns(int row) const
{
    QList<int> columns;
    for (int column = 0; column < m_grid.columnCount(); ++column) {
        if (!isColumnHidden(column) && selectionModel()->isSelected(m_grid.index(row, column)))
            columns << column;
    }
    return columns;
}

void GridView::copyAsSheet(const QList<int> &rows) const
{
    Sheet sheet;
    for (const int column : copiedColumns(rows.first()))
        sheet.addText(m_grid.columns()[column].heading);
    sheet.endLine();
    for (const int row : rows) {
        for (const int column : copiedColumns(row)) {
            const QString &text = m_grid.cell(row, column);
            const bool isForAmounts = m_grid.columns()[column].alignment & Qt::AlignRight;
            const auto plain = isForAmounts ? plainAmount(text) : std::nullopt;
            if (plain)
                sheet.addAmount(*plain);
            else
                sheet.addText(text);
        }
        sheet.endLine();
    }
    QGuiApplication::clipboard()->setMimeData(sheet.mime().release());
}

} // namespace kervan
