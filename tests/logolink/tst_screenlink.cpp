#include "logolink/screenlink.h"
#include "support/failing.h"
#include "support/fakes.h"

#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

const Box incomplete{u"Bağlantı Bilgilerinde Eksikler Var..."_s, u"Dikkat"_s, Icon::Stop};
const QByteArray fiveLines = "SRV\\LOGO\r\nsa\r\n;p\xFE';\r\nLOGODB\r\n1- Merkez\r\n";

// Counts the connections that are held, and fails from the second one on.
class CountingServer : public SqlServer
{
public:
    int made = 0;
    int held = 0;

    std::unique_ptr<SqlConnection> connect(const QString &, const SqlOptions &) override
    {
        if (++made > 1)
            throw Failure(u"sunucu yok"_s);
        return std::make_unique<Connection>(held);
    }

private:
    class Connection : public SqlConnection
    {
    public:
        explicit Connection(int &held)
            : m_held(held)
        {
            ++m_held;
        }
        ~Connection() override { --m_held; }
        bool isOpen() const override { return true; }

    private:
        int &m_held;
    };
};

} // namespace

class TestScreenLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theConnectionTextIsPutTogetherWordForWord()
    {
        TestProgram made;
        writeBytes(made.path(u"sqlbaglan.kvz"_s), fiveLines);
        made.sqlServer.opens = true;
        ScreenLink link(made.program);
        link.sqlyukle();
        QCOMPARE(
            made.sqlServer.texts,
            QStringList{u"Server=SRV\\LOGO;Provider=SQLOLEDB;UID=sa;PWD=;pş';;database=LOGODB;"_s});
        QCOMPARE(made.sqlServer.options.first().commandTimeout, 0);
        QCOMPARE(made.sqlServer.options.first().connectionTimeout, 5);
        QCOMPARE(link.Label9.text(), u"SQL Bağlantı Var"_s);
        QCOMPARE(link.firmakod, u"1- Merkez"_s);
    }

    void aConnectionThatDoesNotOpenOrFailsIsTold()
    {
        TestProgram made;
        writeBytes(made.path(u"sqlbaglan.kvz"_s), fiveLines);
        made.sqlServer.opens = true;
        ScreenLink link(made.program);
        link.sqlyukle();
        made.sqlServer.opens = false;
        link.sqlyukle();
        QCOMPARE(link.Label9.text(), u"SQL Bağlantı Yok"_s);
        made.sqlServer.opens = true;
        link.sqlyukle();
        QCOMPARE(link.Label9.text(), u"SQL Bağlantı Var"_s);
        made.sqlServer.failure = u"[08001] sunucu bulunamadı"_s;
        made.boxes.expect({.text = u"[08001] sunucu bulunamadı"_s});
        link.sqlyukle();
        QCOMPARE(link.Label9.text(), u"SQL Bağlantı Yok"_s);
        QCOMPARE(made.sqlServer.texts.size(), 4);
    }

    void anEmptyLineIsToldAndNothingIsConnected_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("server") << QByteArray("\r\nsa\r\np\r\nDB\r\n1- M\r\n");
        QTest::newRow("user") << QByteArray("SRV\r\n\r\np\r\nDB\r\n1- M\r\n");
        QTest::newRow("password too") << QByteArray("SRV\r\nsa\r\n\r\nDB\r\n1- M\r\n");
        QTest::newRow("database") << QByteArray("SRV\r\nsa\r\np\r\n\r\n1- M\r\n");
        QTest::newRow("firm") << QByteArray("SRV\r\nsa\r\np\r\nDB\r\n\r\n");
        QTest::newRow("all, LF alone") << QByteArray("\n\n\n\n\n");
    }
    void anEmptyLineIsToldAndNothingIsConnected()
    {
        QFETCH(QByteArray, bytes);
        TestProgram made;
        writeBytes(made.path(u"sqlbaglan.kvz"_s), bytes);
        ScreenLink link(made.program);
        link.Label9.setText(u"tasarım"_s);
        made.boxes.expect(incomplete);
        link.sqlyukle();
        QCOMPARE(made.sqlServer.texts, QStringList{});
        QCOMPARE(link.Label9.text(), u"tasarım"_s);
        QCOMPARE(link.firmakod, QString());
    }

    void aMissingOrShortSideFileEndsInSilence_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("missing") << QByteArray("-");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("four lines") << QByteArray("SRV\r\nsa\r\np\r\nDB\r\n");
        QTest::newRow("an empty line and too few") << QByteArray("SRV\r\n\r\np\r\nDB\r\n");
    }
    void aMissingOrShortSideFileEndsInSilence()
    {
        QFETCH(QByteArray, bytes);
        TestProgram made;
        if (bytes != "-")
            writeBytes(made.path(u"sqlbaglan.kvz"_s), bytes);
        ScreenLink link(made.program);
        link.Label9.setText(u"tasarım"_s);
        link.sqlyukle(); // any box fails the test
        QCOMPARE(made.sqlServer.texts, QStringList{});
        QCOMPARE(link.Label9.text(), u"tasarım"_s);
        QCOMPARE(link.firmakod, QString());
    }

    void aFailedReconnectDoesNotHoldTheEarlierConnection()
    {
        TestProgram made;
        writeBytes(made.path(u"sqlbaglan.kvz"_s), fiveLines);
        CountingServer server;
        Program program{.folder = made.folder.path(),
                        .aktifform = {},
                        .folders = {},
                        .db = {},
                        .boxes = made.boxes,
                        .dialogs = made.dialogs,
                        .clock = made.clock,
                        .sqlServer = server};
        {
            ScreenLink link(program);
            link.sqlyukle();
            QCOMPARE(server.held, 1);
            made.boxes.expect({.text = u"sunucu yok"_s});
            link.sqlyukle();
            QCOMPARE(link.Label9.text(), u"SQL Bağlantı Yok"_s);
            QCOMPARE(server.held, 0);
        }
        QCOMPARE(server.made, 2);
    }
};

QTEST_GUILESS_MAIN(TestScreenLink)
#include "tst_screenlink.moc"
