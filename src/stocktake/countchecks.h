#pragma once

#include "check/checks.h"
#include "check/listshape.h"

#include <memory>

namespace kervan {

class Sayimform;

// What the stocktake looks for in its list. The screen outlives its checks.

ListShape shapeOf(const Sayimform &sayim);
QList<Rule> rulesOf(Sayimform &sayim);
/// The rules at work, with the barcodes that Logo doesn't know and all fields that they look at.
std::unique_ptr<Checks> checksOf(Sayimform &sayim);

} // namespace kervan
