#include "logolink/sqlsettings.h"

#include "store/sidefiles.h"

namespace kervan {

using namespace Qt::StringLiterals;

SqlSettings readSqlSettings(const QString &path)
{
    const QStringList lines = readLines(path, 5);
    return {lines[0], lines[1], lines[2], lines[3], lines[4]};
}

bool areComplete(const SqlSettings &settings)
{
    return !settings.server.isEmpty() && !settings.user.isEmpty() && !settings.password.isEmpty() &&
           !settings.database.isEmpty() && !settings.firm.isEmpty();
}

void writeSqlSettings(const QString &path, const SqlSettings &settings)
{
    writeLines(
        path, {settings.server, settings.user, settings.password, settings.database, settings.firm},
        Readers::Owner);
}

QString connectionText(const SqlSettings &settings)
{
    return u"Server="_s + settings.server + u";Provider=SQLOLEDB;UID="_s + settings.user +
           u";PWD="_s + settings.password + u";database="_s + settings.database + u';';
}

} // namespace kervan
