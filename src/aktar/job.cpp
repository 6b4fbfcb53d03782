#include "aktar/job.h"

#include "aktar/answers.h"
#include "aktar/documentname.h"
#include "aktar/listing.h"
#include "base/failure.h"
#include "check/readback.h"
#include "check/readinessrules.h"
#include "check/writtendocuments.h"
#include "store/folders.h"
#include "transfer/target.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// What rules say of the windows' own targets.
constexpr std::array<QStringView, 2> ofWindows{u"var olan dosya", u"belge klasörü"};

constexpr QStringView xmlEnding = u".xml";

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

QString cashFileOf(const QString &target)
{
    return target.chopped(xmlEnding.size()) + cashDocumentEnd.toString();
}

void tellUnlessEmpty(const QString &line, const Streams &streams)
{
    if (!line.isEmpty())
        streams.tell(line);
}

bool isOfSelection(const OpenScreen &screen, const Finding &finding)
{
    if (finding.row < 0)
        return std::ranges::find(ofWindows, finding.rule) == ofWindows.end() &&
               screen.concerns(finding);
    return finding.list == screen.listName && (!screen.ticks || screen.list.ticked(finding.row));
}

// Why nothing was looked at or can be written; empty where something was.
QString nothingOf(const OpenScreen &screen, const Outcome &outcome)
{
    if (screen.notes.hasFailed())
        return u"okuma sırasında bir adım başarısız oldu, nedeni yukarıda."_s;
    if (outcome.rows == 0)
        return u"listede kayıt yok."_s;
    return outcome.selected == 0 ? u"seçilen satır yok."_s : QString();
}

// Where the settings have the document, which may be nowhere: the screen tells that.
QString automaticTargetOf(const OpenScreen &screen, const QString &programFolder)
{
    QString target = QDir::cleanPath(fullName(programFolder, *screen.automaticTarget));
    if (screen.writesCashSlips && !target.isEmpty() && nameOf(target).size() < xmlEnding.size())
        throw Failure(u"--otomatik: Dosya Konumları'ndaki \"%1\" bir belge adı olamayacak kadar "
                      "kısa; \"fatura.xml\" gibi bir ad verin."_s.arg(*screen.automaticTarget));
    return target;
}

// What a document has to hold.
WrittenRows expectedIn(const OpenScreen &screen, const Notes::Written &document)
{
    if (!screen.listed)
        return {.family = DocumentFamily::Counts, .count = document.count};
    if (screen.writesCashSlips && document.path.endsWith(cashDocumentEnd))
        return {.family = DocumentFamily::CashSlips, .count = document.count};
    const ListedRows listed = screen.listed();
    WrittenRows rows =
        writtenRows(screen.list, listed.family, screen.ticks, screen.shape().number, listed.amount);
    rows.sumIsNet = listed.amountIs == ListedRows::Net;
    return rows;
}

} // namespace

Job::Job(Program &program, CommandPorts ports, const Transfer &transfer, const Options &options)
    : m_program(program)
    , m_ports(ports)
    , m_transfer(transfer)
    , m_options(options)
{
    const QDate today = program.clock.now().date();
    m_selection = selectionOf(options, today);
    if (options.has(u"ilk-tarih"_s) && options.has(u"son-tarih"_s))
        checkOrder(u"son-tarih"_s, dayOf(u"ilk-tarih"_s, options.value(u"ilk-tarih"_s), today),
                   dayOf(u"son-tarih"_s, options.value(u"son-tarih"_s), today));
    if (options.isOn(u"listele"_s) && options.isOn(u"denetle"_s))
        throw Failure(u"--listele ile --denetle birlikte verilmez."_s);
    if (m_selection.unwritten && options.isOn(u"uzerine-yaz"_s) && !onlyReads())
        throw Failure(
            u"Yazılmış olanları dışarıda bırakmak (--yazilmislari-atla, --sec yazilmamis) "
            "ile --uzerine-yaz birlikte verilmez: belgeleri ezilirdi."_s);
    const QString target = options.value(u"hedef"_s);
    checkDocumentName(target);
    if (options.isOn(u"otomatik"_s)) {
        if (!target.isEmpty() || options.sources.size() > 1)
            throw Failure(u"--otomatik tek kaynağın belgesini ayarlardaki adla yazar; --hedef ile "
                          "birlikte verilmez."_s);
        return;
    }
    if ((!onlyReads() || m_selection.unwritten) && target.isEmpty())
        throw Failure(u"--hedef ile yazılacak belgeyi verin (ya da --listele, --denetle)."_s);
    QStringList targets;
    for (const QString &source : options.sources) {
        if (!onlyReads() && targets.contains(targetOf(source), caseOfNames))
            throw Failure(u"İki kaynağın belgesi aynı: %1. --hedef ile bir klasör ya da içinde "
                          "{kaynak} olan bir ad verin."_s.arg(targetOf(source)));
        targets << targetOf(source);
    }
}

