#include "check/documenttable.h"

#include "base/codepage.h"

#include <QFileInfo>

#include <array>
#include <span>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t mostRows = 10'000;
constexpr int cents = 2;

using Field = DocumentRecord::Field;

struct Column
{
    const char16_t *heading;
    enum What { OfField, Lines, Net, Sum } what = OfField;
    Field field = Field::Number;
    int twips = 1800;
};

constexpr auto invoiceColumns = std::to_array<Column>({
    {u"Numara", Column::OfField, Field::Number, 2400},
    {u"Tür", Column::OfField, Field::Kind, 1500},
    {u"Tarih", Column::OfField, Field::Date, 1500},
    {u"Cari", Column::OfField, Field::Customer, 2100},
    {u"Hesap", Column::OfField, Field::Account, 1800},
    {u"Ödeme Planı", Column::OfField, Field::Plan, 1800},
    {u"Satır", Column::Lines},
    // Logo takes the discounts off.
    {u"Net (İnd. Öncesi)", Column::Net},
    {u"Kdv'li (İnd. Öncesi)", Column::Sum},
});
constexpr auto cashColumns = std::to_array<Column>({
    {u"Numara", Column::OfField, Field::Number, 2400},
    {u"Tarih", Column::OfField, Field::Date, 1500},
    {u"Cari", Column::OfField, Field::Customer, 2100},
    {u"Ünvan", Column::OfField, Field::Title, 4500},
    {u"Kasa", Column::OfField, Field::Account, 1800},
    {u"Tutar", Column::Sum},
});
constexpr auto rollColumns = std::to_array<Column>({
    {u"Numara", Column::OfField, Field::Number, 2400},
    {u"Tür", Column::OfField, Field::Kind, 1500},
    {u"Tarih", Column::OfField, Field::Date, 1500},
    {u"Vade", Column::OfField, Field::Plan, 1500},
    {u"Cari", Column::OfField, Field::Customer, 2100},
    {u"Borçlu", Column::OfField, Field::Title, 4500},
    {u"Tutar", Column::Sum},
});
constexpr auto bankColumns = std::to_array<Column>({
    {u"Numara", Column::OfField, Field::Number, 2400},
    {u"Tarih", Column::OfField, Field::Date, 1500},
    {u"Özel Kod", Column::OfField, Field::Customer, 2100},
    {u"Açıklama", Column::OfField, Field::Title, 4500},
    {u"Banka Hesabı", Column::OfField, Field::Account, 1800},
    {u"Tutar", Column::Sum},
});
constexpr auto cardColumns = std::to_array<Column>({
    {u"Numara", Column::OfField, Field::Number, 2400},
    {u"Tarih", Column::OfField, Field::Date, 1500},
    {u"Cari", Column::OfField, Field::Customer, 2100},
    {u"Açıklama", Column::OfField, Field::Title, 4500},
    {u"Banka Hesabı", Column::OfField, Field::Account, 1800},
    {u"Tutar", Column::Sum},
});
constexpr auto accountColumns = std::to_array<Column>({
    {u"Cari Kodu", Column::OfField, Field::Number, 2400},
    {u"Ünvan", Column::OfField, Field::Title, 6000},
});
constexpr auto itemColumns = std::to_array<Column>({
    {u"Malzeme Kodu", Column::OfField, Field::Number, 2400},
    {u"Açıklama", Column::OfField, Field::Title, 6000},
    {u"Birim Seti", Column::OfField, Field::Plan, 1800},
    {u"Hesap", Column::OfField, Field::Account, 1800},
});
constexpr auto countColumns = std::to_array<Column>({
    {u"Fiş No", Column::OfField, Field::Number, 2400},
    {u"Tarih", Column::OfField, Field::Date, 1500},
    {u"Satır", Column::Lines},
    {u"Miktar", Column::Sum},
});

struct Family
{
    const char16_t *name;
    std::span<const Column> columns;
};

Family of(DocumentFamily family)
{
    switch (family) {
    case DocumentFamily::Invoices:
        return {u"fatura", invoiceColumns};
    case DocumentFamily::CashSlips:
        return {u"kasa fişi", cashColumns};
    case DocumentFamily::Rolls:
        return {u"çek ve senet", rollColumns};
    case DocumentFamily::BankSlips:
        return {u"banka fişi", bankColumns};
    case DocumentFamily::CardSlips:
        return {u"kredi kartı fişi", cardColumns};
    case DocumentFamily::Accounts:
        return {u"cari kart", accountColumns};
    case DocumentFamily::Items:
        return {u"malzeme kartı", itemColumns};
    case DocumentFamily::Counts:
        return {u"sayım fişi", countColumns};
    case DocumentFamily::Unknown:
        break;
    }
    return {u"kayıt", {}};
}

