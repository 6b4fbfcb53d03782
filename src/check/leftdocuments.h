#pragma once

#include <QString>

namespace kervan {

/// Throws away what a killed program left of its documents in a folder that it writes into: halves
/// of documents of ours, and whole or empty ones whose names nobody chose. What was written to in
/// the last ten minutes stays, since a share has writers on other machines. Fit for threads.
void sweepDocuments(const QString &folder);

} // namespace kervan