bool Job::onlyReads() const
{
    return m_options.isOn(u"listele"_s) || m_options.isOn(u"denetle"_s);
}

QString Job::targetOf(const QString &source) const
{
    const QString given = m_options.value(u"hedef"_s);
    return given.isEmpty() ? m_automatic : documentNameOf(given, source, m_program.clock.now());
}

Outcome Job::run(const QString &source, const Streams &streams)
{
    Outcome outcome;
    outcome.source = QFileInfo(source).absoluteFilePath();
    outcome.begun = m_program.clock.now();
    m_told.clear();
    m_isBarred = m_isCommitted = false;
    m_source = stateOf(outcome.source);
    m_program.db.forgetFailures();
    const Streams named{streams.out, [&, name = nameOf(source)](const QString &line) {
                            streams.tell(name + u": "_s + line);
                        }};
    const Streams own{streams.out, [&](const QString &line) {
                          outcome.notes << line;
                          named.tell(line);
                      }};
    m_ports.boxes.setTell(own.tell);
    OpenScreen screen = m_transfer.begin(m_program, m_options);
    screen.open();
    tellNotes(screen.notes, own);
    const std::vector<Step> steps = stepsOf(screen);
    const auto failed = passOver([&] {
        barIfItFails([&] {
            if (!onlyReads()) // what the source in front left may hold rows of this one
                tellUnlessEmpty(recover(m_program.folder), own);
            if (!onlyReads() || m_selection.unwritten)
                checkFolderIsThere(m_options.value(u"hedef"_s));
            // One that can't be read would be begun anew.
            outcome.countersBefore = outcome.countersAfter = countersOf(m_program.folder);
        });
        try {
            if (!isHeldUp())
                read(screen, steps, outcome, own);
        } catch (const std::bad_alloc &) {
            throw Failure(u"Kaynağı okumaya bellek yetmedi."_s);
        }
        if (isHeldUp()) // a finding of what could not be asked for would be none
            return;
        look(screen, outcome, named);
        if (!onlyReads())
            write(screen, outcome, own);
        else if (const QString nothing = nothingOf(screen, outcome); nothing.isEmpty())
            outcome.status = Done;
        else
            own.tell(u"Bakılacak bir şey yok: "_s + nothing);
    });
    if (failed)
        own.tell(failed->description());
    if (isHeldUp()) {
        outcome.status = Barred;
        own.tell(u"%1, %2 başka bir programda açık: tanımlar ya da fiyatlar okunamıyor. Sonra "
                 "yeniden deneyin."_s.arg(onlyReads() ? u"Bakılamadı"_s : u"Belge yazılmadı"_s,
                                          m_program.db.heldFile()));
    }
    if (outcome.status == NothingWritten && !m_isCommitted && stateOf(outcome.source) != m_source) {
        m_isBarred = true;
        own.tell(u"Kaynak okunurken değişti, belgesi yazılmadı: gönderilmesi bitince yeniden "
                 "deneyin."_s);
    }
    if (m_isBarred && outcome.status == NothingWritten)
        outcome.status = Barred;
    const bool isClean =
        outcome.findings.isEmpty() && m_told.isEmpty() && m_ports.boxes.warnings().isEmpty();
    if (outcome.status == Done && !isClean)
        outcome.status = DoneWithFindings;
    passOver([&] { outcome.countersAfter = countersOf(m_program.folder); });
    return outcome;
}

