#pragma once

#include "aktar/transfers.h"
#include "check/finding.h"

#include <QDate>
#include <QSet>

#include <optional>

namespace kervan {

/// Which rows of a list are to be written: those that all that was said fits.
struct Selection
{
    QDate first, last; ///< of the document; both valid or none
    QSet<QString> numbers;
    std::optional<bool> eInvoice;
    bool unwritten = false; ///< stands in no document of the target's folder yet

    bool takesAll() const
    {
        return !first.isValid() && numbers.isEmpty() && !eInvoice && !unwritten;
    }
};

/// What "sec" and "yazilmislari-atla" say. A Failure says what was used wrongly.
Selection selectionOf(const Options &options, QDate today);

/// What the list of a screen can't be asked for is a Failure; known before anything is read.
void checkSelection(const OpenScreen &screen, const Selection &selection);

/// The numbers that were asked for and that no row of the list has.
QStringList missingNumbers(const OpenScreen &screen, const Selection &selection);

/// What there is to say of a choice.
struct Chosen
{
    QStringList lines;
    QList<Finding> findings = {}; ///< of rows left out for a document that is not quite the same
    bool isBarred = false;        ///< what is written could not be known, so nothing was chosen
};

/// Ticks those rows of the list and no others. `folder` is the target's; while a document there
/// can't be read, none counts as unwritten.
Chosen selectRows(const OpenScreen &screen, const Selection &selection, const QString &folder);

} // namespace kervan
