#include "support/fakes.h"

#include "store/installation.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>

namespace kervan {

namespace {

void fail(const QString &why)
{
    QTest::qFail(qPrintable(why), __FILE__, __LINE__);
}

class FakeConnection : public SqlConnection
{
public:
    explicit FakeConnection(FakeSqlServer &server)
        : m_open(server.opens)
        , m_server(server)
    {
        ++m_server.held;
    }
    ~FakeConnection() override { --m_server.held; }
    bool isOpen() const override { return m_open; }

protected:
    SqlRows send(const QString &statement) override
    {
        if (!m_open)
            throw Failure(u"bağlantı kapalı"_s);
        m_server.statements << statement;
        return m_server.answer(statement);
    }

private:
    bool m_open;
    FakeSqlServer &m_server;
};

QString told(const Box &box)
{
    return u"\"%1\" titled \"%2\" with icon %3"_s.arg(box.text, box.title).arg(int(box.icon));
}

} // namespace

void FakeBoxes::verify()
{
    for (const Expected &expected : std::as_const(m_expected))
        fail(u"box never came: "_s + told(expected.box));
    m_expected.clear();
}

bool FakeBoxes::take(const Box &box, bool question)
{
    const bool any = !m_expected.isEmpty();
    const Expected expected = any ? m_expected.takeFirst() : Expected{};
    if (!any || told(expected.box) != told(box) || expected.question != question)
        fail(u"wrong box: %1, not %2"_s.arg(told(box), any ? told(expected.box) : u"any"_s));
    return expected.yes;
}

std::optional<QString> FakeDialogs::openName(const FileQuestion &question)
{
    asked << question;
    if (!answers.isEmpty())
        return answers.takeFirst();
    fail(u"unexpected file dialog: "_s + question.title);
    return std::nullopt;
}

std::unique_ptr<SqlConnection> FakeSqlServer::connect(const QString &connectionText,
                                                      const SqlOptions &sqlOptions)
{
    texts << connectionText;
    options = sqlOptions;
    if (!failure.isEmpty())
        throw Failure(failure);
    return std::make_unique<FakeConnection>(*this);
}

TestProgram::TestProgram()
{
    install(folder.path());
}

void TestProgram::reachLogo()
{
    writeBytes(path(u"sqlbaglan.kvz"_s), "SRV\r\nsa\r\np\r\nDB\r\n7- Merkez\r\n");
    sqlServer.opens = true;
}

void TestProgram::fill(const QStringList &statements, const QString &database)
{
    const auto failed = passOver([&] {
        OpenDb open(program.db, path(database));
        for (const QString &statement : statements)
            program.db.query(Statement(statement));
    });
    if (failed)
        fail(failed->description());
}

QString TestProgram::rows(const QString &tableAndColumns, const QString &database)
{
    QStringList columns = tableAndColumns.split(u' ');
    QStringList rows;
    OpenDb open(program.db, path(database));
    program.db.forEach(Statement(u"select * from "_s + columns.takeFirst()), [&] {
        QStringList cells;
        for (const QString &column : columns)
            cells << program.db.field(column);
        rows << cells.join(u'|');
    });
    return rows.join(u'/');
}

void FolderAway::move(const QString &from, const QString &to)
{
    if (!QDir().rename(from, to))
        fail(u"can't move "_s + from);
}

OtherProgram::OtherProgram(const QString &path)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"other"_s);
    db.setDatabaseName(path);
    db.open();
}

OtherProgram::~OtherProgram()
{
    QSqlDatabase::removeDatabase(u"other"_s);
}

QString OtherProgram::run(const QString &sql)
{
    QSqlQuery query(sql, QSqlDatabase::database(u"other"_s));
    return query.next() ? query.value(query.record().count() - 1).toString() : QString();
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(u"can't read "_s + path);
    return file.readAll();
}

QList<QStringList> blocksOf(const QString &path)
{
    QList<QStringList> blocks;
    for (const QString &block : QString::fromUtf8(readBytes(path)).split(u"\n\n"_s).sliced(1))
        blocks << rowsOf(block);
    return blocks;
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        fail(u"can't write "_s + path);
}

} // namespace kervan
