#include "odbc/odbcserver.h"

#include "base/failure.h"
#include "odbc/drivertext.h"
#include "odbc/odbchandle.h"
#include "odbc/sidethread.h"

#include <algorithm>
#include <array>
#include <optional>
#include <system_error>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

using Milliseconds = std::chrono::milliseconds;

// So long a driver may take to tell that a time-out is over.
constexpr auto graceOfTheDriver = Milliseconds(500);

// Reads a field whole: a long one comes in pieces. Null is empty.
QString field(const OdbcHandle &statement, SQLUSMALLINT column)
{
    std::array<SQLWCHAR, 4096> piece{};
    QString text;
    while (true) {
        SQLLEN bytes = 0;
        const SQLRETURN result =
            statement.check(SQLGetData(statement.get(), column, SQL_C_WCHAR, piece.data(),
                                       SQLLEN(piece.size() * sizeof(SQLWCHAR)), &bytes));
        if (result == SQL_NO_DATA || bytes == SQL_NULL_DATA)
            return text;
        // Of a piece that was cut, the driver tells the length of the rest or that it is unknown.
        const qsizetype room = piece.size() - 1;
        const qsizetype length = bytes / SQLLEN(sizeof(SQLWCHAR));
        const bool whole = result == SQL_SUCCESS || (bytes != SQL_NO_TOTAL && length <= room);
        text += fromWide(piece.data(), whole ? length : room);
        if (whole)
            return text;
    }
}

QString columnName(const OdbcHandle &statement, SQLUSMALLINT column)
{
    std::array<SQLWCHAR, 256> name{};
    SQLSMALLINT length = 0;
    statement.check(SQLDescribeColW(statement.get(), column, name.data(), SQLSMALLINT(name.size()),
                                    &length, nullptr, nullptr, nullptr, nullptr));
    return fromWide(name.data(), length);
}

SqlRows readRows(const OdbcHandle &statement, SQLSMALLINT columns)
{
    SqlRows rows;
    for (SQLSMALLINT column = 1; column <= columns; ++column)
        rows.columns << columnName(statement, SQLUSMALLINT(column));
    while (statement.check(SQLFetch(statement.get())) != SQL_NO_DATA) {
        QStringList row;
        for (SQLSMALLINT column = 1; column <= columns; ++column)
            row << field(statement, SQLUSMALLINT(column));
        rows.rows << row;
    }
    return rows;
}

// What the driver holds of a connection; all of it is used and released in one thread, but for the
// look whether the line is dead. Statements are run by the interface's own defaults: no cursor on
// the server, forward only, read only, each on its own in autocommit.
class OdbcLine
{
public:
    OdbcLine(const QString &connectionText, const SqlOptions &options);
    ~OdbcLine() { SQLDisconnect(m_connection.get()); }
    OdbcLine(const OdbcLine &) = delete;
    OdbcLine &operator=(const OdbcLine &) = delete;
    bool isOpen() const;
    SqlRows send(const QString &statement);

private:
    OdbcHandle m_environment{SQL_HANDLE_ENV, nullptr};
    OdbcHandle m_connection{SQL_HANDLE_DBC, &m_environment};
    SqlOptions m_options;
};

OdbcLine::OdbcLine(const QString &connectionText, const SqlOptions &options)
    : m_options(options)
{
    const QString text = driverText(connectionText, chosenDriver(registeredDrivers(m_environment)));
    SQLSetConnectAttrW(m_connection.get(), SQL_ATTR_LOGIN_TIMEOUT,
                       number(SQLULEN(options.connectionTimeout)), SQL_IS_UINTEGER);
    m_connection.check(SQLDriverConnectW(m_connection.get(), nullptr, wide(text), SQL_NTS, nullptr,
                                         0, nullptr, SQL_DRIVER_NOPROMPT));
}

// One that does not open is a Failure; one that is open may lose its line at a statement.
bool OdbcLine::isOpen() const
{
    SQLUINTEGER dead = SQL_CD_FALSE;
    const SQLRETURN result = SQLGetConnectAttrW(m_connection.get(), SQL_ATTR_CONNECTION_DEAD, &dead,
                                                SQL_IS_UINTEGER, nullptr);
    return !SQL_SUCCEEDED(result) || dead == SQL_CD_FALSE;
}

SqlRows OdbcLine::send(const QString &statement)
{
    const OdbcHandle handle(SQL_HANDLE_STMT, &m_connection);
    const auto set = [&](SQLINTEGER attribute, SQLULEN value) {
        handle.check(SQLSetStmtAttrW(handle.get(), attribute, number(value), SQL_IS_UINTEGER));
    };
    set(SQL_ATTR_QUERY_TIMEOUT, SQLULEN(m_options.commandTimeout));
    // Word for word: a driver that heeds this looks for no escapes of its own in the text.
    set(SQL_ATTR_NOSCAN, SQL_NOSCAN_ON);
    handle.check(SQLExecDirectW(handle.get(), wide(statement), SQLINTEGER(statement.size())));
    SqlRows rows;
    do { // an error may hide behind a first, good result, as from a trigger
        SQLSMALLINT columns = 0;
        handle.check(SQLNumResultCols(handle.get(), &columns));
        if (columns > 0 && rows.columns.isEmpty())
            rows = readRows(handle, columns);
    } while (handle.check(SQLMoreResults(handle.get())) != SQL_NO_DATA);
    return rows;
}

