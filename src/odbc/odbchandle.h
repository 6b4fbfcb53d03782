#pragma once

#include <QString>
#include <QStringList>

#ifdef Q_OS_WIN
#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

#include <utility>

namespace kervan {

/// A handle of the ODBC interface, released with the object.
class OdbcHandle
{
public:
    /// Makes a handle of a type (SQL_HANDLE_...) in another, which has to outlive it; no other
    /// makes an environment. Out of memory is a Failure.
    OdbcHandle(SQLSMALLINT type, const OdbcHandle *parent);
    ~OdbcHandle() { SQLFreeHandle(m_type, m_handle); }
    OdbcHandle(const OdbcHandle &) = delete;
    OdbcHandle &operator=(const OdbcHandle &) = delete;

    SQLHANDLE get() const { return m_handle; }
    /// Passes on the result of a call on this handle; an error in it is a Failure with what the
    /// driver tells.
    SQLRETURN check(SQLRETURN result) const;

private:
    QString diagnosis() const;

    SQLSMALLINT m_type;
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

/// A text in the shape that the interface's wide calls take; it may not outlive the QString.
inline SQLWCHAR *wide(const QString &text)
{
    static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));
    // The calls take texts that they only read without const.
    return const_cast<SQLWCHAR *>(reinterpret_cast<const SQLWCHAR *>(text.utf16()));
}

/// A number in the shape in which attributes are set.
inline SQLPOINTER number(SQLULEN value)
{
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr)
}

inline QString fromWide(const SQLWCHAR *text, qsizetype length)
{
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(text), length);
}

/// The names of the drivers that are registered on the machine.
QStringList registeredDrivers(const OdbcHandle &environment);

} // namespace kervan
