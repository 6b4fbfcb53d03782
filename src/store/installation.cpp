#include "store/installation.h"

#include "base/failure.h"
#include "base/movefile.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

struct DatabaseFile
{
    QString name;
    QStringList statements;
};

QString definitionTable(QStringView name)
{
    return u"create table %1 (id integer primary key, frno text, frkod text, firma text, "
           "kaskod text, dkod text, crkod text, alkod text, satkod text)"_s.arg(name);
}

QList<DatabaseFile> databaseFiles()
{
    return {
        {u"data.dbs"_s,
         {u"create table yol (id integer primary key, ec text, es text, ef text, xc text, xs text, "
          "xf text)"_s,
          u"insert into yol values (1, '', '', '', '', '', '')"_s, definitionTable(u"firma"),
          u"create index firma_firma on firma (firma)"_s, definitionTable(u"odm"),
          definitionTable(u"birim"), u"create index birim_kaskod on birim (kaskod)"_s,
          u"create index birim_frkod on birim (frkod)"_s,
          u"create table muh (id integer primary key, ind text, kdv text, al text, sat text, "
          "ali text, sati text, alkdv text, satkdv text, alikdv text, satikdv text)"_s,
          u"create index muh_kdv on muh (kdv)"_s,
          u"create table kdv (id integer primary key, kdv text)"_s,
          u"insert into kdv values (1, '18')"_s,
          u"create table statu (id integer primary key, statu text, var text)"_s,
          u"create table per (id integer primary key, kod text, per text)"_s,
          u"create table urun (kod text, ack text, fiyat text, bfiyat text)"_s,
          u"create index urun_kod on urun (kod)"_s}},
        {u"fatozkod.dbs"_s, {u"create table ozkod (id integer primary key, ozkod text)"_s}},
        {u"stokozkod.dbs"_s,
         {u"create table ozkod (id integer primary key, ack text, ozkod text)"_s}},
    };
}

// As nobody calls a file of his own.
QString unfinishedName(const QString &name)
{
    return u".kervan-kurulum-"_s + name;
}

// Made under another name first, so that a broken installation leaves no half database.
void make(const QDir &folder, const QString &name, const QStringList &statements)
{
    const QString unfinished = folder.filePath(unfinishedName(name));
    QString fault;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"installation"_s);
        db.setDatabaseName(unfinished);
        bool fine = db.open() && db.transaction();
        QSqlQuery query(db);
        for (const QString &statement : statements)
            fine = fine && query.exec(statement);
        fine = fine && db.commit();
        if (!fine)
            fault = db.lastError().text() + query.lastError().text();
    }
    QSqlDatabase::removeDatabase(u"installation"_s);
    if (fault.isEmpty())
        return;
    QFile::remove(unfinished);
    throw Failure(
        u"%1 kurulamadı: %2"_s.arg(QDir::toNativeSeparators(folder.filePath(name)), fault));
}

} // namespace

bool isNewFolder(const QString &programFolder)
{
    const QDir folder(programFolder);
    return folder.entryList({u"*.dbs"_s, u"*.kvz"_s}, QDir::Files).isEmpty() ||
           !folder.entryList({unfinishedName(u"*.dbs"_s)}, QDir::Files | QDir::Hidden).isEmpty();
}

void install(const QString &programFolder)
{
    const QDir folder(programFolder);
    for (const QString &name : {u"txt"_s, u"logo xml"_s, u"mey exel"_s}) {
        if (!folder.mkpath(name))
            throw Failure(
                u"%1 klasörü açılamadı."_s.arg(QDir::toNativeSeparators(folder.filePath(name))));
    }
    // All are made before the first has its name: one that lacks it tells the next start to go on.
    QStringList made;
    for (const DatabaseFile &file : databaseFiles()) {
        QFile::remove(folder.filePath(unfinishedName(file.name)));
        if (folder.exists(file.name))
            continue;
        make(folder, file.name, file.statements);
        made << file.name;
    }
    for (const QString &name : std::as_const(made))
        moveFile(folder.filePath(unfinishedName(name)), folder.filePath(name));
}

} // namespace kervan
