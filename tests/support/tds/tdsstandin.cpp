#include "support/tds/tdsstandin.h"

#include "support/tds/tdswire.h"

#include <QCoreApplication>
#include <QNetworkProxy>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace kervan {

using namespace Qt::StringLiterals;

/// Everything that lives in the stand-in's thread.
class StandinListener : public QTcpServer
{
public:
    StandinListener();
    ~StandinListener() override;
    /// The answer to a statement: its rows or an error.
    QByteArray answer(const QString &statement);
    QByteArray loginAnswerTo(const TdsLogin &login) const;
    QList<QStringList> run(const QString &statement);

    StandinManners manners;
    QStringList statements;
    int connections = 0;

private:
    QList<TdsColumn> columnsOf(const QString &select);

    QSqlDatabase m_database;
};

namespace {

QByteArray failed(int error, const QString &sentence)
{
    return errorToken(error, sentence) + doneToken(TdsEnd::Error);
}

// The others come when the statement is done.
bool isCarriedOut(TdsFault fault)
{
    return fault != TdsFault::Hang && fault != TdsFault::CutBefore && fault != TdsFault::Refusal;
}

/// One connection.
class Session : public QObject
{
public:
    Session(QTcpSocket *socket, StandinListener &listener);
    ~Session() override { --m_listener.connections; }

private:
    void read();
    void take(TdsPacket type, const QByteArray &message);
    void takeStatement(const QString &statement);
    void cancel();
    void sendAfter(int delay, const QByteArray &answer);
    void sendSpoilt(TdsFault fault, const QByteArray &answer);
    QByteArray noise(qsizetype size) const;
    void send(const QByteArray &answer) { m_socket->write(tdsPackets(TdsPacket::Answer, answer)); }

    QTcpSocket *m_socket;
    StandinListener &m_listener;
    QTimer m_late;
    QByteArray m_lateAnswer;
    QByteArray m_bytes;
    QByteArray m_message;
    int m_answered = 0;
};

Session::Session(QTcpSocket *socket, StandinListener &listener)
    : QObject(socket)
    , m_socket(socket)
    , m_listener(listener)
{
    ++m_listener.connections;
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_late.setSingleShot(true);
    connect(&m_late, &QTimer::timeout, this, [this] { send(m_lateAnswer); });
    connect(socket, &QTcpSocket::readyRead, this, &Session::read);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
}

void Session::read()
{
    constexpr qsizetype headSize = 8;
    m_bytes += m_socket->readAll();
    while (m_bytes.size() >= headSize) {
        const qsizetype size = qFromBigEndian<quint16>(m_bytes.constData() + 2);
        if (size < headSize)
            return m_socket->abort();
        if (m_bytes.size() < size)
            return;
        const bool last = m_bytes.at(1) & 1;
        const auto type = TdsPacket(m_bytes.at(0));
        m_message += m_bytes.mid(headSize, size - headSize);
        m_bytes.remove(0, size);
        if (last)
            take(type, std::exchange(m_message, {}));
    }
}

void Session::take(TdsPacket type, const QByteArray &message)
{
    switch (type) {
    case TdsPacket::Prelogin:
        return send(preloginAnswer());
    case TdsPacket::Login: {
        const StandinManners &manners = m_listener.manners;
        const QByteArray answer = m_listener.loginAnswerTo(readLogin(message));
        if (manners.loginFault != TdsFault::None)
            return sendSpoilt(manners.loginFault, answer);
        return sendAfter(manners.loginDelay, answer);
    }
    case TdsPacket::Batch:
        return takeStatement(readBatch(message));
    case TdsPacket::Attention:
        return cancel();
    case TdsPacket::Answer:
        break;
    }
    m_socket->abort();
}

void Session::takeStatement(const QString &statement)
{
    const StandinManners &manners = m_listener.manners;
    m_listener.statements << statement;
    if (m_answered == manners.dropAfter)
        return m_socket->abort();
    const int place = m_answered++;
    if (manners.fault != TdsFault::None &&
        (manners.faultAt == StandinManners::any || manners.faultAt == place) &&
        statement.contains(manners.faultWord))
        return sendSpoilt(manners.fault, isCarriedOut(manners.fault) ? m_listener.answer(statement)
                                                                     : QByteArray());
    sendAfter(manners.queryDelay, m_listener.answer(statement));
}

QByteArray Session::noise(qsizetype size) const
{
    QRandomGenerator random(m_listener.manners.seed);
    QByteArray bytes(size, 0);
    std::ranges::generate(bytes, [&] { return char(random.bounded(256)); });
    return bytes;
}

void Session::cancel()
{
    if (m_listener.manners.deaf)
        return;
    m_late.stop();
    send(doneToken(TdsEnd::Cancelled));
}

void Session::sendAfter(int delay, const QByteArray &answer)
{
    m_lateAnswer = answer;
    if (delay == 0)
        send(answer);
    else if (delay != StandinManners::never)
        m_late.start(delay);
}

void Session::sendSpoilt(TdsFault fault, const QByteArray &answer)
{
    constexpr int moment = 300;
    constexpr int refusal = 50000;
    constexpr qsizetype lengthPlace = 2; // in a packet
    QByteArray packets = tdsPackets(TdsPacket::Answer, answer);
    switch (fault) {
    case TdsFault::None:
        return send(answer);
    case TdsFault::Hang:
        return;
    case TdsFault::Late:
        return sendAfter(moment, answer);
    case TdsFault::CutBefore:
        return m_socket->abort();
    case TdsFault::CutAmid:
        m_socket->write(packets.first(packets.size() / 2));
        return m_socket->disconnectFromHost();
    case TdsFault::CutBehind:
        m_socket->write(packets);
        return m_socket->disconnectFromHost();
    case TdsFault::Refusal:
        return send(failed(refusal, u"olmaz"_s));
    case TdsFault::Noise:
        m_socket->write(noise(packets.size()));
        return;
    case TdsFault::Nonsense:
        return send(noise(answer.size()));
    case TdsFault::LongPacket:
        packets[lengthPlace] = char(packets[lengthPlace] + 1); // by 256 bytes
        m_socket->write(packets);
        return;
    case TdsFault::LongToken: {
        QByteArray longer = answer;
        longer[1] = char(0xFF); // columns, or bytes
        longer[2] = char(0x7F);
        return send(longer);
    }
    case TdsFault::NoEnd:
        return send(answer.chopped(8));
    }
}

qsizetype writeRows(TdsWriter &answer, const QList<TdsColumn> &columns, QSqlQuery &query)
{
    constexpr int columnsKind = 0x81;
    constexpr int rowKind = 0xD1;
    answer.byte(columnsKind).number(quint16(columns.size()));
    for (const TdsColumn &column : columns)
        column.writeHead(answer);
    qsizetype rows = 0;
    for (; query.next(); ++rows) {
        answer.byte(rowKind);
        for (int i = 0; i < columns.size(); ++i)
            columns[i].writeValue(answer, query.value(i));
    }
    return rows;
}

} // namespace

