#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace kervan {

/// A sheet of a workbook, read whole: records and fields count from 0, and record 0 is the first
/// row, field 0 the first column that has a filled cell. A row without one between filled rows is
/// a record. Filled are cells that give a text: an error, an empty text or a mere format does not.
/// Never changes, so it can be shared.
class Sheet
{
public:
    enum class Kind : quint8 { Empty, Text, Number, Date, Boolean };

    int rows() const { return static_cast<int>(m_rowStarts.size()) - 1; } ///< records
    int columns() const { return m_columns; }                             ///< fields

    /// What the field holds; a record or field beyond the sheet is a Failure that names it.
    Kind kind(int row, int field) const;
    /// The field in words: text as it stands; a number with ",", all its digits and the zeros that
    /// its format pads it with; a date as dd.MM.yyyy, with HH:mm:ss behind a blank if it has a
    /// time; Doğru or Yanlış; empty for errors. A record or field beyond the sheet is a Failure.
    QString text(int row, int field) const;
    /// The cell's name in a spreadsheet: "B7"; beyond the sheet too.
    QString address(int row, int field) const;
    /// What a field of kind Number holds, else nothing; for those who look at it without its words.
    std::optional<double> number(int row, int field) const;

private:
    friend class SheetBuilder;

    // 16 bytes, since a sheet may hold millions of them.
    struct Cell
    {
        quint64 bits;   // the number, the truth, or start and length in m_texts
        quint32 row;    // of the workbook
        quint16 column; // of the workbook
        Kind kind;
        quint8 zeros; // digits that a number is padded to
    };
    const Cell *find(int row, int field) const;

    QByteArray m_texts; // UTF-8
    QList<Cell> m_cells;
    QList<quint32> m_rowStarts{0}; // places in m_cells, one more than there are records
    int m_firstColumn = 0;
    int m_columns = 0;
};

/// Reads one sheet of an .xlsx or .xls workbook, told by its first bytes and not by its name. The
/// sheet is the one of exactly that name, or else one whose name differs in case only. Failures,
/// which name the file: it is missing, no such workbook, damaged, protected by a password, larger
/// than the bounds, or has no such sheet (then the sheets that there are are named).
std::shared_ptr<const Sheet> readSheet(const QString &path, const QString &sheetName);

/// The names of its sheets, in their order, without reading what is in them. Failures are as for
/// readSheet().
QStringList readSheetNames(const QString &path);

/// Keeps the sheet that was read last, and parses again only when path, sheet name, size or time
/// of change differ. A file that is gone or unreadable now is a Failure at each call all the same.
class Workbooks
{
public:
    std::shared_ptr<const Sheet> sheet(const QString &path, const QString &sheetName);

private:
    QString m_path;
    QString m_sheetName;
    qint64 m_size = -1;
    QDateTime m_changed;
    std::shared_ptr<const Sheet> m_sheet;
};

} // namespace kervan
