#include "check/screens/listwatch.h"

#include "base/failure.h"
#include "check/readinessrules.h"
#include "check/screens/documentpage.h"
#include "check/screens/findingspage.h"
#include "check/screens/totalsline.h"
#include "controls/gridview.h"
#include "controls/remembered.h"
#include "controls/transferwidgets.h"
#include "store/folders.h"
#include "transfer/target.h"

#include <QAction>
#include <QDir>
#include <QEvent>
#include <QFileInfo>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView folderKey = u"check/folder"; // of the document that was opened last
constexpr QStringView onlyFound = u"bulgulu satırlar";

// A target setting may name a file. Nobody is asked which: a share that is gone takes long to
// answer.
QString folderOf(const QString &target)
{
    return target.endsWith(u".xml"_s, Qt::CaseInsensitive) ? QFileInfo(target).path() : target;
}

RowMark foundIn(const Checks &checks, const QString &list, int row)
{
    RowMark mark;
    QStringList texts;
    for (const int place : checks.ofRow(row, list)) {
        const Finding &finding = checks.findings()[place];
        texts << finding.text;
        if (finding.level == Level::Error || mark.kind == RowMark::None)
            mark.kind = finding.level == Level::Error ? RowMark::Error : RowMark::Warning;
    }
    mark.text = texts.join(u'\n');
    return mark;
}

} // namespace

ListWatch::ListWatch(CheckedList list, FindingsPage *findings, DocumentPage *page, TotalsLine *line)
    : QObject(list.window)
    , m_list(std::move(list))
    , m_findings(findings)
    , m_page(page)
    , m_line(line)
{
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, [this] { passOver([this] { lookForRows(); }); });
    connect(&m_list.checks, &Checks::changed, this, &ListWatch::showMarks);
    connect(&m_documents, &WrittenDocuments::changed, this, &ListWatch::showMarks);
    connect(&m_documents, &WrittenDocuments::changed, &m_list.checks, &Checks::askScreen);
    follow(m_list.rows, m_list.view, First);
    if (m_list.secondRows)
        follow(*m_list.secondRows, m_list.linesView, Second);
    connect(m_findings, &FindingsPage::onlyFoundWanted, this, &ListWatch::showOnlyFound);
    connect(m_list.view, &GridView::filterChanged, this, [this] {
        m_findings->setOnlyFound(m_list.view->isFiltered() &&
                                 m_list.view->filteredBy() == onlyFound);
    });
    // In the midst of a write: nothing of it may end that.
    connect(&m_list.notes, &TextField::changed, this,
            [this] { passOver([this] { takeWritten(); }); });
    for (ReadBackBeside *readBack : {&m_readBack, &m_slipsReadBack})
        connect(readBack, &ReadBackBeside::done, this, &ListWatch::takeReadBack);
    connect(m_page, &DocumentPage::chosen, this, [this](const QString &path) {
        const QString folder = QFileInfo(path).absolutePath();
        if (m_documents.folders().contains(folder))
            return;
        remember(folderKey, folder);
        readFolders();
    });
    addRules();
    m_list.window->installEventFilter(this);
}

void ListWatch::follow(Grid &rows, GridView *view, Which list)
{
    connect(&rows, &QAbstractItemModel::modelReset, &m_soon, [this] { m_soon.start(0); });
    view->setMarker([this, view, list](int row) { return markOf(view, list, row); });
    if (!(list == First ? m_list.listed : m_list.secondListed) || !rows.isTickable())
        return;
    auto *untick = new QAction(u"Bu klasörde yazılmış olanların işaretini kaldır"_s, view);
    connect(untick, &QAction::triggered, this, [this, &rows, list] { untickWritten(rows, list); });
    view->addAction(untick);
}

// What only the documents tell.
void ListWatch::addRules()
{
    m_list.checks.add(counterBehindRule(
        [this] { return m_documents.counterWarnings(m_list.program.folder, m_list.counters); }));
    m_list.checks.add({.name = u"okunmayan belge"_s,
                       .cure = u"Belgeyi yeniden yazın ya da klasörden alın."_s,
                       .ofScreen = [this] {
                           return m_documents.skipped().join(u' ');
                       }});
}

// What changes elsewhere shows when somebody looks again.
bool ListWatch::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show || event->type() == QEvent::WindowActivate) {
        m_list.checks.askScreen();
        readFolders();
        m_documents.refresh();
    }
    return QObject::eventFilter(watched, event);
}

