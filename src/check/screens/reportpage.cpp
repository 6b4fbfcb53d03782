#include "check/screens/reportpage.h"

#include "controls/gridview.h"
#include "controls/notestrip.h"

#include <QFileInfo>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

enum Column { Place, Reason, Record };

} // namespace

ReportPage::ReportPage(ReadReport &report, QWidget *parent)
    : QWidget(parent)
    , m_report(report)
    , m_rows({{u"Yer"_s, 1600}, {u"Neden"_s, 6000}, {u"Kayıt"_s, 9000}})
    , m_view(new GridView(m_rows, u"okunmayanlar"_s))
    , m_counts(new CutLabel)
{
    setObjectName(u"okuma"_s);
    m_view->setAccessibleName(u"Listeye girmeyen kayıtlar"_s);
    m_counts->setObjectName(u"okumaSayilari"_s);
    m_counts->setTextFormat(Qt::PlainText);
    m_counts->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_counts->setContentsMargins(4, 2, 4, 2);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_counts);
    column->addWidget(m_view);
    connect(&m_report, &ReadReport::changed, this, &ReportPage::show);
    show();
}

void ReportPage::show()
{
    QStringList reasons;
    for (const auto &[reason, count] : m_report.reasons())
        reasons << u"%1 kayıt: %2"_s.arg(count).arg(reason);
    const QString file = QFileInfo(m_report.source()).fileName();
    m_counts->setText(reasons.isEmpty() ? file : file + u" · "_s + reasons.join(u" · "_s));
    m_counts->setAccessibleName(m_counts->text());
    m_counts->setToolTip(reasons.join(u'\n').toHtmlEscaped());
    m_view->setEmptyText(file.isEmpty() ? u"Henüz bir dosya okunmadı."_s
                                        : u"Dosyanın her kaydı listeye girdi."_s);
    Q_EMIT titleChanged(m_report.total() == 0 ? u"Okuma"_s : u"Okuma (%1)"_s.arg(m_report.total()));
    m_isStale = true;
    if (isVisible())
        fill();
}

void ReportPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        fill();
}

void ReportPage::fill()
{
    m_isStale = false;
    const Grid::Refill refill(m_rows);
    m_rows.clear();
    for (const ReadReport::Entry &entry : m_report.entries()) {
        const int row =
            m_rows.addRow(entry.cell.isEmpty() ? u"%1. satır"_s.arg(entry.line) : entry.cell);
        m_rows.setCell(row, Reason, entry.reason);
        m_rows.setCell(row, Record, entry.record);
    }
    if (m_report.total() > m_report.entries().size()) {
        const int row = m_rows.addRow({});
        m_rows.setCell(row, Reason,
                       u"ve %1 kayıt daha"_s.arg(m_report.total() - m_report.entries().size()));
    }
}

} // namespace kervan
