#pragma once

#include "base/grid.h"
#include "slips/sheetlayout.h"
#include "slips/slipdocuments.h"

#include <QList>
#include <QString>

#include <variant>

namespace kervan {

/// A workbook that the user picks.
struct SlipFile
{
    QString title; // of the dialog
    bool startsInTxt = true;
    ReadKind kind = ReadKind::None;
    SheetLayout layout = {};
};

// What a command does.
struct OpenWorkbook
{
    int file; // of the form's
};
struct OpenText
{
};
struct WriteDocument
{
    const SlipDocument &(*document)();
};

/// A command by its control's name. One that is not shown works all the same.
struct SlipCommand
{
    QString name;
    QString caption;
    std::variant<OpenWorkbook, OpenText, WriteDocument> action;
    bool shown = false;
    QString keys = {};
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
    QString bankListCaption = {}; // empty where there is no bank list
    QList<GridColumn> columns;
    QList<SlipFile> files;
    QList<SlipCommand> commands;

    bool hasBankList() const { return !bankListCaption.isEmpty(); }
};

// The four screens.
const SlipForm &cafis();
const SlipForm &cafis2();
const SlipForm &cafis3();
const SlipForm &carifisduzey();

} // namespace kervan
