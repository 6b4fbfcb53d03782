#pragma once

#include "base/statement.h"

#include <QString>

namespace kervan {

// The four statements that go to Logo's database; no other does. `firma` is the firm line: the
// number before its first "-", in three digits, stands in the names of the firm's tables.

/// The firms: columns `NR` and `Name`.
Statement firmSelect();

/// A current-account card with all its columns, among them `ACCEPTEINV`.
Statement cardSelect(const QString &firma, const QString &code);

/// The stock code `ITEMKOD` and the unit code `BIRIMKOD` of a barcode.
Statement barcodeSelect(const QString &firma, const QString &barcode);

/// Sets the title of a current-account card.
Statement titleUpdate(const QString &firma, const QString &code, const QString &title);

} // namespace kervan
