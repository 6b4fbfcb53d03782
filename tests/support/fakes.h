#pragma once

#include "base/sqlserver.h"
#include "store/program.h"
#include "support/failing.h"

#include <QTemporaryDir>
#include <QTest>

#include <functional>

namespace kervan {

using namespace Qt::StringLiterals;

// A test makes a TestProgram, lays down what will come, and lets a screen run over it:
//
//     TestProgram t;
//     Cr cr(t.program);
//     cr.dosyaac(t.path(u"cariler.txt"_s));         // written there before with writeBytes()
//     t.dialogs.answers = {t.path(u"belge.xml"_s)}; // what the user will pick
//     t.boxes.expectDone();                         // the box that has to come
//     cr.xmlkaydet();
//     QCOMPARE(readBytes(t.path(u"belge.xml"_s)), ...);

/// Boxes that are answered at once. Each has to be expected beforehand, in its order; anything else
/// fails the test, and so does an expected box that never came.
class FakeBoxes : public Boxes
{
public:
    ~FakeBoxes() override { verify(); }
    void expect(const Box &box) { m_expected << Expected{box, false, false}; }
    void expectWarning(const QString &text, Icon icon = Icon::Exclamation)
    {
        expect({text, u"Dikkat"_s, icon});
    }
    /// What comes at the end of a document.
    void expectDone(const QString &what = {})
    {
        expect({what + u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
    }
    void expectQuestion(const QString &text, bool yes)
    {
        m_expected << Expected{{text, u"DİKKAT"_s, Icon::Question}, true, yes};
    }
    /// Fails the test if an expected box has not come.
    void verify();

    void show(const Box &box) override { take(box, false); }
    bool ask(const Box &box) override { return take(box, true); }

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
    int saves = 0; ///< how many of them were asked for saving
    int any = 0;   ///< how many for a name that need not be there

    std::optional<QString> openName(const FileQuestion &question) override;
    std::optional<QString> saveName(const FileQuestion &question) override
    {
        ++saves;
        return openName(question);
    }
    std::optional<QString> anyName(const FileQuestion &question) override
    {
        ++any;
        return openName(question);
    }
};

/// A clock that stands still, or goes on by so many seconds at each look.
class FakeClock : public Clock
{
public:
    QDateTime moment{QDate(2024, 3, 7), QTime(9, 5, 3)};
    int step = 0;
    QDateTime now() const override { return moment.addSecs(qint64(step) * m_looks++); }

private:
    mutable int m_looks = 0;
};

/// Gives connections that are open, closed or fail, keeps what was asked for, and counts the
/// connections that are held. Statements get laid-down answers.
class FakeSqlServer : public SqlServer
{
public:
    bool opens = false;
    QString failure; ///< connecting fails with this description, if there is one
    QStringList texts;
    SqlOptions options;
    int held = 0;
    QStringList statements; ///< all that were sent
    /// Answers a statement, or throws.
    std::function<SqlRows(const QString &statement)> answer = [](const QString &) -> SqlRows {
        return {};
    };

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
    Program program{folder.path(), {}, {}, {}, boxes, dialogs, clock, sqlServer};

    QString path(const QString &name) const { return folder.filePath(name); }
    /// Lays down the settings of a connection to firm 7, which then opens.
    void reachLogo();
    /// Runs statements of the local database's language, or fails the test.
    void fill(const QStringList &statements, const QString &database = u"data.dbs"_s);
    /// All rows of a table, joined by "/", with their cells joined by "|". The table and its
    /// columns are given in one text.
    QString rows(const QString &tableAndColumns, const QString &database = u"data.dbs"_s);
};

/// The program folder is away while this lives, as when its disk is.
class FolderAway
{
public:
    explicit FolderAway(const TestProgram &t)
        : m_path(t.folder.path())
    {
        move(m_path, m_path + u".away"_s);
    }
    ~FolderAway() { move(m_path + u".away"_s, m_path); }
    Q_DISABLE_COPY_MOVE(FolderAway)

private:
    static void move(const QString &from, const QString &to);
    QString m_path;
};

/// Another program at a database file.
class OtherProgram
{
public:
    explicit OtherProgram(const QString &path);
    ~OtherProgram();
    /// Runs any SQL; gives the last cell of the first row.
    QString run(const QString &sql);
};

QByteArray readBytes(const QString &path);
/// The blocks of lines of a UTF-8 file, parted by empty lines, without the first: a remark.
QList<QStringList> blocksOf(const QString &path);
void writeBytes(const QString &path, const QByteArray &bytes);

} // namespace kervan