void Job::barIfItFails(const std::function<void()> &step)
{
    const auto failed = passOver(step);
    if (!failed)
        return;
    m_isBarred = true;
    throw Failure(u"%1: %2"_s.arg(onlyReads() ? u"Bakılamadı"_s : u"Belge yazılmadı"_s,
                                  failed->description()));
}

// What is used wrongly shows here, in front of the source.
std::vector<Job::Step> Job::stepsOf(OpenScreen &screen)
{
    screen.xml.setChecked(m_options.isOn(u"okunur-bicim"_s));
    if (m_options.isOn(u"otomatik"_s))
        m_automatic = automaticTargetOf(screen, m_program.folder);
    std::vector<Step> steps;
    for (const Choice &choice : std::as_const(screen.choices)) {
        if (!m_options.has(choice.option))
            continue;
        const auto misused = passOver([&] {
            steps.push_back({choice.of(m_options.value(choice.option)), choice.behindRead});
        });
        if (misused && !isHeldUp() && !lacksData()) // else it is no fault of the options
            throw *misused;
    }
    checkSelection(screen, m_selection);
    return steps;
}

// As the user does it: the choices, the file; then what only a list in hand takes.
void Job::read(OpenScreen &screen, const std::vector<Step> &steps, Outcome &outcome,
               const Streams &streams)
{
    QElapsedTimer time;
    time.start();
    const auto choose = [&](bool behindRead) {
        for (const Step &step : steps) {
            if (step.behindRead == behindRead)
                step.make();
        }
    };
    choose(false);
    screen.read(outcome.source);
    choose(true);
    tellNotes(screen.notes, streams);
    for (const auto &[reason, count] : screen.report.reasons())
        streams.tell(u"Okuma: %1 (%2 kez)"_s.arg(reason, QString::number(count)));
    if (screen.report.isCutShort())
        outcome.findings << Finding{
            .rule = u"okuma"_s,
            .level = Level::Error,
            .text = u"Okuma kaynağın sonuna varmadan bitti, sonraki kayıtlar listede yok."_s,
            .cure = u"Kaynağı okumanın bittiği satırda düzeltin."_s};
    const QString folder = QFileInfo(targetOf(outcome.source)).path();
    const Chosen chosen = selectRows(screen, m_selection, folder);
    m_isBarred = chosen.isBarred || (m_selection.eInvoice && lacksAnswers(screen, m_program));
    for (const QString &line : chosen.lines)
        streams.tell(u"Seçim: "_s + line);
    outcome.findings += chosen.findings;
    const QStringList missing = missingNumbers(screen, m_selection);
    if (!missing.isEmpty())
        outcome.findings << Finding{.rule = u"seçim"_s,
                                    .text =
                                        u"Listede olmayan numara: %1"_s.arg(missing.join(u", "_s)),
                                    .cure = u"--sec ile verilen numarayı düzeltin."_s};
    outcome.rows = screen.list.rows();
    outcome.selected = screen.ticks ? screen.list.tickedCount() : outcome.rows;
    outcome.readTime = time.elapsed();
}

