#pragma once

#include "base/grid.h"
#include "invoices/bif.h"
#include "invoices/prices.h"

namespace kervan {

/// What the lines of an invoice are looked up in.
struct LineLookups
{
    Prices &prices;
    const Grid &lbrm; ///< unit word of the source, Logo unit code
};

/// Adds a source line to the working copy `l3`: packs or cartons, dealer price, margin, extra tax
/// and net unit price. A Failure (a text that is no number, a quantity of 0) leaves the row with
/// the cells that were filled before it.
void addToL3(const InvoiceLine &line, const LineLookups &lookups, Grid &l3);

/// Adds it to the shown lines `l2`: the unit in brackets behind the amount, the price as read.
void addToL2(const InvoiceLine &line, const LineLookups &lookups, Grid &l2);

} // namespace kervan