QString kindOf(DocumentFamily family, const QString &kind)
{
    struct Kind
    {
        DocumentFamily family;
        QStringView kind;
        QStringView name;
    };
    static constexpr std::array<Kind, 6> kinds{{
        {DocumentFamily::Invoices, u"8", u"Satış"},
        {DocumentFamily::Invoices, u"1", u"Alış"},
        {DocumentFamily::Invoices, u"3", u"Satış iade"},
        {DocumentFamily::Invoices, u"6", u"Alış iade"},
        {DocumentFamily::Rolls, u"1", u"Çek"},
        {DocumentFamily::Rolls, u"2", u"Senet"},
    }};
    for (const Kind &each : kinds) {
        if (each.family == family && each.kind == kind)
            return u"%1 (%2)"_s.arg(each.name, kind);
    }
    return kind;
}

// The amounts of invoices are reckoned here, of prices with fifteen digits; others are as written.
QString told(DocumentFamily family, const std::optional<Decimal> &amount)
{
    if (!amount)
        return {};
    return (family == DocumentFamily::Invoices ? amount->rounded(cents) : *amount).text();
}

class Filler
{
public:
    explicit Filler(DocumentTable &table)
        : m_table(table)
    {
    }

    void take(const DocumentRecord &record)
    {
        DocumentTable::Row row;
        const auto columns = of(record.family).columns;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            QString text = textOf(record, columns[i]);
            if (text.isEmpty() && isTold(record, columns[i])) {
                row.empty |= 1U << i;
                text = emptyField.toString();
            }
            row.cells << text;
        }
        m_table.lacking += row.empty != 0 || record.linesLacking > 0;
        add(m_table.net, m_isNet, record.net);
        add(m_table.sum, m_isSum, record.sum);
        if (m_table.rows.size() < mostRows)
            m_table.rows.push_back(std::move(row));
    }

private:
    // An element that the record has not is nothing that lacks; an amount lacks where none is read.
    static bool isTold(const DocumentRecord &record, const Column &column)
    {
        return column.what != Column::OfField || record.has(column.field);
    }

    static QString textOf(const DocumentRecord &record, const Column &column)
    {
        switch (column.what) {
        case Column::Lines:
            return record.linesLacking == 0
                       ? QString::number(record.lines)
                       : u"%1 (%2 eksik)"_s.arg(record.lines).arg(record.linesLacking);
        case Column::Net:
            return told(record.family, record.net);
        case Column::Sum:
            return told(record.family, record.sum);
        case Column::OfField:
            break;
        }
        const QString text = fromCodePage(record[column.field]).trimmed();
        return column.field == Field::Kind ? kindOf(record.family, text) : text;
    }

    static void add(std::optional<Decimal> &sum, bool &isFine, const std::optional<Decimal> &part)
    {
        isFine = isFine && part;
        if (isFine)
            sum = sum.value_or(Decimal()) + *part;
        else
            sum.reset();
    }

    DocumentTable &m_table;
    bool m_isNet = true, m_isSum = true;
};

} // namespace

QString nameOf(DocumentFamily family)
{
    return QString::fromUtf16(of(family).name);
}

DocumentTable documentTable(const QString &path, const std::atomic_bool *stop)
{
    DocumentTable table;
    table.path = path;
    table.time = QFileInfo(path).lastModified();
    Filler filler(table);
    table.reading = readDocument(
        path, [&](const DocumentRecord &record) { filler.take(record); }, stop);
    for (const Column &column : of(table.reading.family).columns) {
        const bool isAmount = column.what != Column::OfField;
        table.columns << GridColumn{QString::fromUtf16(column.heading), column.twips,
                                    isAmount ? Qt::AlignRight : Qt::AlignLeft};
    }
    return table;
}

QString DocumentTable::summary() const
{
    if (!reading.fault.isEmpty())
        return u"%1: okunamadı. %2"_s.arg(QFileInfo(path).fileName(), reading.fault);
    QStringList parts{u"%1 %2"_s.arg(reading.records).arg(nameOf(reading.family))};
    const QString what = reading.family == DocumentFamily::Counts     ? u"miktar"_s
                         : reading.family == DocumentFamily::Invoices ? u"indirimden önce Kdv'li"_s
                                                                      : u"tutar"_s;
    if (sum)
        parts << what + u' ' + told(reading.family, sum);
    if (net)
        parts << u"net %1"_s.arg(told(reading.family, net));
    parts << time.toString(u"dd.MM.yyyy HH:mm"_s);
    if (lacking > 0)
        parts << u"%1 kayıtta boş alan var"_s.arg(lacking);
    if (reading.problemCount > 0)
        parts << u"Xml olarak okunamayacak %1 yer var"_s.arg(reading.problemCount);
    if (static_cast<qint64>(rows.size()) < reading.records)
        parts << u"ilk %1 kayıt gösteriliyor"_s.arg(rows.size());
    return u"%1: %2"_s.arg(QFileInfo(path).fileName(), parts.join(u", "_s));
}

} // namespace kervan
