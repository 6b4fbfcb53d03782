#include "aktar/watching.h"

#include "aktar/command.h"
#include "aktar/filestate.h"
#include "base/codepage.h"
#include "base/failure.h"
#include "base/filefault.h"
#include "base/leftovers.h"
#include "base/movefile.h"
#include "base/wholefile.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QLockFile>
#include <QThread>

#include <algorithm>
#include <filesystem>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView lockName = u".kilit";
constexpr QStringView reportEnding = u".rapor.txt";
// Systems take 255 bytes, Windows as many letters: of the report's name, its number where it meets
// others, and what a half-written one has behind.
constexpr std::size_t longestName = 230;
constexpr int longestRest = 60; // seconds, where the pause is no longer
constexpr int nap = 100;        // milliseconds between two looks at whether it is to end

QString reportOf(const QString &path)
{
    return path + reportEnding.toString();
}

// Where a file of this name and its report can go without taking another's place.
QString freeName(const QString &folder, const QString &name)
{
    const QFileInfo file(name);
    const QString ending = file.suffix().isEmpty() ? QString() : u'.' + file.suffix();
    QString path = QDir(folder).filePath(name);
    for (int i = 2; QFileInfo::exists(path) || QFileInfo::exists(reportOf(path)); ++i)
        path = QDir(folder).filePath(file.completeBaseName() + u'-' + QString::number(i) + ending);
    return path;
}

[[maybe_unused]] QString asText(const std::string &name)
{
    return QString::fromStdString(name);
}

[[maybe_unused]] QString asText(const std::wstring &name)
{
    return QString::fromStdWString(name);
}

// Why a file can't be taken whatever the rights are, by its name as it can be shown; empty where it
// can. The lists of the library leave such files out, or don't tell them from others.
QString oddityOf(const std::filesystem::directory_entry &file, const QString &name)
{
    std::error_code none;
    if (file.path().filename().native().size() > longestName)
        return u"adı çok uzun, raporunun adı olmazdı. Kısaltın."_s;
    if (name.contains(QChar::ReplacementCharacter))
        return u"adı UTF-8 değil. Adını değiştirin."_s;
    if (!file.is_symlink(none))
        return {};
    if (std::filesystem::read_symlink(file.path(), none).is_relative() || !file.exists(none))
        return u"taşınınca açılmayan bir bağlantı. Dosyanın kendisini koyun."_s;
    return {};
}

// Links, ".." and other cases of letters lead to the same folder under other names.
bool isInside(const QString &path, const QString &folder)
{
    std::error_code none;
    const std::filesystem::path outer = folder.toStdU16String();
    auto place = std::filesystem::weakly_canonical(path.toStdU16String(), none);
    for (; place.has_relative_path(); place = place.parent_path()) {
        if (std::filesystem::equivalent(place, outer, none))
            return true;
    }
    return false;
}

void makeFolder(const QString &path)
{
    if (!QDir().mkpath(path))
        throw Failure(
            u"%1 açılamadı. Klasöre yazma hakkı verin."_s.arg(QDir::toNativeSeparators(path)));
}

/// A folder whose files are taken one by one: into `isleniyor`, which tells a restart what was in
/// hand, and from there to where they end.
class Watch
{
public:
    Watch(const Options &options, const Transfer &transfer, const CommandWorld &world);