RowMark ListWatch::markOf(const GridView *view, Which list, int row) const
{
    RowMark mark = foundIn(m_list.checks, view->objectName(), row);
    const WrittenMark written = m_documents.marks(list).value(row);
    if (written.kind != WrittenMark::None) {
        mark.text += (mark.text.isEmpty() ? QString() : u"\n"_s) + written.sentence;
        mark.written = written.kind == WrittenMark::Differs ? RowMark::Differs : RowMark::Same;
    }
    return mark;
}

void ListWatch::showMarks()
{
    showMarksOf(m_list.view, First);
    if (m_list.secondRows)
        showMarksOf(m_list.linesView, Second);
    if (m_list.view->isFiltered() && m_list.view->filteredBy() == onlyFound &&
        m_list.checks.isComplete())
        m_list.view->refilter();
}

void ListWatch::showMarksOf(GridView *view, Which list) const
{
    const bool anyFound =
        std::ranges::any_of(m_list.checks.findings(), [&](const Finding &finding) {
            return finding.row >= 0 && finding.list == view->objectName();
        });
    view->marksChanged((anyFound ? 1 : 0) + (m_documents.markedCount(list) > 0 ? 1 : 0));
}

void ListWatch::showOnlyFound(bool only)
{
    const bool isOurs = m_list.view->isFiltered() && m_list.view->filteredBy() == onlyFound;
    if (only && !isOurs)
        m_list.view->filter({.what = onlyFound.toString(), .shows = [this](int row) {
                                 return !m_list.checks.isComplete() ||
                                        !m_list.checks.ofRow(row).isEmpty();
                             }});
    else if (!only && isOurs)
        m_list.view->endFilter();
}

void ListWatch::lookForRows()
{
    if (m_list.listed)
        m_documents.setRows(m_list.listed(), First);
    if (m_list.secondListed)
        m_documents.setRows(m_list.secondListed(), Second);
}

// Where documents go, and where the user has opened one.
void ListWatch::readFolders()
{
    const Program &program = m_list.program;
    QStringList folders;
    const auto add = [&folders](const QString &folder) {
        const QString path = folder.isEmpty() ? folder : QDir::cleanPath(folder);
        if (!path.isEmpty() && !folders.contains(path))
            folders << path;
    };
    const Folders &targets = program.folders;
    for (const QString &target :
         {ilkKlasor(program.folder, targets.xc, targets.xf), targets.xf, targets.xs})
        add(target.isEmpty() ? target : folderOf(fullName(program.folder, target)));
    const QStringList written = folders;
    add(remembered(folderKey).toString());
    m_page->setFolder(folders.value(0));
    m_documents.setFolders(folders, written);
}

// The rows are those that went into the document: this comes in the midst of the write.
void ListWatch::takeWritten()
{
    const QList<Notes::Written> &written = m_list.notes.written();
    const qsizetype seen = std::exchange(m_writtenSeen, written.size());
    if (written.isEmpty()) { // what is read would tell of what is past
        m_readBack.stop();
        m_slipsReadBack.stop();
        m_refuted.clear();
        m_refutedFiles.clear();
    }
    for (const Notes::Written &document : written.sliced(qMin(seen, written.size()))) {
        m_documents.refresh();
        if (m_list.belowLimit && document.path.endsWith(cashDocumentEnd)) {
            m_slipsReadBack.start(document.path,
                                  {.family = DocumentFamily::CashSlips, .count = document.count});
            continue;
        }
        if (m_list.written)
            m_readBack.start(document.path, m_list.written());
        m_page->show(document.path);
    }
}

void ListWatch::takeReadBack(const ReadBack &result)
{
    if (!result.agrees) {
        m_refuted << result.sentence;
        m_refutedFiles << result.path;
    }
    m_line->setDisagreement(m_refuted.join(u' '), m_refutedFiles);
}

void ListWatch::untickWritten(Grid &rows, Which list)
{
    QList<int> written;
    const QList<WrittenMark> marks = m_documents.marks(list);
    for (int row = 0; row < marks.size() && row < rows.rows(); ++row) {
        const auto kind = marks[row].kind; // one that differs is for the user to judge
        if ((kind == WrittenMark::Same || kind == WrittenMark::Similar) && rows.ticked(row))
            written << row;
    }
    rows.setTicked(written, false);
    tellBelow(m_list.window, u"%1 işaret kaldırıldı."_s.arg(written.size()));
}

} // namespace kervan
