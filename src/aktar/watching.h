#pragma once

#include <QStringList>

namespace kervan {

struct CommandWorld;

/// Transfers what comes into a folder until it is asked to end: "izle KLASOR --tarif TARIF". A file
/// is taken once it is complete; then it and a report go to `aktarilan`, or to `hatali` where no
/// document was written. Gives a Status.
int watchFolder(const QStringList &arguments, const CommandWorld &world);

} // namespace kervan
