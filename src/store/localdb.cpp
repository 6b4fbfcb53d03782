#include "store/localdb.h"

#include "base/filefault.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlRecord>
#include <QStorageInfo>
#include <QUrl>

#include <array>
#include <atomic>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr auto busyMilliseconds = 1000;
// The engine's results; what lies above their first byte tells the kind.
constexpr int primaryResult = 0xff;
constexpr int busyResult = 5;

bool isOfTheLanguage(const QString &text)
{
    static const QRegularExpression language(
        u"\\A\\s*(?:"
        "select\\s+\\*\\s+from\\s+\\w+(?:\\s+where\\s+\\w+\\s*=\\s*'[^']*+')?"
        "|insert\\s+into\\s+\\w+\\s+values\\s*\\(\\s*(?:null\\s*,\\s*)?'[^']*+'"
        "(?:\\s*,\\s*'[^']*+')*+\\s*\\)"
        "|update\\s+\\w+\\s+set\\s+\\w+\\s*=\\s*'[^']*+'(?:\\s*,\\s*\\w+\\s*=\\s*'[^']*+')*+"
        "\\s*where\\s+id\\s*=\\s*'[^']*+'"
        "|delete\\s+from\\s+\\w+(?:\\s+where\\s+id\\s*=\\s*'[^']*+')?"
        ")\\s*\\z"_s,
        QRegularExpression::CaseInsensitiveOption);
    return !text.contains(QChar(u'\0')) && language.match(text).hasMatch();
}

// What the engine says most, by how it begins.
struct Fault
{
    QStringView engine;
    QStringView text;
};
constexpr auto faults = std::to_array<Fault>({
    {u"file is not a database", u"dosya bir veritabanı değil ya da bozuk"},
    {u"database disk image is malformed", u"veritabanı bozuk"},
    {u"database is locked", u"veritabanı başka bir programda açık"},
    {u"database table is locked", u"veritabanı başka bir programda açık"},
    {u"unable to open database file", u"veritabanı açılamıyor"},
    {u"disk I/O error", u"disk hata veriyor"},
    {u"database or disk is full", u"disk dolu"},
    {u"attempt to write a readonly database", u"veritabanı salt okunur"},
    {u"no such table", u"veritabanında bu tablo yok"},
    {u"no such column", u"veritabanında bu alan yok"},
    {u"access permission denied", u"veritabanına izin yok"},
    {u"out of memory", u"bellek yetmiyor"},
});

// The engine's own sentence stands behind the words, for whoever is asked for help.
QString faultOf(const QSqlError &error)
{
    QString own = error.databaseText();
    for (const Fault &fault : faults) {
        if (own.startsWith(fault.engine))
            return u"%1 (%2)"_s.arg(fault.text, own);
    }
    return own;
}

bool isHeld(const QSqlError &error)
{
    return (error.nativeErrorCode().toInt() & primaryResult) == busyResult;
}

// "mode=rw" keeps the engine from creating a file that isn't there. The engine refuses an address
// that names a host, so a server on the network stands in its path.
QString existingFile(const QString &path)
{
    const QString name = QDir::fromNativeSeparators(path);
    return (name.startsWith(u"//") ? u"file://%1?mode=rw"_s : u"file:%1?mode=rw"_s)
        .arg(QString::fromLatin1(QUrl::toPercentEncoding(name, "/:")));
}

// Whether other machines may have the file open too.
bool isOnNetwork(const QString &path)
{
    const QString name = QFileInfo(path).absoluteFilePath();
#ifdef Q_OS_WIN
    return isOfOtherMachine(name);
#else
    static const QList<QByteArray> systems{"nfs", "nfs4", "cifs", "smb3", "smbfs", "fuse.sshfs"};
    return isOfOtherMachine(name) || systems.contains(QStorageInfo(name).fileSystemType());
#endif
}

} // namespace

LocalDb::LocalDb()
{
    static std::atomic<int> made = 0;
    m_connection = u"local%1"_s.arg(++made);
    QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connection);
    db.setConnectOptions(u"QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1"_s.arg(busyMilliseconds));
}

LocalDb::~LocalDb()
{
    m_result = QSqlQuery();
    QSqlDatabase::database(m_connection, false).close();
    QSqlDatabase::removeDatabase(m_connection);
}

void LocalDb::open(const QString &path)
{
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    if (db.isOpen())
        close();
    db.setDatabaseName(existingFile(path));
    m_isOnNetwork = isOnNetwork(path);
    if (!db.open()) {
        keepFailure(QFileInfo(path).fileName(), isHeld(db.lastError()) || isOpenElsewhere(path));
        throw fileFailure(path, u"açılamadı"_s,
                          QFileInfo::exists(path)
                              ? faultOf(db.lastError())
                              : u"dosya yok (%1)"_s.arg(db.lastError().databaseText()));
    }
}

