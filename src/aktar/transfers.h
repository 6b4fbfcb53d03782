#pragma once

#include "aktar/options.h"
#include "base/grid.h"
#include "base/notes.h"
#include "check/checks.h"
#include "check/listshape.h"
#include "check/readreport.h"
#include "check/writtendocuments.h"
#include "logolink/screenlink.h"
#include "logoxml/spelling.h"
#include "store/program.h"

#include <functional>
#include <memory>

namespace kervan {

/// A choice of a screen that an option makes, as its window does it: the value goes into the field,
/// and what a user's choice runs is run.
struct Choice
{
    QString option;
    /// What makes it; a Failure where the field has no such value.
    std::function<std::function<void()>(const QString &value)> of;
    bool behindRead = false; ///< only a list in hand takes it
};

/// A screen at work without its window: the pieces of it that a transfer of any kind has, and the
/// procedures of its buttons.
struct OpenScreen
{
    std::shared_ptr<void> owner;
    Grid &list; ///< what is written from
    Notes &notes;
    ReadReport &report;
    XmlChoice &xml;
    std::function<void()> open; ///< what the opening of the screen does
    QList<Choice> choices;
    std::function<void(const QString &path)> read;
    std::function<void()> write;
    /// The save without a dialog, and the setting that names its document; null where there is
    /// none.
    std::function<void()> writeAutomatically = nullptr;
    QString *automaticTarget = nullptr;
    std::function<ListShape()> shape;
    std::function<std::unique_ptr<Checks>()> checks;
    QString listName = QStringLiteral("l1"); ///< as findings call it
    /// Whether a finding of the screen is of the document that is written.
    std::function<bool(const Finding &finding)> concerns = [](const Finding &) {
        return true;
    };
    /// How its rows are found in documents; null where nothing tells.
    std::function<ListedRows()> listed = nullptr;
    /// The side files that the document's numbers are counted in.
    QStringList counters = {};
    /// Whether only ticked rows are written.
    bool ticks = true;
    /// Whether its save refuses an empty list by itself, with a box.
    bool guards = true;
    bool writesCashSlips = false; ///< beside its document
    /// Whether the row's customer takes e-invoices; null where no list knows.
    std::function<bool(int row)> eInvoice = nullptr;
    /// How many rows could not be asked for that.
    std::function<int()> unasked = nullptr;
    /// Its line to Logo; null where it asks nothing.
    const ScreenLink *link = nullptr;
};

/// A row of the table of transfers.
struct Transfer
{
    QString command;
    QString what;     ///< a line of the help
    QString patterns; ///< of its sources: "*.xlsx *.xls"
    QList<Option> options;
    std::function<OpenScreen(Program &program, const Options &options)> begin;
};

const QList<Transfer> &transfers();
/// The transfer of a command; null for a word that is none.
const Transfer *findTransfer(const QString &command);
/// All that it takes: its own options, those that only look, and the common ones.
QList<Option> optionsOf(const Transfer &transfer);
/// Those of all commands.
QList<Option> allOptions();

} // namespace kervan