StandinListener::StandinListener()
{
    m_database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"standin%1"_s.arg(quintptr(this)));
    m_database.setDatabaseName(u":memory:"_s);
    setProxy(QNetworkProxy::NoProxy); // which Windows is asked for by patterns, too
    if (!m_database.open() || !listen(QHostAddress::LocalHost))
        qFatal("the stand-in does not start");
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = nextPendingConnection())
            new Session(socket, *this);
    });
}

StandinListener::~StandinListener()
{
    close();
    qDeleteAll(findChildren<QTcpSocket *>());
    const QString name = m_database.connectionName();
    m_database = {};
    QSqlDatabase::removeDatabase(name);
}

QByteArray StandinListener::loginAnswerTo(const TdsLogin &login) const
{
    constexpr int wrongProtocol = 17803;
    constexpr int noSuchDatabase = 4060;
    constexpr int loginFailed = 18456;
    if (login.server.contains(QChar(u'\0')))
        return failed(wrongProtocol, u"invalid byte sequence in the name of the server: 0x00"_s);
    const QString refusal = u"Login failed for user '%1'."_s.arg(login.user);
    if (manners.refusesLogin || login.user != TdsStandin::user ||
        login.password != TdsStandin::password)
        return failed(loginFailed, refusal);
    if (login.database != TdsStandin::database) {
        const QString sentence =
            u"Cannot open database \"%1\" requested by the login. The login failed."_s;
        return errorToken(noSuchDatabase, sentence.arg(login.database)) +
               failed(loginFailed, refusal);
    }
    return loginAnswer(login.database);
}

QByteArray StandinListener::answer(const QString &statement)
{
    constexpr int errorOfTheUser = 50000;
    if (!manners.error.isEmpty() && !manners.errorBehindRows)
        return failed(errorOfTheUser, manners.error);
    const QString plain = QString(statement).remove(u" WITH(NOLOCK)"_s);
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.exec(plain))
        return failed(errorOfTheUser, query.lastError().databaseText());
    TdsWriter answer;
    const qsizetype count =
        query.isSelect() ? writeRows(answer, columnsOf(plain), query) : query.numRowsAffected();
    if (manners.error.isEmpty())
        return answer.bytes() + doneToken(TdsEnd::Counted, count);
    return answer.bytes() + doneToken(TdsEnd::More) + failed(errorOfTheUser, manners.error);
}

// SQLite tells the declared types of a view's columns, wherever they come from.
QList<TdsColumn> StandinListener::columnsOf(const QString &select)
{
    run(u"create temp view answered as "_s + select);
    QList<TdsColumn> columns;
    for (const QStringList &row : run(u"select name, type from pragma_table_info('answered')"_s))
        columns << TdsColumn(row[0], row[1]);
    run(u"drop view answered"_s);
    return columns;
}

