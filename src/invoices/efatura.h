#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "base/ports.h"
#include "logolink/screenlink.h"

namespace kervan {

/// Asks Logo for the card of each row of the invoice list, one statement a row, and marks those
/// that take e-invoices with "Evet"; the others keep what they hold. The first failure ends the
/// walk with a box, and the progress bar stays as it stood; the notes go on telling how far it got.
/// Gives how many rows were not asked for.
int efaturabul(Grid &l1, ScreenLink &link, ProgressField &ilerleme, Boxes &boxes, Notes &bilgi);

} // namespace kervan
