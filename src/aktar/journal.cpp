#include "aktar/journal.h"

#include "base/failure.h"
#include "base/filefault.h"
#include "base/movefile.h"
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

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 2> counterNames{cashCounterFile, bankCounterFile};

QString journalOf(const QString &programFolder)
{
    return programFolder + u'/' + journalName.toString();
}

// Nothing where there is no file; a Failure where it can't be read whole.
std::optional<QByteArray> bytesOf(const QString &path)
{
    QFile file(path);
    if (!QFileInfo::exists(path))
        return std::nullopt;
    clearFault();
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (file.error() != QFileDevice::NoError)
        throw fileFailure(path, u"okunamadı"_s, filefault(file, lastFault()));
    return bytes;
}

void write(const QString &path, const QByteArray &bytes)
{
    WholeFile file(path);
    file.write(bytes);
    file.commit();
}

QJsonObject readJournal(const QString &programFolder)
{
    const QString path = journalOf(programFolder);
    QJsonObject object = QJsonDocument::fromJson(bytesOf(path).value_or(QByteArray())).object();
    if (!object.contains(u"sayaclar"_s))
        throw fileFailure(path, u"bozuk"_s,
                          u"Sayaçları son belgelerle karşılaştırın, sonra bu dosyayı silin."_s);
    return object;
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

// Whether a kill behind a copy to another disk has left both.
bool isCopied(const Move &move)
{
    QFile from(move.from), to(move.to);
    return from.size() == to.size() && from.open(QIODevice::ReadOnly) &&
           to.open(QIODevice::ReadOnly) && from.readAll() == to.readAll();
}

// One that is moved already is no fault, even if somebody took it along; without its folder it may
// stand on a share that is away.
void carryOut(const Move &move)
{
    if (!QFile::exists(move.from)) {
        if (!QFile::exists(move.to) && !QFileInfo(move.from).dir().exists())
            throw moveFailure(move.from, move.to, u"dosya bulunamadı"_s);
        return;
    }
    moveFile(move.from, move.to, move.replaces || isCopied(move));
}

void removeFolder(const QString &folder)
{
    if (!folder.isEmpty())
        QDir(folder).removeRecursively();
}

// Why it can't be carried out; empty where it can, as far as that is to be known before.
QString obstacleOf(const Move &move)
{
    if (!QFile::exists(move.from) && QFileInfo(move.from).dir().exists())
        return u"dosya bulunamadı"_s;
    if (!move.replaces && QFile::exists(move.to))
        return u"zaten var"_s;
    for (const QString &path : {move.from, move.to}) {
        if (!waitWhileOpen(path))
            return u"başka bir programda açık"_s;
    }
#ifdef Q_OS_WIN // elsewhere the folder's rights count
    if (QFile::exists(move.to) && !QFileInfo(move.to).isWritable())
        return u"dosya salt okunur"_s;
#endif
    return {};
}

void finish(const QString &programFolder, const QString &folder, const QList<Move> &moves)
{
    for (const Move &move : moves)
        carryOut(move);
    // An empty folder that is left without it goes when the next one begins; the other way about, a
    // document that somebody has fetched by then would be missed.
    QFile journal(journalOf(programFolder));
    waitWhileOpen(journal.fileName());
    clearFault();
    if (journal.remove() || !journal.exists())
        return removeFolder(folder);
    if (moves.isEmpty()) // one that stays would put the counters back again
        throw fileFailure(journal.fileName(), u"silinemedi"_s, filefault(journal, lastFault()));
}

// Of its own for each program folder, which may have the same path on many machines: several may
// have the same target.
QString stagingOf(const QString &programFolder, const QString &targetFolder)
{
    const QByteArray name = QSysInfo::machineUniqueId() + QSysInfo::machineHostName().toUtf8() +
                            QDir(programFolder).canonicalPath().toUtf8();
    const QByteArray key = QCryptographicHash::hash(name, QCryptographicHash::Sha1);
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
    m_counters = countersAsTheyAre(programFolder);
    write(journalOf(programFolder), spelled(m_counters, m_folder, std::nullopt));
    removeFolder(m_folder);
    if (!QDir().mkdir(m_folder)) {
        QFile::remove(journalOf(programFolder));
        throw Failure(u"Hedef klasöre yazılamıyor: %1. Klasörü açın ya da yazma hakkı verin."_s.arg(
            QDir::toNativeSeparators(targetFolder)));
    }
#ifdef Q_OS_WIN // elsewhere the point in front of its name does
    SetFileAttributesW(systemName(m_folder).c_str(), FILE_ATTRIBUTE_HIDDEN);
#endif
}

void Journal::commit(const QList<Move> &moves)
{
    // Another program may write to the same place, or have taken away what was written.
    for (const Move &move : moves) {
        const QString why = obstacleOf(move);
        if (why.isEmpty())
            continue;
        takeBack();
        throw moveFailure(move.from, move.to, why);
    }
    if (const auto failed =
            passOver([&] { write(journalOf(m_programFolder), spelled({}, m_folder, moves)); })) {
        takeBack();
        throw Failure(*failed);
    }
    m_isCommitted = true;
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
    bool arePending = isPending(programFolder); // so one that can't be read is taken
    passOver([&] { arePending = arePending && !readJournal(programFolder).contains(u"tasi"_s); });
    return arePending;
}

QString recover(const QString &programFolder)
{
    if (!isPending(programFolder))
        return {};
    const QJsonObject object = readJournal(programFolder);
    const QString folder = object[u"hazirlik"].toString();
    if (!object.contains(u"tasi"_s)) {
        putBack(programFolder, object[u"sayaclar"].toObject());
        finish(programFolder, folder, {});
        return u"Yarıda kalan aktarım geri alındı: belgesi yayımlanmamıştı, sayaçlar yerine "
               "kondu."_s;
    }
    QList<Move> moves;
    for (const auto &move : object[u"tasi"].toArray())
        moves << Move{move[0].toString(), move[1].toString(), move[2].toBool()};
    finish(programFolder, folder, moves);
    QStringList there, gone;
    for (const Move &move : std::as_const(moves)) {
        if (move.to.endsWith(u".xml"_s, Qt::CaseInsensitive))
            (QFile::exists(move.to) ? there : gone) << QDir::toNativeSeparators(move.to);
    }
    QString told = u"Yarıda kalan aktarım tamamlandı."_s;
    if (!there.isEmpty())
        told += u" Yerinde: %1."_s.arg(there.join(u", "_s));
    if (!gone.isEmpty())
        told += u" Yerinde yok, Logo'ya alınıp alınmadığına bakın: %1."_s.arg(gone.join(u", "_s));
    return told;
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
