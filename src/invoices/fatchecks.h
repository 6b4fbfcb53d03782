#pragma once

#include "check/checks.h"
#include "check/listshape.h"
#include "invoices/fat.h"
#include "invoices/invoicechecks.h"

#include <memory>

namespace kervan {

// What the SAP invoice screen is checked for before a document is written.

ListShape shapeOf(const Fat &fat);
QList<Rule> rulesOf(Fat &fat, const InvoiceHooks &hooks = {});
/// Walks the file again for the lines of the listed invoices: units, dealer prices, quantities and
/// amounts, sums, and what is missing for them.
std::unique_ptr<Survey> surveyOf(Fat &fat);
/// All of it, at work from the next turn of the event loop on; `fat` outlives it.
std::unique_ptr<Checks> checksOf(Fat &fat, const InvoiceHooks &hooks = {});

} // namespace kervan