    Status run();

private:
    Status begin();
    QStringList waiting(const QString &folder, const QStringList &patterns) const;
    void takeComplete();
    void refuseOdd(const std::function<void(const QString &name, const QString &why)> &refuse);
    bool isComplete(const QString &path);
    Status enter();
    std::optional<Status> transferAll();
    Status transferOne(const QString &name);
    Status ending(std::optional<Status> barred) const;
    void putAway(const QString &name, const Outcome &outcome);
    QList<Move> closing(const QString &name, const Outcome &outcome, const QString &staging);
    void writeReport(const QString &path, const Outcome &outcome) const;
    bool hasMore() const;
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
    struct Stuck
    {
        QStringList told;
        Status status = Done;
    };
    QHash<QString, FileState> m_looks; // of the last time
    QString m_waitsFor;                // what kept it out of the program folder at the last try
    QStringList m_lines;               // of the file in hand
    QHash<QString, FileState> m_tried; // files in hand as they were at their last try
    QHash<QString, QString> m_refused; // files that could not be taken at the last look, and why
    QHash<QString, Stuck> m_stuck;     // those that could not be put away
    QHash<QString, QString>
        m_targets;          // documents of this run that may be replaced, and by which file's
    Status m_status = Done; // of those that were
    int m_barred = 0;       // rounds that something has barred, one behind another
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
    const Job job(m_program.program(), m_program.ports(), transfer, options);
    if (isInside(QFileInfo(job.targetOf(u"a"_s)).path(), m_folder))
        throw Failure(u"Belgeler izlenen klasörün içine yazılamaz: %1. --hedef ile dışında bir yer "
                      "verin."_s.arg(QDir::toNativeSeparators(job.targetOf(u"{kaynak}"_s))));
    if (options.isOn(u"uzerine-yaz"_s) && job.targetOf(u"a"_s) == job.targetOf(u"b"_s))
        throw Failure(
            u"uzerine-yaz ile her dosyanın belgesi bir öncekini ezerdi; --hedef bir klasör "
            "olsun ya da adında {kaynak} geçsin."_s);
    m_lock.setStaleLockTime(0);
}

// The folders and the lock; what is in the way is told.
Status Watch::begin()
{
    const auto &tell = m_world.streams.tell;
    if (const auto failed = passOver([&] {
            for (const QString &path : {m_work, m_done, m_failed})
                makeFolder(path);
        })) {
        tell(u"kervan-aktar: "_s + failed->description());
        return NothingWritten;
    }
    if (m_lock.tryLock() || (m_lock.removeStaleLockFile() && m_lock.tryLock())) {
        const QString report = reportOf({});
        sweepLeftovers(m_failed, [&](const Leftover &leftover) {
            return leftover.whole.endsWith(report) && leftover.isRest();
        });
        sweepLeftovers(m_work, [&](const Leftover &leftover) { // half a copy is no source
            return leftover.isRest() && QDir::match(m_patterns, leftover.whole) &&
                   !QDir::match(m_patterns, leftover.file.fileName());
        });
        return Done;
    }
    const QString folder = QDir::toNativeSeparators(m_folder);
    qint64 process = 0;
    QString machine, program;
    if (m_lock.error() == QLockFile::LockFailedError &&
        m_lock.getLockInfo(&process, &machine, &program)) {
        tell(u"kervan-aktar: %1 klasörünü başka bir kervan-aktar izliyor: %2 bilgisayarında %3 "
             "numaralı işlem."_s.arg(folder, machine, QString::number(process)));
        return InUse;
    }
    tell(u"kervan-aktar: %1 izlenemiyor, kilit dosyası açılamadı: %2. Klasöre yazma hakkı verin, "
         "diskte yer açın."_s.arg(folder, QDir::toNativeSeparators(inHand(lockName.toString()))));
    return NothingWritten;
}

Status Watch::run()
{
    if (const Status begun = begin(); begun != Done)
        return begun;
    const bool isOneRound = m_options.isOn(u"tek-tur"_s);
    std::optional<Status> barred;
    while (!m_world.isEnding()) {
        // What is half done may still want to move a file of the same name.
        if (!isPending(m_program.program().folder))
            takeComplete();
        barred = transferAll();
        m_barred = barred ? m_barred + 1 : 0;
        if (barred && (isOneRound || *barred == UsedWrongly))
            return *barred;
        if (isOneRound && !hasMore())
            break;
        rest();
    }
    return ending(barred);
}

// What could not be put away is tried again by the next one. Waiting for another program until a
// signal comes is no fault; a transfer of before that can't be brought to its end is one.
Status Watch::ending(std::optional<Status> barred) const
{
    Status status = m_status;
    for (const Stuck &stuck : m_stuck)
        status = worse(status, worse(stuck.status, NothingWritten));
    return m_refused.isEmpty() && barred != NothingWritten ? status : worse(status, NothingWritten);
}

