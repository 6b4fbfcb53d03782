#include "app/samples.h"

#include "base/failure.h"
#include "store/sidefiles.h"

#include <QDir>
#include <QFile>

#include <map>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

using Rows = std::map<std::pair<QString, QString>, QList<QStringList>>; // by database and table

Rows rowsOf(const QString &path)
{
    Rows rows;
    for (const QString &line : readAllLines(path)) {
        const QStringList cells = line.split(u'\t');
        if (cells.size() > 2 && !line.startsWith(u'#'))
            rows[{cells[0], cells[1]}] << cells.sliced(2);
    }
    return rows;
}

bool isEmpty(LocalDb &db, const QString &table)
{
    db.query(Statement(u"select * from "_s + table));
    return db.atEnd();
}

// `urun` alone has no row number in front.
void insertRow(LocalDb &db, const QString &table, const QStringList &values)
{
    Statement insert(
        u"insert into %1 values (%2"_s.arg(table, table == u"urun" ? QString() : u"Null ,"_s));
    for (qsizetype i = 0; i < values.size(); ++i)
        insert.text(i == 0 ? u"'" : u",'").value(values[i]).text(u"'");
    db.query(insert.text(u")"));
}

void setFolders(LocalDb &db, const QString &programFolder)
{
    db.query(Statement(u"select * from yol where id='1'"));
    if (!db.field(u"xf").isEmpty() || !db.field(u"xc").isEmpty())
        return;
    const QString target = programFolder + u"/logo xml/"_s;
    db.query(Statement(u"Update yol set ef = '")
                 .value(programFolder + u"/txt"_s)
                 .text(u"', xc = '")
                 .value(target + u"cari.xml"_s)
                 .text(u"', xf = '")
                 .value(target + u"fatura.xml"_s)
                 .text(u"' Where id='1'"));
}

void copyFiles(const QDir &from, const QString &pattern, const QDir &to)
{
    for (const QString &name : from.entryList({pattern}, QDir::Files)) {
        if (to.exists(name))
            continue;
        if (!QFile::copy(from.filePath(name), to.filePath(name)))
            throw Failure(u"%1 kopyalanamadı."_s.arg(name));
        QFile::setPermissions(to.filePath(name), QFile::ReadOwner | QFile::WriteOwner |
                                                     QFile::ReadGroup | QFile::ReadOther);
    }
}

} // namespace

void layOutSamples(LocalDb &db, const QString &samples, const QString &programFolder)
{
    const QDir from(samples);
    const QDir to(programFolder);
    for (const auto &[place, rows] : rowsOf(from.filePath(u"tanimlar.txt"_s))) {
        const auto &[database, table] = place;
        OpenDb open(db, to.filePath(database));
        if (!isEmpty(db, table))
            continue;
        for (const QStringList &row : rows)
            insertRow(db, table, row);
    }
    OpenDb open(db, to.filePath(u"data.dbs"_s));
    setFolders(db, to.absolutePath());
    for (const QString &sources : {u"*.bif"_s, u"cariler.txt"_s, u"stoklar.txt"_s})
        copyFiles(from, sources, QDir(to.filePath(u"txt"_s)));
    copyFiles(from, u"*.kvz"_s, to);
}

} // namespace kervan