/// What a step aside comes to.
template<class Result>
struct Outcome
{
    std::optional<Result> result;
    std::optional<Failure> failed;

    /// Carries the step out; what ends it ends no thread.
    template<class Step>
    void of(Step &&step)
    {
        try {
            failed = passOver([&] { result = step(); });
        } catch (const std::exception &fault) { // no memory for what a wrong length asks for
            failed = Failure(QString::fromLocal8Bit(fault.what()));
        }
    }
    Result take()
    {
        if (failed)
            throw Failure(*failed);
        return std::move(*result);
    }
};

class OdbcConnection : public SqlConnection
{
public:
    OdbcConnection(const SqlOptions &options, AnswerWaiter waiter)
        : m_options(options)
        , m_waiter(std::move(waiter))
    {
    }
    ~OdbcConnection() override;
    OdbcConnection(const OdbcConnection &) = delete;
    OdbcConnection &operator=(const OdbcConnection &) = delete;

    void open(const QString &connectionText);
    // The driver is not asked while it is busy with an answer: it might make us wait for that.
    bool isOpen() const override { return m_line && (!m_thread.isIdle() || m_line->isOpen()); }

protected:
    SqlRows send(const QString &statement) override;

private:
    void waitForAnswer();
    void takeLeave();
    [[noreturn]] void leave(const QString &reason);

    SqlOptions m_options;
    AnswerWaiter m_waiter;
    SideThread m_thread;
    std::shared_ptr<OdbcLine> m_line; // null where it isn't open, or was left
};

OdbcConnection::~OdbcConnection()
{
    if (!m_line)
        return;
    const bool isBusy = !m_thread.isIdle();
    takeLeave();
    if (!isBusy)
        m_thread.isDoneWithin(graceOfTheDriver);
}

// Of the server, in the driver's own thread, behind what it is still about.
void OdbcConnection::takeLeave()
{
    m_thread.begin([line = std::move(m_line)]() mutable { line.reset(); });
}

void OdbcConnection::open(const QString &connectionText)
{
    const auto outcome = std::make_shared<Outcome<std::shared_ptr<OdbcLine>>>();
    m_thread.begin([outcome, connectionText, options = m_options] {
        outcome->of([&] { return std::make_shared<OdbcLine>(connectionText, options); });
    });
    const auto limit = std::chrono::seconds(m_options.connectionTimeout) + graceOfTheDriver;
    if (m_options.connectionTimeout == 0)
        m_thread.wait();
    else if (!m_thread.isDoneWithin(limit))
        throw Failure(
            u"SQL Server %1 saniye içinde bulunamadı."_s.arg(m_options.connectionTimeout));
    m_line = outcome->take();
}

SqlRows OdbcConnection::send(const QString &statement)
{
    if (m_line && !m_thread.isIdle())
        throw Failure(u"SQL Server'dan bir yanıt daha bekleniyor."_s);
    if (!isOpen())
        throw Failure(u"SQL Server ile bağlantı kopmuş; yeniden bağlanmak gerekir."_s);
    const auto outcome = std::make_shared<Outcome<SqlRows>>();
    m_thread.begin([outcome, line = m_line, statement] {
        outcome->of([&] { return line->send(statement); });
    });
    waitForAnswer();
    return outcome->take();
}

void OdbcConnection::waitForAnswer()
{
    // A driver waits as long again for the server's answer to its cancel.
    const auto limit = 2 * std::chrono::seconds(m_options.commandTimeout) + graceOfTheDriver;
    if (m_options.commandTimeout > 0) {
        if (!m_thread.isDoneWithin(limit))
            leave(u"SQL Server zamanında yanıt vermedi."_s);
        return;
    }
    if (!m_waiter)
        return m_thread.wait();
    const bool hasCome =
        m_waiter([this](Milliseconds time) { return m_thread.isDoneWithin(time); });
    if (!hasCome)
        leave(u"Logo'nun yanıtı beklenmedi; yeniden bağlanmak gerekir."_s);
}

// What the driver still touches belongs to its thread from now on.
void OdbcConnection::leave(const QString &reason)
{
    takeLeave();
    throw Failure(reason);
}

} // namespace

std::unique_ptr<SqlConnection> OdbcServer::connect(const QString &connectionText,
                                                   const SqlOptions &options)
{
    try {
        auto connection = std::make_unique<OdbcConnection>(options, m_waiter);
        connection->open(connectionText);
        return connection;
    } catch (const std::system_error &) {
        throw Failure(u"SQL Server bağlantısı için iş parçacığı açılamadı."_s);
    }
}

} // namespace kervan
