#pragma once

#include "check/checks.h"
#include "check/listshape.h"
#include "invoices/duzey/fatduz.h"
#include "invoices/invoicechecks.h"

#include <memory>

namespace kervan {

// What the Düzey invoice screen is checked for before a document is written.

ListShape shapeOf(const Fatduz &fatduz);
QList<Rule> rulesOf(Fatduz &fatduz, const InvoiceHooks &hooks = {});
/// Walks the sheet that was read for the lines of the listed invoices: units, numbers, discounts,
/// records that are of another invoice, and what is missing for them.
std::unique_ptr<Survey> surveyOf(Fatduz &fatduz);
/// All of it, at work from the next turn of the event loop on; `fatduz` outlives it.
std::unique_ptr<Checks> checksOf(Fatduz &fatduz, const InvoiceHooks &hooks = {});

} // namespace kervan
