#include "check/screens/gapspage.h"

#include "base/failure.h"
#include "check/findingsfile.h"
#include "controls/flowlayout.h"
#include "controls/gridview.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

enum Column { Kind, Code, Name, Lines, Documents };

} // namespace

GapsPage::GapsPage(Checks &checks, FileDialogs &dialogs,
                   const std::function<void(const QString &text)> &tell, QWidget *parent)
    : QWidget(parent)
    , m_checks(checks)
    , m_dialogs(dialogs)
    , m_tell(tell)
    , m_rows({{u"Eksik olan"_s, 2400},
              {u"Kod"_s, 2400},
              {u"Adı"_s, 4500},
              {u"Kaç satır"_s, 1100, Qt::AlignRight},
              {u"Kaç belge"_s, 1100, Qt::AlignRight}})
    , m_view(new GridView(m_rows, u"eksikler"_s))
    , m_open(new QPushButton(u"Tanım ekranını aç"_s))
    , m_reread(new QPushButton(u"Yeniden okut"_s))
    , m_write(new QPushButton(u"Dosyaya yaz…"_s))
{
    setObjectName(u"eksikTanimlar"_s);
    m_view->setAccessibleName(u"Eksik tanımlar"_s);
    m_view->setEmptyText(u"Eksik tanım yok."_s);
    m_open->setObjectName(u"eksigiAc"_s);
    m_open->setToolTip(u"Seçilen eksiğin tanımlandığı ekranı açar (Enter)"_s);
    m_reread->setObjectName(u"yenidenOkut"_s);
    m_reread->setToolTip(u"Dosyayı yeniden okur; işaretler numaralarıyla geri verilir"_s);
    m_write->setObjectName(u"eksikleriYaz"_s);
    m_write->setToolTip(u"Eksikleri bir .csv dosyasına yazar"_s);
    auto *head = new QWidget;
    auto *row = new FlowLayout(head);
    row->addWidget(m_open);
    row->addWidget(m_reread);
    row->addStretch();
    row->addWidget(m_write);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(head);
    column->addWidget(m_view);
    connect(&m_checks, &Checks::changed, this, &GapsPage::show);
    connect(m_view, &QAbstractItemView::activated, this, &GapsPage::open);
    connect(m_open, &QAbstractButton::clicked, this, &GapsPage::open);
    connect(m_reread, &QAbstractButton::clicked, this, &GapsPage::rereadWanted);
    connect(m_write, &QAbstractButton::clicked, this, &GapsPage::write);
    show();
}

void GapsPage::show()
{
    const qsizetype count = m_checks.gaps().size();
    for (QPushButton *button : {m_open, m_reread, m_write})
        button->setEnabled(count > 0);
    Q_EMIT titleChanged(count == 0 ? u"Eksikler"_s : u"Eksikler (%1)"_s.arg(count));
    m_isStale = true;
    if (isVisible())
        fill();
}

void GapsPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        fill();
}

void GapsPage::fill()
{
    m_isStale = false;
    const Grid::Refill refill(m_rows);
    m_rows.clear();
    for (const Gap &gap : m_checks.gaps()) {
        const int row = m_rows.addRow(gap.kind);
        m_rows.setCell(row, Code, gap.code);
        m_rows.setCell(row, Name, gap.name);
        m_rows.setCell(row, Lines, gap.lines > 0 ? QString::number(gap.lines) : QString());
        m_rows.setCell(row, Documents,
                       gap.documents > 0 ? QString::number(gap.documents) : QString());
    }
}

void GapsPage::open()
{
    const int row = m_view->currentIndex().isValid() ? m_view->currentIndex().row() : 0;
    if (row < m_checks.gaps().size())
        Q_EMIT screenWanted(m_checks.gaps()[row].screen, m_checks.gaps()[row].code);
}

void GapsPage::write()
{
    const auto name = m_dialogs.saveName({.title = u"Eksik Tanımları Kaydet"_s,
                                          .filter = u"Csv Dosyaları (csv)|*.csv"_s,
                                          .start = {}});
    if (!name || name->isEmpty())
        return;
    const QString path = name->endsWith(u".csv", Qt::CaseInsensitive) ? *name : *name + u".csv"_s;
    const auto failed = endQuietly([&] { writeTable(path, m_rows); });
    m_tell(failed ? failed->description() : u"Eksik tanımlar yazıldı: %1"_s.arg(path));
}

} // namespace kervan
