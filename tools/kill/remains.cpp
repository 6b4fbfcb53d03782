#include "remains.h"

#include "aktar/journal.h"
#include "check/leftdocuments.h"
#include "logolink/sqlsettings.h"
#include "store/localdb.h"
#include "store/settling.h"
#include "store/sidefiles.h"
#include "work.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString checked(const QString &path)
{
    QString result;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"check"_s);
        db.setDatabaseName(path);
        QSqlQuery query(db.open() ? db : QSqlDatabase());
        if (query.exec(u"pragma integrity_check"_s) && query.next())
            result = query.value(0).toString();
        db.close();
    }
    QSqlDatabase::removeDatabase(u"check"_s);
    return result;
}

QByteArray counterOf(const QSet<QByteArray> &numbers)
{
    return numbers.begin()->first(2); // "KN" or "BT"
}

// Older than any living writer pauses.
void age(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadWrite))
        file.setFileTime(QDateTime::currentDateTime().addSecs(-3600),
                         QFileDevice::FileModificationTime);
}

bool areOne(const QStringList &values)
{
    return std::ranges::all_of(values, [&](const QString &value) { return value == values[0]; });
}

} // namespace

Remains::Remains(QString place)
    : m_place(std::move(place))
{
}

Remains::Document Remains::read(const QString &path)
{
    Document document;
    document.name = QFileInfo(path).fileName().remove(QRegularExpression(u"-\\d+"_s));
    const DocumentReading reading = readDocument(path, [&](const DocumentRecord &record) {
        ++document.content.records;
        document.content.sum = document.content.sum + record.sum.value_or(Decimal());
        const QByteArray &number = record[DocumentRecord::Number];
        if (number.startsWith("KN") || number.startsWith("BT"))
            document.numbers << number;
    });
    if (!reading.isFine())
        document.fault = reading.fault.isEmpty() ? u"half a document"_s : reading.fault;
    return document;
}

void Remains::learn(const QString &name, int told)
{
    const QDir folder(m_place + u"/belge"_s);
    for (const QString &file : folder.entryList({name + u"-*.xml"_s}, QDir::Files)) {
        const Document document = read(folder.filePath(file));
        m_known[document.name] = document.content;
        for (const QByteArray &number : document.numbers)
            m_numbers[number] = file;
        if (!document.numbers.isEmpty() &&
            file.section(u'-', 1, 1).section(u'.', 0, 0).toInt() > told)
            m_parted[counterOf(document.numbers)] = file; // its writer was killed too
        QFile::remove(folder.filePath(file));
    }
}

QStringList Remains::leftIn(const QString &folder) const
{
    static const QRegularExpression left(
        u"\\.(xml|kvz)\\.[A-Za-z]{6}$|-wal$|-shm$|-journal$|^\\.kervan-aktar-|\\.islem|^kervan-.*\\.tmp$"_s);
    return QDir(folder)
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
        .filter(left);
}

// What the next start does, and then the first list that is read.
void Remains::startAgain(const QString &folder)
{
    const QString documents = m_place + u"/belge"_s;
    m_counts[u"leftovers beside the databases and side files"_s] += int(leftIn(folder).size());
    m_counts[u"leftovers beside the documents"_s] += int(leftIn(documents).size());
    for (const QString &file : leftIn(documents))
        age(documents + u'/' + file);
    const Opening opening = recoverForWindow(folder);
    if (!opening.mayOpen)
        wrong(u"it does not start again: "_s + opening.told);
    if (!opening.told.isEmpty())
        ++m_counts[u"transfers ended or taken back by the next start"_s];
    settle(folder);
    sweepDocuments(documents);
    for (const QString &of : {folder, documents}) {
        for (const QString &file : leftIn(of)) {
            const auto capitals = std::ranges::count_if(
                file.right(6), [](QChar c) { return c >= u'A' && c <= u'Z'; });
            const QString path = of + u'/' + file;
            if (QDir().rmdir(path)) {
                ++m_counts[u"empty folders of the command, which its next transfer would take"_s];
                continue;
            }
            const bool mayBeAPersons = (file.contains(u".kvz.") || read(path).fault.isEmpty()) &&
                                       QFileInfo(path).size() > 0 && (capitals < 3 || capitals > 4);
            if (mayBeAPersons)
                ++m_counts[u"of them whole and named as a person might have, which stay"_s];
            else
                wrong(u"still there after the next start: %1 of %2 bytes"_s.arg(file).arg(
                    QFileInfo(path).size()));
            QFile::remove(path);
        }
    }
    for (const QString &file : QDir(folder).entryList({u"*.dbs"_s})) {
        if (const QString told = checked(folder + u'/' + file); told != u"ok")
            wrong(file + u": "_s + told);
    }
}

