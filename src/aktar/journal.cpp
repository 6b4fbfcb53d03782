#include "aktar/journal.h"

#include "base/failure.h"
#include "base/filefault.h"
#include "base/wholefile.h"
#include "store/sidefiles.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <filesystem>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 2> counterNames{cashCounterFile, bankCounterFile};

QString journalOf(const QString &programFolder)
{
    return programFolder + u'/' + journalName.toString();
}

std::optional<QByteArray> bytesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

void write(const QString &path, const QByteArray &bytes)
{
    WholeFile file(path);
    file.write(bytes);
    file.commit();
}

QJsonObject readJournal(const QString &programFolder)
{
    const auto bytes = bytesOf(journalOf(programFolder));
    return QJsonDocument::fromJson(bytes.value_or(QByteArray())).object();
}

QJsonObject countersAsTheyAre(const QString &programFolder)
{
    QJsonObject counters;
    for (const QStringView name : counterNames) {
        if (const auto bytes = bytesOf(programFolder + u'/' + name.toString()))
            counters[name] = QString::fromLatin1(*bytes);
        else
            counters[name] = QJsonValue::Null;
    }
    return counters;
}

void putBack(const QString &programFolder, const QJsonObject &counters)
{
    for (const QStringView name : counterNames) {
        const QString path = programFolder + u'/' + name.toString();
        const QJsonValue before = counters[name];
        if (before.isNull())
            QFile::remove(path);
        else if (bytesOf(path) != before.toString().toLatin1())
            write(path, before.toString().toLatin1());
    }
}

std::filesystem::path asPath(const QString &name)
{
    return name.toStdU16String();
}

[[noreturn]] void fail(const Move &move, const QString &why)
{
    throw fileFailure(move.from, u"taşınamadı"_s,
                      u"%1 (%2)"_s.arg(QDir::toNativeSeparators(move.to), why));
}

// One that is moved already is no fault, even if somebody took it along; without its folder it may
// stand on a share that is away.
void carryOut(const Move &move)
{
    if (!QFile::exists(move.from)) {
        if (!QFile::exists(move.to) && !QFileInfo(move.from).dir().exists())
            fail(move, u"dosya bulunamadı"_s);
        return;
    }
    std::error_code fault;
    if (move.replaces)
        std::filesystem::rename(asPath(move.from), asPath(move.to), fault);
    if (!move.replaces || fault == std::errc::cross_device_link) {
        // It replaces nothing by itself, and copies to another file system.
        if (move.replaces)
            QFile::remove(move.to);
        QFile file(move.from);
        if (!file.rename(move.to))
            fail(move, QFile::exists(move.to) ? u"zaten var"_s : file.errorString());
        return;
    }
    if (fault)
        fail(move, QString::fromLocal8Bit(fault.message()));
}

void removeFolder(const QString &folder)
{
    if (!folder.isEmpty())
        QDir(folder).removeRecursively();
}

void finish(const QString &programFolder, const QString &folder, const QList<Move> &moves)
{
    for (const Move &move : moves)
        carryOut(move);
    // An empty folder that is left without it goes when the next one begins; the other way about, a
    // document that somebody has fetched by then would be missed.
    QFile journal(journalOf(programFolder));
    if (!journal.remove() && journal.exists()) // one that stays would put the counters back again
        throw fileFailure(journal.fileName(), u"silinemedi"_s, journal.errorString());
    removeFolder(folder);
}

// Of its own for each program folder: several may have the same target.
QString stagingOf(const QString &programFolder, const QString &targetFolder)
{
    const QByteArray key = QCryptographicHash::hash(QDir(programFolder).canonicalPath().toUtf8(),
                                                    QCryptographicHash::Sha1);
    return QDir(targetFolder)
        .absoluteFilePath(u".kervan-aktar-"_s + QString::fromLatin1(key.toHex().left(12)));
}

QByteArray spelled(const QJsonObject &counters, const QString &folder,
                   const std::optional<QList<Move>> &moves)
{
    QJsonObject object{{u"sayaclar"_s, counters}, {u"hazirlik"_s, folder}};
    if (moves) {
        QJsonArray list;
        for (const Move &move : *moves)
            list << QJsonArray{move.from, move.to, move.replaces};
        object[u"tasi"_s] = list;
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

Journal::Journal(const QString &programFolder, const QString &targetFolder)
    : m_programFolder(programFolder)
    , m_folder(stagingOf(programFolder, targetFolder))
{
    recover(programFolder); // what the source before could not bring to its end
    m_counters = countersAsTheyAre(programFolder);
    write(journalOf(programFolder), spelled(m_counters, m_folder, std::nullopt));
    removeFolder(m_folder);
    if (!QDir().mkdir(m_folder)) {
        QFile::remove(journalOf(programFolder));
        throw Failure(u"Hedef klasöre yazılamıyor: %1. Klasörü açın ya da yazma hakkı verin."_s.arg(
            QDir::toNativeSeparators(targetFolder)));
    }
}

void Journal::commit(const QList<Move> &moves)
{
    // Another program may write to the same place.
    for (const Move &move : moves) {
        if (!move.replaces && QFile::exists(move.to)) {
            takeBack();
            fail(move, u"zaten var"_s);
        }
    }
    if (const auto failed =
            passOver([&] { write(journalOf(m_programFolder), spelled({}, m_folder, moves)); })) {
        takeBack();
        throw Failure(*failed);
    }
    finish(m_programFolder, m_folder, moves);
}

void Journal::takeBack()
{
    putBack(m_programFolder, m_counters);
    finish(m_programFolder, m_folder, {});
}

bool isPending(const QString &programFolder)
{
    return QFileInfo::exists(journalOf(programFolder));
}

bool countersArePending(const QString &programFolder)
{
    const QJsonObject object = readJournal(programFolder);
    return object.contains(u"sayaclar"_s) && !object.contains(u"tasi"_s);
}

QString recover(const QString &programFolder)
{
    if (!isPending(programFolder))
        return {};
    const QJsonObject object = readJournal(programFolder);
    const QString folder = object[u"hazirlik"].toString();
    if (!object.contains(u"tasi"_s)) {
        if (object.contains(u"sayaclar"_s))
            putBack(programFolder, object[u"sayaclar"].toObject());
        finish(programFolder, folder, {});
        return u"Yarıda kalan aktarım geri alındı: belgesi yayımlanmamıştı, sayaçlar yerine "
               "kondu."_s;
    }
    QList<Move> moves;
    for (const auto &move : object[u"tasi"].toArray())
        moves << Move{move[0].toString(), move[1].toString(), move[2].toBool()};
    finish(programFolder, folder, moves);
    return u"Yarıda kalan aktarım tamamlandı: belgeleri yerlerine kondu."_s;
}

Opening recoverForWindow(const QString &programFolder)
{
    Opening opening;
    const auto failed = passOver([&] { opening.told = recover(programFolder); });
    if (!failed)
        return opening;
    if (countersArePending(programFolder))
        return {false, u"Yarıda kalan gece aktarımı tamamlanamadı; numaralar ikinci kez verilmesin "
                       "diye program açılmıyor. Nedenini giderip yeniden başlatın.\n%1"_s.arg(
                           failed->description())};
    return {true, u"Yarıda kalan gece aktarımının belgesi yerine konamadı: %1"_s.arg(
                      failed->description())};
}

QStringList countersOf(const QString &programFolder)
{
    QStringList counters;
    for (const QStringView name : counterNames)
        counters << QString::fromLatin1(
            bytesOf(programFolder + u'/' + name.toString()).value_or(QByteArray()).trimmed());
    return counters;
}

} // namespace kervan
