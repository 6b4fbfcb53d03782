#pragma once

#include "base/failure.h"
#include "base/statement.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

namespace kervan {

/// The small SQL engine over the local database files: one connection and one result, shared by
/// all screens and open only around a use. It takes one statement a call, and only these:
///   select * from T [where C='v']      insert into T values (Null,'v',...)
///   update T set C='v',... where id='v'  delete from T [where id='v']
/// A written row is there at once for whoever opens the file, but within a TogetherInDb; a
/// statement that fails takes nothing back.
class LocalDb
{
public:
    LocalDb();
    ~LocalDb();
    LocalDb(const LocalDb &) = delete;
    LocalDb &operator=(const LocalDb &) = delete;

    /// Makes an existing file current. A missing one is a Failure and is not created.
    void open(const QString &path);
    /// Takes into the file what a killed program left in a log beside it, and rolls back what it
    /// left half done. A file that another program has open stays as it is.
    void foldIn(const QString &path);
    /// Runs one statement and makes its rows the result. A Failure names the statement's fault, and
    /// its headline the file and the fault alone.
    void query(const Statement &statement);
    /// Releases the file.
    void close();

    bool atEnd() const { return m_atEnd; }
    /// A file that can't be read any further is a Failure.
    void next();
    /// Runs a select and calls take() with each row as the current one.
    template<class Take>
    void forEach(const Statement &select, Take &&take)
    {
        for (query(select); !atEnd(); next())
            take();
    }
    /// Text of the current row's column. A missing row or column is a Failure.
    QString field(QStringView column) const;

    /// The names of the files that could not be opened, read or written since forgetFailures(),
    /// whoever passed over that, and of one among them that another program held; empty for none.
    const QStringList &failedFiles() const { return m_failedFiles; }
    const QString &heldFile() const { return m_heldFile; }
    void forgetFailures();

private:
    friend class TogetherInDb;
    void begin();
    void commit();
    void execute(const QString &text);
    /// Tells by a Failure what the statement's last step met.
    [[noreturn]] void fail(const QString &text);
    /// Of the file that is open, or was last.
    QString fileName() const;
    /// A Failure whose headline names it.
    Failure failure(const QString &description, const QString &fault) const;
    void keepFailure(const QString &file, bool isHeld);
    void quickenWrites();

    QString m_connection;
    QSqlQuery m_result;
    bool m_atEnd = true;
    int m_writes = 0;
    QStringList m_failedFiles;
    QString m_heldFile;
    bool m_isOnNetwork = false;
    bool m_together = false; // the rows are kept back until commit()
};

/// Lets what is written in a scope appear together at its end, whether a failure ends it or not: a
/// program that is killed in its midst leaves the file as it was.
class TogetherInDb
{
public:
    explicit TogetherInDb(LocalDb &db)
        : m_db(db)
    {
        m_db.begin();
    }
    ~TogetherInDb()
    {
        passOver([this] { m_db.commit(); });
    }
    TogetherInDb(const TogetherInDb &) = delete;
    TogetherInDb &operator=(const TogetherInDb &) = delete;

    /// Ends it before the scope does; a Failure tells why nothing was written.
    void commit() { m_db.commit(); }

private:
    LocalDb &m_db;
};

/// Opens a file for the length of a scope.
class OpenDb
{
public:
    OpenDb(LocalDb &db, const QString &path)
        : m_db(db)
    {
        m_db.open(path);
    }
    ~OpenDb() { m_db.close(); }
    OpenDb(const OpenDb &) = delete;
    OpenDb &operator=(const OpenDb &) = delete;

private:
    LocalDb &m_db;
};

} // namespace kervan
