#pragma once

#include <QString>
#include <QTest>

namespace kervan {

using namespace Qt::StringLiterals;

/// Makes rows of test data from a table in the test's text: lines of cells parted by ";", all of
/// them texts, without the blanks around them. The first line names the columns, the first cell of
/// each other one its case:
///     case           ; rate ; expected
///     half a percent ; 0.5  ; 0,5
/// A backslash and "n" or "r" in a cell stand for what they stand for in any text.
inline void addTable(const QString &table)
{
    QList<QStringList> lines;
    for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
        QStringList &cells = lines.emplaceBack();
        for (const QString &cell : line.split(u';'))
            cells << cell.trimmed().replace(u"\\n"_s, u"\n"_s).replace(u"\\r"_s, u"\r"_s);
    }
    const QStringList names = lines.takeFirst();
    static QByteArrayList kept; // the test library keeps no copy of a column's name
    for (const QString &name : names.sliced(1))
        QTest::addColumn<QString>(kept.emplaceBack(name.toLatin1()).constData());
    for (const QStringList &cells : std::as_const(lines)) {
        if (cells.size() != names.size())
            qFatal("not as many cells as columns: %s", qPrintable(cells[0]));
        QTestData &row = QTest::newRow(qPrintable(cells[0]));
        for (const QString &cell : cells.sliced(1))
            row << cell;
    }
}

/// The cell of the current row in this column.
inline QString fetch(const char *column)
{
    return *static_cast<QString *>(QTest::qData(column, QMetaType::QString));
}

/// The name of the current row.
inline QString caseName()
{
    return QString::fromUtf8(QTest::currentDataTag());
}

} // namespace kervan
