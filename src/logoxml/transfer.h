#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "store/program.h"

#include <functional>
#include <optional>

namespace kervan {

// What the transfers share around their files: asking for one, walking one, telling the end.

/// Asks for the document's name, which then ends in ".xml"; nothing on cancel.
std::optional<QString> askTarget(Program &program, const QString &title);

/// Hands each line of the file to take(), the progress bar running along. The bar is hidden at the
/// end, however that comes; a file that can't be read is a Failure.
void walkLines(const QString &path, ProgressField &progress,
               const std::function<void(QStringView line)> &take);

/// The box at the end of a save.
void tellDone(Boxes &boxes);

/// Adds what failed to a line of notes: a save can fail at its document and at its side file.
void addNote(TextField &bilgi, const std::optional<Failure> &failed);

/// Treatment of a field: as it stands, blanks and all.
QString untouchedField(QStringView field);

} // namespace kervan
