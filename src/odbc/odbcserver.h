#pragma once

#include "base/sqlserver.h"

#include <chrono>
#include <functional>

namespace kervan {

/// Waits for an answer: gives true when it has come, false when it is no longer wanted. What it is
/// given waits so long at most, and tells whether the answer has come.
using AnswerWaiter =
    std::function<bool(const std::function<bool(std::chrono::milliseconds)> &hasCome)>;

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
    /// Who waits for the answers that have no time-out, on the connections that are made from now
    /// on. While there is nobody, they are waited for in any case.
    void waitBy(AnswerWaiter waiter) { m_waiter = std::move(waiter); }

    std::unique_ptr<SqlConnection> connect(const QString &connectionText,
                                           const SqlOptions &options) override;

private:
    AnswerWaiter m_waiter;
};

} // namespace kervan
