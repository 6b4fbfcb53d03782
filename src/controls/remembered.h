#pragma once

#include <QString>
#include <QVariant>

namespace kervan {

// How the user left the windows: sizes, columns, panes. It is kept with the settings of the user's
// account, never in the program folder, and nothing is kept while the program has no organisation's
// name, as in a test.

QVariant remembered(QStringView key);
void remember(QStringView key, const QVariant &value);

} // namespace kervan
