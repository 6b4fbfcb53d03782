#pragma once

#include "slips/slipcodes.h"
#include "store/staff.h"
#include "workbook/workbook.h"

#include <QList>
#include <QString>

#include <optional>

namespace kervan {

/// A record of a sheet in hand, and what else goes into the cells of its row.
struct Reading
{
    const Sheet &sheet;
    StaffCodes persl;
    SlipCodes codes;
    QString tarih = {}; // from the file's name
    QString per = {};   // staff code of the source, from there too
    int record = 0;
    double sira = 0; // of the cash sequence

    /// A field beyond the sheet is a Failure.
    QString text(int field) const { return sheet.text(record, field); }
};

/// How one cell of `l1` is made.
class CellRule
{
public:
    /// Of a field's text, by a treatment or as it stands.
    CellRule(int cell, int field, QString (*treat)(QStringView text) = nullptr)
        : m_cell(cell)
        , m_field(field)
        , m_treat(treat)
    {
    }
    /// Worked out from the whole reading; `field` says at which field it looks, if at any.
    CellRule(int cell, QString (*value)(const Reading &reading, int field), int field = -1)
        : m_cell(cell)
        , m_field(field)
        , m_value(value)
    {
    }

    int cell() const { return m_cell; }
    int field() const { return m_field; }
    QString text(const Reading &reading) const
    {
        if (m_value)
            return m_value(reading, m_field);
        const QString text = reading.text(m_field);
        return m_treat ? m_treat(text) : text;
    }

private:
    int m_cell;
    int m_field;
    QString (*m_treat)(QStringView text) = nullptr;
    QString (*m_value)(const Reading &reading, int field) = nullptr;
};

/// Where a file's name spells a date: the first columns, from 1, of its two and four digits.
struct NamedDate
{
    int day, month, year;
};

/// The cell that a staff code of the source is put into as Logo's, and the field that holds it; -1
/// where the file's name does.
struct StaffCell
{
    int cell;
    int field = -1;
};

/// How the records of a sheet become rows.
struct SheetLayout
{
    int headings = 1;        // records in front that are none
    bool passesOver = false; // a step that fails is passed over, else it ends the read
    std::optional<NamedDate> namedDate = {};
    std::optional<int> kindField = {}; // only records with "HHSATIS" there are taken
    std::optional<int> endField = {};  // an empty one ends the read
    std::optional<StaffCell> staff = {};
    QChar groupMark = u'.';     // of amounts that are texts
    QList<CellRule> cells = {}; // in the order of filling
};

// The sheets of the screens; the last has one of cash and one of card collections.
SheetLayout cafisLayout();
SheetLayout cafis2Layout();
SheetLayout cafis3Layout();
SheetLayout duzeyCashLayout();
SheetLayout duzeyCardLayout();

} // namespace kervan
