#pragma once

#include <QStringList>

namespace kervan {

/// The place of the sheet among the names: the exact one, or else the first that differs in case
/// only. None is a Failure that names those that there are.
qsizetype findSheet(const QStringList &names, const QString &wanted);

} // namespace kervan
