#pragma once

#include "base/fields.h"

#include <QString>

#include <functional>

namespace kervan {

/// Hands each line of the file to take(), the progress bar running along. The bar is hidden at the
/// end, however that comes; a file that can't be read is a Failure.
void walkLines(const QString &path, ProgressField &progress,
               const std::function<void(QStringView line)> &take);

} // namespace kervan
