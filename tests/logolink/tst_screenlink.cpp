#include "logolink/screenlink.h"
#include "support/fakes.h"

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
        QCOMPARE(t.sqlServer.options.commandTimeout * 10 + t.sqlServer.options.connectionTimeout,
                 5);
        QCOMPARE(link.firmakod, u"1- Merkez"_s);
        t.sqlServer.failure = u"[08001] sunucu bulunamadı"_s;
        t.boxes.expect({.text = t.sqlServer.failure});
        link.sqlyukle();
        QCOMPARE(link.durum.text(), u"SQL Bağlantı Yok"_s);
        QCOMPARE(t.sqlServer.held, 0);
    }

    void anEmptyLineIsToldAndAMissingOneEndsInSilence()
    {
        TestProgram t;
        ScreenLink link(t.program);
        link.durum.setText(u"tasarım"_s);
        link.sqlyukle(); // no file; any box fails the test
        const QString cases =
            u"/u/p/d/1- A/|s//p/d/1- A/|s/u//d/1- A/|s/u/p//1- A/|s/u/p/d//||s/u/p/d/|s//p/d/"_s;
        for (const QString &lines : cases.split(u'|')) {
            writeBytes(t.path(u"sqlbaglan.kvz"_s), lines.toLatin1().replace("/", "\r\n"));
            if (lines.count(u'/') == 5)
                t.boxes.expectWarning(u"Bağlantı Bilgilerinde Eksikler Var..."_s, Icon::Stop);
            link.sqlyukle();
            t.boxes.verify();
        }
        QVERIFY(t.sqlServer.texts.isEmpty());
        QCOMPARE(link.durum.text() + link.firmakod, u"tasarım"_s);
    }
};

QTEST_GUILESS_MAIN(TestScreenLink)
#include "tst_screenlink.moc"
