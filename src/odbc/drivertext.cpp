#include "odbc/drivertext.h"

#include "base/failure.h"

#include <QMap>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The version of "ODBC Driver 18 for SQL Server", 0 of the plain driver that comes with Windows,
// -1 of any other.
int versionOf(const QString &driver)
{
    constexpr QStringView before = u"ODBC Driver ";
    constexpr QStringView behind = u" for SQL Server";
    if (driver == u"SQL Server")
        return 0;
    if (driver.size() < before.size() + behind.size() || !driver.startsWith(before) ||
        !driver.endsWith(behind))
        return -1;
    bool isNumber = false;
    const int version =
        QStringView(driver).sliced(before.size()).chopped(behind.size()).toInt(&isNumber);
    return isNumber ? version : -1;
}

QMap<QString, QString> pairsOf(const QString &connectionText)
{
    QMap<QString, QString> pairs;
    for (const QString &piece : connectionText.split(u';', Qt::SkipEmptyParts)) {
        const qsizetype equals = piece.indexOf(u'=');
        if (equals < 0) // a password's tail, so it is not repeated
            throw Failure(u"Bağlantı bilgilerinde \";\" kullanılamaz."_s);
        pairs[piece.left(equals).trimmed().toLower()] = piece.mid(equals + 1);
    }
    return pairs;
}

QString braced(QString value)
{
    return u'{' + value.replace(u'}', u"}}"_s) + u'}';
}

// FreeTDS knows no doubled brace; it takes a value as it stands unless it begins with one.
QString bracedForFreeTds(const QString &value)
{
    return value.startsWith(u'{') ? u'{' + value + u'}' : value;
}

// What was entered as the server's name; blanks around its pieces are not theirs.
struct Server
{
    explicit Server(const QString &entered)
        : host(entered.section(u',', 0, 0).section(u'\\', 0, 0).trimmed())
        , instance(entered.section(u',', 0, 0).section(u'\\', 1).trimmed())
        , port(entered.section(u',', 1).trimmed())
    {
    }

    // "host\\instance,port": the port says it all.
    QString forMicrosoft() const
    {
        QString name = host;
        if (!port.isEmpty())
            name += u',' + port;
        else if (!instance.isEmpty())
            name += u'\\' + instance;
        // One that begins with a brace would reach up to one in a later value.
        return name.startsWith(u'{') ? braced(name) : name;
    }

    // FreeTDS puts "host,port" into the login packet with a NUL for the comma, which a strict
    // server refuses, and knows no port of its own; so it is told host and port apart. It does the
    // same with an instance, which it takes in no other form.
    QString forFreeTds() const
    {
        if (port.isEmpty() && !instance.isEmpty())
            return bracedForFreeTds(host + u'\\' + instance);
        bool isNumber = true;
        if (!port.isEmpty() && (port.toUShort(&isNumber) == 0 || !isNumber))
            throw Failure(u"Sunucu adındaki bağlantı noktası bir sayı değil: %1"_s.arg(port));
        return bracedForFreeTds(host) + u";Port="_s + (port.isEmpty() ? u"1433"_s : port);
    }

    QString host;
    QString instance;
    QString port;
};

} // namespace

QString chosenDriver(const QStringList &registered)
{
    QString chosen;
    for (const QString &driver : registered) {
        if (versionOf(driver) > versionOf(chosen))
            chosen = driver;
    }
    if (chosen.isEmpty() && registered.contains(u"FreeTDS"_s, Qt::CaseInsensitive))
        chosen = u"FreeTDS"_s;
    return chosen.isEmpty() ? u"libtdsodbc.so"_s : chosen;
}

QString driverText(const QString &connectionText, const QString &driver)
{
    const QMap<QString, QString> pairs = pairsOf(connectionText);
    const int version = versionOf(driver);
    const auto value = [&](const QString &key) {
        return version < 0 ? bracedForFreeTds(pairs[key]) : braced(pairs[key]);
    };
    const Server server(pairs[u"server"_s]);
    QString text = u"Driver={%1};Server="_s.arg(driver) +
                   (version < 0 ? server.forFreeTds() : server.forMicrosoft()) + u";UID="_s +
                   value(u"uid"_s) + u";PWD="_s + value(u"pwd"_s) + u";Database="_s +
                   value(u"database"_s) + u';';
    if (version < 0) {
        // Left to itself, FreeTDS tries one version after another, each with a whole time-out. A
        // server that is older than the named one answers in its own.
        text += u"TDS_Version=7.4;ClientCharset=UTF-8;"_s;
    } else if (version > 0) {
        // From version 18 on the driver insists on a certificate that the machine trusts, and an
        // in-house server has only the one that it made for itself. "no" leaves the choice to the
        // server; the login with its password is encrypted all the same.
        text += u"Encrypt=no;TrustServerCertificate=yes;"_s;
    }
    return text;
}

QString sentenceOf(const QString &message)
{
    // The server's own sentence may begin with a bracket too: "[dbo].[X] ...".
    QStringView rest = message;
    QStringView layer;
    while (layer != u"[SQL Server]" && rest.startsWith(u'[') && rest.contains(u']')) {
        layer = rest.first(rest.indexOf(u']') + 1);
        rest = rest.sliced(layer.size());
    }
    return rest.trimmed().toString();
}

} // namespace kervan
