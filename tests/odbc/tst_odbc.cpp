#include "odbc/drivertext.h"
#include "odbc/faults.h"
#include "odbc/odbcserver.h"
#include "support/failing.h"
#include "support/tds/tdsstandin.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

using Milliseconds = std::chrono::milliseconds;

constexpr QStringView letters = u"şŞğĞıIiİçÇöÖüÜ";

Statement firms()
{
    return Statement(u"select * from L_CAPIFIRM");
}

Statement title(QStringView code, QStringView text)
{
    return Statement(u"UPDATE LG_012_CLCARD SET DEFINITION_='")
        .value(text)
        .text(u"' where CODE='")
        .value(code)
        .text(u"'");
}

Statement barcode(QStringView barcode)
{
    return Statement(u"Select ITEM.CODE as ITEMKOD, UNIT.CODE as BIRIMKOD from LG_012_UNITBARCODE "
                     "BAR WITH(NOLOCK) LEFT OUTER JOIN LG_012_ITEMS ITEM WITH(NOLOCK) ON "
                     "(BAR.ITEMREF  =  ITEM.LOGICALREF) LEFT OUTER JOIN LG_012_UNITSETL UNIT "
                     "WITH(NOLOCK) ON (BAR.UNITLINEREF = UNIT.LOGICALREF) where BAR.BARCODE='")
        .value(barcode)
        .text(u"'");
}

} // namespace

