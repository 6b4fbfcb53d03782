#pragma once

#include "aktar/command.h"
#include "app/samples.h"
#include "store/installation.h"
#include "store/localdb.h"
#include "support/fakes.h"
#include "support/places.h"

#include <QDir>

namespace kervan {

/// A program folder with the samples' definitions, and a folder for documents beside it. Logo is in
/// reach: every third customer takes e-invoices, and it knows most barcodes.
struct SampleFolder
{
    QTemporaryDir place;
    QString folder = place.filePath(u"program"_s);
    QString documents = place.filePath(u"belgeler"_s);
    FakeDialogs dialogs;
    FakeClock clock;
    FakeSqlServer sqlServer;

    SampleFolder()
    {
        // Laid out once and copied: databases take their time.
        static const QTemporaryDir laidOut;
        if (QDir(laidOut.path()).isEmpty()) {
            install(laidOut.path());
            layOutSamples(samplePath(), laidOut.path());
        }
        for (const QString &name : QDir(laidOut.path()).entryList(QDir::Dirs)) // and itself
            QDir().mkpath(folder + u'/' + name);
        for (const QString &name : QDir(laidOut.path()).entryList(QDir::Files))
            QFile::copy(laidOut.filePath(name), folder + u'/' + name);
        QDir().mkpath(documents);
        writeBytes(folder + u"/sqlbaglan.kvz"_s, "SRV\r\nsa\r\np\r\nDB\r\n7- Merkez\r\n");
        writeBytes(folder + u"/kasacariislemno.kvz"_s, " 41 \r\n");
        sqlServer.opens = true;
        sqlServer.answer = [](const QString &statement) -> SqlRows {
            const QString value = statement.section(u'\'', -2, -2);
            const int digits = value.right(2).toInt();
            if (statement.contains(u"_UNITBARCODE"_s)) {
                if (digits % 7 == 0)
                    return {};
                return {{u"ITEMKOD"_s, u"BIRIMKOD"_s}, {{u"M"_s + value.right(3), u"ADET"_s}}};
            }
            return {{u"ACCEPTEINV"_s}, {{digits % 3 == 0 ? u"1"_s : u"0"_s}}};
        };
    }

    void fill(const QString &statement)
    {
        LocalDb db;
        const auto failed = passOver([&] {
            const OpenDb open(db, sideFile(u"data.dbs"_s));
            db.query(Statement(statement));
        });
        if (failed)
            qFatal("%s", qPrintable(failed->description()));
    }
    QString document(const QString &name) const { return documents + u'/' + name; }
    QString sideFile(const QString &name) const { return folder + u'/' + name; }

    // What the command says.
    QString out;
    QStringList told;
    std::function<bool()> isEnding = [] {
        return false;
    };

    int run(QStringList arguments)
    {
        if (!arguments.isEmpty())
            arguments.insert(1, u"--klasor="_s + folder);
        out.clear();
        told.clear();
        return runCommand(arguments,
                          {.programFolder = {},
                           .clock = clock,
                           .sqlServer = sqlServer,
                           .streams = {.out = [this](const QString &text) { out += text; },
                                       .tell =
                                           [this](const QString &line) {
                                               told << line;
                                           }},
                           .isEnding = isEnding});
    }
    bool says(const QString &text) const { return told.join(u'\n').contains(text); }
};

/// The files of a folder with their bytes, those of some endings.
inline QMap<QString, QByteArray> filesOf(const QString &folder, const QStringList &patterns)
{
    QMap<QString, QByteArray> files;
    for (const QString &name : QDir(folder).entryList(patterns, QDir::Files | QDir::Hidden))
        files[name] = readBytes(folder + u'/' + name);
    return files;
}

} // namespace kervan