void Watch::takeComplete()
{
    const QHash<QString, QString> before = std::exchange(m_refused, {});
    const auto refuse = [&](const QString &name, const QString &why) {
        m_refused[name] = why;
        if (before.value(name) != why)
            m_world.streams.tell(u"%1: Alınmadı, %2"_s.arg(name, why));
    };
    refuseOdd(refuse);
    for (const QString &name : waiting(m_folder, m_patterns)) {
        const QString path = QDir(m_folder).filePath(name);
        if (m_refused.contains(name) || !isComplete(path))
            continue;
        if (QFileInfo::exists(inHand(name))) {
            if (m_stuck.contains(name))
                refuse(name, u"aynı adlı bir dosya isleniyor klasöründe bekliyor."_s);
            continue;
        }
        if (!waitWhileOpen(path)) // it may be written on
            refuse(name, u"başka bir programda açık."_s);
        else if (const auto failed = passOver([&] { moveFile(path, inHand(name)); }))
            refuse(name, failed->description());
        m_looks.remove(path);
    }
}

// Tells of files that are never taken.
void Watch::refuseOdd(const std::function<void(const QString &name, const QString &why)> &refuse)
{
    std::error_code fault;
    std::filesystem::directory_iterator file(m_folder.toStdU16String(), fault);
    for (; !fault && file != std::filesystem::directory_iterator(); file.increment(fault)) {
        const QString name = asText(file->path().filename().native());
        const QString why = QDir::match(m_patterns, name) ? oddityOf(*file, name) : QString();
        if (!why.isEmpty())
            refuse(name, why);
    }
    if (fault)
        refuse(QDir::toNativeSeparators(m_folder),
               u"klasör okunamadı: %1"_s.arg(QString::fromLocal8Bit(fault.message())));
}

// What a killed one left comes first by its age. Gives what bars the way, if anything does.
std::optional<Status> Watch::transferAll()
{
    m_stuck.removeIf([&](const auto &stuck) {
        if (QFileInfo::exists(inHand(stuck.key())))
            return false;
        m_status = worse(m_status, stuck->status); // somebody has taken it away
        return true;
    });
    m_tried.removeIf([&](const auto &tried) { return !QFileInfo::exists(inHand(tried.key())); });
    if (isPending(m_program.program().folder)) {
        if (const Status entered = enter(); entered != Done)
            return entered;
        m_program.leave();
    }
    for (const QString &name : waiting(m_work, {u"*"_s})) {
        if (m_world.isEnding())
            break;
        const auto last = m_tried.constFind(name);
        if (last != m_tried.cend() && *last != stateOf(inHand(name)) && !isComplete(inHand(name)))
            return Barred; // its sender had only paused
        m_tried[name] = stateOf(inHand(name));
        if (const Status entered = enter(); entered != Done)
            return entered;
        Status one = transferOne(name);
        m_program.leave();
        // Somebody has taken it away.
        if (one == Barred && !QFileInfo::exists(inHand(name)) && QFileInfo::exists(m_work))
            one = NothingWritten;
        if (one == UsedWrongly || one == Barred) // none overtakes it
            return one;
        if (!m_stuck.contains(name))
            m_status = worse(m_status, one);
    }
    return std::nullopt;
}

QStringList Watch::waiting(const QString &folder, const QStringList &patterns) const
{
    QStringList names = oldestFirst(folder, patterns);
    names.removeIf([](const QString &name) {
        return name == lockName || name.endsWith(reportEnding); // one came back with its file
    });
    return names;
}

// Whether there is a file that is neither done nor told to be left.
bool Watch::hasMore() const
{
    const auto isMore = [](const QStringList &names, const auto &left) {
        return std::ranges::any_of(names,
                                   [&](const QString &name) { return !left.contains(name); });
    };
    return isMore(waiting(m_folder, m_patterns), m_refused) ||
           isMore(waiting(m_work, {u"*"_s}), m_stuck);
}

