#pragma once

#include "slips/slipscreen.h"
#include "support/fakes.h"
#include "support/workbooks.h"

#include <QFileInfo>

namespace kervan {

inline const Box done{u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information};

inline const SlipForm &slipForm(const QString &screen)
{
    for (const auto form : {&cafis, &cafis2, &cafis3, &carifisduzey}) {
        if (form().screen == screen)
            return form();
    }
    qFatal("no screen %s", qPrintable(screen));
}

/// A cell as tests write it: #1234.5 is a number, @2021-03-15 a date, @2021-03-15T10:30:00 one with
/// its time, all else a text.
inline BookCell bookCell(const QString &text)
{
    if (text.startsWith(u'#'))
        return text.mid(1).toDouble();
    if (text.startsWith(u'@') && text.contains(u'T'))
        return QDateTime::fromString(text.mid(1), Qt::ISODate);
    if (text.startsWith(u'@'))
        return QDate::fromString(text.mid(1), Qt::ISODate);
    return text.isEmpty() ? BookCell() : BookCell(text);
}

/// A sheet from lines of cells parted by "|".
inline void writeBook(const QString &path, const QString &sheet, const QString &lines)
{
    QList<BookRow> rows;
    for (const QString &line : lines.split(u'\n')) {
        BookRow &row = rows.emplaceBack();
        for (const QString &cell : line.split(u'|'))
            row << bookCell(cell);
    }
    writeWorkbook(path, sheet, rows);
}

/// The rows of a grid, one a line, their cells parted by "|".
inline QString textOf(const Grid &grid)
{
    QStringList rows;
    for (int row = 0; row < grid.rows(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid.columnCount(); ++column)
            cells << grid.cell(row, column);
        rows << cells.join(u'|');
    }
    return rows.join(u'\n');
}

/// One slip screen over a program folder of its own.
struct SlipDesk
{
    TestProgram t;
    SlipScreen s;

    explicit SlipDesk(const SlipForm &form)
        : s(t.program, form)
    {
    }
    /// Presses a command by its control's name.
    void press(const QString &control)
    {
        for (const SlipCommand &command : s.form().commands) {
            if (command.name == control)
                return command.run(s);
        }
        QFAIL(qPrintable(u"no command "_s + control));
    }
    /// Picks the file with the first command that opens workbooks.
    void read(const QString &path)
    {
        t.dialogs.answers = {path};
        press(u"buton1"_s);
    }
    /// Writes a workbook for the screen's sheet and reads it.
    void readBook(const QString &name, const QString &lines)
    {
        writeBook(t.path(name), s.Text1.text(), lines);
        read(t.path(name));
    }
    /// Ticks all rows and saves; the document.
    QByteArray save(const QString &control)
    {
        s.l1.setAllTicked(true);
        s.l2.setAllTicked(true);
        const QString target = t.path(control + u".xml"_s);
        t.dialogs.answers = {target};
        press(control);
        return QFileInfo::exists(target) ? readBytes(target) : QByteArray();
    }
    QByteArray bytes(const QString &name) const { return readBytes(t.path(name)); }
    void expectWarning(const QString &text, Icon icon = Icon::Exclamation)
    {
        t.boxes.expect({text, u"Dikkat"_s, icon});
    }
};

} // namespace kervan
