#include "check/screens/documentpage.h"

#include "controls/announcing.h"
#include "controls/griddelegate.h"
#include "controls/gridview.h"
#include "controls/keyedbutton.h"
#include "controls/pictures.h"
#include "controls/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <memory>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostProblemRows = 4; // in view at once

// Of the table that is shown, whose grid can tell no colours.
class RecordDelegate : public GridDelegate
{
public:
    using GridDelegate::GridDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        GridDelegate::initStyleOption(option, index);
        if (option->text == emptyField || option->text.endsWith(u" eksik)"))
            option->palette.setBrush(QPalette::Text, faultText(option->palette));
    }
};

QList<GridColumn> problemColumns()
{
    return {{u"Dosya satırı"_s, 1300, Qt::AlignRight}, {u"Xml Sorunu"_s, 5000}, {u"Değer"_s, 6000}};
}

} // namespace

DocumentPage::DocumentPage(FileDialogs &dialogs, QWidget *parent)
    : QWidget(parent)
    , m_dialogs(dialogs)
    , m_records({{u"Numara"_s}})
    , m_problems(problemColumns())
    , m_summary(new QLabel(u"Henüz bir belge açılmadı."_s))
    , m_recordView(new GridView(m_records, u"belgeKayitlari"_s))
    , m_problemView(new GridView(m_problems, u"belgeSorunlari"_s))
{
    setObjectName(u"belgeOzeti"_s);
    m_summary->setObjectName(u"belgeOzetSatiri"_s);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_recordView->setAccessibleName(u"Belgenin kayıtları"_s);
    m_recordView->setItemDelegate(new RecordDelegate(m_recordView));
    m_recordView->setEmptyText(u"Yazılan belge burada özetlenir; daha önce yazılmış bir belge de "
                               "\"Belge aç\" ile açılabilir."_s);
    m_problemView->setAccessibleName(u"Belgenin Xml sorunları"_s);
    m_problemView->hide();

    auto *open = new KeyedButton(u"Belge aç"_s, u"Ctrl+Shift+B"_s); // the keys are the window's
    open->setObjectName(u"belgeac"_s);
    open->setIcon(picture(u"open"_s));
    open->setToolTip(u"Daha önce yazılmış bir belgeyi okuyup gösterir (Ctrl+Shift+B)"_s);
    connect(open, &QAbstractButton::clicked, this, &DocumentPage::openDocument);

    auto *head = new QHBoxLayout;
    head->addWidget(m_summary, 1);
    head->addWidget(open, 0, Qt::AlignTop);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    column->addLayout(head);
    column->addWidget(m_problemView);
    column->addWidget(m_recordView, 1);
}

void DocumentPage::openDocument()
{
    const auto name = m_dialogs.openName({.title = u"Belge Seçin"_s,
                                          .filter = u"Xml Dosyaları (xml)|*.xml"_s,
                                          .start = m_path.isEmpty() ? m_folder : m_path});
    if (!name || name->isEmpty())
        return;
    show(*name);
    Q_EMIT chosen(*name);
}

void DocumentPage::show(const QString &path)
{
    m_path = path;
    m_summary->setText(u"Okunuyor: %1"_s.arg(path));
    m_reader.start<std::shared_ptr<DocumentTable>>(
        [path](const std::atomic_bool &stop) {
            return std::make_shared<DocumentTable>(documentTable(path, &stop));
        },
        [this](const std::shared_ptr<DocumentTable> &table) { fill(*table); });
}

void DocumentPage::fill(const DocumentTable &table)
{
    m_records.setColumns(table.columns.isEmpty() ? QList<GridColumn>{{u"Numara"_s}}
                                                 : table.columns);
    {
        const Grid::Refill refill(m_records);
        for (const DocumentTable::Row &row : table.rows) {
            const int at = m_records.addRow(row.cells.value(0));
            for (int column = 1; column < row.cells.size(); ++column)
                m_records.setCell(at, column, row.cells[column]);
        }
    }
    {
        const Grid::Refill refill(m_problems);
        m_problems.clear();
        for (const DocumentProblem &problem : table.reading.problems) {
            const int at = m_problems.addRow(QString::number(problem.line));
            m_problems.setCell(at, 1, problem.what);
            m_problems.setCell(at, 2, problem.value);
        }
    }
    m_problemView->setFixedHeight(
        m_problemView->heightWith(std::min(m_problems.rows(), mostProblemRows)));
    m_problemView->setVisible(!m_problems.isEmpty());
    m_summary->setText(table.summary());
    announce(this, table.summary());
    Q_EMIT shown(table.summary());
}

} // namespace kervan
