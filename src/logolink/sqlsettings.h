#pragma once

#include <QString>

namespace kervan {

/// The five lines of the side file sqlbaglan.kvz.
struct SqlSettings
{
    QString server;
    QString user;
    QString password;
    QString database;
    QString firm; ///< firm number, "- ", firm name
};

/// Reads the side file; missing or with fewer than five lines it is a Failure.
SqlSettings readSqlSettings(const QString &path);

/// Whether a transfer screen connects with them: unlike the settings screen it refuses an empty
/// password.
bool areComplete(const SqlSettings &settings);

/// Replaces the side file; its owner alone can read it. A Failure tells why it can't be written.
void writeSqlSettings(const QString &path, const SqlSettings &settings);

/// The connection text of the settings, its values as they stand.
QString connectionText(const SqlSettings &settings);

} // namespace kervan
