#include "check/screens/listwatch.h"

#include "check/screens/documentpage.h"
#include "check/screens/findingspage.h"
#include "check/screens/totalsline.h"
#include "controls/gridview.h"
#include "controls/remembered.h"
#include "controls/transferwidgets.h"
#include "transfer/target.h"

#include <QAction>
#include <QDir>
#include <QEvent>
#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView folderKey = u"check/folder"; // of the document that was opened last
constexpr QStringView onlyFound = u"bulgulu satırlar";

// A target setting may name a file.
QString folderOf(const QString &target)
{
    const QFileInfo info(target);
    return info.isDir() || target.isEmpty() ? target : info.absolutePath();
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
    connect(&m_soon, &QTimer::timeout, this, &ListWatch::lookForRows);
    connect(&m_list.rows, &QAbstractItemModel::modelReset, &m_soon, [this] { m_soon.start(0); });
    connect(&m_list.checks, &Checks::changed, this, &ListWatch::showMarks);
    connect(&m_documents, &WrittenDocuments::changed, this, &ListWatch::showMarks);
    connect(&m_documents, &WrittenDocuments::changed, &m_list.checks, &Checks::askScreen);
    m_list.view->setMarker([this](int row) { return markOf(row); });
    connect(m_findings, &FindingsPage::onlyFoundWanted, this, &ListWatch::showOnlyFound);
    connect(m_list.view, &GridView::filterChanged, this, [this] {
        m_findings->setOnlyFound(m_list.view->isFiltered() &&
                                 m_list.view->filteredBy() == onlyFound);
    });
    connect(&m_list.notes, &TextField::changed, this, &ListWatch::takeWritten);
    connect(&m_readBack, &ReadBackBeside::done, this, [this](const ReadBack &result) {
        m_line->setDisagreement(result.agrees ? QString() : result.sentence);
    });
    connect(m_page, &DocumentPage::shown, this, [this] {
        const QString folder = QFileInfo(m_page->path()).absolutePath();
        if (m_documents.folders().contains(folder))
            return;
        remember(folderKey, folder);
        readFolders();
    });
    if (m_list.listed && m_list.view->isTickable()) {
        auto *untick =
            new QAction(u"Bu klasörde yazılmış olanların işaretini kaldır"_s, m_list.view);
        connect(untick, &QAction::triggered, this, &ListWatch::untickWritten);
        m_list.view->addAction(untick);
    }
    m_list.window->installEventFilter(this);
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

RowMark ListWatch::markOf(int row) const
{
    RowMark mark;
    QStringList texts;
    for (const int place : m_list.checks.ofRow(row)) {
        const Finding &finding = m_list.checks.findings()[place];
        texts << finding.text;
        if (finding.level == Level::Error || mark.kind == RowMark::None)
            mark.kind = finding.level == Level::Error ? RowMark::Error : RowMark::Warning;
    }
    const WrittenMark written = m_documents.marks().value(row);
    if (written.kind != WrittenMark::None) {
        texts << written.sentence;
        const bool differs = written.kind == WrittenMark::Differs;
        if (mark.kind == RowMark::None || (differs && mark.kind == RowMark::Warning))
            mark.kind = differs ? RowMark::Differs : RowMark::Same;
    }
    mark.text = texts.join(u'\n');
    return mark;
}

void ListWatch::showMarks()
{
    bool any = m_documents.markedCount() > 0;
    for (const Finding &finding : m_list.checks.findings())
        any = any || (finding.row >= 0 && finding.list == m_list.view->objectName());
    m_list.view->marksChanged(any);
    if (m_list.view->isFiltered() && m_list.view->filteredBy() == onlyFound &&
        m_list.checks.isComplete())
        m_list.view->refilter();
}

void ListWatch::showOnlyFound(bool only)
{
    const bool isOurs = m_list.view->isFiltered() && m_list.view->filteredBy() == onlyFound;
    if (only && !isOurs)
        m_list.view->filter({.what = onlyFound.toString(), .shows = [this](int row) {
                                 return !m_list.checks.ofRow(row).isEmpty();
                             }});
    else if (!only && isOurs)
        m_list.view->endFilter();
}

void ListWatch::lookForRows()
{
    if (m_list.listed)
        m_documents.setRows(m_list.listed());
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
    add(folderOf(ilkKlasor(program.folder, program.folders.xc, program.folders.xf)));
    add(remembered(folderKey).toString());
    m_page->setFolder(folders.value(0));
    m_documents.setFolders(folders);
}

// The rows are those that went into the document: this comes in the midst of the write.
void ListWatch::takeWritten()
{
    const QList<Notes::Written> &written = m_list.notes.written();
    const qsizetype seen = std::exchange(m_writtenSeen, written.size());
    if (written.size() <= seen || seen > 0) // the cash slips follow their invoices
        return;
    const QString path = written.first().path;
    if (m_list.written)
        m_readBack.start(path, m_list.written());
    m_page->show(path);
    m_documents.refresh();
}

void ListWatch::untickWritten()
{
    QList<int> rows;
    const QList<WrittenMark> &marks = m_documents.marks();
    for (int row = 0; row < marks.size() && row < m_list.rows.rows(); ++row) {
        if (marks[row].kind != WrittenMark::None && m_list.rows.ticked(row))
            rows << row;
    }
    m_list.rows.setTicked(rows, false);
    tellBelow(m_list.window, u"%1 işaret kaldırıldı."_s.arg(rows.size()));
}

} // namespace kervan
