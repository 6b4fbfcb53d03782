#include "check/screens/findingspage.h"

#include "base/failure.h"
#include "check/findingsfile.h"
#include "controls/flowlayout.h"
#include "controls/griddelegate.h"
#include "controls/gridview.h"
#include "controls/pictures.h"
#include "controls/transferwidgets.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostShown = 5000;
constexpr int pictureSide = 14;

enum Column { Weight, Row, Number, Text, Cure };

QList<GridColumn> columns()
{
    return {{u"Önem"_s, 900},
            {u"Sıra"_s, 800, Qt::AlignRight}, // of the list
            {u"Numara"_s, 1800},
            {u"Bulgu"_s, 6000},
            {u"Ne yapmalı"_s, 6000}};
}

QString wordOf(Level level)
{
    return level == Level::Error ? u"Hata"_s : u"Uyarı"_s;
}

// Puts the picture that marks the row in front of the word.
class FindingDelegate : public GridDelegate
{
public:
    using GridDelegate::GridDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        GridDelegate::initStyleOption(option, index);
        if (index.column() != Weight || option->text.isEmpty())
            return;
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->decorationSize = {pictureSide, pictureSide};
        if (!option->state.testFlag(QStyle::State_Selected)) // there the word alone stands out
            option->icon =
                picture(option->text == wordOf(Level::Error) ? u"markerror"_s : u"markwarning"_s);
    }
};

} // namespace

FindingsPage::FindingsPage(Checks &checks, Window window, QWidget *parent)
    : QWidget(parent)
    , m_checks(checks)
    , m_window(std::move(window))
    , m_rows(columns())
    , m_view(new GridView(m_rows, u"bulgular"_s))
    , m_counts(new QLabel)
    , m_write(new QPushButton(u"Bulgulu satırları yaz…"_s))
    , m_only(new QCheckBox(u"Yalnız bulgulu satırlar"_s))
{
    setObjectName(u"denetim"_s);
    m_view->setAccessibleName(u"Bulgular"_s);
    m_view->spread({Text, Cure});
    m_view->setItemDelegate(new FindingDelegate(m_view));
    m_counts->setObjectName(u"bulguSayisi"_s);
    m_only->setObjectName(u"yalnizBulgulu"_s);
    m_only->setToolTip(u"Bulgusu olmayan satırları gizle"_s);
    m_write->setObjectName(u"bulgulariYaz"_s);
    m_write->setToolTip(u"Bulgulu satırları nedenleriyle bir .csv dosyasına yaz"_s);
    auto *head = new QWidget;
    m_head = new FlowLayout(head);
    m_head->addWidget(m_counts);
    m_head->addSpacing(16);
    m_head->addWidget(m_only);
    m_head->addSpacing(16);
    m_head->addWidget(m_write);
    m_head->addSpacing(16);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(head);
    column->addWidget(m_view);
    connect(&m_checks, &Checks::changed, this, &FindingsPage::show);
    connect(m_view, &QAbstractItemView::activated, this, [this](const QModelIndex &index) {
        if (index.row() < mostShown)
            goTo(index.row());
    });
    connect(m_view, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        if (index.row() < mostShown)
            stand(index.row());
    });
    connect(m_only, &QCheckBox::toggled, this, &FindingsPage::onlyFoundWanted);
    connect(m_write, &QAbstractButton::clicked, this, &FindingsPage::write);
    show();
}

void FindingsPage::addToHead(QWidget *part)
{
    m_head->addWidget(part);
}

void FindingsPage::setOnlyFound(bool only)
{
    const QSignalBlocker quiet(m_only);
    m_only->setChecked(only);
}

void FindingsPage::show()
{
    const int errors = m_checks.count(Level::Error);
    const int warnings = m_checks.count(Level::Warning);
    const QString working = m_checks.isComplete() ? QString() : u" · denetleniyor…"_s;
    m_counts->setText((errors + warnings == 0 ? u"Bulgu yok"_s
                                              : u"%1 hata, %2 uyarı"_s.arg(errors).arg(warnings)) +
                      working);
    m_write->setEnabled(errors + warnings > 0);
    m_view->setEmptyText(m_checks.isComplete() ? u"Denetimde bir şey bulunmadı."_s
                                               : u"Denetleniyor…"_s);
    Q_EMIT titleChanged(errors + warnings == 0 ? u"Denetim"_s
                                               : u"Denetim (%1)"_s.arg(errors + warnings));
    // Errors first, and where the user stands stays where it is when others come and go.
    m_findings = m_checks.findings();
    std::stable_partition(m_findings.begin(), m_findings.end(),
                          [](const Finding &finding) { return finding.level == Level::Error; });
    m_current = m_isPlaced ? static_cast<int>(m_findings.indexOf(m_currentFinding)) : -1;
    m_isPlaced = m_current >= 0 || (m_isPlaced && !m_checks.isComplete());
    m_isStale = true;
    if (isVisible())
        fill();
}

void FindingsPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        fill();
}

// Only what is looked at is put into rows.
void FindingsPage::fill()
{
    m_isStale = false;
    const int top = m_view->verticalScrollBar()->value();
    fillRows();
    m_view->verticalScrollBar()->setValue(top);
    markCurrent();
}

void FindingsPage::fillRows()
{
    const int number = m_window.shape().number;
    const Grid::Refill refill(m_rows);
    m_rows.clear();
    for (const Finding &finding : m_findings.first(qMin(m_findings.size(), mostShown))) {
        const int row = m_rows.addRow(wordOf(finding.level));
        const bool isInList = finding.list == m_window.view->objectName();
        if (finding.row >= 0)
            m_rows.setCell(row, Row, (isInList ? u"%1"_s : u"alt %1"_s).arg(finding.row + 1));
        if (isInList && finding.row >= 0 && finding.row < m_window.list.rows() && number >= 0)
            m_rows.setCell(row, Number, m_window.list.cell(finding.row, number));
        const QString prefix = m_rows.cell(row, Number) + u": "_s;
        m_rows.setCell(row, Text,
                       finding.text.startsWith(prefix) ? finding.text.sliced(prefix.size())
                                                       : finding.text);
        m_rows.setCell(row, Cure, finding.cure);
    }
    if (m_findings.size() > mostShown) {
        const int row = m_rows.addRow({});
        m_rows.setCell(row, Text, u"ve %1 bulgu daha"_s.arg(m_findings.size() - mostShown));
    }
}

void FindingsPage::markCurrent()
{
    if (m_current >= 0 && m_current < m_rows.rows())
        m_view->markRows({m_current});
}

// From here the next finding counts. A click has marked what it wants by itself.
bool FindingsPage::stand(int place)
{
    if (place < 0 || place >= m_findings.size())
        return false;
    m_current = place;
    m_currentFinding = m_findings[place];
    m_isPlaced = true;
    return true;
}

void FindingsPage::goTo(int place)
{
    if (!stand(place))
        return;
    const Finding finding = m_currentFinding;
    if (m_view->isVisible())
        markCurrent();
    if (finding.row < 0) {
        if (auto *control = m_window.screen->findChild<QWidget *>(finding.control))
            control->setFocus(Qt::ShortcutFocusReason);
        return;
    }
    auto *list = finding.list == m_window.view->objectName()
                     ? m_window.view
                     : m_window.screen->findChild<GridView *>(finding.list);
    if (!list || finding.row >= list->model()->rowCount())
        return;
    if (list != m_window.view)
        Q_EMIT wanted(Wanted::Lines);
    list->goTo(finding.row, qMax(finding.column, 0));
    list->setFocus(); // at a choice, the next arrow would change it
}

void FindingsPage::goOn(int step)
{
    const auto count = static_cast<int>(m_findings.size());
    if (count == 0)
        return m_window.tell(u"Denetimde bir şey bulunmadı."_s);
    const int from = m_current < 0 && step < 0 ? 0 : m_current;
    const int next = (from + step + count) % count;
    if (m_findings[next].list == m_window.view->objectName())
        Q_EMIT wanted(Wanted::Findings);
    goTo(next);
    m_window.tell(u"Bulgu %1 / %2: %3"_s.arg(m_current + 1).arg(count).arg(m_currentFinding.text));
}

void FindingsPage::write()
{
    const auto name = m_window.dialogs.saveName({.title = u"Bulgulu Satırları Kaydet"_s,
                                                 .filter = u"Csv Dosyaları (csv)|*.csv"_s,
                                                 .start = {}});
    if (!name || name->isEmpty())
        return;
    const QString path = name->endsWith(u".csv", Qt::CaseInsensitive) ? *name : *name + u".csv"_s;
    if (const auto failed =
            endQuietly([&] { writeFindings(path, m_window.list, m_checks.findings()); }))
        m_window.tell(failed->description());
    else
        m_window.tell(u"Bulgulu satırlar yazıldı: %1"_s.arg(path));
}

} // namespace kervan
