#include "invoices/invoicelist.h"

#include "base/failure.h"
#include "invoices/columns.h"
#include "text/numbers.h"
#include "text/spellings.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString keyOf(QDate date)
{
    return tarihanahtari(QString::number(date.year()), QString::number(date.month()),
                         QString::number(date.day()));
}

// Cut by position out of the display spelling; pieces that are no numbers are a bad date.
QString keyOf(QStringView displayDate)
{
    const QString year = cut(displayDate, 7, 4).toString();
    const QString month = cut(displayDate, 4, 2).toString();
    const QString day = cut(displayDate, 1, 2).toString();
    for (const QString &piece : {year, month, day}) {
        if (!number(piece))
            throw Failure(u"\"%1\" bir fatura tarihi değil."_s.arg(displayDate));
    }
    return tarihanahtari(year, month, day);
}

} // namespace

InvoiceList::InvoiceList(QList<GridColumn> columns, Boxes &boxes, std::function<void()> reread)
    : l1(std::move(columns), Grid::Tickable)
    , m_boxes(boxes)
    , m_reread(std::move(reread))
{
    QObject::connect(&l1, &Grid::undone, &l1, [this] { showRowCount(); });
}

void InvoiceList::showRowCount()
{
    satirSayisi.setText(QString::number(l1.rows()));
}

bool InvoiceList::isEFatura(int row) const
{
    return l1.cell(row, L1::EFatura) == u"Evet";
}

void InvoiceList::eolan()
{
    l1.tickWhere([this](int row) { return isEFatura(row); });
}

void InvoiceList::eolmayan()
{
    l1.tickWhere([this](int row) { return !isEFatura(row); });
}

void InvoiceList::efatgoster()
{
    show(true);
}

void InvoiceList::efatolmgoster()
{
    show(false);
}

void InvoiceList::show(bool eFatura)
{
    if (l1.isEmpty() || !listedolu)
        return;
    m_reread();
    l1.keepWhere([&](int row) { return isEFatura(row) == eFatura; });
    showRowCount();
}

void InvoiceList::tumgoster()
{
    if (l1.isEmpty() || !listedolu)
        return;
    m_reread();
}

void InvoiceList::tarihbelirle()
{
    for (const auto &[date, caption] :
         {std::pair(ilkTarih.date(), QStringView(u"İlk Tarih")), {sonTarih.date(), u"Son Tarih"}}) {
        if (!date.isValid() && !l1.isEmpty())
            throw Failure(u"\"%1\" bir tarih değil; liste tarihe göre süzülmedi."_s.arg(caption));
    }
    const QString first = keyOf(ilkTarih.date());
    const QString last = keyOf(sonTarih.date());
    l1.keepWhere([&](int row) {
        const QString key = keyOf(l1.cell(row, L1::FaturaTarihi));
        return first <= key && key <= last;
    });
    showRowCount();
}

QList<int> InvoiceList::unvanara() const
{
    QList<int> found;
    for (int row = 0; row < l1.rows(); ++row) {
        if (l1.cell(row, L1::Unvani).contains(arananUnvan.text()))
            found << row;
    }
    return found;
}

void InvoiceList::secilenlerisil()
{
    if (l1.tickedCount() == 0) {
        m_boxes.show({u"Fatura Listesinden Seçim Yapılması Gerekiyor...!"_s, u"Dikkat"_s,
                      Icon::Exclamation});
        return;
    }
    if (!m_boxes.ask({u"Faturayı Listeden Silmek İstediğinize Eminmisiniz ?"_s, u"DİKKAT"_s,
                      Icon::Question}))
        return;
    l1.keepWhere([this](int row) { return !l1.ticked(row); });
    showRowCount();
}

} // namespace kervan
