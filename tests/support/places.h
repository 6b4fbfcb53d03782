#pragma once

#include <QString>

namespace kervan {

/// A file or folder of tests/data.
QString testData(const QString &name);
/// One of samples, or that folder itself.
QString samplePath(const QString &name = {});

} // namespace kervan
