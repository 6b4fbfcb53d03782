#include "aktar/watching.h"

#include "aktar/command.h"
#include "base/codepage.h"
#include "base/failure.h"
#include "base/wholefile.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QLockFile>
#include <QThread>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView lockName = u".kilit";
constexpr int nap = 100; // milliseconds between two looks at whether it is to end

// Where a file of this name can go without taking another's place.
QString freeName(const QString &folder, const QString &name)
{
    const QFileInfo file(name);
    QString path = QDir(folder).filePath(name);
    for (int i = 2; QFileInfo::exists(path); ++i)
        path = QDir(folder).filePath(
            u"%1-%2.%3"_s.arg(file.completeBaseName()).arg(i).arg(file.suffix()));
    return path;
}

QString reportOf(const QString &path)
{
    return path + u".rapor.txt"_s;
}

void makeFolder(const QString &path)
{
    if (!QDir().mkpath(path))
        throw Failure(
            u"%1 açılamadı. Klasöre yazma hakkı verin."_s.arg(QDir::toNativeSeparators(path)));
}

void moveFile(const QString &from, const QString &to)
{
    if (!QFile::rename(from, to))
        throw Failure(u"%1 taşınamadı: %2"_s.arg(QDir::toNativeSeparators(from),
                                                 QDir::toNativeSeparators(to)));
}

/// A folder whose files are taken one by one: into `isleniyor`, which tells a restart what was in
/// hand, and from there to where they end.
class Watch
{
public:
    Watch(const Options &options, const Transfer &transfer, const CommandWorld &world);

    Status run();

private:
    QStringList waiting(const QString &folder, const QStringList &patterns) const;
    bool isComplete(const QString &name);
    bool take(const QString &name);
    Status enter();
    Status transferOne(const QString &name);
    QList<Move> closing(const QString &name, const Outcome &outcome, const QString &staging);
    void writeReport(const QString &path, const Outcome &outcome) const;
    bool isLeft() const;
    void rest() const;
    QString inHand(const QString &name) const { return QDir(m_work).filePath(name); }

    const Options &m_options;
    const Transfer &m_transfer;
    const CommandWorld &m_world;
    QString m_folder, m_work, m_done, m_failed;
    QStringList m_patterns;
    int m_pause; // seconds
    OpenFolder m_program;
    QLockFile m_lock;
    struct Look
    {
        qint64 size;
        QDateTime time;
        bool operator==(const Look &) const = default;
    };
    QHash<QString, Look> m_looks; // of the last time
    QString m_waitsFor;           // what kept it out of the program folder at the last try
    QStringList m_lines;          // of the file in hand
};

Watch::Watch(const Options &options, const Transfer &transfer, const CommandWorld &world)
    : m_options(options)
    , m_transfer(transfer)
    , m_world(world)
    , m_folder(QDir(options.sources.first()).absolutePath())
    , m_work(m_folder + u"/isleniyor"_s)
    , m_done(m_folder + u"/aktarilan"_s)
    , m_failed(m_folder + u"/hatali"_s)
    , m_patterns((options.has(u"desen"_s) ? options.value(u"desen"_s) : transfer.patterns)
                     .split(u' ', Qt::SkipEmptyParts))
    , m_pause(options.number(u"ara"_s, 2))
    , m_program(options, world)
    , m_lock(m_work + u'/' + lockName.toString())
{
    if (!QFileInfo(m_folder).isDir())
        throw Failure(u"%1 bir klasör değil."_s.arg(QDir::toNativeSeparators(m_folder)));
    for (const QString &path : {m_work, m_done, m_failed})
        makeFolder(path);
    m_lock.setStaleLockTime(0);
}

Status Watch::run()
{
    if (!m_lock.tryLock() && !(m_lock.removeStaleLockFile() && m_lock.tryLock())) {
        m_world.streams.tell(u"kervan-aktar: %1 klasörünü başka bir kervan-aktar izliyor."_s.arg(
            QDir::toNativeSeparators(m_folder)));
        return FolderInUse;
    }
    const bool isOneRound = m_options.isOn(u"tek-tur"_s);
    Status status = Done;
    while (!m_world.isEnding()) {
        for (const QString &name : waiting(m_folder, m_patterns)) {
            if (isComplete(name) && !QFileInfo::exists(inHand(name)))
                take(name);
        }
        // What a killed one left comes first by its age.
        for (const QString &name : waiting(m_work, {u"*"_s})) {
            if (m_world.isEnding())
                break;
            if (const Status entered = enter(); entered != Done) {
                if (isOneRound)
                    return entered;
                break;
            }
            const Status one = transferOne(name);
            m_program.leave();
            if (one == UsedWrongly)
                return one;
            status = worse(status, one);
        }
        if (isOneRound && !isLeft())
            return status;
        rest();
    }
    return Done;
}

// The oldest first, as their slips are to be numbered.
QStringList Watch::waiting(const QString &folder, const QStringList &patterns) const
{
    QStringList names = QDir(folder).entryList(patterns, QDir::Files, QDir::Time | QDir::Reversed);
    names.removeAll(lockName.toString());
    return names;
}