void Remains::lookAtDocuments(const QHash<QString, int> &done)
{
    const QDir folder(m_place + u"/belge"_s);
    for (auto told = done.cbegin(); told != done.cend(); ++told) {
        const QString file = u"%1-%2.xml"_s.arg(told.key()).arg(told.value());
        if (!QFile::exists(folder.filePath(file)))
            wrong(u"gone: "_s + file);
    }
    QString last;
    QByteArray counter;
    const auto files = folder.entryList({u"*.xml"_s}, QDir::Files, QDir::Time | QDir::Reversed);
    for (const QString &file : files) {
        const Document document = read(folder.filePath(file));
        const auto known = m_known.constFind(document.name);
        ++m_counts[u"documents"_s];
        if (!document.fault.isEmpty())
            wrong(file + u": "_s + document.fault);
        else if (known == m_known.cend() || known->records != document.content.records ||
                 known->sum != document.content.sum)
            wrong(u"%1: %2 records"_s.arg(file).arg(document.content.records));
        if (!document.numbers.isEmpty()) {
            lookAtNumbers(file, document.numbers);
            last = file;
            counter = counterOf(document.numbers);
        }
        QFile::remove(folder.filePath(file));
    }
    // Once a document was told, its counter was stored.
    const QString name = last.section(u'-', 0, 0);
    const bool isTold = last == u"%1-%2.xml"_s.arg(name).arg(done.value(name, -1)) ||
                        last == u"%1-%2-KASANAKIT.xml"_s.arg(name).arg(done.value(name, -1));
    if (!last.isEmpty() && !isTold && !last.startsWith(u"komut"))
        m_parted[counter] = last;
}

// The window stores a counter behind its document, so a kill between them gives the numbers away
// once more: to the first document that comes then, and to no other.
void Remains::lookAtNumbers(const QString &file, const QSet<QByteArray> &numbers)
{
    QSet<QString> twice;
    for (const QByteArray &number : numbers) {
        if (const auto known = m_numbers.constFind(number); known != m_numbers.cend())
            twice << *known;
        m_numbers[number] = file;
    }
    const QString parted = m_parted.take(counterOf(numbers));
    if (twice.isEmpty())
        return;
    ++m_counts[u"kills between a document and its counter, whose numbers come again"_s];
    if (twice != QSet<QString>{parted})
        wrong(u"%1 has numbers of %2"_s.arg(file, QStringList(twice.values()).join(u", "_s)));
}

void Remains::lookAtTable(const QHash<QString, int> &done, int first)
{
    LocalDb db;
    db.open(m_place + u"/ayar/data.dbs"_s);
    int staff = first - 1;
    db.forEach(Statement(u"select * from per"), [&] {
        const int number = db.field(u"kod").toInt();
        if (number != staff + 1 || db.field(u"per") != savedValue(number))
            wrong(u"per: %1 behind %2"_s.arg(number).arg(staff));
        staff = number;
    });
    if (staff < done.value(u"per"_s, -1))
        wrong(u"per: %1 was saved, the last is %2"_s.arg(done[u"per"_s]).arg(staff));
    QStringList prices;
    db.forEach(Statement(u"select * from urun"), [&] { prices << db.field(u"fiyat"); });
    m_hasPrices |= done.contains(u"urun"_s);
    if (m_hasPrices && (prices.size() < savedPrices || !areOne(prices) ||
                        prices[0].toInt() < done.value(u"urun"_s, -1)))
        wrong(u"urun: %1 prices, from %2"_s.arg(prices.size()).arg(prices.value(0)));
    QStringList folders;
    db.forEach(Statement(u"select * from yol"), [&] {
        for (const QStringView column : {u"ec", u"es", u"ef", u"xc", u"xs", u"xf"})
            folders << db.field(column);
    });
    if (folders.size() != 6 || (m_isSaved && !areOne(folders)))
        wrong(u"yol"_s);
    db.query(Statement(u"delete from per"));
}

void Remains::emptyTable()
{
    LocalDb db;
    db.open(m_place + u"/ayar/data.dbs"_s);
    db.query(Statement(u"delete from per"));
}

void Remains::lookAtSettings(const QHash<QString, int> &done)
{
    const QString folder = m_place + u"/ayar/"_s;
    const int least = done.value(u"dosya"_s, -1);
    const auto lookAt = [&](const QString &file, const QStringList &values) {
        const int number = values.value(0).mid(values.value(0).lastIndexOf(u'x') + 1).toInt();
        if (m_isSaved && (!areOne(values) || values[0] != savedValue(number) || number < least))
            wrong(u"%1: %2"_s.arg(file, values.join(u" "_s).right(40)));
    };
    m_isSaved |= least >= 0;
    const auto failed = passOver([&] {
        lookAt(u"kasa.kvz"_s, {readSingleValue(folder + u"kasa.kvz"_s)});
        lookAt(u"kdvmu.kvz"_s, readLines(folder + u"kdvmu.kvz"_s, 2));
        if (m_isSaved)
            lookAt(u"sqlbaglan.kvz"_s, readLines(folder + u"sqlbaglan.kvz"_s, 5));
    });
    if (failed)
        wrong(failed->description());
}

QStringList Remains::look(Life life, const QHash<QString, int> &done, int first)
{
    m_wrong.clear();
    startAgain(m_place + (life == Life::Settings ? u"/ayar"_s : u"/program"_s));
    if (life == Life::Settings) {
        lookAtTable(done, first);
        lookAtSettings(done);
    } else {
        lookAtDocuments(done);
    }
    return m_wrong;
}

QStringList Remains::counts() const
{
    QStringList lines;
    for (auto count = m_counts.cbegin(); count != m_counts.cend(); ++count)
        lines << u"%1: %2"_s.arg(count.key()).arg(count.value());
    return lines;
}

} // namespace kervan