// Whoever copies a file here writes on it between two looks, or its time is but a moment ago.
bool Watch::isComplete(const QString &path)
{
    const FileState look = stateOf(path);
    const auto before = m_looks.constFind(path);
    const bool isSame = before != m_looks.cend() && *before == look;
    m_looks[path] = look;
    const qint64 age = look.time.secsTo(QDateTime::currentDateTime());
    return isSame && (age >= m_pause || age < 0); // the sender's clock may be ahead
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
    const QStringList before = m_stuck.take(name).told;
    const auto quiet = [](const QString &) {
    };
    const auto tell = [&](const QString &line) {
        m_lines << line;
        if (!before.contains(line)) // it is tried again and again
            m_world.streams.tell(line);
    };
    if (!QFileInfo::exists(inHand(name))) // entering has brought it to its end
        return before.isEmpty() ? Done : DoneWithFindings;
    Outcome outcome;
    const auto misused = passOver([&] {
        Job job(m_program.program(), m_program.ports(), m_transfer, m_options);
        const QString path = job.targetOf(inHand(name));
        const QString target = caseOfNames == Qt::CaseSensitive ? path : path.toCaseFolded();
        const QString other = m_targets.value(target, name);
        if (other.compare(name, caseOfNames) != 0) {
            outcome.begun = m_world.clock.now();
            outcome.source = inHand(name);
            outcome.notes << u"Belgesi %1 dosyasınınkiyle aynı adı alır, onu ezerdi: %2. Dosyanın "
                             "adını değiştirin."_s.arg(other, QDir::toNativeSeparators(path));
            return tell(u"%1: %2"_s.arg(name, outcome.notes.last()));
        }
        job.setEnding(m_world.isEnding);
        job.setClosing([&](const Outcome &done, const QString &staging) {
            return closing(name, done, staging);
        });
        outcome = job.run(inHand(name), {quiet, tell});
        if (m_options.isOn(u"uzerine-yaz"_s) && !outcome.documents.isEmpty())
            m_targets[target] = name;
    });
    if (misused) { // no fault of the file: it waits where it came
        m_world.streams.tell(u"kervan-aktar: "_s + misused->description());
        if (const auto failed = passOver([&] { moveFile(inHand(name), freeName(m_folder, name)); }))
            m_world.streams.tell(name + u": Yerine geri konamadı. "_s + failed->description());
        return UsedWrongly;
    }
    if (outcome.status == NothingWritten && !isPending(m_program.program().folder) &&
        QFileInfo::exists(inHand(name))) {
        if (const auto failed = passOver([&] { putAway(name, outcome); }))
            tell(name + u": Yeniden denenecek. "_s + failed->description());
    }
    if (QFileInfo::exists(inHand(name)))
        m_stuck[name] = {m_lines, isPending(m_program.program().folder) ? Done : outcome.status};
    if (before.isEmpty() || !m_stuck.contains(name))
        m_world.streams.out(m_options.isOn(u"json"_s) ? jsonOf(outcome) : textOf(outcome));
    return outcome.status;
}

void Watch::putAway(const QString &name, const Outcome &outcome)
{
    const QString path = freeName(m_failed, name);
    writeReport(reportOf(path), outcome);
    const auto failed = passOver([&] { moveFile(inHand(name), path); });
    if (!failed)
        return;
    QFile::remove(reportOf(path)); // it is tried again
    throw Failure(*failed);
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

// Each try reads the source and asks Logo again, so what bars the way is looked at ever more
// seldom.
void Watch::rest() const
{
    const int seconds =
        m_pause < longestRest ? std::min(m_pause << std::min(m_barred, 5), longestRest) : m_pause;
    const int naps = std::max(1, seconds * 1000 / nap);
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
        QList<Option> ofRecipe = allOptions();
        ofRecipe.removeIf([](const Option &option) { return option.name == u"bicim"; });
        for (Option &option : ofRecipe) // the same one takes other words for another command
            option.value.replace(u'|', u' ');
        addRecipe(first, recipe, {command}, ofRecipe);
        const Transfer *transfer = findTransfer(first.value(u"aktarim"_s));
        if (!transfer)
            throw Failure(
                u"%1: aktarim = fatura gibi bir satırla ne yapılacağını yazın."_s.arg(recipe));
        addRecipe(options, recipe, {command, transfer->command},
                  watchOptions() + optionsOf(*transfer));
        for (const QString &name : {u"listele"_s, u"denetle"_s, u"otomatik"_s}) {
            if (options.isOn(name))
                throw Failure(
                    u"izle gelen her dosyanın belgesini yazar; %1 onunla olmaz."_s.arg(name));
        }
        status = Watch(options, *transfer, world).run();
    });
    if (!misused)
        return status;
    world.streams.tell(u"kervan-aktar: "_s + misused->description());
    return UsedWrongly;
}

} // namespace kervan