// Of rows that are not written nothing is said.
void Job::look(OpenScreen &screen, Outcome &outcome, const Streams &streams) const
{
    QElapsedTimer time;
    time.start();
    const std::unique_ptr<Checks> checks = screen.checks();
    if (m_options.isOn(u"listele"_s)) {
        streams.out(listing(screen.list, screen.ticks, m_options.value(u"bicim"_s)));
    } else {
        checks->silence(u"XML işareti"_s, screen.xml); // it writes them as XML asks
        checks->add(counterBehindRule(
            [behind = countersBehind(screen, outcome.source)] { return behind; }));
        checks->finish();
        for (const Finding &finding : checks->findings()) {
            if (isOfSelection(screen, finding))
                outcome.findings << finding;
        }
    }
    if (m_options.isOn(u"denetle"_s))
        outcome.gaps = checks->gaps();
    outcome.checkTime = time.elapsed();
    show(outcome, streams);
}

// Where the findings are all that is wanted they go to the output.
void Job::show(const Outcome &outcome, const Streams &streams) const
{
    const bool isAsked = m_options.isOn(u"denetle"_s);
    if (isAsked && m_options.isOn(u"json"_s))
        return;
    const auto line = [&](const QString &text) {
        isAsked ? streams.out(text + u'\n') : streams.tell(text);
    };
    for (const Finding &finding : outcome.findings)
        line(lineOf(finding));
    for (const Gap &gap : outcome.gaps)
        line(lineOf(gap));
}

// Special codes, which are in databases of their own, are left out where there are none.
bool Job::lacksData() const
{
    return m_program.db.failedFiles().contains(u"data.dbs");
}

// What the documents of the target's folder tell of the counters.
QStringList Job::countersBehind(const OpenScreen &screen, const QString &source) const
{
    const QString target = targetOf(source);
    if (target.isEmpty() || screen.counters.isEmpty())
        return {};
    const std::atomic_bool stop = false;
    return counterWarnings(DocumentCache::shared()->documents({QFileInfo(target).path()}, stop),
                           m_program.folder, screen.counters);
}

// What the status bar of a window shows, each line once.
void Job::tellNotes(const Notes &notes, const Streams &streams)
{
    for (const QString &line : notes.details().split(u'\n', Qt::SkipEmptyParts)) {
        if (m_told.contains(line))
            continue;
        m_told << line;
        streams.tell(u"Bilgi: "_s + line);
    }
}

void Job::checkAnswers(const OpenScreen &screen)
{
    const auto lack = lackOf(screen, m_program, m_options.isOn(u"logosuz-yaz"_s), m_isEnding());
    if (lack && lack->isOfSource)
        throw Failure(u"Belge yazılmadı: "_s + lack->why);
    if (lack)
        barIfItFails([&] { throw Failure(lack->why); });
}

bool Job::mayWrite(const OpenScreen &screen, const Outcome &outcome, const QString &target,
                   const std::function<void(const QString &line)> &tell) const
{
    const auto refuse = [&](const QString &why) {
        tell(u"Belge yazılmadı: "_s + why);
        return false;
    };
    if (outcome.rows == 0 ? !screen.guards : outcome.selected == 0 || screen.notes.hasFailed())
        return refuse(nothingOf(screen, outcome));
    if (m_options.isOn(u"hata-varsa-yazma"_s) && outcome.count(Level::Error) > 0)
        return refuse(u"%1 hata bulundu. Düzeltin ya da --hata-varsa-yazma vermeyin."_s.arg(
            outcome.count(Level::Error)));
    QStringList paths{target};
    if (screen.writesCashSlips)
        paths << cashFileOf(target);
    for (const QString &path : std::as_const(paths)) {
        const QFileInfo there(path);
        if (there.isDir())
            return refuse(
                u"%1 bir klasör. Başka bir ad verin."_s.arg(QDir::toNativeSeparators(path)));
        if (!m_options.isOn(u"uzerine-yaz"_s) && there.exists())
            return refuse(u"%1 zaten var. Başka bir --hedef ya da --uzerine-yaz verin."_s.arg(
                QDir::toNativeSeparators(path)));
    }
    return true;
}

