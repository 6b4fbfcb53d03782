#pragma once

#include "check/checks.h"
#include "check/listshape.h"
#include "check/writtendocuments.h"

#include <functional>
#include <memory>

namespace kervan {

class SlipScreen;

// What the slip transfers look for in their lists, whichever of the four screens it is, and
// whichever source the list in hand is of. The screen outlives its checks.

/// Of the list in hand: a text export has other columns than a workbook. Its amounts and dates are
/// in the spelling of the source (1234.50, 20240307).
ListShape shapeOf(const SlipScreen &screen);
/// Of `l2`, on the screens that have one.
ListShape bankListShapeOf(const SlipScreen &screen);

/// How the rows that go into documents of the family are found there: cash and card slips are of
/// `l1`, bank slips of `l2`.
ListedRows listedSlips(const SlipScreen &screen, DocumentFamily family);

/// Whether another open screen counts with the cash counter too; the frame knows.
using SharesCounter = std::function<bool()>;

/// The rules of the screen and of `l1`.
QList<Rule> rulesOf(SlipScreen &screen, SharesCounter sharesCounter = nullptr);
/// Those of `l2`; none where no button writes it.
QList<Rule> bankListRulesOf(SlipScreen &screen);

/// Both at work, with the definitions that are missing and all fields that they look at.
std::unique_ptr<Checks> checksOf(SlipScreen &screen, SharesCounter sharesCounter = nullptr);

} // namespace kervan