QList<QStringList> StandinListener::run(const QString &statement)
{
    QSqlQuery query(m_database);
    if (!query.exec(statement))
        qFatal("the stand-in refuses %s: %s", qPrintable(statement),
               qPrintable(query.lastError().text()));
    QList<QStringList> rows;
    while (query.next()) {
        QStringList row;
        for (int i = 0; i < query.record().count(); ++i)
            row << query.value(i).toString();
        rows << row;
    }
    return rows;
}

namespace {

// Lets a step run in the thread of the event's receiver.
class StepEvent : public QEvent
{
public:
    explicit StepEvent(const std::function<void()> &step)
        : QEvent(QEvent::User)
        , m_step(step)
    {
    }
    void run() const { m_step(); }

private:
    const std::function<void()> &m_step;
};

class StepTaker : public QObject
{
public:
    std::mutex mutex;

protected:
    bool event(QEvent *event) override
    {
        const std::lock_guard lock(mutex); // in front of the first look at the event
        if (event->type() != QEvent::User)
            return QObject::event(event);
        static_cast<StepEvent *>(event)->run();
        return true;
    }
};

} // namespace

/// Carries steps out in the stand-in's thread. Its locks are the standard library's, which the
/// thread sanitizer sees; Qt's it does not.
class StandinThread : public QThread
{
public:
    StandinThread()
    {
        m_taker.moveToThread(this);
        start();
    }
    ~StandinThread() override
    {
        quit();
        wait();
    }
    void carryOut(const std::function<void()> &step)
    {
        bool isDone = false;
        const std::function<void()> told = [&] {
            step();
            isDone = true;
            m_done.notify_one();
        };
        auto event = std::make_unique<StepEvent>(told);
        std::unique_lock lock(m_taker.mutex);
        QCoreApplication::postEvent(&m_taker, event.release());
        m_done.wait(lock, [&] { return isDone; });
    }

private:
    std::condition_variable m_done;
    StepTaker m_taker;
};

template<class Step>
auto TdsStandin::inThread(Step &&step) const
{
    using Result = decltype(step());
    if constexpr (std::is_void_v<Result>) {
        m_thread->carryOut(step);
    } else {
        Result result{};
        m_thread->carryOut([&] { result = step(); });
        return result;
    }
}

TdsStandin::TdsStandin()
{
    // Plugins are looked for by patterns, and a thread of MinGW's may use no QRegularExpression:
    // see SideThread.
    QSqlDatabase::isDriverAvailable(u"QSQLITE"_s);
    m_thread = std::make_unique<StandinThread>();
    // Made in its own thread, where its sockets and its database then belong.
    m_thread->carryOut([this] { m_listener = new StandinListener; });
}

TdsStandin::~TdsStandin()
{
    inThread([this] { delete std::exchange(m_listener, nullptr); });
}

quint16 TdsStandin::port() const
{
    return inThread([this] { return m_listener->serverPort(); });
}

bool TdsStandin::moveTo(quint16 port)
{
    return inThread([&] {
        m_listener->close();
        return m_listener->listen(QHostAddress::LocalHost, port);
    });
}

QString TdsStandin::server() const
{
    return u"127.0.0.1,%1"_s.arg(port());
}

QList<QStringList> TdsStandin::run(const QString &statement)
{
    return inThread([&] { return m_listener->run(statement); });
}

void TdsStandin::behave(const StandinManners &manners)
{
    inThread([&] { m_listener->manners = manners; });
}

QStringList TdsStandin::statements() const
{
    return inThread([this] { return m_listener->statements; });
}

int TdsStandin::connections() const
{
    return inThread([this] { return m_listener->connections; });
}

void fillLogo(TdsStandin &standin, int firm)
{
    const QString statements =
        uR"(create table if not exists L_CAPIFIRM (NR smallint, NAME varchar(51))
insert into L_CAPIFIRM values (%1, 'ÖRNEK GIDA LTD. ŞTİ.')
create table LG_%1_CLCARD (LOGICALREF int, CODE varchar(17), DEFINITION_ varchar(201), ACCEPTEINV smallint)
create table LG_%1_UNITBARCODE (BARCODE varchar(101), ITEMREF int, UNITLINEREF int)
create table LG_%1_ITEMS (LOGICALREF int, CODE varchar(25), NAME varchar(51))
create table LG_%1_UNITSETL (LOGICALREF int, CODE varchar(11), NAME varchar(51))
create index LG_%1_C on LG_%1_CLCARD (CODE)
create index LG_%1_B on LG_%1_UNITBARCODE (BARCODE)
create index LG_%1_I on LG_%1_ITEMS (LOGICALREF))"_s;
    for (const QString &statement : statements.arg(firm, 3, 10, QChar(u'0')).split(u'\n'))
        standin.run(statement);
}

} // namespace kervan
