#pragma once

#include "base/failure.h"
#include "base/fields.h"

#include <optional>

namespace kervan {

/// Adds what failed to a line of notes: a save can fail at its document and at its side file.
void addNote(TextField &bilgi, const std::optional<Failure> &failed);

} // namespace kervan
