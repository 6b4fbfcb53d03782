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

    /// Whether a statement of it has remained without an answer. One that was not sent for its
    /// value is none of those: it would never be.
    bool isUnanswered() const { return m_isUnanswered; }

    Busy &busy() { return m_program.busy; }

    TextField durum{QStringLiteral("SQL Bağlantı Yok")};
    QString firmakod; ///< the firm line

private:
    void sqlbaglan(const SqlSettings &settings);

    Program &m_program;
    std::shared_ptr<SqlConnection> m_connection;
    bool m_isUnanswered = false;
};

} // namespace kervan
