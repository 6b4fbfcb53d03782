#include "base/failure.h"
#include "odbc/odbcserver.h"
#include "support/failing.h"
#include "support/tds/tdsstandin.h"

#include <QElapsedTimer>
#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

class TestOdbc : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void probe();
};

void TestOdbc::probe()
{
    TdsStandin server;
    fillLogo(server, 1);
    OdbcServer odbc;
    auto c = odbc.connect(u"Server=%1;Provider=SQLOLEDB;UID=sa;PWD=Gizli.Şifre1;database=LOGODB;"_s.arg(server.server()),{.commandTimeout=1,.connectionTimeout=3});
    const SqlRows rows = c->run(Statement(u"select * from L_CAPIFIRM"));
    qDebug() << rows.columns << rows.rows << server.statements();
}

QTEST_GUILESS_MAIN(TestOdbc)
#include "tst_odbc.moc"
