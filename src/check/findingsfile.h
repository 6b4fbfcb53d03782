#pragma once

#include "base/grid.h"
#include "check/finding.h"

#include <QList>
#include <QString>

namespace kervan {

/// One cell of a .csv file with ";" between, as spreadsheets of this country read it.
QString csvCell(const QString &text);

/// Writes the rows of `list` that have findings of it, with their reasons behind the cells, for who
/// made the source: a .csv in UTF-8 with a mark, headings first. Whole or a Failure.
void writeFindings(const QString &path, const Grid &list, const QList<Finding> &findings);

/// Writes a list with its headings the same way.
void writeTable(const QString &path, const Grid &table);

} // namespace kervan
