#include "aktar/job.h"

#include "aktar/listing.h"
#include "aktar/selection.h"
#include "base/failure.h"
#include "check/documentreader.h"
#include "text/masks.h"
#include "text/numbers.h"
#include "transfer/target.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Said of a document that only the windows write by themselves.
constexpr QStringView automaticTarget = u"var olan dosya";

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

QString cashFileOf(const QString &target)
{
    return target.chopped(4) + u"-KASANAKIT.xml"_s;
}

// "120 fatura" without its number.
QString kindOf(const Notes::Written &written)
{
    return written.what.section(u' ', 1);
}

// The sum of a document as it stands in it: nothing where a record has none.
QString sumOf(const QString &path)
{
    Decimal sum;
    bool isTold = false;
    bool isWhole = true;
    readDocument(path, [&](const DocumentRecord &record) {
        isTold = true;
        isWhole = isWhole && record.sum;
        sum += record.sum.value_or(Decimal());
    });
    if (!isTold || !isWhole)
        return {};
    return masked(toNumber(sum.text()), "#,##0.00"_mask);
}

bool isOfSelection(const OpenScreen &screen, const Finding &finding)
{
    if (finding.rule == automaticTarget)
        return false;
    return finding.row < 0 ||
           (finding.list == screen.listName && (!screen.ticks || screen.list.ticked(finding.row)));
}

} // namespace

