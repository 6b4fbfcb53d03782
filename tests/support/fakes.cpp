#include "support/fakes.h"

#include "base/failure.h"
#include "store/installation.h"

#include <QFile>
#include <QTest>

namespace kervan {

namespace {

void fail(const QString &why)
{
    QTest::qFail(qPrintable(why), __FILE__, __LINE__);
}

class FakeConnection : public SqlConnection
{
public:
    explicit FakeConnection(bool open)
        : m_open(open)
    {
    }
    bool isOpen() const override { return m_open; }

private:
    bool m_open;
};

} // namespace

using namespace Qt::StringLiterals;

bool operator==(const Box &left, const Box &right)
{
    return left.text == right.text && left.title == right.title && left.icon == right.icon;
}

FakeBoxes::~FakeBoxes()
{
    verify();
}

void FakeBoxes::verify()
{
    for (const Expected &expected : std::as_const(m_expected))
        fail(u"box never came: "_s + expected.box.text);
    m_expected.clear();
}

bool FakeBoxes::take(const Box &box, bool question)
{
    if (m_expected.isEmpty()) {
        fail(u"unexpected box: "_s + box.text);
        return false;
    }
    const Expected expected = m_expected.takeFirst();
    if (!(expected.box == box) || expected.question != question) {
        fail(
            u"wrong box: \"%1\" titled \"%2\" with icon %3, not \"%4\" titled \"%5\" with icon %6"_s
                .arg(box.text, box.title)
                .arg(int(box.icon))
                .arg(expected.box.text, expected.box.title)
                .arg(int(expected.box.icon)));
    }
    return expected.yes;
}

void FakeBoxes::show(const Box &box)
{
    take(box, false);
}

bool FakeBoxes::ask(const Box &box)
{
    return take(box, true);
}

std::optional<QString> FakeDialogs::openName(const FileQuestion &question)
{
    asked << question;
    if (answers.isEmpty()) {
        fail(u"unexpected file dialog: "_s + question.title);
        return std::nullopt;
    }
    return answers.takeFirst();
}

std::optional<QString> FakeDialogs::saveName(const FileQuestion &question)
{
    return openName(question);
}

std::unique_ptr<SqlConnection> FakeSqlServer::connect(const QString &connectionText,
                                                      const SqlOptions &sqlOptions)
{
    texts << connectionText;
    options << sqlOptions;
    if (!failure.isEmpty())
        throw Failure(failure);
    return std::make_unique<FakeConnection>(opens);
}

TestProgram::TestProgram()
    : program{.folder = folder.path(),
              .aktifform = {},
              .folders = {},
              .db = {},
              .boxes = boxes,
              .dialogs = dialogs,
              .clock = clock,
              .sqlServer = sqlServer}
{
    install(folder.path());
}

void TestProgram::fill(const QString &database, const QStringList &statements)
{
    const auto failed = passOver([&] {
        OpenDb open(program.db, path(database));
        for (const QString &statement : statements)
            program.db.query(Statement(statement));
    });
    if (failed)
        fail(failed->description());
}

QStringList TestProgram::rows(const QString &database, const QString &table,
                              const QStringList &columns)
{
    QStringList rows;
    OpenDb open(program.db, path(database));
    program.db.forEach(Statement(u"select * from "_s + table), [&] {
        QStringList cells;
        for (const QString &column : columns)
            cells << program.db.field(column);
        rows << cells.join(u'|');
    });
    return rows;
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(u"can't read "_s + path);
    return file.readAll();
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        fail(u"can't write "_s + path);
}

} // namespace kervan
