#pragma once

#include <QStringView>

class QString;

namespace kervan {

/// The file that a crash leaves in the program folder.
constexpr QStringView crashReportName = u"cokme-raporu.txt";

/// From here on a crash leaves a small file in the program folder: which program and version, and
/// the places in it that led there; nothing of what the program held. The crash itself goes its
/// way.
void reportCrashes(const QString &programFolder);

} // namespace kervan
