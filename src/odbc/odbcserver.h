#pragma once

#include "base/sqlserver.h"

#include <chrono>
#include <functional>

namespace kervan {

/// Takes over the wait for an answer that is long in coming: gives true when it has come, false
/// when it is no longer wanted. What it is given waits so long at most, and tells whether it has
/// come.
using LongWait = std::function<bool(const std::function<bool(std::chrono::milliseconds)> &hasCome)>;

/// Reaches SQL Servers through the machine's ODBC driver. Connecting and running block up to the
/// time-outs of the options; what the driver or the server says against them is the description of
/// the Failure, several sentences on lines of their own.
///
/// The driver works aside, since it keeps to no time-out of its own while it looks for a host or
/// reads an answer that makes no sense. Where it comes too late it is left behind, and with it the
/// connection, which is lost from then on.
class OdbcServer : public SqlServer
{
public:
    /// Who takes over behind a silence where an answer has no time-out; slow answers one after the
    /// other share one silence. While there is nobody, it is waited for in any case. Of the
    /// connections that are made from now on.
    void waitBy(LongWait longWait, std::chrono::milliseconds silence = std::chrono::seconds(2))
    {
        m_longWait = std::move(longWait);
        m_silence = silence;
    }

    std::unique_ptr<SqlConnection> connect(const QString &connectionText,
                                           const SqlOptions &options) override;

private:
    LongWait m_longWait;
    std::chrono::milliseconds m_silence{0};
};

} // namespace kervan