class TestOdbc : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<TdsStandin>();
        fillLogo(*m_server, 12);
    }

    void cleanup() { m_server.reset(); }

    void eachDriverIsSpokenToInItsWords()
    {
        const QString given = u"Server=srv\\LOGO;Provider=SQLOLEDB;UID=sa;PWD={a}b;database=DB;"_s;
        QCOMPARE(driverText(given, u"ODBC Driver 18 for SQL Server"_s),
                 u"Driver={ODBC Driver 18 for SQL Server};Server=srv\\LOGO;UID={sa};PWD={{a}}b};"
                 "Database={DB};Encrypt=no;TrustServerCertificate=yes;"_s);
        QCOMPARE(driverText(given, u"SQL Server"_s),
                 u"Driver={SQL Server};Server=srv\\LOGO;UID={sa};PWD={{a}}b};Database={DB};"_s);
        QCOMPARE(driverText(given, u"FreeTDS"_s),
                 u"Driver={FreeTDS};Server=srv\\LOGO;UID=sa;PWD={{a}b};Database=DB;"
                 "TDS_Version=7.4;ClientCharset=UTF-8;"_s);
        // A port beats an instance, a later pair an earlier one.
        QCOMPARE(
            driverText(u"Server=srv\\LOGO,1450;UID=sa;PWD=a=b;uid=x;database=DB;"_s, u"FreeTDS"_s),
            u"Driver={FreeTDS};Server=srv;Port=1450;UID=x;PWD=a=b;Database=DB;"
            "TDS_Version=7.4;ClientCharset=UTF-8;"_s);
    }

    void hostAndPortAreToldInTheDriversForm_data()
    {
        QTest::addColumn<QString>("entered");
        QTest::addColumn<QString>("microsoft");
        QTest::addColumn<QString>("freeTds");
        QTest::newRow("a name") << u"SUNUCU"_s << u"SUNUCU"_s << u"SUNUCU;Port=1433"_s;
        QTest::newRow("an address, a port")
            << u" 10.0.0.5 , 1450"_s << u"10.0.0.5,1450"_s << u"10.0.0.5;Port=1450"_s;
        QTest::newRow("an instance") << u"srv \\LOGO"_s << u"srv\\LOGO"_s << u"srv\\LOGO"_s;
        QTest::newRow("a brace, which would reach into the password")
            << u"{srv,1450"_s << u"{{srv,1450}"_s << u"{{srv};Port=1450"_s;
        QTest::newRow("a word for a port") << u"srv,bin"_s << u"srv,bin"_s << QString();
        QTest::newRow("no such port") << u"srv,65536"_s << u"srv,65536"_s << QString();
    }
    void hostAndPortAreToldInTheDriversForm()
    {
        QFETCH(QString, entered);
        QFETCH(QString, microsoft);
        QFETCH(QString, freeTds);
        const QString given = text(entered);
        QVERIFY(driverText(given, u"SQL Server"_s).contains(u";Server=%1;UID="_s.arg(microsoft)));
        if (freeTds.isEmpty())
            QVERIFY(
                failureOf([&] { driverText(given, u"FreeTDS"_s); }).contains(u"bağlantı noktası"));
        else
            QVERIFY(driverText(given, u"FreeTDS"_s).contains(u";Server=%1;UID="_s.arg(freeTds)));
    }

    void aServerIsReachedByItsNameAlone()
    {
        if (!m_server->moveTo(1433))
            QSKIP("another server has the port 1433");
        for (const QString &name : {u"localhost"_s, u"127.0.0.1"_s})
            QCOMPARE(OdbcServer().connect(text(name), {0, 5})->run(firms()).rows.size(), 1);
    }

    // There a small "i" is none of a capital "I", by which driver managers compare their keywords.
    void inTurkeyTheDriverIsKnownByItsKeywordsToo()
    {
#ifdef __SANITIZE_THREAD__
        QSKIP("the thread sanitizer ends a program that starts another one beside its threads");
#endif
        const QTemporaryDir locales;
        const QString turkish = u"tr_TR.UTF-8"_s;
        if (QProcess::execute(u"localedef"_s, {u"-i"_s, u"tr_TR"_s, u"-f"_s, u"UTF-8"_s,
                                               locales.filePath(turkish)}) != 0)
            QSKIP("the system makes no Turkish locale");
        qputenv("LOCPATH", locales.path().toLocal8Bit());
        const QByteArray before = std::setlocale(LC_ALL, nullptr);
        const auto putBack = qScopeGuard([&] {
            qunsetenv("LOCPATH");
            std::setlocale(LC_ALL, before.constData());
        });
        QVERIFY(std::setlocale(LC_ALL, turkish.toLatin1().constData()));
        QCOMPARE(connect()->run(firms()).rows.size(), 1);
    }

    void theNewestDriverOfMicrosoftGoesFirst()
    {
        const QString ten = u"ODBC Driver 11 for SQL Server"_s;
        const QString eighteen = u"ODBC Driver 18 for SQL Server"_s;
        const QString freeTds = u"FreeTDS"_s;
        QCOMPARE(chosenDriver({freeTds, u"SQL Server"_s, ten, eighteen, u"SQLite3"_s}), eighteen);
        QCOMPARE(chosenDriver({u"SQLite3"_s, u"SQL Server"_s, freeTds}), u"SQL Server"_s);
        QCOMPARE(chosenDriver({u"SQLite3"_s, freeTds}), freeTds);
        QCOMPARE(chosenDriver({u"SQLite3"_s}), u"libtdsodbc.so"_s);
    }

    void aPasswordWithASemicolonFailsWithoutBeingTold()
    {
        const QString told =
            failureOf([&] { OdbcServer().connect(text(u"srv"_s, u"a;tail"_s), {}); });
        QVERIFY(!told.isEmpty());
        QVERIFY(!told.contains(u"tail"));
    }

    void layersAreLeftOutOfWhatIsTold()
    {
        QCOMPARE(sentenceOf(u"[Microsoft][ODBC Driver 18 for SQL Server]Login timeout expired"_s),
                 u"Login timeout expired"_s);
        QCOMPARE(sentenceOf(u"[unixODBC][FreeTDS][SQL Server][dbo].[X] [yok]"_s),
                 u"[dbo].[X] [yok]"_s);
    }

    void turkishLettersArriveInBothDirections()
    {
        m_server->run(u"insert into LG_012_CLCARD (CODE) values ('ÇĞ.01')"_s);
        const auto connection = connect();
        connection->run(title(u"ÇĞ.01", letters));
        const QString read = u"select DEFINITION_ from LG_012_CLCARD"_s;
        QCOMPARE(m_server->run(read), QList<QStringList>{{letters.toString()}});
        // DEFINITION_ is of one byte a letter; the other column of two.
        m_server->run(u"create table wide as select DEFINITION_ || '' as D from LG_012_CLCARD"_s);
        QCOMPARE(connection->run(Statement(read)).value(0, u"definition_"), letters.toString());
        QCOMPARE(connection->run(Statement(u"select D from wide")).value(0, u"D"),
                 letters.toString());
    }

    void fieldsComeAsTextInTheirColumns()
    {
        const QString narrow(10'000, u'ş');
        // As long as one piece, and on.
        const QString wide = QString(4095, u'ğ') + QString(5905, u'ı');
        m_server->run(
            u"create table T (I int, S smallint, B bigint, D decimal(15,2), N varchar(9), "
            "V varchar, W nvarchar)"_s);
        m_server->run(
            u"insert into T values (-2147483648, 1, 9007199254740993, -12.5, '', '%1', '%2'),"
            "(null, null, null, null, null, null, null), (0, 0, 0, 0.05, ' x', '', '')"_s.arg(
                narrow, wide));
        const SqlRows rows = connect()->run(Statement(u"select * from T"));
        QCOMPARE(rows.columns,
                 QStringList({u"I"_s, u"S"_s, u"B"_s, u"D"_s, u"N"_s, u"V"_s, u"W"_s}));
        const QList<QStringList> expected{
            {u"-2147483648"_s, u"1"_s, u"9007199254740993"_s, u"-12.50"_s, u""_s, narrow, wide},
            QStringList(7, u""_s),
            {u"0"_s, u"0"_s, u"0"_s, u"0.05"_s, u" x"_s, u""_s, u""_s}};
        QCOMPARE(rows.rows, expected);
    }

    void statementsArriveWordForWordAndNothingElse()
    {
        m_server->run(u"insert into LG_012_CLCARD (CODE) values ('120.01')"_s);
        m_server->run(u"insert into LG_012_UNITBARCODE values ('869', 1, 7)"_s);
        m_server->run(u"insert into LG_012_ITEMS values (1, 'HLV-FST', '')"_s);
        const QString marks = u"{fn now()} ? {ts} %1 ] \" --"_s;
        const auto connection = connect();
        QVERIFY(connection->isOpen());
        QCOMPARE(connection->run(firms()).value(0, u"Name"), u"ÖRNEK GIDA LTD. ŞTİ."_s);
        QVERIFY(connection->run(title(u"120.01", marks)).isEmpty());
        QVERIFY(connection->run(title(u"no such card", u"x")).isEmpty());
        const SqlRows found = connection->run(barcode(u"869"));
        QCOMPARE(found.value(0, u"ITEMKOD"), u"HLV-FST"_s);
        QCOMPARE(found.value(0, u"BIRIMKOD"), QString()); // its unit line has gone
        QVERIFY(connection->run(barcode(u"870")).isEmpty());
        // ODBC's own language is left to the server.
        const Statement escape(u"select {fn ucase('x')}");
        QVERIFY(!failureOf([&] { connection->run(escape); }).isEmpty());
        const QStringList sent{firms().text(),
                               title(u"120.01", marks).text(),
                               title(u"no such card", u"x").text(),
                               barcode(u"869").text(),
                               barcode(u"870").text(),
                               escape.text()};
        QCOMPARE(m_server->statements(), sent);
        QCOMPARE(m_server->run(u"select DEFINITION_ from LG_012_CLCARD"_s)[0][0], marks);
    }

    void aLoginIsRefusedWithTheServersSentence()
    {
        const QString right = TdsStandin::password.toString();
        const QString database = TdsStandin::database.toString();
        const QString refusal = u"Oturum açılamadı: kullanıcı adı ya da şifre yanlış.\n"
                                "Login failed for user 'sa'."_s;
        const auto told = [&](const QString &password, const QString &name) {
            return failureOf([&] {
                OdbcServer().connect(text(m_server->server(), password, name), {0, 5});
            });
        };
        QVERIFY(told(u"{yanlış}"_s, database).startsWith(refusal));
        QVERIFY(told(right, u"YOK"_s)
                    .startsWith(u"Veritabanı açılamadı: adı yanlış ya da bu kullanıcıya kapalı.\n"
                                "Cannot open database \"YOK\" requested by the login."_s));
        m_server->behave({.refusesLogin = true});
        QVERIFY(told(right, database).startsWith(refusal));
    }

    void nobodyAtThePortIsAFailure()
    {
        QTcpServer gone;
        QVERIFY(gone.listen(QHostAddress::LocalHost));
        const QString server = u"127.0.0.1,%1"_s.arg(gone.serverPort());
        gone.close();
        const QString told = failureOf([&] { OdbcServer().connect(text(server), {0, 5}); });
        QVERIFY2(told.startsWith(u"Sunucuya ulaşılamadı: "), qPrintable(told));
        QVERIFY2(!told.contains(u'['), qPrintable(told));
        const QString unknown = failureOf([&] {
            OdbcServer().connect(text(u"yok.invalid"_s), {0, 5});
        });
        QVERIFY2(unknown.startsWith(u"Sunucunun adı ağda bulunamadı.\n"), qPrintable(unknown));
    }

    void theUsualFaultsAreToldInTurkish_data()
    {
        QTest::addColumn<QList<Diagnosis>>("records");
        QTest::addColumn<QString>("told");
        const auto add = [](const char *name, const QList<Diagnosis> &records,
                            const QString &told) {
            QTest::newRow(name) << records << told;
        };
        add("the database, not the login",
            {{u"28000"_s, 18456, u"Login failed"_s}, {u"42000"_s, 4060, u"Cannot open"_s}},
            u"Veritabanı açılamadı: adı yanlış ya da bu kullanıcıya kapalı.\nLogin failed\n"
            "Cannot open"_s);
        add("the port, not the time",
            {{u"HYT00"_s, 0, u"Login timeout expired"_s}, {u"08001"_s, 10061, u"TCP Provider"_s}},
            u"Sunucu bağlantıyı reddetti: o portta dinleyen bir SQL Server yok.\n"
            "Login timeout expired\nTCP Provider"_s);
        add("a locked account", {{u"28000"_s, 18486, u"locked out"_s}},
            u"Oturum açılamadı: sunucu bu kullanıcıyı kabul etmedi.\nlocked out"_s);
        add("no driver on Windows", {{u"IM002"_s, 0, u"Data source name not found"_s}},
            u"SQL Server sürücüsü (ODBC) bu bilgisayarda kurulu değil.\n"
            "Data source name not found"_s);
        add("no driver on Linux", {{u"01000"_s, 0, u"Can't open lib 'x'"_s}},
            u"SQL Server sürücüsü (ODBC) bu bilgisayarda kurulu değil.\nCan't open lib 'x'"_s);
        add("a line reset", {{u"08S01"_s, 10054, u"TCP Provider"_s}, {u"08S01"_s, 10054, {}}},
            u"SQL Server ile bağlantı koptu.\nTCP Provider"_s);
        add("a line found cut", {{u"HY000"_s, 0, u"Unknown error"_s}},
            u"SQL Server ile bağlantı koptu.\nUnknown error"_s);
        add("another firm's table", {{u"42S02"_s, 208, u"Invalid object name"_s}},
            u"Tablo yok: seçilen firma ya da veritabanı başka olabilir.\nInvalid object name"_s);
        add("the server's own words, once",
            {{u"01000"_s, 0, u"x"_s}, {u"42000"_s, 50000, u"olmaz"_s}, {u"42000"_s, 50000, u"x"_s}},
            u"x\nolmaz"_s);
        add("not a word", {}, u"SQL Server hata verdi, ama nedenini bildirmedi."_s);
    }
    void theUsualFaultsAreToldInTurkish()
    {
        QFETCH(QList<Diagnosis>, records);
        QTEST(descriptionOf(records), "told");
    }

    void connectingEndsWithItsTimeOut()
    {
        m_server->behave({.loginDelay = StandinManners::never});
        // Accepted and never answered, and an instance that nobody knows.
        for (const QString &name : {m_server->server(), u"127.0.0.1\\LOGO"_s}) {
            QElapsedTimer timer;
            timer.start();
            QVERIFY(!failureOf([&] { OdbcServer().connect(text(name), {0, 1}); }).isEmpty());
            QVERIFY2(timer.elapsed() > 800 && timer.elapsed() < 6000, qPrintable(name));
            QTRY_COMPARE(m_server->connections(), 0); // the driver itself has given up as well
        }
    }

    void aQueryThatHangsEndsWithItsTimeOut_data()
    {
        QTest::addColumn<bool>("deaf");
        QTest::newRow("the server takes the driver's cancel") << false;
        QTest::newRow("the server has died") << true;
    }
    void aQueryThatHangsEndsWithItsTimeOut()
    {
        QFETCH(bool, deaf);
        auto connection = connect({1, 5});
        m_server->behave({.queryDelay = StandinManners::never, .deaf = deaf});
        QElapsedTimer timer;
        timer.start();
        const QString told = failureOf([&] { connection->run(firms()); });
        QVERIFY(timer.elapsed() > 800 && timer.elapsed() < 6000);
        QVERIFY2(told.startsWith(u"SQL Server zamanında yanıt vermedi.\n"), qPrintable(told));
        QCOMPARE(connection->isOpen(), !deaf);
        m_server->behave({});
        if (!deaf)
            QCOMPARE(connection->run(firms()).rows.size(), 1);
        timer.restart();
        connection.reset();
        QVERIFY(timer.elapsed() < 3000);
    }

    void theTimeOutHoldsForAnswersWithoutSense_data()
    {
        QTest::addColumn<TdsFault>("fault");
        QTest::newRow("bytes that are no packet") << TdsFault::Noise;
        QTest::newRow("a packet that does not come whole") << TdsFault::LongPacket;
        QTest::newRow("an answer without an end") << TdsFault::NoEnd;
    }
    void theTimeOutHoldsForAnswersWithoutSense()
    {
        QFETCH(TdsFault, fault);
        m_server->behave({.fault = fault});
        const auto connection = connect({1, 5});
        const QString told = failureOf([&] { connection->run(firms()); });
        QVERIFY2(told.startsWith(u"SQL Server zamanında yanıt vermedi."), qPrintable(told));
        m_server->behave({});
        QCOMPARE(connect()->run(firms()).rows.size(), 1);
    }

    void aWaitThatIsGivenUpLeavesTheLine()
    {
        OdbcServer odbc;
        int looks = 0;
        odbc.waitBy([&looks](const auto &hasCome) {
            while (++looks < 4) {
                if (hasCome(Milliseconds(looks == 1 ? 200 : 10)))
                    return true;
            }
            return false;
        });
        auto connection = odbc.connect(text(m_server->server()), {0, 5});
        QCOMPARE(connection->run(firms()).rows.size(), 1);
        looks = 0;
        m_server->behave({.queryDelay = 600});
        QCOMPARE(failureOf([&] { connection->run(firms()); }),
                 u"Logo'nun yanıtı beklenmedi; yeniden bağlanmak gerekir."_s);
        QVERIFY(!connection->isOpen());
        QVERIFY(failureOf([&] { connection->run(firms()); }).contains(u"bağlantı kopmuş"));
        QCOMPARE(m_server->statements().size(), 2);
        connection.reset();
        QCOMPARE(m_server->connections(), 1); // the driver still waits, and then goes alone
        QTRY_COMPARE(m_server->connections(), 0);
        looks = -100;
        m_server->behave({.queryDelay = 400});
        QCOMPARE(odbc.connect(text(m_server->server()), {0, 5})->run(firms()).rows.size(), 1);
        QVERIFY(looks > -100);
    }

    void oneStatementIsAskedAtATime()
    {
        OdbcServer odbc;
        std::unique_ptr<SqlConnection> connection;
        QString told;
        odbc.waitBy([&](const auto &hasCome) {
            told = failureOf([&] { connection->run(firms()); });
            return hasCome(std::chrono::minutes(1));
        });
        m_server->behave({.queryDelay = 400});
        connection = odbc.connect(text(m_server->server()), {0, 5});
        QCOMPARE(connection->run(firms()).rows.size(), 1);
        QVERIFY2(told.contains(u"bir yanıt daha"), qPrintable(told));
        QCOMPARE(m_server->statements().size(), 1);
    }

    void lateAnswersAreWaitedForWithoutALimit()
    {
        m_server->behave({.loginDelay = 300, .queryDelay = 1300});
        QCOMPARE(connect({0, 5})->run(firms()).rows.size(), 1);
    }

    void anErrorOfTheServerIsTold_data()
    {
        QTest::addColumn<bool>("behindRows");
        QTest::newRow("in place of rows") << false;
        QTest::newRow("behind rows") << true;
    }
    void anErrorOfTheServerIsTold()
    {
        QFETCH(bool, behindRows);
        const QString sentence =
            u"[dbo].[L_CAPIFIRM] nesnesi üzerinde izin yok: "_s + letters.toString();
        const auto connection = connect();
        m_server->behave({.error = sentence, .errorBehindRows = behindRows});
        QCOMPARE(failureOf([&] { connection->run(firms()); }), sentence);
        m_server->behave({});
        QCOMPARE(connection->run(firms()).rows.size(), 1);
    }

    void aLineThatIsCutStaysCut()
    {
        const auto connection = connect();
        QCOMPARE(connection->run(firms()).rows.size(), 1);
        m_server->behave({.dropAfter = 1});
        QVERIFY(connection->isOpen());
        QVERIFY(failureOf([&] {
                    connection->run(firms());
                }).startsWith(u"SQL Server ile bağlantı koptu.\n"));
        QVERIFY(!connection->isOpen());
        QVERIFY(failureOf([&] { connection->run(firms()); }).contains(u"bağlantı kopmuş"));
    }

    void aValueThatBreaksOutNeverArrives()
    {
        const auto connection = connect();
        for (const QString &value : {u"ALİ'NİN YERİ"_s, u"'; DROP TABLE x --"_s}) {
            for (const Statement &statement :
                 {title(u"1", value), title(value, u"x"), barcode(value),
                  Statement(u"Select * from LG_").name(value).text(u"_CLCARD where CODE='1'")}) {
                const QString told = failureOf([&] { connection->run(statement); });
                QVERIFY2(told.contains(value), qPrintable(told));
            }
        }
        QCOMPARE(m_server->statements(), QStringList());
    }

    void connectionsAreHeldAsLongAsTheirObjects()
    {
        auto first = connect();
        auto second = connect();
        QCOMPARE(m_server->connections(), 2);
        second->run(firms());
        first->run(firms());
        first.reset();
        QTRY_COMPARE(m_server->connections(), 1);
        QCOMPARE(second->run(firms()).rows.size(), 1);
    }

private:
    std::unique_ptr<SqlConnection> connect(const SqlOptions &options = {0, 5})
    {
        return OdbcServer().connect(text(m_server->server()), options);
    }
    static QString text(const QString &server,
                        const QString &password = TdsStandin::password.toString(),
                        const QString &database = TdsStandin::database.toString())
    {
        return u"Server=%1;Provider=SQLOLEDB;UID=sa;PWD=%2;database=%3;"_s.arg(server, password,
                                                                               database);
    }

    std::unique_ptr<TdsStandin> m_server;
};

QTEST_GUILESS_MAIN(TestOdbc)
#include "tst_odbc.moc"
