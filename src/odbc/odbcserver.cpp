#include "odbc/odbcserver.h"

#include "base/failure.h"
#include "odbc/drivertext.h"
#include "odbc/odbchandle.h"

#include <array>
#include <chrono>
#include <future>
#include <thread>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// So long a driver may take to tell that its login time-out is over.
constexpr auto graceOfTheDriver = std::chrono::milliseconds(500);

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

// Statements are run by the interface's own defaults: no cursor on the server, forward only, read
// only, each on its own in autocommit.
class OdbcConnection : public SqlConnection
{
public:
    OdbcConnection(const QString &connectionText, const SqlOptions &options);
    ~OdbcConnection() override { SQLDisconnect(m_connection.get()); }
    OdbcConnection(const OdbcConnection &) = delete;
    OdbcConnection &operator=(const OdbcConnection &) = delete;
    bool isOpen() const override;

protected:
    SqlRows send(const QString &statement) override;

private:
    OdbcHandle m_environment{SQL_HANDLE_ENV, nullptr};
    OdbcHandle m_connection{SQL_HANDLE_DBC, &m_environment};
    SqlOptions m_options;
};

OdbcConnection::OdbcConnection(const QString &connectionText, const SqlOptions &options)
    : m_options(options)
{
    const QString text = driverText(connectionText, chosenDriver(registeredDrivers(m_environment)));
    SQLSetConnectAttrW(m_connection.get(), SQL_ATTR_LOGIN_TIMEOUT,
                       number(SQLULEN(options.connectionTimeout)), SQL_IS_UINTEGER);
    m_connection.check(SQLDriverConnectW(m_connection.get(), nullptr, wide(text), SQL_NTS, nullptr,
                                         0, nullptr, SQL_DRIVER_NOPROMPT));
}

// One that does not open is a Failure; one that is open may lose its line at a statement.
bool OdbcConnection::isOpen() const
{
    SQLUINTEGER dead = SQL_CD_FALSE;
    const SQLRETURN result = SQLGetConnectAttrW(m_connection.get(), SQL_ATTR_CONNECTION_DEAD, &dead,
                                                SQL_IS_UINTEGER, nullptr);
    return !SQL_SUCCEEDED(result) || dead == SQL_CD_FALSE;
}

SqlRows OdbcConnection::send(const QString &statement)
{
    if (!isOpen())
        throw Failure(u"SQL Server ile bağlantı kopmuş; yeniden bağlanmak gerekir."_s);
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

} // namespace

std::unique_ptr<SqlConnection> OdbcServer::connect(const QString &connectionText,
                                                   const SqlOptions &options)
{
    // A driver keeps the login time-out only once it has an address: finding the host's, or the
    // port of an instance, may take it much longer. So it tries aside, and is left to end by itself
    // when it comes too late. Nor is it waited for at the end of the program, which closing the
    // frame ends at once: the attempt has nothing but its own texts and handles, and ends with the
    // process. Nor does it use QRegularExpression: that keeps a variable of its thread, which MinGW
    // frees before its destructor runs, so the program would crash behind each attempt.
    std::packaged_task<std::unique_ptr<SqlConnection>()> opening(
        [=] { return std::make_unique<OdbcConnection>(connectionText, options); });
    auto opened = opening.get_future();
    try {
        std::thread(std::move(opening)).detach();
    } catch (const std::system_error &) {
        throw Failure(u"SQL Server bağlantısı için iş parçacığı açılamadı."_s);
    }
    const auto limit = std::chrono::seconds(options.connectionTimeout) + graceOfTheDriver;
    if (options.connectionTimeout > 0 && opened.wait_for(limit) == std::future_status::timeout)
        throw Failure(u"SQL Server %1 saniye içinde bulunamadı."_s.arg(options.connectionTimeout));
    return opened.get();
}

} // namespace kervan
