#pragma once

#include <QString>

#include <chrono>
#include <functional>

namespace kervan {

/// Throws away what killed writers of whole files (wholefile.h) left in a folder: a file named as
/// the one that it was to become, a point and six letters. `isOurs` says of which names, and one
/// that was written to within `untouched` may have a living writer on another machine. Files whose
/// last letters look like a person's ("fatura.xml.yedekk") stay, but for empty ones and half
/// documents. Needs no QRegularExpression and no directory filter, so it is fit for threads.
void sweepLeftovers(const QString &folder, const std::function<bool(QStringView name)> &isOurs,
                    std::chrono::minutes untouched = std::chrono::minutes(0));

} // namespace kervan
