#pragma once

#include "store/program.h"

#include <QString>

#include <optional>

namespace kervan {

// Where a document goes, and the box at its end.

/// The name that a save dialog gave, with ".xml" added unless its last four characters are exactly
/// that: "a.XML" becomes "a.XML.xml".
QString xmlAdi(const QString &name);

/// What a save dialog for documents starts with: the program's folder "logo xml" while the target
/// of cari documents `xc` is empty, else the target of invoice documents `xf`. That
/// the one is tested and the other taken is deliberate.
QString ilkKlasor(const QString &programFolder, const QString &xc, const QString &xf);

/// The document of the cash slips stands beside that of its invoices, whose last four characters
/// this takes the place of.
inline constexpr QStringView cashDocumentEnd = u"-KASANAKIT.xml";

/// Asks for the document's name, which then ends in ".xml"; nothing on cancel.
std::optional<QString> askTarget(Program &program, const QString &title);

/// The box at the end of a save.
void tellDone(Boxes &boxes);

} // namespace kervan