Job::Job(Program &program, CommandPorts ports, const Transfer &transfer, const Options &options)
    : m_program(program)
    , m_ports(ports)
    , m_transfer(transfer)
    , m_options(options)
{
    const bool looksBack = selectionOf(options, program.clock.now().date()).unwritten;
    if ((!onlyReads() || looksBack) && options.value(u"hedef"_s).isEmpty())
        throw Failure(u"--hedef ile yazılacak belgeyi verin (ya da --listele, --denetle)."_s);
    QStringList targets;
    for (const QString &source : options.sources) {
        if (!onlyReads() && targets.contains(targetOf(source)))
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
    QString target = QDir::fromNativeSeparators(m_options.value(u"hedef"_s));
    if (target.endsWith(u'/') || QFileInfo(target).isDir())
        target = QDir(target).filePath(u"{kaynak}.xml"_s);
    const QDateTime now = m_program.clock.now();
    target.replace(u"{kaynak}"_s, QFileInfo(source).completeBaseName());
    target.replace(u"{tarih}"_s, now.toString(u"yyyyMMdd"_s));
    target.replace(u"{saat}"_s, now.toString(u"HHmmss"_s));
    return xmlAdi(QDir::cleanPath(QFileInfo(target).absoluteFilePath()));
}

Outcome Job::run(const QString &source, const Streams &streams)
{
    Outcome outcome;
    outcome.source = QFileInfo(source).absoluteFilePath();
    outcome.begun = m_program.clock.now();
    outcome.countersBefore = countersOf(m_program.folder);
    m_told.clear();
    const Streams named{streams.out, [&, name = nameOf(source)](const QString &line) {
                            streams.tell(name + u": "_s + line);
                        }};
    const Streams own{streams.out, [&](const QString &line) {
                          outcome.notes << line;
                          named.tell(line);
                      }};
    m_ports.boxes.setTell(own.tell);
    OpenScreen screen = m_transfer.begin(m_program, m_options);
    read(screen, outcome, own);
    if (m_options.isOn(u"listele"_s)) {
        streams.out(listing(screen.list, screen.ticks, m_options.value(u"bicim"_s)));
        outcome.status = screen.list.isEmpty() ? NothingWritten : Done;
        return outcome;
    }
    look(screen, outcome, named);
    if (m_options.isOn(u"denetle"_s))
        outcome.status = screen.list.isEmpty() ? NothingWritten : Done;
    else
        write(screen, outcome, own);
    const bool isClean =
        outcome.findings.isEmpty() && m_told.isEmpty() && m_ports.boxes.warnings().isEmpty();
    if (outcome.status == Done && !isClean)
        outcome.status = DoneWithFindings;
    outcome.countersAfter = countersOf(m_program.folder);
    return outcome;
}

// As the user does it: the screen, its choices, the file; then what only a list in hand takes.
void Job::read(OpenScreen &screen, Outcome &outcome, const Streams &streams)
{
    QElapsedTimer time;
    time.start();
    screen.open();
    tellNotes(screen.notes, streams);
    screen.xml.setChecked(m_options.isOn(u"okunur-bicim"_s));
    const auto choose = [&](bool behindRead) {
        for (const Choice &choice : std::as_const(screen.choices)) {
            if (choice.behindRead == behindRead && m_options.has(choice.option))
                choice.make(m_options.value(choice.option));
        }
    };
    choose(false);
    screen.read(outcome.source);
    choose(true);
    tellNotes(screen.notes, streams);
    for (const auto &[reason, count] : screen.report.reasons())
        streams.tell(u"Okuma: %1 (%2 kez)"_s.arg(reason).arg(count));
    const QDate today = m_program.clock.now().date();
    const QString folder = QFileInfo(targetOf(outcome.source)).path();
    for (const QString &line : selectRows(screen, selectionOf(m_options, today), folder))
        streams.tell(u"Seçim: "_s + line);
    outcome.rows = screen.list.rows();
    outcome.selected = screen.ticks ? screen.list.tickedCount() : outcome.rows;
    outcome.readTime = time.elapsed();
}

// Of rows that are not written nothing is said. Where the findings are all that is wanted they go
// to the output.
void Job::look(OpenScreen &screen, Outcome &outcome, const Streams &streams) const
{
    QElapsedTimer time;
    time.start();
    const std::unique_ptr<Checks> checks = screen.checks();
    checks->silence(u"XML işareti"_s, screen.xml); // it writes them as XML asks
    checks->finish();
    for (const Finding &finding : checks->findings()) {
        if (isOfSelection(screen, finding))
            outcome.findings << finding;
    }
    outcome.checkTime = time.elapsed();
    const bool isAsked = m_options.isOn(u"denetle"_s);
    if (isAsked && m_options.isOn(u"json"_s))
        return;
    const auto show = [&](const QString &line) {
        isAsked ? streams.out(line + u'\n') : streams.tell(line);
    };
    for (const Finding &finding : std::as_const(outcome.findings))
        show(lineOf(finding));
    if (!isAsked)
        return;
    for (const Gap &gap : checks->gaps())
        show(u"Eksik: %1 %2, %3 satırda, %4 belgede"_s.arg(gap.kind, gap.code)
                 .arg(gap.lines)
                 .arg(gap.documents));
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

bool Job::mayWrite(const OpenScreen &screen, const Outcome &outcome, const QString &target,
                   const std::function<void(const QString &line)> &tell) const
{
    const auto refuse = [&](const QString &why) {
        tell(u"Belge yazılmadı: "_s + why);
        return false;
    };
    if (outcome.rows == 0 && !screen.guards)
        return refuse(u"listede kayıt yok."_s);
    if (outcome.rows > 0 && outcome.selected == 0)
        return refuse(u"seçilen satır yok."_s);
    if (m_options.isOn(u"hata-varsa-yazma"_s) && outcome.count(Level::Error) > 0)
        return refuse(u"%1 hata bulundu. Düzeltin ya da --hata-varsa-yazma vermeyin."_s.arg(
            outcome.count(Level::Error)));
    QStringList paths{target};
    if (screen.writesCashSlips)
        paths << cashFileOf(target);
    for (const QString &path : std::as_const(paths)) {
        if (!m_options.isOn(u"uzerine-yaz"_s) && QFileInfo::exists(path))
            return refuse(u"%1 zaten var. Başka bir --hedef ya da --uzerine-yaz verin."_s.arg(
                QDir::toNativeSeparators(path)));
    }
    return true;
}

void Job::write(OpenScreen &screen, Outcome &outcome, const Streams &streams)
{
    const QString target = targetOf(outcome.source);
    if (!mayWrite(screen, outcome, target, streams.tell))
        return;
    QElapsedTimer time;
    time.start();
    const auto failed = passOver([&] {
        Journal journal(m_program.folder, QFileInfo(target).path());
        writeInto(screen, journal, target, outcome, streams);
    });
    if (failed) {
        outcome.documents.clear();
        outcome.status = NothingWritten;
        streams.tell((isPending(m_program.folder) ? u"Belge yerine konamadı, bir sonraki çalışma "
                                                    "yeniden dener: "_s
                                                  : u"Belge yazılmadı: "_s) +
                     failed->description());
    }
    outcome.writeTime = time.elapsed();
}

void Job::writeInto(OpenScreen &screen, Journal &journal, const QString &target, Outcome &outcome,
                    const Streams &streams)
{
    const QString folder = QFileInfo(target).path();
    m_ports.names.target = QDir(journal.folder()).filePath(nameOf(target));
    screen.write();
    tellNotes(screen.notes, {streams.out, [&](QString line) {
                                 streams.tell(line.replace(journal.folder(), folder));
                             }});
    QList<Move> moves;
    for (const Notes::Written &written : screen.notes.written()) {
        const QString path = QDir(folder).filePath(nameOf(written.path));
        outcome.documents << OutcomeDocument{path, kindOf(written), written.count,
                                             sumOf(written.path)};
        moves << Move{written.path, path, m_options.isOn(u"uzerine-yaz"_s)};
    }
    // Nobody looks on: of documents and counters that belong together there are all or none.
    if (moves.isEmpty() || screen.notes.hasFailed()) {
        outcome.documents.clear();
        journal.takeBack();
        streams.tell(u"Belge yazılmadı, sayaçlar önceki gibi: nedeni yukarıda."_s);
        return;
    }
    outcome.status = Done;
    outcome.countersAfter = countersOf(m_program.folder);
    if (m_closing)
        moves += m_closing(outcome, journal.folder());
    journal.commit(moves);
}

} // namespace kervan
