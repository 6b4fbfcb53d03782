#pragma once

#include "base/statement.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace kervan {

enum class Icon { None, Information, Exclamation, Stop, Question };

/// What a modal box shows. An empty title stands for the program's own name.
struct Box
{
    QString text;
    QString title = {};
    Icon icon = Icon::None;
};

/// The only door to modal boxes.
class Boxes
{
public:
    virtual ~Boxes() = default;
    /// Shows the box until it is confirmed.
    virtual void show(const Box &box) = 0;
    /// Shows the box with Yes and No; true for Yes.
    virtual bool ask(const Box &box) = 0;
};

/// What a file dialog starts with. `start` is a folder or a full file name; `filter` is one
/// label and its patterns, as in "Bif Dosyaları (bif)|*.bif;*.txt".
struct FileQuestion
{
    QString title;
    QString filter;
    QString start;
};

/// The only door to file dialogs. Both give the chosen full name, or nothing on cancel.
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;
    virtual std::optional<QString> openName(const FileQuestion &question) = 0;
    virtual std::optional<QString> saveName(const FileQuestion &question) = 0;
};

/// Local date and time of the moment.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

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
