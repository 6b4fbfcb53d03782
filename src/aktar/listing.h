#pragma once

#include "base/grid.h"

namespace kervan {

/// A list as text with its headings: "tablo" for the eye, "csv" with ";" between and one line a
/// row, "json" with one object a row. A list whose rows are ticked tells it in front.
QString listing(const Grid &list, bool ticks, const QString &form);

} // namespace kervan