bool Watch::isLeft() const
{
    return !waiting(m_folder, m_patterns).isEmpty() || !waiting(m_work, {u"*"_s}).isEmpty();
}

// Whoever copies a file here writes on it between two looks, or its time is but a moment ago.
bool Watch::isComplete(const QString &name)
{
    const QFileInfo file(QDir(m_folder).filePath(name));
    const Look look{file.size(), file.lastModified()};
    const auto before = m_looks.constFind(name);
    const bool isSame = before != m_looks.cend() && *before == look;
    m_looks[name] = look;
    return isSame && look.time.secsTo(QDateTime::currentDateTime()) >= m_pause;
}

// One that somebody holds open stays, where the system tells it.
bool Watch::take(const QString &name)
{
    m_looks.remove(name);
    return QFile::rename(QDir(m_folder).filePath(name), inHand(name));
}

// The folder may be in use for the whole day: that is told once.
Status Watch::enter()
{
    const QString before = std::exchange(m_waitsFor, {});
    return m_program.enter([&](const QString &line) {
        m_waitsFor = line;
        if (line != before)
            m_world.streams.tell(line);
    });
}

Status Watch::transferOne(const QString &name)
{
    m_lines.clear();
    const auto quiet = [](const QString &) {
    };
    Status status = Done;
    const auto failed = passOver([&] {
        if (!QFileInfo::exists(inHand(name))) // entering has brought it to its end
            return;
        Job job(m_program.program(), m_program.ports(), m_transfer, m_options);
        job.setClosing([&](const Outcome &outcome, const QString &staging) {
            return closing(name, outcome, staging);
        });
        const Outcome outcome = job.run(inHand(name), {quiet, [&](const QString &line) {
                                                           m_lines << line;
                                                           m_world.streams.tell(line);
                                                       }});
        m_world.streams.out(m_options.isOn(u"json"_s) ? jsonOf(outcome) : textOf(outcome));
        status = outcome.status;
        if (status == NothingWritten && !isPending(m_program.program().folder)) {
            const QString path = freeName(m_failed, name);
            writeReport(reportOf(path), outcome);
            moveFile(inHand(name), path);
        }
    });
    if (!failed)
        return status;
    // What is used wrongly is no fault of the file: it waits where it came.
    m_world.streams.tell(u"kervan-aktar: "_s + failed->description());
    passOver([&] { moveFile(inHand(name), freeName(m_folder, name)); });
    return UsedWrongly;
}

QList<Move> Watch::closing(const QString &name, const Outcome &outcome, const QString &staging)
{
    const QString path = freeName(m_done, name);
    const QString report = staging + u"/rapor.txt"_s;
    writeReport(report, outcome);
    return {{report, reportOf(path)}, {inHand(name), path}};
}

void Watch::writeReport(const QString &path, const Outcome &outcome) const
{
    QStringList lines{outcome.begun.toString(u"dd.MM.yyyy HH:mm:ss"_s)};
    lines += textOf(outcome).split(u'\n', Qt::SkipEmptyParts);
    lines += m_lines;
    WholeFile file(path);
    file.write(utf8Mark);
    file.write((lines.join(u"\r\n"_s) + u"\r\n"_s).toUtf8());
    file.commit();
}

void Watch::rest() const
{
    const int naps = std::max(1, m_pause * 1000 / nap);
    for (int i = 0; i < naps && !m_world.isEnding(); ++i)
        QThread::msleep(nap);
}

} // namespace

int watchFolder(const QStringList &arguments, const CommandWorld &world)
{
    Status status = Done;
    const auto misused = passOver([&] {
        const QString command = u"izle"_s;
        Options options = readOptions(command, arguments, watchOptions() + commonOptions());
        if (options.sources.size() != 1 || !options.has(u"tarif"_s))
            throw Failure(u"İzlenecek klasörü ve --tarif ile tarifini verin; bakın: kervan-aktar "
                          "izle --help"_s);
        const QString recipe = options.value(u"tarif"_s);
        Options first = options; // what is to be done with the files tells which keys there may be
        addRecipe(first, recipe, {command}, allOptions());
        const Transfer *transfer = findTransfer(first.value(u"aktarim"_s));
        if (!transfer)
            throw Failure(
                u"%1: aktarim = fatura gibi bir satırla ne yapılacağını yazın."_s.arg(recipe));
        addRecipe(options, recipe, {command, transfer->command},
                  watchOptions() + optionsOf(*transfer));
        if (options.isOn(u"listele"_s) || options.isOn(u"denetle"_s))
            throw Failure(u"izle yazar; listele ve denetle onunla olmaz."_s);
        status = Watch(options, *transfer, world).run();
    });
    if (!misused)
        return status;
    world.streams.tell(u"kervan-aktar: "_s + misused->description());
    return UsedWrongly;
}

} // namespace kervan
