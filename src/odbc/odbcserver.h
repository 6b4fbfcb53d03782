#pragma once

#include "base/sqlserver.h"

namespace kervan {

/// Reaches SQL Servers through the machine's ODBC driver. Connecting and running block up to the
/// time-outs of the options; what the driver or the server says against them is the description of
/// the Failure, several sentences on lines of their own.
class OdbcServer : public SqlServer
{
public:
    std::unique_ptr<SqlConnection> connect(const QString &connectionText,
                                           const SqlOptions &options) override;
};

} // namespace kervan