void Job::write(OpenScreen &screen, Outcome &outcome, const Streams &streams)
{
    const QString target = targetOf(outcome.source);
    if (target.isEmpty())
        return screen.writeAutomatically(); // which tells it in its boxes
    checkAnswers(screen);
    if (!mayWrite(screen, outcome, target, streams.tell))
        return;
    QElapsedTimer time;
    time.start();
    const auto failed = passOver([&] {
        Journal journal(m_program.folder, QFileInfo(target).path());
        const auto state = qScopeGuard([&] { m_isCommitted = journal.isCommitted(); });
        writeInto(screen, journal, target, outcome, streams);
    });
    if (failed) {
        outcome.documents.clear();
        outcome.status = NothingWritten;
        if (countersArePending(m_program.folder))
            passOver([&] { recover(m_program.folder); });
        // It is the document's place that fails, and not the source; one that is only to be put
        // there would be written twice if it were tried again.
        m_isBarred = !m_isCommitted;
        QString what = u"Belge yazılmadı: "_s;
        if (countersArePending(m_program.folder))
            what = u"Belge yazılmadı, sayaçları bir sonraki çalışma yerine koyacak: "_s;
        else if (isPending(m_program.folder))
            what = u"Belge yazıldı ama yerine konamadı, bir sonraki çalışma yeniden dener: "_s;
        streams.tell(what + failed->description());
    }
    outcome.writeTime = time.elapsed();
}

// Reads the documents back; what they don't hold is a finding, which is in their way where errors
// are.
bool Job::isRefuted(const OpenScreen &screen, Outcome &outcome, const Streams &streams) const
{
    const int before = outcome.count(Level::Error);
    for (const Notes::Written &document : screen.notes.written()) {
        const ReadBack result = readBack(document.path, expectedIn(screen, document));
        if (result.agrees)
            continue;
        outcome.findings << Finding{
            .rule = u"geri okuma"_s,
            .level = Level::Error,
            .text = result.sentence,
            .cure = u"Belgeyi Logo'ya aktarmadan önce listesiyle karşılaştırın."_s};
        streams.tell(lineOf(outcome.findings.last()));
    }
    return m_options.isOn(u"hata-varsa-yazma"_s) && outcome.count(Level::Error) > before;
}

void Job::writeInto(OpenScreen &screen, Journal &journal, const QString &target, Outcome &outcome,
                    const Streams &streams)
{
    const QString folder = QFileInfo(target).path();
    const QString staged = QDir(journal.folder()).filePath(nameOf(target));
    if (m_options.isOn(u"otomatik"_s)) {
        const QString setting = std::exchange(*screen.automaticTarget, staged);
        const auto putBack = qScopeGuard([&] { *screen.automaticTarget = setting; });
        screen.writeAutomatically();
    } else {
        m_ports.names.target = staged;
        screen.write();
    }
    tellNotes(screen.notes, {streams.out, [&](QString line) {
                                 streams.tell(line.replace(journal.folder(), folder));
                             }});
    QList<Move> moves;
    for (const Notes::Written &written : screen.notes.written()) {
        const QString path = QDir(folder).filePath(nameOf(written.path));
        outcome.documents << documentOf(written, path);
        moves << Move{written.path, path, m_options.isOn(u"uzerine-yaz"_s)};
    }
    // Nobody looks on: of documents and counters that belong together there are all or none, and
    // one that lacks what a database would not give would be taken for a good one.
    if (moves.isEmpty() || isHeldUp() || lacksData() || screen.notes.hasFailed() ||
        isRefuted(screen, outcome, streams)) {
        outcome.documents.clear();
        m_isBarred = m_isBarred || screen.notes.hasLackedPlace();
        journal.takeBack();
        streams.tell(u"Belge yazılmadı, sayaçlar önceki gibi: nedeni yukarıda."_s);
        return;
    }
    if (stateOf(outcome.source) != m_source) { // sent on or cut short since its list was read
        outcome.documents.clear();
        return journal.takeBack();
    }
    outcome.status = Done;
    outcome.countersAfter = countersOf(m_program.folder);
    if (m_closing)
        moves += m_closing(outcome, journal.folder());
    journal.commit(moves);
}

} // namespace kervan
