#pragma once

#include "base/ports.h"
#include "store/program.h"

#include <QByteArray>
#include <QList>
#include <QTemporaryDir>

namespace kervan {

bool operator==(const Box &left, const Box &right);

/// Boxes that are answered at once. Each has to be expected beforehand, in its order; anything else
/// fails the test, and so does an expected box that never came.
class FakeBoxes : public Boxes
{
public:
    ~FakeBoxes() override;
    void expect(const Box &box) { m_expected << Expected{box, false, false}; }
    void expectQuestion(const Box &box, bool yes) { m_expected << Expected{box, true, yes}; }
    /// Fails the test if an expected box has not come.
    void verify();

    void show(const Box &box) override;
    bool ask(const Box &box) override;

private:
    struct Expected
    {
        Box box;
        bool question;
        bool yes;
    };
    bool take(const Box &box, bool question);
    QList<Expected> m_expected;
};

/// File dialogs that give back names laid down beforehand; no name left means that a dialog came
/// unexpectedly, and fails the test. What was asked is kept.
class FakeDialogs : public FileDialogs
{
public:
    QList<std::optional<QString>> answers;
    QList<FileQuestion> asked;

    std::optional<QString> openName(const FileQuestion &question) override;
    std::optional<QString> saveName(const FileQuestion &question) override;
};

/// A clock that stands still.
class FakeClock : public Clock
{
public:
    QDateTime moment{QDate(2024, 3, 7), QTime(9, 5, 3)};
    QDateTime now() const override { return moment; }
};

/// Gives connections that are open, closed or fail, and keeps the connection texts.
class FakeSqlServer : public SqlServer
{
public:
    bool opens = false;
    QString failure; ///< connecting fails with this description, if there is one
    QStringList texts;
    QList<SqlOptions> options;

    std::unique_ptr<SqlConnection> connect(const QString &connectionText,
                                           const SqlOptions &sqlOptions) override;
};

/// A program folder of its own for one test, with the databases as an installation leaves them.
class TestProgram
{
public:
    TestProgram();

    QTemporaryDir folder;
    FakeBoxes boxes;
    FakeDialogs dialogs;
    FakeClock clock;
    FakeSqlServer sqlServer;
    Program program;

    QString path(const QString &name) const { return folder.filePath(name); }
    /// Runs statements of the local database's language, or fails the test.
    void fill(const QString &database, const QStringList &statements);
    /// All rows of a table, cells joined by "|".
    QStringList rows(const QString &database, const QString &table, const QStringList &columns);
};

QByteArray readBytes(const QString &path);
void writeBytes(const QString &path, const QByteArray &bytes);

} // namespace kervan