void LocalDb::foldIn(const QString &path)
{
    open(path);
    m_result = QSqlQuery(QSqlDatabase::database(m_connection, false));
    const bool isFree = m_result.exec(u"pragma schema_version"_s); // the first look rolls back
    m_result.finish();
    if (!isFree) // to be waited for once
        return close();
    m_result.exec(u"pragma journal_mode=delete"_s); // what stands in a log goes into the file
    // One that the engine had not begun to trust is passed over until it is told to part with it.
    if (QFile::exists(path + u"-journal"_s)) {
        m_result.exec(u"pragma journal_mode=persist"_s);
        m_result.exec(u"pragma journal_mode=delete"_s);
    }
    close();
}

void LocalDb::execute(const QString &text)
{
    if (!m_result.exec(text))
        fail(text);
}

void LocalDb::fail(const QString &text)
{
    const QSqlError error = m_result.lastError();
    keepFailure(fileName(), isHeld(error));
    // A file that another program holds is waited for once, not at each statement of a long read.
    if (isHeld(error))
        m_result.exec(u"pragma busy_timeout=0"_s);
    throw failure(u"%1 (%2)"_s.arg(faultOf(error), text.left(200)), faultOf(error));
}

void LocalDb::forgetFailures()
{
    m_failedFiles.clear();
    m_heldFile.clear();
}

void LocalDb::keepFailure(const QString &file, bool isHeld)
{
    if (!m_failedFiles.contains(file))
        m_failedFiles << file;
    if (isHeld)
        m_heldFile = file;
}

QString LocalDb::fileName() const
{
    const QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    return QFileInfo(QUrl(db.databaseName()).path()).fileName();
}

Failure LocalDb::failure(const QString &description, const QString &fault) const
{
    return Failure(description, u"%1: %2"_s.arg(fileName(), fault));
}

void LocalDb::query(const Statement &statement)
{
    m_atEnd = true;
    if (const auto &value = statement.breakingValue()) {
        const QString mark = value->contains(QChar(u'\0')) ? u"görünmez NUL harfi"_s
                             : value->isValidUtf16()       ? u"kesme işareti"_s
                                                           : u"yarım harf"_s;
        throw Failure(u"Değerdeki %1 deyimi bozuyor: %2"_s.arg(mark, value->left(200)));
    }
    const QString &text = statement.text();
    if (!isOfTheLanguage(text))
        throw Failure(u"Deyim anlaşılamadı: %1"_s.arg(text.left(200)));
    const QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    if (!db.isOpen())
        throw Failure(u"Veritabanı açık değil."_s);
    m_result = QSqlQuery(db);
    m_result.setForwardOnly(true);
    if (text.trimmed().startsWith(u"select"_s, Qt::CaseInsensitive)) {
        execute(text);
        next();
        return;
    }
    if (!m_together && ++m_writes == 2)
        quickenWrites();
    execute(text);
}

void LocalDb::begin()
{
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    m_together = db.isOpen() && db.transaction();
}

void LocalDb::commit()
{
    if (!std::exchange(m_together, false))
        return;
    m_result.finish(); // a statement that still runs would keep the rows back
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    if (db.commit())
        return;
    const QString fault = faultOf(db.lastError());
    db.rollback();
    throw Failure(u"Değişiklikler kaydedilemedi: %1"_s.arg(fault));
}

// Each written row is there at once. With a write-ahead log that costs no waiting for the
// disk at every row, which a table of thousands of rows would feel; close() takes the log away
// again.
void LocalDb::quickenWrites()
{
    if (m_isOnNetwork) // a log is kept together by memory that machines don't share
        return;
    m_result.exec(u"pragma journal_mode=wal"_s);
    m_result.exec(u"pragma synchronous=normal"_s);
}

void LocalDb::close()
{
    m_atEnd = true;
    if (m_writes > 1) {
        m_result.finish();
        m_result.exec(u"pragma journal_mode=delete"_s);
    }
    m_writes = 0;
    m_result = QSqlQuery();
    QSqlDatabase::database(m_connection, false).close();
}

void LocalDb::next()
{
    m_atEnd = !m_result.next();
    if (m_atEnd && m_result.lastError().isValid())
        fail(m_result.lastQuery());
}

QString LocalDb::field(QStringView column) const
{
    const int index = m_atEnd ? -1 : m_result.record().indexOf(column.toString());
    if (index < 0) {
        const QString fault = u"%1 alanı okunamadı."_s.arg(column);
        throw failure(fault, fault);
    }
    return m_result.value(index).toString();
}

} // namespace kervan
