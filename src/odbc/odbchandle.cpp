#include "odbc/odbchandle.h"

#include "base/failure.h"
#include "odbc/drivertext.h"
#include "odbc/faults.h"

#include <algorithm>
#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

OdbcHandle::OdbcHandle(SQLSMALLINT type, const OdbcHandle *parent)
    : m_type(type)
{
    const SQLRETURN result =
        SQLAllocHandle(type, parent ? parent->get() : SQL_NULL_HANDLE, &m_handle);
    if (!SQL_SUCCEEDED(result))
        throw Failure(u"ODBC kullanılamıyor."_s);
    if (type == SQL_HANDLE_ENV)
        SQLSetEnvAttr(m_handle, SQL_ATTR_ODBC_VERSION, number(SQL_OV_ODBC3), 0);
}

SQLRETURN OdbcHandle::check(SQLRETURN result) const
{
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA)
        throw Failure(diagnosis());
    return result;
}

QString OdbcHandle::diagnosis() const
{
    constexpr SQLINTEGER newDatabase = 5701;
    constexpr SQLINTEGER newLanguage = 5703;
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, SQL_MAX_MESSAGE_LENGTH * 4> text{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    QList<Diagnosis> records;
    for (SQLSMALLINT record = 1;
         SQL_SUCCEEDED(SQLGetDiagRecW(m_type, m_handle, record, state.data(), &native, text.data(),
                                      SQLSMALLINT(text.size()), &length));
         ++record) {
        const auto told = std::min<qsizetype>(length, text.size() - 1);
        if (native != newDatabase && native != newLanguage)
            records.append(
                {fromWide(state.data(), 5), int(native), sentenceOf(fromWide(text.data(), told))});
    }
    return descriptionOf(records);
}

QStringList registeredDrivers(const OdbcHandle &environment)
{
    QStringList names;
    std::array<SQLWCHAR, 256> name{};
    SQLSMALLINT length = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(SQLDriversW(environment.get(), direction, name.data(),
                                     SQLSMALLINT(name.size()), &length, nullptr, 0, nullptr))) {
        names << fromWide(name.data(), length);
        direction = SQL_FETCH_NEXT;
    }
    return names;
}

} // namespace kervan
