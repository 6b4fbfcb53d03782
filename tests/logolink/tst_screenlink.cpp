#include "logolink/screenlink.h"
#include "support/fakes.h"
#include "support/table.h"

using namespace kervan;

class TestScreenLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theConnectionIsToldAndAFailedOneDoesNotHoldTheOneBefore()
    {
        TestProgram t;
        writeBytes(t.path(u"sqlbaglan.kvz"_s),
                   "SRV\\LOGO\r\nsa\r\n;p\xFE';\r\nLOGODB\r\n1- Merkez\r\n");
        ScreenLink link(t.program);
        for (const bool opens : {false, true}) {
            t.sqlServer.opens = opens;
            link.sqlyukle();
            QCOMPARE(link.durum.text(), opens ? u"SQL Bağlantı Var"_s : u"SQL Bağlantı Yok"_s);
            QCOMPARE(t.sqlServer.held, 1);
        }
        const QString text =
            u"Server=SRV\\LOGO;Provider=SQLOLEDB;UID=sa;PWD=;pş';;database=LOGODB;"_s;
        QCOMPARE(t.sqlServer.texts, QStringList({text, text}));
        QCOMPARE(t.sqlServer.options.commandTimeout, 0);
        QCOMPARE(t.sqlServer.options.connectionTimeout, 5);
        QCOMPARE(link.firmakod, u"1- Merkez"_s);
        t.sqlServer.failure = u"[08001] sunucu bulunamadı"_s;
        t.boxes.expect({.text = t.sqlServer.failure});
        link.sqlyukle();
        QCOMPARE(link.durum.text(), u"SQL Bağlantı Yok"_s);
        QCOMPARE(t.sqlServer.held, 0);
    }

    void anEmptyLineIsToldAndAMissingOneEndsInSilence_data()
    {
        addTable(uR"(
case                          ; file                          ; told
no server                     ; \r\nu\r\np\r\nd\r\n1- A\r\n   ; yes
no user                       ; s\r\n\r\np\r\nd\r\n1- A\r\n   ; yes
no password                   ; s\r\nu\r\n\r\nd\r\n1- A\r\n   ; yes
no database                   ; s\r\nu\r\np\r\n\r\n1- A\r\n   ; yes
no firm                       ; s\r\nu\r\np\r\nd\r\n\r\n      ; yes
nothing                       ;                               ; no
four lines                    ; s\r\nu\r\np\r\nd\r\n          ; no
four lines with an empty one  ; s\r\n\r\np\r\nd\r\n           ; no)"_s);
    }
    void anEmptyLineIsToldAndAMissingOneEndsInSilence()
    {
        TestProgram t;
        ScreenLink link(t.program);
        link.durum.setText(u"tasarım"_s);
        link.sqlyukle(); // no file; any box fails the test
        writeBytes(t.path(u"sqlbaglan.kvz"_s), fetch("file").toLatin1());
        if (fetch("told") == u"yes")
            t.boxes.expectWarning(u"Bağlantı Bilgilerinde Eksikler Var..."_s, Icon::Stop);
        link.sqlyukle();
        QVERIFY(t.sqlServer.texts.isEmpty());
        QCOMPARE(link.durum.text(), u"tasarım"_s);
        QCOMPARE(link.firmakod, QString());
    }
};

QTEST_GUILESS_MAIN(TestScreenLink)
#include "tst_screenlink.moc"
