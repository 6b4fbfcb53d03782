#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace kervan {

class StandinListener;
class StandinThread;

/// What goes wrong with an answer. Where nothing of it is sent, its statement is not carried out.
enum class TdsFault {
    None,
    Hang,       ///< it never comes
    Late,       ///< it comes a moment later
    CutBefore,  ///< the line is cut in its place
    CutAmid,    ///< in the midst of it
    CutBehind,  ///< right behind it
    Refusal,    ///< an error comes in its place
    Noise,      ///< bytes that are no packet
    Nonsense,   ///< a packet of bytes that are no tokens
    LongPacket, ///< it says that more follows than does
    LongToken,  ///< a token does so; of other lengths
    NoEnd       ///< its last token is not whole
};

/// What a stand-in does other than answer at once. Times are in milliseconds.
struct StandinManners
{
    static constexpr int never = -1;
    static constexpr int any = -1;

    bool refusesLogin = false;    ///< even with the right password
    int loginDelay = 0;           ///< or never
    int queryDelay = 0;           ///< or never
    bool deaf = false;            ///< leaves the driver's cancel unanswered too
    QString error = {};           ///< every statement fails with this sentence
    bool errorBehindRows = false; ///< and it comes only behind what the statement gives
    int dropAfter = never; ///< answers so many statements of a connection, cuts the line at the
                           ///< next
    TdsFault loginFault = TdsFault::None;
    TdsFault fault = TdsFault::None; ///< of the statements that the next two tell
    int faultAt = any;               ///< the number of a statement of its connection, from 0
    QString faultWord = {};          ///< is in its text
    quint32 seed = 1;                ///< of the bytes of noise and nonsense
};

/// A small SQL Server for tests and the tour: speaks TDS 7.4 without encryption on a loopback port,
/// from a thread of its own, over a database that is held in memory. It takes the statements that
/// SQLite takes, with or without WITH(NOLOCK), and sends a column in the type that its table
/// declares: tinyint, smallint, int, bigint, decimal(p,s), varchar(n) in the Turkish code page,
/// anything else as nvarchar. A text column declared without a length holds texts of any length.
/// A login with a NUL in the server's name is refused, as strict servers do.
/// Needs a QCoreApplication.
class TdsStandin
{
public:
    static constexpr QStringView user = u"sa";
    static constexpr QStringView password = u"Gizli.Şifre1";
    static constexpr QStringView database = u"LOGODB";

    TdsStandin();
    ~TdsStandin();
    TdsStandin(const TdsStandin &) = delete;
    TdsStandin &operator=(const TdsStandin &) = delete;

    quint16 port() const;
    /// Listens on this port instead; false where somebody else does.
    bool moveTo(quint16 port);
    /// What a user enters as the server's name.
    QString server() const;
    /// Runs a statement on the database, past every wire; gives its rows. A wrong one is fatal.
    QList<QStringList> run(const QString &statement);
    /// Holds for every connection from now on.
    void behave(const StandinManners &manners);
    /// All statements that arrived, word for word, in their order. FreeTDS adds none of its own,
    /// not even at login.
    QStringList statements() const;
    /// How many connections are held at the moment.
    int connections() const;

private:
    template<class Step>
    auto inThread(Step &&step) const;

    std::unique_ptr<StandinThread> m_thread;
    StandinListener *m_listener;
};

/// Makes Logo's firm list, with a row for this firm, and the firm's tables, which are empty.
void fillLogo(TdsStandin &standin, int firm);

} // namespace kervan
