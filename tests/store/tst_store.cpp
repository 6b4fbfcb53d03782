#include "store/installation.h"
#include "store/localdb.h"
#include "store/sidefiles.h"
#include "support/failing.h"
#include "support/fakes.h"

#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

const QStringList perColumns{u"id"_s, u"kod"_s, u"per"_s};

// Another program at the same file.
class Other
{
public:
    explicit Other(const QString &path)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"other"_s);
        db.setDatabaseName(path);
        db.open();
    }
    ~Other()
    {
        QSqlDatabase::database(u"other"_s).close();
        QSqlDatabase::removeDatabase(u"other"_s);
    }
    // The last cell of every row, or "fault".
    QStringList run(const QString &text)
    {
        QSqlQuery query(QSqlDatabase::database(u"other"_s));
        if (!query.exec(text))
            return {u"fault"_s};
        QStringList cells;
        while (query.next())
            cells << query.value(query.record().count() - 1).toString();
        return cells;
    }
};

// The description of the failure of open or query, whichever comes first.
QString faultOf(LocalDb &db, const QString &path, const QString &statement)
{
    return failureOf([&] {
        OpenDb open(db, path);
        db.query(Statement(statement));
    });
}

} // namespace

class TestStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void installationMakesTheFilesWithTheirSeededRows()
    {
        TestProgram made;
        QCOMPARE(contentOf(made.folder.path()),
                 (QStringList{u"data.dbs"_s, u"fatozkod.dbs"_s, u"logo xml"_s, u"mey exel"_s,
                              u"stokozkod.dbs"_s, u"txt"_s}));
        QCOMPARE(made.rows(u"data.dbs"_s, u"yol"_s,
                           {u"id"_s, u"ec"_s, u"es"_s, u"ef"_s, u"xc"_s, u"xs"_s, u"xf"_s}),
                 QStringList{u"1||||||"_s});
        QCOMPARE(made.rows(u"data.dbs"_s, u"kdv"_s, {u"id"_s, u"kdv"_s}), QStringList{u"1|18"_s});
        for (const QString &table :
             {u"firma"_s, u"odm"_s, u"birim"_s, u"muh"_s, u"statu"_s, u"per"_s, u"urun"_s})
            QCOMPARE(made.rows(u"data.dbs"_s, table, {u"id"_s}), QStringList{});
        QCOMPARE(made.rows(u"fatozkod.dbs"_s, u"ozkod"_s, {u"id"_s}), QStringList{});
        QCOMPARE(made.rows(u"stokozkod.dbs"_s, u"ozkod"_s, {u"id"_s}), QStringList{});
    }

    void installationLeavesWhatIsThere()
    {
        TestProgram made;
        made.fill(u"data.dbs"_s, {u"Update kdv set kdv = '20' Where id ='1'"_s});
        writeBytes(made.path(u"stokozkod.dbs"_s), "kendi dosyam");
        QVERIFY(QFile::remove(made.path(u"fatozkod.dbs"_s)));
        writeBytes(made.path(u"fatozkod.dbs.yeni"_s), "yarım kalmış");
        install(made.folder.path());
        QCOMPARE(made.rows(u"data.dbs"_s, u"kdv"_s, {u"kdv"_s}), QStringList{u"20"_s});
        QCOMPARE(readBytes(made.path(u"stokozkod.dbs"_s)), QByteArray("kendi dosyam"));
        QCOMPARE(made.rows(u"fatozkod.dbs"_s, u"ozkod"_s, {u"id"_s}), QStringList{});
        QVERIFY_THROWS_EXCEPTION(Failure, install(made.path(u"stokozkod.dbs"_s)));
    }

    void lookUpColumnsAreIndexed()
    {
        TestProgram made;
        Other other(made.path(u"data.dbs"_s));
        for (const QString &lookUp :
             {u"firma where firma"_s, u"birim where kaskod"_s, u"birim where frkod"_s,
              u"muh where kdv"_s, u"urun where kod"_s}) {
            const auto plan = other.run(u"explain query plan select * from %1='x'"_s.arg(lookUp));
            QVERIFY2(plan.value(0).contains(u"USING INDEX"_s), qPrintable(lookUp));
        }
    }

    void everyStatementOfTheProgramIsCarriedOut_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("before"); // run first, if there is one
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QString>("columns"); // the table and its columns in their order
        QTest::addColumn<QString>("rows");
        QString file = u"data.dbs"_s;
        QString columns = u"yol id ec es ef xc xs xf"_s;
        const auto row = [&](const char *name, const QString &before, const QString &statement,
                             const QString &rows) {
            QTest::newRow(name) << file << before << statement << columns << rows;
        };
        row("folders", {},
            u"Update yol set ec = 'C:\\txt\\a.txt', es='b' ,ef= 'c',xc ='d',"
            "xs = '',xf = 'Ş & ;--' Where id='1'"_s,
            u"1|C:\\txt\\a.txt|b|c|d||Ş & ;--"_s);
        columns = u"kdv id kdv"_s;
        row("general rate", {}, u"Update kdv set kdv = '20' Where id ='1'"_s, u"1|20"_s);
        for (const char *table : {"firma", "odm", "birim"}) {
            const QString name = QString::fromLatin1(table);
            const QString insert =
                u"insert into %1 values (Null ,'1','2','3','4','5','6','7','8')"_s.arg(name);
            columns = name + u" id frno frkod firma kaskod dkod crkod alkod satkod"_s;
            QTest::addRow("insert into %s", table)
                << file << insert << insert << columns << u"1|1|2|3|4|5|6|7|8/2|1|2|3|4|5|6|7|8"_s;
            QTest::addRow("update of %s", table)
                << file << insert
                << u"Update %1 set frno = 'a',frkod='b' , firma= '',kaskod ='d' Where id= '1'"_s
                       .arg(name)
                << columns << u"1|a|b||d|5|6|7|8"_s;
            QTest::addRow("delete from %s", table)
                << file << insert << u"Delete from %1 where id= '1'"_s.arg(name) << columns
                << u""_s;
        }
        columns = u"muh id ind kdv al sat ali sati alkdv satkdv alikdv satikdv"_s;
        const QString rate =
            u"insert into muh values (Null ,'a','18','b','c','d','e','f','g','h','i')"_s;
        row("insert into muh", {}, rate, u"1|a|18|b|c|d|e|f|g|h|i"_s);
        row("update of muh", rate, u"Update muh set ind = '612', satikdv='x' where id = '1'"_s,
            u"1|612|18|b|c|d|e|f|g|h|x"_s);
        row("delete from muh", rate, u"Delete from muh where id= '1'"_s, {});
        columns = u"statu id statu var"_s;
        const QString statu = u"insert into statu values (Null ,'Aktif','1')"_s;
        row("insert into statu", {}, statu, u"1|Aktif|1"_s);
        row("update of statu", statu, u"Update statu set statu = 'Pasif',var='0' Where id='1'"_s,
            u"1|Pasif|0"_s);
        columns = u"per id kod per"_s;
        const QString per = u"insert into per values (Null ,'01','007')"_s;
        row("insert into per", {}, per, u"1|01|007"_s);
        row("update of per", per, u"Update per set kod = '1',per='7' Where id='1'"_s, u"1|1|7"_s);
        row("delete from per", per, u"Delete from per where id= '1'"_s, {});
        columns = u"urun kod ack fiyat bfiyat"_s;
        const QString price = u"insert into urun values ('K1','Çay','1,5','2,5')"_s;
        row("insert into urun", price, price, u"K1|Çay|1,5|2,5/K1|Çay|1,5|2,5"_s);
        row("all of urun", price, u"Delete from urun"_s, {});
        file = u"fatozkod.dbs"_s;
        columns = u"ozkod id ozkod"_s;
        row("invoice code", u"insert into ozkod values (Null ,'A')"_s,
            u"Update ozkod SET ozkod = 'B' where id='1'"_s, u"1|B"_s);
        file = u"stokozkod.dbs"_s;
        columns = u"ozkod id ack ozkod"_s;
        row("stock code", u"insert into ozkod values (Null ,'Açıklama','A')"_s,
            u"Update ozkod SET ozkod = 'B' where id='1'"_s, u"1|Açıklama|B"_s);
    }
    void everyStatementOfTheProgramIsCarriedOut()
    {
        QFETCH(QString, file);
        QFETCH(QString, before);
        QFETCH(QString, statement);
        QFETCH(QString, columns);
        QStringList names = columns.split(u' ');
        const QString table = names.takeFirst();
        TestProgram made;
        if (!before.isEmpty())
            made.fill(file, {before});
        made.fill(file, {statement});
        QTEST(made.rows(file, table, names).join(u'/'), "rows");
    }

    void rowsComeInTheOrderOfIdAndTheFirstOfTwoIsTaken()
    {
        TestProgram made;
        QStringList inserts;
        for (const QString &per : {u"z"_s, u"a"_s, u"m"_s, u"a"_s, u"Z"_s})
            inserts << u"insert into firma values (Null ,'"_s + QString::number(inserts.size()) +
                           u"','','"_s + per + u"','','','','','')"_s;
        made.fill(u"data.dbs"_s, inserts);
        QCOMPARE(made.rows(u"data.dbs"_s, u"firma"_s, {u"id"_s, u"firma"_s}),
                 (QStringList{u"1|z"_s, u"2|a"_s, u"3|m"_s, u"4|a"_s, u"5|Z"_s}));
        const QStringList same{u"1"_s, u"3"_s};
        for (const QString &select :
             {u"select * from firma where firma='a'"_s, u"SELECT * FROM firma Where firma = 'a'"_s,
              u" select  *  from firma where firma= 'a' "_s}) {
            QStringList found;
            OpenDb open(made.program.db, made.path(u"data.dbs"_s));
            made.program.db.forEach(Statement(select),
                                    [&] { found << made.program.db.field(u"frno"); });
            QCOMPARE(found, same);
        }
    }

    void idIsComparedWithAQuotedNumber()
    {
        TestProgram made;
        QStringList inserts;
        for (int i = 1; i <= 12; ++i)
            inserts << u"insert into per values (Null ,'k%1','')"_s.arg(i);
        made.fill(u"data.dbs"_s, inserts);
        made.fill(u"data.dbs"_s,
                  {u"Delete from per where id= '2'"_s, u"Update per set kod = 'x' Where id='1'"_s,
                   u"Delete from per where id= '99'"_s, u"Delete from per where id= ''"_s,
                   u"Update per set kod = 'y' Where id='k3'"_s});
        QCOMPARE(made.rows(u"data.dbs"_s, u"per"_s, {u"id"_s, u"kod"_s}).join(u' '),
                 u"1|x 3|k3 4|k4 5|k5 6|k6 7|k7 8|k8 9|k9 10|k10 11|k11 12|k12"_s);
        OpenDb open(made.program.db, made.path(u"data.dbs"_s));
        made.program.db.query(Statement(u"select * from per where id='10'"));
        QCOMPARE(made.program.db.field(u"kod"), u"k10"_s);
        made.program.db.next();
        QVERIFY(made.program.db.atEnd());
    }

    void aRowOrColumnThatIsNotThereIsAFailure()
    {
        TestProgram made;
        LocalDb &db = made.program.db;
        OpenDb open(db, made.path(u"data.dbs"_s));
        db.query(Statement(u"select * from muh where kdv='18'"));
        QVERIFY(db.atEnd());
        QVERIFY_THROWS_EXCEPTION(Failure, db.field(u"sat"));
        db.query(Statement(u"select * from kdv"));
        QCOMPARE(db.field(u"kdv"), u"18"_s);
        QVERIFY_THROWS_EXCEPTION(Failure, db.field(u"sat"));
        db.close();
        QVERIFY_THROWS_EXCEPTION(Failure, db.field(u"kdv"));
        QVERIFY_THROWS_EXCEPTION(Failure, db.query(Statement(u"select * from kdv")));
    }

    void anApostropheBreaksTheStatementAndNothingElseHappens_data()
    {
        QTest::addColumn<QString>("value");
        QTest::newRow("name") << u"O'Neil"_s;
        QTest::newRow("apostrophe alone") << u"'"_s;
        QTest::newRow("doubled apostrophe") << u"a''b"_s;
        QTest::newRow("a second column") << u"x', kod='y"_s;
        QTest::newRow("a second value") << u"x','y"_s;
        QTest::newRow("always true") << u"1' or '1'='1"_s;
        QTest::newRow("a second statement") << u"x'); delete from per; --"_s;
        QTest::newRow("end of value") << u"1' --"_s;
    }
    void anApostropheBreaksTheStatementAndNothingElseHappens()
    {
        QFETCH(QString, value);
        const auto around = [&](QStringView front, QStringView behind) {
            return Statement(front).value(value).text(behind);
        };
        TestProgram made;
        made.fill(u"data.dbs"_s, {u"insert into per values (Null ,'1','a')"_s,
                                  u"insert into per values (Null ,'2','b')"_s});
        {
            LocalDb &db = made.program.db;
            OpenDb open(db, made.path(u"data.dbs"_s));
            for (const Statement &statement :
                 {around(u"insert into per values (Null ,'", u"')"),
                  around(u"insert into per values (Null ,'", u"','c')"),
                  around(u"Update per set kod = '", u"' Where id='1'"),
                  around(u"Update per set kod = 'c' Where id='", u"'"),
                  around(u"Delete from per where id= '", u"'"),
                  around(u"select * from per where kod='", u"'")}) {
                QVERIFY2(!failureOf([&] { db.query(statement); }).isEmpty(),
                         qPrintable(statement.text()));
                QVERIFY(db.atEnd());
            }
            db.query(Statement(u"insert into per values (Null ,'").value(u"3").text(u"','c')"));
        }
        QCOMPARE(made.rows(u"data.dbs"_s, u"per"_s, perColumns),
                 (QStringList{u"1|1|a"_s, u"2|2|b"_s, u"3|3|c"_s}));
    }

    void aTextOutsideTheLanguageIsRefused()
    {
        QStringList texts =
            u";|select kod from per|select * from per order by kod|"
            "select * from per where kod='1' and per='a'|select * from per where kod=1|"
            "select * from per where kod='1' or '1'='1'|select * from per where kod='a''b'|"
            "select * from per where kod like '1'|select * from per, kdv|select * from per;|"
            "select * from per; delete from per|"
            "delete from per where id='1';delete from per|delete from per where kod='1'|"
            "delete from per where id=1|delete from per where id='1' or id='2'|"
            "insert into per (kod) values ('x')|"
            "insert into per values (Null ,'x','y'),(Null,'z','')|"
            "insert into per values (Null ,x,'y')|insert into per values (Null ,'x')|"
            "insert into per values (Null ,'x','y','z')|insert into per select * from per|"
            "replace into per values (Null ,'x','y')|update per set kod='x'|"
            "update per set kod='x' where kod='1'|update per set kod=per where id='1'|"
            "update per set yok='x' where id='1'|update per set kod='x' where id='1|"
            "drop table per|create table x (id text)|attach 'x.dbs' as x|begin|rollback|"
            "pragma user_version=5|select * from per -- where kod='1'|select/**/* from per"_s.split(
                u'|');
        texts << u""_s << u"delete from per where id='1'\0"_s;
        TestProgram made;
        made.fill(u"data.dbs"_s, {u"insert into per values (Null ,'1','a')"_s});
        for (const QString &text : texts) {
            QVERIFY2(!faultOf(made.program.db, made.path(u"data.dbs"_s), text).isEmpty(),
                     qPrintable(text));
            QCOMPARE(made.rows(u"data.dbs"_s, u"per"_s, perColumns), QStringList{u"1|1|a"_s});
        }
    }

    void aMissingFileIsAFailureAndIsNotMade()
    {
        TestProgram made;
        const QString path = made.path(u"yok.dbs"_s);
        QVERIFY(failsNaming(path, [&] { made.program.db.open(path); }));
        const auto all = contentOf(made.folder.path());
        QVERIFY(
            !faultOf(made.program.db, path, u"insert into per values (Null ,'1','a')"_s).isEmpty());
        QVERIFY(!faultOf(made.program.db, made.folder.path(), u"select * from per"_s).isEmpty());
        QCOMPARE(contentOf(made.folder.path()), all);
    }

    void aFolderOfAnyNameHoldsADatabase()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"Kervan 100% #1?mode=ro&x;Ş%3F"_s);
        QVERIFY(QDir().mkdir(path));
        install(path);
        LocalDb db;
        QCOMPARE(faultOf(db, path + u"/data.dbs"_s, u"insert into per values (Null ,'1','a')"_s),
                 QString());
        OpenDb open(db, path + u"/data.dbs"_s);
        db.query(Statement(u"select * from per"));
        QCOMPARE(db.field(u"per"), u"a"_s);
    }

    void aFileThatIsNoDatabaseStaysAsItIs_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("text") << QByteArray("bu bir veritabanı değil\r\n").repeated(100);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut off") << QByteArray("SQLite format 3\0\x10\0\1\1", 20);
        QTest::newRow("other tables") << QByteArray("ozkod");
    }
    void aFileThatIsNoDatabaseStaysAsItIs()
    {
        QFETCH(QByteArray, bytes);
        TestProgram made;
        const QString path = made.path(u"data.dbs"_s);
        if (bytes == "ozkod")
            bytes = readBytes(made.path(u"fatozkod.dbs"_s));
        writeBytes(path, bytes);
        LocalDb &db = made.program.db;
        for (const QString &statement :
             {u"select * from per"_s, u"insert into per values (Null ,'1','a')"_s,
              u"Update per set kod = 'x' Where id='1'"_s, u"Delete from per where id= '1'"_s})
            QVERIFY2(!faultOf(db, path, statement).isEmpty(), qPrintable(statement));
        QCOMPARE(readBytes(path), bytes);
        QCOMPARE(faultOf(db, made.path(u"stokozkod.dbs"_s), u"select * from ozkod"_s), QString());
    }

    void aLockedFileIsAFailureThatEndsSoonAndLeavesItsRows()
    {
        TestProgram made;
        const QString path = made.path(u"data.dbs"_s);
        const QString insert = u"insert into per values (Null ,'1','a')"_s;
        LocalDb &db = made.program.db;
        Other other(path);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(other.run(u"begin exclusive"_s), QStringList{});
        QVERIFY(!faultOf(db, path, u"select * from kdv"_s).isEmpty());
        QVERIFY(!faultOf(db, path, insert).isEmpty());
        other.run(u"rollback"_s);
        other.run(u"begin"_s);
        QCOMPARE(other.run(u"select * from kdv"_s), QStringList{u"18"_s});
        QVERIFY(!faultOf(db, path, insert).isEmpty()); // being read, it can't be written
        other.run(u"rollback"_s);
        QVERIFY(timer.elapsed() < 10000);
        QCOMPARE(faultOf(db, path, insert), QString());
        QCOMPARE(made.rows(u"data.dbs"_s, u"per"_s, perColumns), QStringList{u"1|1|a"_s});
    }

    void rowsBeforeAFailingStatementAreKept()
    {
        TestProgram made;
        QVERIFY(!failureOf([&] {
                     LocalDb &db = made.program.db;
                     OpenDb open(db, made.path(u"data.dbs"_s));
                     db.query(Statement(u"Delete from urun"));
                     db.query(Statement(u"insert into urun values ('1','a','','')"));
                     db.query(
                         Statement(u"insert into urun values ('2','").value(u"b'").text(u"')"));
                     db.query(Statement(u"insert into urun values ('3','c','','')"));
                 }).isEmpty());
        QCOMPARE(made.rows(u"data.dbs"_s, u"urun"_s, {u"kod"_s, u"ack"_s}), QStringList{u"1|a"_s});
    }

    void aWrittenRowIsThereAtOnce()
    {
        TestProgram made;
        OpenDb open(made.program.db, made.path(u"data.dbs"_s));
        made.program.db.query(Statement(u"insert into per values (Null ,'1','a')"));
        QCOMPARE(Other(made.path(u"data.dbs"_s)).run(u"select * from per"_s), QStringList{u"a"_s});
    }

    void openingTheNextFileKeepsWhatWasWrittenToTheLast()
    {
        TestProgram made;
        LocalDb &db = made.program.db;
        db.open(made.path(u"fatozkod.dbs"_s));
        db.query(Statement(u"insert into ozkod values (Null ,'A')"));
        db.open(made.path(u"stokozkod.dbs"_s));
        db.query(Statement(u"select * from ozkod"));
        QVERIFY(db.atEnd());
        db.close();
        QCOMPARE(made.rows(u"fatozkod.dbs"_s, u"ozkod"_s, {u"ozkod"_s}), QStringList{u"A"_s});
    }

    void aFullDiskIsAFailureAndLeavesTheOldRows()
    {
        TestProgram made;
        made.fill(u"data.dbs"_s, {u"insert into per values (Null ,'1','a')"_s});
        const QString large =
            u"insert into per values (Null ,'2','"_s + QString(500000, u'x') + u"')"_s;
        {
            const FullDisk disk(200000);
            if (!disk.works())
                QSKIP("no way to fill a disk here");
            QVERIFY(!faultOf(made.program.db, made.path(u"data.dbs"_s), large).isEmpty());
        }
        QCOMPARE(made.rows(u"data.dbs"_s, u"per"_s, perColumns), QStringList{u"1|1|a"_s});
        made.fill(u"data.dbs"_s, {u"insert into per values (Null ,'3','c')"_s});
        QCOMPARE(made.rows(u"data.dbs"_s, u"per"_s, perColumns).size(), 2);
    }

    void aSingleValueEndsAtTheFirstCommaOrLineEnd_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("value");
        QTest::newRow("as written") << QByteArray("100.01\r\n") << u"100.01"_s;
        QTest::newRow("without line end") << QByteArray("100") << u"100"_s;
        QTest::newRow("LF alone") << QByteArray("100\n200") << u"100"_s;
        QTest::newRow("CR alone") << QByteArray("100\r200") << u"100"_s;
        QTest::newRow("comma") << QByteArray("100,01,02\r\n") << u"100"_s;
        QTest::newRow("comma first") << QByteArray(",100\r\n") << QString();
        QTest::newRow("quotes") << QByteArray("\"KASA 1\"\r\n") << u"KASA 1"_s;
        QTest::newRow("quotes and comma") << QByteArray("\"100\",5\r\n") << u"100"_s;
        QTest::newRow("empty quotes") << QByteArray("\"\"\r\n") << QString();
        QTest::newRow("one quote") << QByteArray("\"\r\n") << u"\""_s;
        QTest::newRow("quotes inside") << QByteArray("a\"b\"\r\n") << u"a\"b\""_s;
        QTest::newRow("empty file") << QByteArray() << QString();
        QTest::newRow("empty line") << QByteArray("\r\n100\r\n") << QString();
        QTest::newRow("code page") << QByteArray("\xDEube\r\n") << u"Şube"_s;
        QTest::newRow("UTF-8 mark") << QByteArray("\xEF\xBB\xBF\xC5\x9Eube\n") << u"Şube"_s;
    }
    void aSingleValueEndsAtTheFirstCommaOrLineEnd()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"kasa.kvz"_s);
        writeBytes(path, bytes);
        QTEST(readSingleValue(path), "value");
    }

    void aSingleValueIsSavedWholeAndReplacesTheOldOne()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"kasa.kvz"_s);
        writeBytes(path, "eski ve uzun\r\nikinci\r\n");
        writeSingleValue(path, u"Şube, 1"_s);
        QCOMPARE(readBytes(path), QByteArray("\xDEube, 1\r\n"));
        QCOMPARE(readSingleValue(path), u"Şube"_s);
        writeSingleValue(path, {});
        QCOMPARE(readBytes(path), QByteArray("\r\n"));
        QCOMPARE(readSingleValue(path), QString());
    }

    void wholeLinesAreReadAndOneTooFewIsAFailure_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines"); // none: a failure
        QTest::newRow("as written")
            << QByteArray("a, b\r\n\"c\"\r\n") << QStringList{u"a, b"_s, u"\"c\""_s};
        QTest::newRow("no last line end") << QByteArray("a\r\nb") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("CR alone") << QByteArray("a\rb\r") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("LF alone") << QByteArray("a\nb\n") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("UTF-8 mark")
            << QByteArray("\xEF\xBB\xBF\xC4\xB1\r\nb\r\n") << QStringList{u"ı"_s, u"b"_s};
        QTest::newRow("empty lines count") << QByteArray("\r\n\r\n") << QStringList{{}, {}};
        QTest::newRow("more lines") << QByteArray("a\r\nb\r\nc\r\n") << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("one line too few") << QByteArray("a\r\n") << QStringList{};
        QTest::newRow("empty file") << QByteArray() << QStringList{};
    }
    void wholeLinesAreReadAndOneTooFewIsAFailure()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"kdvmu.kvz"_s);
        writeBytes(path, bytes);
        QStringList lines;
        const QString why = failureOf([&] { lines = readLines(path, 2); });
        QTEST(lines, "lines");
        QCOMPARE(why.contains(QDir::toNativeSeparators(path)), lines.isEmpty());
    }

    void aSecondSaveOfAListDoesNotDoubleIt()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"stokkontrol.kvz"_s);
        const QStringList codes{u"120.01      "_s, u"ŞĞİ,1"_s, u""_s, u"son"_s};
        writeLines(path, codes);
        writeLines(path, codes);
        QCOMPARE(readBytes(path), QByteArray("120.01      \r\n\xDE\xD0\xDD,1\r\n\r\nson\r\n"));
        QCOMPARE(readAllLines(path), codes);
        writeLines(path, {});
        QCOMPARE(readBytes(path), QByteArray());
        QCOMPARE(readAllLines(path), QStringList{});
    }

    void aMissingSideFileIsAFailureAndIsNotMade()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"bank.kvz"_s);
        QVERIFY_THROWS_EXCEPTION(Failure, readSingleValue(path));
        QVERIFY_THROWS_EXCEPTION(Failure, readLines(path, 2));
        QVERIFY_THROWS_EXCEPTION(Failure, readAllLines(path));
        QCOMPARE(contentOf(folder.path()), QStringList{});
    }

    void aSaveThatFailsLeavesTheOldSideFile()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"kasa.kvz"_s);
        QVERIFY(failsNaming(folder.path(), [&] { writeSingleValue(folder.path(), u"1"_s); }));
        QVERIFY_THROWS_EXCEPTION(Failure, writeLines(folder.filePath(u"yok/kasa.kvz"_s), {u"1"_s}));
        writeBytes(path, "eski\r\n");
        {
            const FullDisk disk(3);
            if (!disk.works())
                QSKIP("no way to fill a disk here");
            QVERIFY(failsNaming(path, [&] { writeSingleValue(path, u"yeni"_s); }));
        }
        QCOMPARE(readBytes(path), QByteArray("eski\r\n"));
        QCOMPARE(contentOf(folder.path()), QStringList{u"kasa.kvz"_s});
    }
};

QTEST_GUILESS_MAIN(TestStore)
#include "tst_store.moc"
