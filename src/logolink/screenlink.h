#pragma once

#include "base/fields.h"
#include "base/sqlserver.h"
#include "logolink/sqlsettings.h"
#include "store/program.h"

#include <memory>

namespace kervan {

/// The Logo connection that a transfer screen holds from its opening to its end.
class ScreenLink
{
public:
    explicit ScreenLink(Program &program)
        : m_program(program)
    {
    }

    /// Reads the side file and connects. A missing or short file ends it silently; an empty line
    /// shows a box and leaves the screen unconnected.
    void sqlyukle();

    /// Sends a statement over the connection; without one it is a Failure. Where the line was lost
    /// by it, `durum` says so.
    SqlRows run(const Statement &statement);

    /// A reading begins, of which the next two tell.
    void beginReading() { m_isUnanswered = m_isRefused = false; }
    /// Whether a statement has remained without an answer.
    bool isUnanswered() const { return m_isUnanswered; }
    /// Whether one was not sent, and never will be, for a value that comes from the source.
    bool isRefused() const { return m_isRefused; }

    Busy &busy() { return m_program.busy; }

    TextField durum{QStringLiteral("SQL Bağlantı Yok")};
    QString firmakod; ///< the firm line

private:
    void sqlbaglan(const SqlSettings &settings);

    Program &m_program;
    std::shared_ptr<SqlConnection> m_connection;
    bool m_isUnanswered = false;
    bool m_isRefused = false;
};

} // namespace kervan
