#include "check/screens/totalsline.h"

#include "controls/announcing.h"
#include "controls/gridview.h"
#include "controls/linkbutton.h"
#include "controls/notestrip.h"
#include "transfer/target.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QItemSelectionModel>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int quietTime = 2500; // milliseconds; a reader is not to speak of each tick
constexpr int leastSelected = 2;

CutLabel *cutLabel(const QString &name)
{
    auto *label = new CutLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->hide();
    return label;
}

void setText(CutLabel *label, const QString &text, const QString &hint)
{
    label->setText(text);
    label->setAccessibleName(text);
    label->setToolTip(hint.toHtmlEscaped().replace(u'\n', u"<br>"_s));
    label->setVisible(!text.isEmpty());
}

} // namespace

TotalsLine::TotalsLine(QWidget *window, Notes &notes)
    : m_window(window)
    , m_notes(notes)
    , m_row(new QHBoxLayout(this))
    , m_sums(cutLabel(u"toplamlar"_s))
    , m_written(cutLabel(u"belge"_s))
    , m_disagreement(cutLabel(u"tutmayan"_s))
    , m_folder(new LinkButton(window, u"klasordegoster"_s, u"Ctrl+Shift+K"_s))
{
    setObjectName(u"ozet"_s);
    m_row->setContentsMargins(4, 0, 4, 0);
    m_row->setSpacing(10);
    m_row->addWidget(m_sums);
    m_row->addWidget(m_disagreement);
    m_row->addWidget(m_written, 1);
    // It is the first to be cut: the notes tell of the file as well.
    m_written->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_row->addWidget(m_folder);
    m_row->addStretch();
    m_folder->setLink(u"klasörde göster"_s, u"Belgenin durduğu klasörü gösterir"_s);
    m_folder->hide();
    connect(m_folder, &QAbstractButton::clicked, this,
            [this] { showFolderOf(m_notes.written().constFirst().path, m_notes); });
    setFixedHeight(m_folder->sizeHint().height());
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &TotalsLine::show);
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietTime);
    connect(&m_quiet, &QTimer::timeout, this, [this] { announce(this, m_sums->text()); });
    connect(&m_notes, &Notes::changed, this, &TotalsLine::showWritten);
}

void TotalsLine::add(Totals &totals, QAbstractItemView *view)
{
    m_lists << List{&totals, view};
    connect(&totals, &Totals::changed, this, [this] {
        soon();
        m_quiet.start();
    });
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &TotalsLine::soon);
    soon();
}

void TotalsLine::add(TickOffer &offer)
{
    m_offers << &offer;
    connect(&offer, &TickOffer::changed, this, &TotalsLine::soon);
}

Totals &TotalsLine::addList(Grid &rows, QAbstractItemView *view,
                            const std::function<ListShape()> &shape)
{
    auto *totals = new Totals(rows, shape, this);
    add(*totals, view);
    add(*new TickOffer(rows, shape, this));
    return *totals;
}

void TotalsLine::soon()
{
    if (!m_soon.isActive())
        m_soon.start(0);
}

RowSums TotalsLine::selectedIn(const List &list) const
{
    QList<std::pair<int, int>> rows;
    const auto *view = qobject_cast<const GridView *>(list.view);
    if (view && view->isFiltered()) { // a selection reaches over hidden rows
        for (const int row : view->selectedPositions())
            rows.append({row, row});
        return list.totals->of(rows);
    }
    for (const QItemSelectionRange &range : list.view->selectionModel()->selection())
        rows.append({range.top(), range.bottom()});
    return list.totals->of(rows);
}

void TotalsLine::show()
{
    QStringList texts;
    QStringList hints;
    for (const List &list : std::as_const(m_lists)) {
        QStringList parts = list.totals->told();
        if (parts.isEmpty())
            continue;
        const RowSums selected = selectedIn(list);
        QStringList hint = parts + list.totals->amountsOf(list.totals->taken());
        if (selected.rows >= leastSelected) {
            parts << list.totals->toldOfSelected(selected);
            hint << parts.last() << list.totals->amountsOf(selected);
        }
        texts << parts.join(u" · "_s);
        hints << hint.join(u'\n');
    }
    setText(m_sums, texts.join(u"  |  "_s), hints.join(u"\n\n"_s));
    showOffers();
}

void TotalsLine::showOffers()
{
    int rows = 0;
    for (const TickOffer *offer : std::as_const(m_offers))
        rows += offer->rows();
    offer(u"isaretgetir"_s, rows > 0 ? u"İşaretleri geri getir (%1)"_s.arg(rows) : QString(),
          u"Okumadan önce işaretli olan satırları yeniden işaretler"_s, u"Ctrl+Shift+G"_s,
          [this] { acceptOffers(); });
}

void TotalsLine::acceptOffers()
{
    for (TickOffer *each : std::as_const(m_offers))
        each->accept();
}

void TotalsLine::offer(const QString &name, const QString &text, const QString &hint,
                       const QString &keys, const std::function<void()> &accept)
{
    auto *link = findChild<LinkButton *>(name, Qt::FindDirectChildrenOnly);
    if (!link) {
        if (text.isEmpty())
            return;
        link = new LinkButton(m_window, name, keys);
        m_row->insertWidget(1, link); // next to what it is about, wherever a document ends
    }
    link->disconnect(this);
    connect(link, &QAbstractButton::clicked, this, accept);
    if (!text.isEmpty())
        link->setLink(text, hint);
    if (text.isEmpty() && link->hasFocus() && !m_lists.isEmpty())
        m_lists.constFirst().view->setFocus();
    link->setVisible(!text.isEmpty());
}

// The list that has as many rows for a document as it was written with. Where both have, nobody
// knows which it was, and no sum is told.
QString TotalsLine::sumOf(const Notes::Written &written) const
{
    QString sum;
    if (written.path.endsWith(cashDocumentEnd)) // of other rows, with amounts of its own
        return sum;
    for (const List &list : m_lists) {
        const RowSums &taken = list.totals->taken();
        if (taken.rows != written.count || taken.amounts.isEmpty())
            continue;
        if (!sum.isEmpty())
            return {};
        sum = u", "_s + list.totals->told(taken);
    }
    return sum;
}

void TotalsLine::showWritten()
{
    const QList<Notes::Written> &written = m_notes.written();
    while (m_told.size() > written.size())
        m_told.removeLast();
    for (qsizetype i = m_told.size(); i < written.size(); ++i)
        m_told << u"%1 yazıldı: %2%3, %4"_s.arg(QFileInfo(written[i].path).fileName(),
                                                written[i].what, sumOf(written[i]),
                                                written[i].when.toString(u"HH:mm"_s));
    if (written.isEmpty())
        setDisagreement({});
    showGood();
    m_folder->setVisible(!written.isEmpty());
}

// Of what was written, that which is not told to be bad.
void TotalsLine::showGood()
{
    QStringList good;
    for (qsizetype i = 0; i < m_told.size(); ++i) {
        if (!m_bad.contains(m_notes.written().value(i).path))
            good << m_told[i];
    }
    setText(m_written, good.join(u" • "_s), good.join(u'\n'));
    m_written->setMaximumWidth(m_written->sizeHint().width());
}

void TotalsLine::setDisagreement(const QString &text, const QStringList &files)
{
    m_bad = files;
    setText(m_disagreement, text, text);
    // It is worth more room than the sums.
    m_disagreement->setMinimumWidth(qMin(m_disagreement->sizeHint().width(), width() * 2 / 3));
    showGood();
    announce(this, text);
}

} // namespace kervan
