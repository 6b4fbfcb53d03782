#pragma once

#include <QString>
#include <QStringList>
#include <QThread>

#include <memory>

namespace kervan {

class StandinListener;

/// What a stand-in does other than answer at once. Times are in milliseconds.
struct StandinManners
{
    static constexpr int never = -1;

    bool refusesLogin = false; ///< even with the right password
    int loginDelay = 0;        ///< or never
    int queryDelay = 0;        ///< or never
    bool deaf = false;         ///< leaves the driver's cancel unanswered too
    QString error = {};        ///< every statement fails with this sentence
    int dropAfter = never;     ///< answers so many statements of a connection, cuts the line at the
                               ///< next
};

/// A small SQL Server for tests and the tour: speaks TDS 7.4 without encryption on a loopback port,
/// from a thread of its own, over a database that is held in memory. It takes statements that
/// SQLite understands, with or without WITH(NOLOCK), and sends a column in the type that its table
/// declares: tinyint, smallint, int, bigint, float, decimal(p,s), varchar(n) in the Turkish code
/// page, anything else as nvarchar. "varchar" and "nvarchar" without a length, or with "max", hold
/// texts of any length. Needs a QCoreApplication.
class TdsStandin
{
public:
    static constexpr auto user = u"sa";
    static constexpr auto password = u"Gizli.Şifre1";
    static constexpr auto database = u"LOGODB";

    TdsStandin();
    ~TdsStandin();
    TdsStandin(const TdsStandin &) = delete;
    TdsStandin &operator=(const TdsStandin &) = delete;

    quint16 port() const;
    /// What a user enters as the server's name.
    QString server() const;
    /// Runs a statement on the database, past every wire; gives its rows. A wrong one is fatal.
    QList<QStringList> run(const QString &statement);
    /// Holds for every connection from now on.
    void behave(const StandinManners &manners);
    /// All statements that arrived, word for word, in their order.
    QStringList statements() const;
    void forgetStatements();
    /// How many connections are held at the moment.
    int connections() const;

private:
    template<class Step>
    auto inThread(Step &&step) const;

    QThread m_thread;
    StandinListener *m_listener;
};

/// Makes Logo's firm list, with a row for this firm, and the firm's tables, which are empty.
void fillLogo(TdsStandin &standin, int firm);

} // namespace kervan
