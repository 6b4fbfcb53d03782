#pragma once

#include "base/statement.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace kervan {

/// The result of a statement, all text; a null field is an empty one.
struct SqlRows
{
    QStringList columns;
    QList<QStringList> rows;

    bool isEmpty() const { return rows.isEmpty(); }
    /// A field by the name of its column, whatever its case. A missing one is a Failure.
    const QString &value(int row, QStringView column) const;
};

/// A connection to a SQL Server; released with the object.
class SqlConnection
{
public:
    virtual ~SqlConnection() = default;
    virtual bool isOpen() const = 0;
    /// Sends a statement word for word, in one round trip, and gives its rows, if it has any. What
    /// the server or the line says against it is a Failure, and so is a value that would not stay
    /// where it was put; such a statement is not sent.
    SqlRows run(const Statement &statement);

protected:
    virtual SqlRows send(const QString &statement) = 0;
};

/// Time-outs of a connection in seconds; 0 is no limit.
struct SqlOptions
{
    int commandTimeout = 0;
    int connectionTimeout = 0;
};

/// Makes connections to SQL Servers.
class SqlServer
{
public:
    virtual ~SqlServer() = default;
    /// Opens a connection by its connection text ("Server=...;...;"). A Failure tells why not.
    virtual std::unique_ptr<SqlConnection> connect(const QString &connectionText,
                                                   const SqlOptions &options) = 0;
};

} // namespace kervan
