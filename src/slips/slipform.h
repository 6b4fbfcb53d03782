#pragma once

#include "base/grid.h"
#include "slips/slipdocuments.h"
#include "workbook/workbook.h"

#include <QList>
#include <QString>

#include <optional>

namespace kervan {

class SlipScreen;

/// A record of a sheet in hand, and what else goes into the cells of its row.
struct Reading
{
    const SlipScreen &screen;
    const Sheet &sheet;
    QString date; // from the file's name
    QString per;  // staff code from there
    int record = 0;
    double number = 0; // of the cash sequence

    QString text(int field) const { return sheet.text(record, field); }
};

/// How one cell of `l1` is made; `field` is the sheet's, for those that need one.
struct CellRule
{
    int cell;
    int field;
    QString (*value)(const Reading &reading, int field);
};

/// Where a file's name spells a date: the first columns, from 1, of its two and four digits.
struct NamedDate
{
    int day, month, year;
};

/// How the records of a sheet become rows.
struct SheetLayout
{
    int headings = 1;        // records in front that are none
    bool passesOver = false; // a step that fails is passed over, else it ends the read
    std::optional<NamedDate> namedDate = {};
    std::optional<int> kindField = {}; // only records with "HHSATIS" there are taken
    std::optional<int> endField = {};  // an empty one ends the read
    QList<CellRule> cells = {};        // in the order of filling
};

/// A file that the user picks.
struct SlipFile
{
    QString title; // of the dialog
    bool startsInTxt = true;
    ReadKind kind = ReadKind::None;
    SheetLayout layout = {};
};

/// A command by its control's name. One without a picture is not shown, and works all the same.
struct SlipCommand
{
    QString name;
    QString caption;
    QString picture = {};
    QString keys = {};
    void (*run)(SlipScreen &screen) = nullptr;
};

/// What tells one slip screen from the others.
struct SlipForm
{
    QString screen;
    QString caption;
    QString heading;
    QString sheetFile; // remembers the name of the sheet
    QString sheetDefault;
    bool sheetButtonRests = true; // the button that stores it is off until the name changes
    bool salesman = false;        // cash and card slips carry one
    bool usesStaff = false;       // `persl` is filled
    QString aktifform = {};       // what its opening writes there, if anything
    QString cashListCaption;
    QString bankListCaption = {}; // null where there is no bank list
    QList<GridColumn> columns;
    QList<SlipFile> files;
    QList<SlipCommand> commands;

    bool hasBankList() const { return !bankListCaption.isNull(); }
};

// The four screens.
const SlipForm &cafis();
const SlipForm &cafis2();
const SlipForm &cafis3();
const SlipForm &carifisduzey();

} // namespace kervan
