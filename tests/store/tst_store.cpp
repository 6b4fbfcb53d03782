#include "store/definition.h"
#include "store/installation.h"
#include "store/localdb.h"
#include "store/settling.h"
#include "store/sidefiles.h"
#include "store/staff.h"
#include "support/fakes.h"
#include "support/table.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

using namespace kervan;

namespace {

const QString staff = u"per id kod per"_s;
const QString insertOne = u"insert into per values (Null ,'1','a')"_s;

// A program with its data file, and the failures of statements to it.
class Store : public TestProgram
{
public:
    LocalDb &db = program.db;
    QString file = path(u"data.dbs"_s);

    bool fails(const Statement &statement)
    {
        const QString failure = failureOf([&] {
            OpenDb open(db, file);
            db.query(statement);
        });
        return !failure.isEmpty();
    }
    bool fails(const QString &statement) { return fails(Statement(statement)); }
};

} // namespace

class TestStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The columns stand for their values.
    void theStatementsOfTheDefinitionsStandWordForWord_data()
    {
        addTable(uR"(
case      ; insert ; update ; remove
fir       ; insert into firma values (Null ,'frno','frkod','firma','kaskod','dkod','crkod','alkod','satkod') ; Update firma set frno = 'frno', frkod = 'frkod', firma = 'firma', kaskod = 'kaskod', dkod = 'dkod', crkod = 'crkod', alkod = 'alkod', satkod = 'satkod' Where id ='7' ; Delete from firma where id= '7'
birimseti ; insert into birim values (Null ,'frno','frkod','firma','kaskod','dkod','crkod','alkod','satkod') ; Update birim set frno = 'frno', frkod = 'frkod', firma = 'firma', kaskod = 'kaskod' Where id ='7' ; Delete from birim where id= '7'
ststatu   ; insert into statu values (Null ,'statu','var') ; Update statu set statu = 'statu', var = 'var' where id ='7' ; Delete from statu where id= '7'
ozkod     ; insert into ozkod values (Null ,'ozkod')       ; Update ozkod SET ozkod = 'ozkod' Where id ='7'              ; Delete from ozkod where id= '7'
stokozkod ; insert into ozkod values (Null ,'ack','ozkod') ; Update ozkod SET ozkod = 'ozkod', ack = 'ack' Where id ='7' ; Delete from ozkod where id= '7')"_s);
    }
    void theStatementsOfTheDefinitionsStandWordForWord()
    {
        const Definition &definition = *definitionOf(caseName());
        const auto itself = [](const QString &column) {
            return column;
        };
        QCOMPARE(definition.insert(itself).text(), fetch("insert"));
        QCOMPARE(definition.update(itself, u"7"_s).text(), fetch("update"));
        QCOMPARE(definition.remove(u"7"_s).text(), fetch("remove"));
        QCOMPARE(definition.select().text(), u"select * from "_s + definition.table);
    }

    void theGeneralVatRateIsWrittenWordForWord()
    {
        const SideValue &rate = *definitionOf(u"muhkod"_s)->sideValue;
        QCOMPARE(rate.select().text(), u"select * from kdv"_s);
        QCOMPARE(rate.update(u"20"_s).text(), u"Update kdv set kdv = '20' Where id ='1'"_s);
    }

    void installationMakesWhatIsMissingAndLeavesWhatIsThere()
    {
        Store s;
        const QString all = u"data.dbs|fatozkod.dbs|logo xml|mey exel|stokozkod.dbs|txt"_s;
        QCOMPARE(contentOf(s.folder.path()), all);
        QCOMPARE(s.rows(u"yol id ec es ef xc xs xf"_s), u"1||||||"_s);
        QCOMPARE(s.rows(u"kdv id kdv"_s), u"1|18"_s);
        s.fill({u"Update kdv set kdv = '20' Where id ='1'"_s});
        QVERIFY(QFile::remove(s.path(u"fatozkod.dbs"_s)));
        writeBytes(s.path(u".kervan-kurulum-fatozkod.dbs"_s), "yarım kalmış");
        install(s.folder.path());
        QCOMPARE(contentOf(s.folder.path()), all);
        QCOMPARE(s.rows(u"kdv kdv"_s), u"20"_s);
        QCOMPARE(s.rows(u"ozkod id"_s, u"fatozkod.dbs"_s), QString());
    }

    void theFoldersComeFromTheirColumns()
    {
        Store s;
        s.fill({u"Update yol set ec = 'a', es = 'b', ef = 'c', xc = 'd', xs = 'e', xf = 'f' "
                "Where id='1'"_s});
        OpenDb open(s.db, s.file);
        Folders f;
        loadFolders(s.db, f);
        QCOMPARE((QStringList{f.ec, f.es, f.ef, f.xc, f.xs, f.xf}.join(u' ')), u"a b c d e f"_s);
    }

    void aFaultIsToldByFileAndReasonAndTheStatementOnlyInFull()
    {
        Store s;
        OpenDb open(s.db, s.file);
        const auto failed = passOver([&] { s.db.query(Statement(u"select * from yok")); });
        QVERIFY(failed);
        QCOMPARE(failed->headline(),
                 u"data.dbs: veritabanında bu tablo yok (no such table: yok)"_s);
        QCOMPARE(failed->description(),
                 u"veritabanında bu tablo yok (no such table: yok) (select * from yok)"_s);
    }

    void rowsComeInTheOrderOfIdWhichIsComparedWithAQuotedNumber()
    {
        Store s;
        for (const QChar kod : u"zamaZfghij"_s)
            s.fill({u"insert into per values (Null ,'%1','')"_s.arg(kod)});
        s.fill(rowsOf(uR"(
Delete from per where id= '3'
Update per set per = 'x' Where id='1'
Delete from per where id= '99'
Delete from per where id= ''
Update per set kod = 'y' Where id='z')"_s));
        QCOMPARE(s.rows(staff), u"1|z|x/2|a|/4|a|/5|Z|/6|f|/7|g|/8|h|/9|i|/10|j|"_s);
        OpenDb open(s.db, s.file);
        s.db.query(Statement(u"select * from per where kod='a'"));
        QCOMPARE(s.db.field(u"id"), u"2"_s);
        s.db.query(Statement(u"  SELECT * from per  Where id = '10' "));
        QCOMPARE(s.db.field(u"kod"), u"j"_s);
        QVERIFY_THROWS_EXCEPTION(Failure, s.db.field(u"sat"));
        s.db.next();
        QVERIFY(s.db.atEnd());
        QVERIFY_THROWS_EXCEPTION(Failure, s.db.field(u"kod"));
        s.db.close();
        QVERIFY_THROWS_EXCEPTION(Failure, s.db.query(Statement(u"select * from kdv")));
    }

    void anApostropheBreaksTheStatementAndNothingElseHappens()
    {
        Store s;
        s.fill({insertOne});
        const QStringList values{u"O'Neil"_s, u"'"_s,
                                 u"a''b"_s,   u"x', kod='y"_s,
                                 u"x','y"_s,  u"1' or '1'='1"_s,
                                 u"1' --"_s,  u"x'); delete from per; --"_s};
        const QStringList statements = rowsOf(uR"(insert into per values (Null ,'?')
insert into per values (Null ,'?','c')
Update per set kod = '?' Where id='1'
Update per set kod = 'c' Where id='?'
Delete from per where id= '?'
select * from per where kod='?')"_s);
        for (const QString &with : statements) {
            for (const QString &value : values) {
                const QString before = with.section(u'?', 0, 0);
                const auto statement = Statement(before).value(value).text(with.section(u'?', 1));
                QVERIFY2(s.fails(statement), qPrintable(statement.text()));
            }
        }
        QCOMPARE(s.rows(staff), u"1|1|a"_s);
        QVERIFY(!s.fails(Statement(u"Update per set kod = '").value(u"3").text(u"' Where id='1'")));
        QCOMPARE(s.rows(staff), u"1|3|a"_s);
    }

    void aTextOutsideTheLanguageIsRefused()
    {
        const QStringList texts = rowsOf(uR"(;
select kod from per
select * from per order by kod
select * from per where kod=1
select * from per where kod='1' or '1'='1'
select * from per where kod='a''b'
select * from per, kdv
select * from per; delete from per
select/**/* from per
delete from per where kod='1'
delete from per where id=1
delete from per where id='1' or id='2'
insert into per (kod) values ('x')
insert into per values (Null ,'x','y'),(Null,'z','')
insert into per values (Null ,x,'y')
insert into per values (Null ,'x')
insert into per select * from per
replace into per values (Null ,'x','y')
update per set kod='x'
update per set kod='x' where kod='1'
update per set kod=per where id='1'
update per set kod='x' where id='1
drop table per
attach 'x.dbs' as x
begin
pragma user_version=5)"_s) << QString()
                           << u"delete from per where id='1'\0"_s;
        Store s;
        s.fill({insertOne});
        for (const QString &text : texts)
            QVERIFY2(s.fails(text), qPrintable(text));
        QCOMPARE(s.rows(staff), u"1|1|a"_s);
    }

    void aFileThatIsMissingOrNoDatabaseStaysAsItIs()
    {
        Store s;
        const QString all = contentOf(s.folder.path());
        const QByteArray others = readBytes(s.path(u"fatozkod.dbs"_s));
        for (const QByteArray &bytes :
             {QByteArray(2000, 'x'), QByteArray(), others.first(20), others}) {
            writeBytes(s.file, bytes);
            QVERIFY(s.fails(u"select * from per"_s) && s.fails(insertOne));
            QVERIFY(s.fails(u"Delete from per where id= '1'"_s));
            QCOMPARE(readBytes(s.file), bytes);
        }
        for (const QString &path : {s.path(u"yok.dbs"_s), s.folder.path()})
            QVERIFY(failsNaming(path, [&] { s.db.open(path); }));
        QCOMPARE(contentOf(s.folder.path()), all);
        // A folder of any name holds a database.
        QString odd = s.path(u"Kervan 100% #1?mode=ro&x;Ş%3F O'Neil"_s);
#ifdef Q_OS_WIN
        odd.remove(u'?'); // no name holds it there
        const QString twoSlashes = u"//?/"_s;
#else
        const QString twoSlashes = u"/"_s;
#endif
        QVERIFY(QDir().mkdir(odd));
        install(odd);
        s.file = odd + u"/data.dbs"_s;
        QVERIFY(!s.fails(insertOne) && !QFile::exists(odd + u"/data.dbs-wal"_s));
        s.file = twoSlashes + s.file; // as the folder of a server begins
        QVERIFY(!s.fails(insertOne));
    }

    // A price table that ends in its midst would make the products behind it cost nothing.
    void aTableThatCantBeReadToItsEndIsAFailure()
    {
        Store s;
        s.fill(QStringList(2000, insertOne));
        QByteArray bytes = readBytes(s.file);
        const qsizetype page = 4096;
        QVERIFY(bytes.size() > 8 * page);
        for (qsizetype at = bytes.size() - 4 * page; at < bytes.size(); ++at)
            bytes[at] = '\xff';
        writeBytes(s.file, bytes);
        int read = 0;
        const OpenDb open(s.db, s.file);
        const auto failed =
            passOver([&] { s.db.forEach(Statement(u"select * from per"), [&] { ++read; }); });
        QVERIFY(failed && failed->headline().startsWith(u"data.dbs: "_s));
        QVERIFY2(read > 0 && read < 2000, qPrintable(QString::number(read)));
        QCOMPARE(s.db.failedFiles(), QStringList(u"data.dbs"_s));
    }

    void aLockedFileIsAFailureThatEndsSoonAndLeavesItsRows()
    {
        Store s;
        OtherProgram other(s.file);
        QElapsedTimer timer;
        timer.start();
        other.run(u"begin exclusive"_s);
        QVERIFY(s.fails(u"select * from kdv"_s) && s.fails(insertOne));
        other.run(u"rollback"_s);
        other.run(u"begin"_s);
        QCOMPARE(other.run(u"select * from kdv"_s), u"18"_s);
        QVERIFY(s.fails(insertOne)); // being read, it can't be written
        other.run(u"rollback"_s);
        QVERIFY(timer.elapsed() < 10000);
        QVERIFY(!s.fails(insertOne));
        QCOMPARE(s.rows(staff), u"1|1|a"_s);
    }

    void aWrittenRowIsThereAtOnceAndStaysWhateverComesBehindIt()
    {
        Store s;
        s.db.open(s.file);
        for (const QChar count : u"123"_s) { // the second is written in another way
            s.db.query(Statement(insertOne));
            QCOMPARE(OtherProgram(s.file).run(u"select count(*) from per"_s), QString(count));
        }
        s.db.open(s.path(u"stokozkod.dbs"_s)); // closes the other one
        s.db.close();
        QCOMPARE(OtherProgram(s.file).run(u"pragma journal_mode"_s), u"delete"_s);
        const QString large =
            u"insert into per values (Null ,'%1','')"_s.arg(QString(500000, u'x'));
        if (!onAFullDisk(200000, [&] { QVERIFY(s.fails(large)); }))
            QSKIP("no way to fill a disk here");
        QCOMPARE(s.rows(staff), u"1|1|a/2|1|a/3|1|a"_s);
    }

    void whatAKillLeavesBesideADatabaseGoesIntoItAtTheNextStart()
    {
        Store s;
        const QStringList logs{u"data.dbs"_s, u"data.dbs-wal"_s, u"data.dbs-journal"_s};
        // The files as they lie at this moment, as in a program that is killed at it.
        const auto killed = [&](const QString &to) {
            QVERIFY(QDir().mkdir(to));
            for (const QString &name : logs)
                QFile::copy(s.path(name), to + u'/' + name);
            writeBytes(to + u"/kasa.kvz.aBCdeF"_s, "10");
            writeBytes(to + u"/kervan-aBcdeF.tmp"_s, {});
        };
        {
            OtherProgram other(s.file);
            other.run(u"pragma journal_mode=wal"_s);
            other.run(insertOne);
            killed(s.path(u"log"_s));
            other.run(u"pragma journal_mode=delete"_s);
            other.run(u"pragma cache_size=1"_s); // half a change goes to the disk
            other.run(u"begin"_s);
            other.run(u"delete from per"_s);
            other.run(u"insert into per values (Null ,'%1','')"_s.arg(QString(500000, u'x')));
            killed(s.path(u"half"_s));
            other.run(u"rollback"_s);
        }
        for (const QString &name : {u"log"_s, u"half"_s}) {
            const QString folder = s.path(name);
            QVERIFY(QDir(folder).entryList(QDir::Files).size() == 4);
            settle(folder);
            QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{u"data.dbs"_s});
            OtherProgram alone(folder + u"/data.dbs"_s);
            QCOMPARE(alone.run(u"select count(*) from per where kod = '1'"_s), u"1"_s);
            QCOMPARE(alone.run(u"pragma journal_mode"_s), u"delete"_s);
            QCOMPARE(alone.run(u"pragma integrity_check"_s), u"ok"_s);
        }
        writeBytes(s.file + u"-journal"_s, QByteArray(5000, '\0')); // nothing was changed yet
        settle(s.folder.path());
        QVERIFY(!QFile::exists(s.file + u"-journal"_s));
        QCOMPARE(s.rows(staff), u"1|1|a"_s);
    }

    // Few codes, so that most are doubled: with and without blanks, letters that only a case or a
    // dot tells apart, and one letter spelled in two ways.
    void aStaffCodeIsFoundAsAWalkFromTheTopFindsIt()
    {
        const QStringList codes{u""_s,  u" "_s, u"1"_s, u"01"_s, u"1 "_s, u"I"_s, u"ı"_s,
                                u"İ"_s, u"i"_s, u"Ş"_s, u"ş"_s,  u"S"_s,  u"Ç"_s, u"C\u0327"_s};
        QRandomGenerator random(7);
        const auto drawn = [&] {
            return codes[random.bounded(codes.size())];
        };
        Grid persl(perslColumns());
        for (int list = 0; list < 200; ++list) {
            persl.clear();
            for (int row = random.bounded(20); row > 0; --row)
                persl.setCell(persl.addRow(drawn() + u'k'), Persl::Per, drawn());
            QStringList walked;
            for (const QString &code : codes) {
                int row = 0;
                while (row < persl.rows() && persl.cell(row, Persl::Per) != code)
                    ++row;
                walked << (row < persl.rows() ? persl.cell(row, Persl::Kod) : QString());
            }
            const StaffCodes found(persl);
            persl.clear(); // no question costs a look at the list
            for (qsizetype i = 0; i < codes.size(); ++i)
                QCOMPARE(found.perseslestir(codes[i]), walked[i]);
        }
    }

    void aSingleValueEndsAtTheFirstCommaOrLineEnd()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"kasa.kvz"_s);
        const auto valueOf = [&](const QByteArray &bytes) {
            writeBytes(path, bytes);
            return readSingleValue(path);
        };
        QCOMPARE(valueOf("100.01\r\n200"), u"100.01"_s);
        QCOMPARE(valueOf("100"), u"100"_s);
        QCOMPARE(valueOf("100,01,02\r\n"), u"100"_s);
        QCOMPARE(valueOf(",100\r\n"), QString());
        QCOMPARE(valueOf("\"KASA 1\"\r\n"), u"KASA 1"_s);
        QCOMPARE(valueOf("\"100\",5\r\n"), u"100"_s);
        QCOMPARE(valueOf("\"\"\r\n"), QString());
        QCOMPARE(valueOf("\"\r\n"), u"\""_s);
        QCOMPARE(valueOf("a\"b\"\r\n"), u"a\"b\""_s);
        QCOMPARE(valueOf(""), QString());
        QCOMPARE(valueOf("\r\n100\r\n"), QString()); // an empty line first
        QCOMPARE(valueOf("\xDEube\r\n"), u"Şube"_s);
        writeSingleValue(path, u"Şube, 1"_s); // whole, in the old one's place
        QCOMPARE(readBytes(path), "\xDEube, 1\r\n"_ba);
    }

    void wholeLinesAreReadAndOneTooFewIsAFailure()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"kdvmu.kvz"_s);
        QVERIFY(failsNaming(path, [&] { readSingleValue(path); }));
        QVERIFY(failsNaming(path, [&] { readAllLines(path); }));
        QCOMPARE(contentOf(folder.path()), QString());
        const QStringList lines{u"a, b "_s, u"\"Ş\""_s, u""_s, u"son"_s};
        writeLines(path, lines);
        writeLines(path, lines); // a second save of a list doesn't double it
        QCOMPARE(readBytes(path), QByteArray("a, b \r\n\"\xDE\"\r\n\r\nson\r\n"));
        QCOMPARE(readAllLines(path), lines);
        QCOMPARE(readFirstLines(path, 2), lines.first(2));
        QCOMPARE(readFirstLines(path, 9), lines);
        QCOMPARE(readLines(path, 2), lines.first(2));
        QCOMPARE(readLines(path, 4), lines);
        QVERIFY(failsNaming(path, [&] { readLines(path, 5); }));
        bool fails = false;
        if (!onAFullDisk(3, [&] {
                fails = failsNaming(path, [&] {
                    writeLines(path, {});
                    writeLines(path, lines);
                });
            }))
            QSKIP("no way to fill a disk here");
        QVERIFY(fails);
        QCOMPARE(readAllLines(path), QStringList());
        QCOMPARE(contentOf(folder.path()), u"kdvmu.kvz"_s);
    }
};

QTEST_GUILESS_MAIN(TestStore)
#include "tst_store.moc"
