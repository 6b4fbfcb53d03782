#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/ports.h"
#include "check/rules.h"
#include "check/valuefaults.h"
#include "logoxml/template.h"

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace kervan {

// Rules that serve lists of all kinds, made from a list and what its columns mean.

/// The cells of a column that go into a document.
struct Cells
{
    const Grid &grid;
    int column;
    QString name; ///< as a sentence begins with it: "Ünvan"
    QString list = QStringLiteral("l1");
    /// Whether the row is one to look at; without it all are.
    std::function<bool(int row)> counts = nullptr;
    /// What can't be read any more once a cell breaks the Xml, where that is not all of the
    /// document: "kasa fişlerinin hiçbirini".
    QString broken = {};
};

/// Markup and letters (valuefaults.h) of each cell.
QList<Rule> letterRules(const Cells &cells);
/// The same for several columns.
QList<Rule> letterRules(const QList<Cells> &columns);
/// The same for a value that stands outside the list; `control` leads to it.
QList<Rule> letterRules(const TextField &field, const QString &name, const QString &control);

/// Words of the template, of each row; valuesOf(row) gives a value per placeholder, and none for a
/// row that is passed over. A Failure of it counts as none.
Rule wordRule(const Sablon &record, const QList<QByteArray> &placeholders,
              std::function<QStringList(int row)> valuesOf);
/// The same of a filling that is made anew for each walk, at the first row.
Rule wordRule(std::function<Filling()> makeFilling);

/// A cell that is empty or blank.
Rule emptyRule(const Cells &cells, const QString &rule, Level level, const QString &cure);

/// A field that is; the sentence is the rule's own.
Rule emptyRule(const TextField &field, const QString &rule, Level level, const QString &text,
               const QString &cure, const QString &control);

/// A value that further rows hold too; blank ones are none. `what` is as the sentence goes on:
/// "cari kodu". With `valueOf` the value is not the cell's.
Rule doubledRule(const Cells &cells, const QString &what, Level level, const QString &cure,
                 const std::function<QString(int row)> &valueOf = nullptr);

using ReadDate = std::function<std::optional<QDate>(const QString &cell)>;
/// toDate() without a Failure.
std::optional<QDate> dateOf(const QString &cell);
constexpr int daysBack = 400;
/// Cells that are no date, and dates that lie in the future or more than `daysBack` days back.
QList<Rule> dateRules(const Cells &cells, const Clock &clock, const ReadDate &read = &dateOf);

/// A number as documents have it: 1234.50; nothing of any other text.
std::optional<double> documentNumber(QStringView text);

/// Whether marks that are read as group marks stand where none belongs, so that the number read is
/// hardly the one meant: in "1.5" or "1234.50" under the group mark ".".
bool isOddlyGrouped(QStringView number, QChar groupMark, QChar decimalMark);

using ReadAmount = std::function<std::optional<double>(QStringView cell)>;
/// Amounts that are no number (empty ones too), and those below zero.
QList<Rule> amountRules(const Cells &cells, const ReadAmount &read);
/// The same of amounts in the spelling of cells: 1.234,50.
QList<Rule> amountRules(const Cells &cells);

/// Rules of a list that stands beside the first one, walked in small steps.
std::unique_ptr<Survey> surveyOf(const Grid &list, QList<Rule> rules);

/// One who needs a definition that is missing.
struct Need
{
    QString code; ///< what the source calls it
    QString name = {};
};
/// Missing definitions of a kind, each once with its lines; `needOf` tells what the row lacks. A
/// row is a document of its own.
std::unique_ptr<Survey> gapsOf(const Grid &list, const QString &kind, const QString &screen,
                               std::function<std::optional<Need>(int row)> needOf);

} // namespace kervan
