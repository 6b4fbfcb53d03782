#pragma once

#include "base/failure.h"
#include "base/grid.h"
#include "check/readreport.h"

#include <QString>

#include <optional>
#include <span>

namespace kervan {

// What the readings of text exports have to report.

/// A field without which a row is of little use.
struct WantedField
{
    int column; ///< of the list
    int first;  ///< of the line, from 1
    QStringView name;
};

/// Reports each wanted cell of the row that the line left empty, and whether the line is empty or
/// ends in front of it. A row that lacks nothing costs no more than the look at its cells.
void addEmptyCells(ReadReport &report, const Grid &grid, int row, QStringView line,
                   std::span<const WantedField> wanted);

/// Reports where a reading ended before its source did; nothing without a failure.
void addEnd(ReadReport &report, qint64 line, const std::optional<Failure> &failed);

} // namespace kervan
