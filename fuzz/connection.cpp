// Settings of the connection: through their side file, into a connection text, and into the words
// of each driver, which have to come out as the very pairs that went in.

#include "base/failure.h"
#include "logolink/sqlsettings.h"
#include "odbc/drivertext.h"
#include "odbc/faults.h"
#include "support/harness.h"

#include <QMap>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// As drivers read it: keys up to "=", values up to ";" or, where they begin with a brace, up to the
// one that closes it. Microsoft's takes a doubled one for a letter.
QMap<QString, QString> readByDriver(const QString &text, bool doubled)
{
    QMap<QString, QString> pairs;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype equals = text.indexOf(u'=', at);
        fuzz::expect(equals >= 0, "a piece without a key", text);
        const QString key = text.sliced(at, equals - at);
        fuzz::expect(!pairs.contains(key), "a key comes twice", text, key);
        QString value;
        at = equals + 1;
        if (at < text.size() && text[at] == u'{') {
            for (++at; at < text.size(); ++at) {
                if (text[at] != u'}')
                    value += text[at];
                else if (doubled && at + 1 < text.size() && text[at + 1] == u'}')
                    value += text[at++];
                else
                    break;
            }
            fuzz::expect(at < text.size(), "a brace is left open", text);
            ++at;
        } else {
            for (; at < text.size() && text[at] != u';'; ++at)
                value += text[at];
        }
        fuzz::expect(at == text.size() || text[at] == u';', "letters behind a brace", text);
        ++at;
        pairs.insert(key, value);
    }
    return pairs;
}

// Of names without an instance: "host" or "host,port".
void expectServer(const QMap<QString, QString> &pairs, const QString &entered, bool isMicrosoft)
{
    if (entered.contains(u'\\'))
        return;
    const qsizetype comma = entered.indexOf(u',');
    const QString host = entered.left(comma).trimmed();
    const QString port = comma < 0 ? QString() : entered.mid(comma + 1).trimmed();
    if (isMicrosoft) {
        fuzz::expectSame(pairs[u"Server"_s], port.isEmpty() ? host : host + u',' + port,
                         "another server");
        return;
    }
    fuzz::expectSame(pairs[u"Server"_s], host, "another host");
    fuzz::expectSame(pairs[u"Port"_s], port.isEmpty() ? u"1433"_s : port, "another port");
}

void checkDrivers(const SqlSettings &settings)
{
    const QString text = connectionText(settings);
    for (const QString &driver :
         {u"SQL Server"_s, u"ODBC Driver 18 for SQL Server"_s, u"FreeTDS"_s}) {
        QString words;
        if (passOver([&] { words = driverText(text, driver); }))
            continue;
        const bool isMicrosoft = driver != u"FreeTDS";
        // A brace that FreeTDS can't be told of closes its value early.
        const auto isAmbiguous = [&](const QString &value) {
            return !isMicrosoft && value.startsWith(u'{') && value.contains(u'}');
        };
        const bool hasSemicolon =
            (settings.server + settings.user + settings.password + settings.database)
                .contains(u';');
        if (hasSemicolon || isAmbiguous(settings.user) || isAmbiguous(settings.password) ||
            isAmbiguous(settings.database) || isAmbiguous(settings.server.trimmed()))
            continue;
        const auto pairs = readByDriver(words, isMicrosoft);
        const QStringList keys =
            isMicrosoft
                ? (driver == u"SQL Server"
                       ? QStringList{u"Database"_s, u"Driver"_s, u"PWD"_s, u"Server"_s, u"UID"_s}
                       : QStringList{u"Database"_s, u"Driver"_s, u"Encrypt"_s, u"PWD"_s,
                                     u"Server"_s, u"TrustServerCertificate"_s, u"UID"_s})
                : QStringList{};
        fuzz::expect(keys.isEmpty() || pairs.keys() == keys, "other keys than the designed ones",
                     words);
        fuzz::expectSame(pairs[u"UID"_s], settings.user, "another user");
        expectServer(pairs, settings.server, isMicrosoft);
        fuzz::expectSame(pairs[u"PWD"_s], settings.password, "another password");
        fuzz::expectSame(pairs[u"Database"_s], settings.database, "another database");
    }
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const SqlSettings settings{pieces.text(), pieces.text(), pieces.text(), pieces.text(),
                               pieces.text()};
    const QString path = pathOf(u"sqlbaglan.kvz"_s);
    if (!passOver([&] { writeSqlSettings(path, settings); })) {
        const SqlSettings read = readSqlSettings(path);
        if (!asWritten(settings.server).startsWith(u"ï»¿"_s)) // the UTF-8 mark
            expectSame(read.server, asWritten(settings.server), "another server is kept");
        expectSame(read.firm, asWritten(settings.firm), "another firm is kept");
        expectSame(read.password, asWritten(settings.password), "another password is kept");
    }
    checkDrivers(settings);
    const QStringList drivers = pieces.texts();
    const QString chosen = chosenDriver(drivers);
    expect(drivers.contains(chosen) || chosen == u"FreeTDS" || chosen == u"libtdsodbc.so",
           "a driver that nobody has", chosen);
    QList<Diagnosis> records;
    for (const QString &told : drivers)
        records << Diagnosis{told.left(5), static_cast<int>(told.size()), sentenceOf(told)};
    descriptionOf(records);
}
