#include "base/linereader.h"
#include "check/listrules.h"
#include "invoices/columns.h"
#include "invoices/fatchecks.h"
#include "invoices/linesurvey.h"
#include "text/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <optional>

// What the lines of an SAP invoice file are checked for.

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr double packsPerCarton = 10;
constexpr double extraTax = 0.18;
constexpr double vatFactor = 1.18;
constexpr double ownDecimals = 10000; // sums are counted in the fourth decimal
constexpr qint64 halfCent = 50;       // of them
constexpr int linesAtOnce = 200;
constexpr qsizetype shownPlaces = 3;

constexpr LineRule unread{u"satır okunamıyor", Level::Error,
                          u"Satırı kaynağında düzeltip dosyayı yeniden okutun."};
constexpr LineRule negative{u"eksi satır", Level::Warning,
                            u"İade ya da düzeltme değilse kaynağında düzeltin."};
constexpr LineRule unit{u"birim", Level::Error,
                        u"Birim Setleri ekranında birimin Logo kodunu girin."};
constexpr LineRule unpriced{u"bayi fiyatı", Level::Error,
                            u"Ürün Bayi Fiyat Eşleştirmesi ekranında fiyatı girin, sonra dosyayı "
                            "yeniden okutun."};
constexpr LineRule netPrice{u"net fiyat", Level::Error,
                            u"Bayi fiyatını ve kaynaktaki fiyatı karşılaştırın."};
constexpr LineRule sums{u"satır toplamı", Level::Warning,
                        u"Faturanın eksik ya da fazla satırı olup olmadığına kaynağında bakın."};
constexpr LineRule lineless{u"satırsız fatura", Level::Error,
                            u"Faturayı kaynağından yeniden alın; işaretini kaldırmadan yazmayın."};
constexpr LineRule tooMany{u"satır sınırı", Level::Error,
                           u"Faturayı kaynağında bölün ya da kalan satırları Logo'da girin."};
constexpr LineRule discount{u"genel indirim", Level::Error,
                            u"İndirimi ve satırları kaynağında karşılaştırın."};
constexpr LineRule source{u"kaynak", Level::Error, u"Dosyayı yerine koyup yeniden okutun."};

// The number of a field in source spelling, as the cells of the lines read it; nothing if it is
// none. Plain digits, which nearly all are, make no text on the way.
std::optional<double> sourceNumber(QStringView field)
{
    constexpr std::array<double, 10> powers{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    const QStringView text = trimmedBlanks(field);
    qint64 digits = 0;
    std::size_t decimals = 0;
    bool behindPoint = false;
    bool plain = !text.isEmpty() && text.size() < 10 + 2 && text.front() != u'.';
    for (qsizetype i = 0; plain && i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= u'0' && c <= u'9') {
            digits = 10 * digits + (c - u'0');
            decimals += behindPoint ? 1 : 0;
        } else if (c == u'.' && !behindPoint && i + 1 < text.size()) {
            behindPoint = true;
        } else {
            plain = false;
        }
    }
    if (plain && decimals < powers.size())
        return static_cast<double>(digits) / powers[decimals];
    return number(pointToComma(text));
}

// In the document a quantity has two decimals; from ten packs on the line sells in cartons.
double packsOf(double quantity, QStringView field)
{
    if (quantity > packsPerCarton - 0.02 && quantity < packsPerCarton)
        return number(masked(pointToComma(trimmedBlanks(field)), "#.00"_mask)).value_or(quantity);
    return std::round(quantity * 100) / 100;
}

QString money(qint64 units)
{
    return masked(static_cast<double>(units) / ownDecimals, "#,##0.00"_mask);
}

class BifSurvey : public LineSurvey
{
public:
    explicit BifSurvey(Fat &fat)
        : m_fat(fat)
        , m_line(sapTemplates().xl2, lineWords())
    {
    }

protected:
    void clear() override
    {
        m_reader.reset();
        m_invoices.clear();
        m_unfound.clear();
        m_productPlaces.clear();
        m_products.clear();
        m_waiting.clear();
        m_current.clear();
        m_header = {};
        m_lines = 0;
    }

    Stage prepare() override
    {
        const Grid &l1 = m_fat.liste.l1;
        QHash<QString, qsizetype> places;
        for (int row = 0; row < l1.rows(); ++row) {
            const QString &number = l1.cell(row, L1::FaturaNumarasi);
            const auto known = places.constFind(number);
            const qsizetype place =
                known == places.cend() ? static_cast<qsizetype>(m_invoices.size()) : *known;
            if (known == places.cend()) {
                places.insert(number, place);
                m_invoices.emplace_back().number = number;
            }
            m_invoices[static_cast<std::size_t>(place)].rows << row;
        }
        for (Invoice &invoice : m_invoices) {
            if (!invoice.number.isEmpty()) // no line is taken for an empty one
                m_unfound.insert(invoice.number, &invoice);
        }
        m_noPacks = birimbul(m_fat.tanimlar.lbrm, u"PAKET"_s).isEmpty();
        m_noCartons = birimbul(m_fat.tanimlar.lbrm, u"KARTON"_s).isEmpty();
        if (m_invoices.empty() || m_fat.dosyaadi().isEmpty())
            return Stage::End;
        m_reader.emplace(m_fat.dosyaadi());
        return Stage::Lines;
    }

    bool takeSome() override
    {
        for (int i = 0; i < linesAtOnce; ++i) {
            if (!m_reader->next() || (m_unfound.isEmpty() && m_waiting.isEmpty() &&
                                      m_current.isEmpty() && m_lines > 0)) {
                endRun();
                return false;
            }
            takeLine(m_reader->line());
        }
        return true;
    }

    // Those whose lines have not come, a few hundred at once.
    bool tellSome() override
    {
        int told = 0;
        for (Invoice &invoice : m_invoices) {
            if (invoice.told)
                continue;
            tellOf(invoice);
            if (++told == linesAtOnce)
                return true;
        }
        tellGaps();
        return false;
    }

    void letGo() override { m_reader.reset(); }

    void giveUp(const Failure &failed) override
    {
        m_found << findingOf(
            source, u"Satırlar denetlenemedi, belgeye de girmez: %1"_s.arg(failed.headline()));
    }

private:
    // What the lines of an invoice number come to.
    struct Invoice
    {
        QString number;
        QList<int> rows; // of the list; more than one where the number is doubled
        QString owner;   // whose lines they are, where not its own: "F4 faturasının"
        bool found = false;
        bool told = false;
        int lines = 0;
        int packs = 0;
        int cartons = 0;
        qint64 sum = 0;     // of the amounts
        double gross = 0;   // net prices times quantities
        bool ended = false; // at a line that can't be read; what comes behind it is not written
        QStringList unread, negative;
        QList<qsizetype> odd;      // products with something to tell
        QList<qsizetype> unpriced; // and those without a price
        QList<qsizetype> negativeNet;
        int unpricedLines = 0;
    };
    struct Product
    {
        QString code;
        QString name;
        double price = 0;
        CodeFaults faults;
        int lines = 0;
        int documents = 0;             // that have it without a price
        const Invoice *last = nullptr; // that was noted
    };
    struct Header
    {
        QString number;
        bool counts = false;
    };

    // An export takes the first run of lines behind the first record that bears the number.
    void takeLine(QStringView line)
    {
        const bool goods = isLine(line);
        if (!goods)
            endRun();
        const QStringView number = invoiceNumber(line);
        if (!number.isEmpty()) {
            const auto found = m_unfound.constFind(number);
            if (found != m_unfound.cend()) {
                m_waiting << *found;
                m_unfound.erase(found);
            }
        }
        if (isHeader(line))
            m_header = {number.toString(), countsAsHeader(line)};
        if (!goods)
            return;
        for (Invoice *invoice : std::as_const(m_waiting)) {
            invoice->found = true;
            if (!m_header.counts || m_header.number != invoice->number)
                invoice->owner = m_header.counts ? m_header.number + u" faturasının"_s
                                                 : u"sayılmayan bir faturanın"_s;
            m_current << invoice;
        }
        m_waiting.clear();
        if (!m_current.isEmpty())
            takeGoods(line);
    }

    void endRun()
    {
        for (Invoice *invoice : std::as_const(m_current))
            tellOf(*invoice);
        m_current.clear();
    }

    void takeGoods(QStringView line)
    {
        ++m_lines;
        Product &product = productOf(line);
        ++product.lines;
        const QStringView quantityField = cut(line, 97, 8);
        const auto quantity = sourceNumber(quantityField);
        const auto price = sourceNumber(cut(line, 106, 12));
        const auto amount = sourceNumber(cut(line, 124, 12));
        const double packs = quantity ? packsOf(*quantity, quantityField) : 0;
        const bool cartons = packs >= packsPerCarton;
        for (Invoice *invoice : std::as_const(m_current)) {
            ++invoice->lines;
            if (product.last != invoice) {
                product.last = invoice;
                note(*invoice, product);
            }
            if (product.price <= 0)
                ++invoice->unpricedLines;
            if (!quantity || !price || !amount || packs == 0) {
                if (invoice->unread.size() < shownPlaces)
                    invoice->unread << faultOf(*invoice, line, quantity, price, amount);
                invoice->ended = true;
                continue;
            }
            ++(cartons ? invoice->cartons : invoice->packs);
            invoice->sum += std::llround(*amount * ownDecimals);
            const double tax = (*amount - product.price * packs) * extraTax;
            const double net = (*price * packs - tax) / vatFactor;
            invoice->gross += net;
            if (net / packs < -0.005 && product.price > 0 &&
                !invoice->negativeNet.contains(placeOf(product)))
                invoice->negativeNet << placeOf(product);
            if ((*quantity < 0 || *price < 0 || *amount < 0) &&
                invoice->negative.size() < shownPlaces)
                invoice->negative << u"%1. satır"_s.arg(invoice->lines);
        }
    }

    Product &productOf(QStringView line)
    {
        const QStringView code = productCode(line);
        const auto known = m_productPlaces.constFind(code);
        if (known != m_productPlaces.cend())
            return m_products[static_cast<std::size_t>(*known)];
        Product &product = m_products.emplace_back();
        product.code = code.toString();
        product.name = trimmedBlanks(cut(line, 46, 50)).toString();
        // What could not be asked for counts as without a price, as it does for the reading.
        product.price = std::max(number(m_fat.bayiFiyatlari.value(product.code)).value_or(0), 0.0);
        product.faults = CodeFaults(product.code, m_line);
        m_productPlaces.insert(product.code, static_cast<qsizetype>(m_products.size()) - 1);
        return product;
    }

    qsizetype placeOf(const Product &product) const { return m_productPlaces.value(product.code); }

    void note(Invoice &invoice, Product &product)
    {
        // Several invoices may share their lines, which come by turns then.
        const qsizetype place = placeOf(product);
        if (product.price <= 0 && !invoice.unpriced.contains(place)) {
            invoice.unpriced << place;
            product.documents += documentsOf(invoice);
        }
        if (!product.faults.faults.isEmpty() && !invoice.odd.contains(place))
            invoice.odd << place;
    }

    static QString faultOf(const Invoice &invoice, QStringView line,
                           const std::optional<double> &quantity,
                           const std::optional<double> &price, const std::optional<double> &amount)
    {
        const auto told = [&](QStringView name, int first, int length, QStringView fault) {
            return u"%1. satırın %2 %3 %4"_s.arg(invoice.lines)
                .arg(name, quoted(cut(line, first, length).toString()), fault);
        };
        const QStringView unreadable = u"okunamıyor";
        if (!quantity)
            return told(u"miktarı", 97, 8, unreadable);
        if (!price)
            return told(u"fiyatı", 106, 12, unreadable);
        if (!amount)
            return told(u"tutarı", 124, 12, unreadable);
        return told(u"miktarı", 97, 8, u"olduğundan net fiyatı hesaplanamaz");
    }

    void add(const Invoice &invoice, int row, const LineRule &rule, const QString &text,
             int column = -1)
    {
        m_found << findingOf(rule, text, row, invoice.number, column);
    }

    void tellOf(Invoice &invoice)
    {
        invoice.told = true;
        for (const int row : std::as_const(invoice.rows)) {
            needPerson(m_gaps, m_fat.liste.l1, row, invoice.lines);
            tellRow(invoice, row);
        }
        if (m_noPacks && invoice.packs > 0)
            m_gaps.need(u"Birim"_s, u"PAKET"_s, u"birimseti"_s, invoice.packs,
                        documentsOf(invoice));
        if (m_noCartons && invoice.cartons > 0)
            m_gaps.need(u"Birim"_s, u"KARTON"_s, u"birimseti"_s, invoice.cartons,
                        documentsOf(invoice));
    }

    static int documentsOf(const Invoice &invoice) { return static_cast<int>(invoice.rows.size()); }

    void tellRow(const Invoice &invoice, int row)
    {
        if (invoice.lines == 0 && !invoice.number.isEmpty())
            add(invoice, row, lineless, u"Kaynakta satırı yok: belgeye satırsız yazılır."_s);
        if (!invoice.owner.isEmpty())
            add(invoice, row, lineless,
                u"Kaynakta kendi satırı yok: belgeye %1 satırları yazılır."_s.arg(invoice.owner));
        if (!invoice.unread.isEmpty())
            add(invoice, row, unread,
                u"%1: bu satır yarım kalır, arkasındakiler belgeye girmez."_s.arg(
                    invoice.unread.first()));
        if (!invoice.negative.isEmpty())
            add(invoice, row, negative,
                u"Miktarı, fiyatı ya da tutarı eksi: %1."_s.arg(invoice.negative.join(u", "_s)));
        if (m_noPacks && invoice.packs > 0)
            add(invoice, row, unit,
                u"%1 satırın birimi \"PAKET\" tanımlı değil."_s.arg(invoice.packs));
        if (m_noCartons && invoice.cartons > 0)
            add(invoice, row, unit,
                u"%1 satırın birimi \"KARTON\" tanımlı değil."_s.arg(invoice.cartons));
        if (!invoice.unpriced.isEmpty())
            add(invoice, row, unpriced,
                u"%1 satırın bayi fiyatı yok: %2."_s.arg(invoice.unpricedLines)
                    .arg(someOf(codesOf(invoice.unpriced), u"ürün"_s)));
        if (!invoice.negativeNet.isEmpty())
            add(invoice, row, netPrice,
                u"Net birim fiyatı eksi çıkıyor: %1."_s.arg(
                    someOf(codesOf(invoice.negativeNet), u"ürün"_s)));
        if (invoice.lines > InvoiceDocument::mostLines)
            add(invoice, row, tooMany,
                u"%1 satırı var, belgeye ilk %2 satır sığar."_s.arg(invoice.lines)
                    .arg(InvoiceDocument::mostLines));
        for (const qsizetype place : invoice.odd) {
            for (const auto &[rule, fault] :
                 m_products[static_cast<std::size_t>(place)].faults.faults)
                add(invoice, row, *rule, fault);
        }
        tellDiscount(invoice, row);
        if (row == invoice.rows.first() && invoice.owner.isEmpty() && invoice.lines > 0 &&
            !invoice.ended)
            tellSum(invoice, row);
    }

    void tellDiscount(const Invoice &invoice, int row)
    {
        const double general =
            number(m_fat.liste.l1.cell(row, L1::IndirimToplami)).value_or(0) / vatFactor;
        if (general <= 0 || invoice.number.isEmpty())
            return;
        if (std::abs(invoice.gross) < 1 / ownDecimals)
            add(invoice, row, discount,
                u"Genel indirimin oranı hesaplanamaz: belgede \"iyuzdesi\" yazısı kalır."_s,
                L1::IndirimToplami);
        else if (general > invoice.gross * 1.000001 && !invoice.ended)
            add(invoice, row, discount, u"Genel indirim satırların toplamını aşıyor."_s,
                L1::IndirimToplami);
    }

    // The amounts of the lines make up the invoice's total, with or without discount and tax, as
    // the source counts it. Each amount may have been rounded to cents.
    void tellSum(const Invoice &invoice, int row)
    {
        const auto cell = [&](int column) {
            const auto value = number(m_fat.liste.l1.cell(row, column));
            return value ? std::optional(std::llround(*value * ownDecimals)) : std::nullopt;
        };
        const auto total = cell(L1::ToplamTutar);
        if (!total)
            return;
        const qint64 off = cell(L1::IndirimToplami).value_or(0);
        const qint64 vat = cell(L1::KdvToplami).value_or(0);
        const qint64 tolerance = halfCent * (qint64(invoice.lines) + 1);
        for (const qint64 meant : {qint64(*total), *total - off, *total + vat, *total - off + vat,
                                   qint64(cell(L1::GenelToplam).value_or(*total))}) {
            if (std::abs(invoice.sum - meant) <= tolerance)
                return;
        }
        add(invoice, row, sums,
            u"%1 satırın tutarları %2 eder, faturanın Toplam Tutarı %3."_s.arg(invoice.lines)
                .arg(money(invoice.sum), money(*total)),
            L1::ToplamTutar);
    }

    QStringList codesOf(const QList<qsizetype> &places) const
    {
        QStringList codes;
        for (const qsizetype place : places)
            codes << shown(m_products[static_cast<std::size_t>(place)].code);
        return codes;
    }

    void tellGaps()
    {
        for (const Product &product : m_products) {
            if (product.price <= 0 && !product.code.isEmpty())
                m_gaps.need(u"Bayi fiyatı"_s, product.code, u"urunform"_s, product.lines,
                            product.documents, product.name);
        }
        const int documents = m_fat.liste.l1.rows();
        needFirm(m_gaps, m_fat.tanimlar, m_lines, documents);
        const MuhKayit &muh = m_fat.muhkayit();
        if (muh.kdv.isEmpty() || muh.kdv != m_fat.kdvOrani.text())
            return;
        if (muh.sat.isEmpty())
            m_gaps.need(u"Satış hesabı"_s, muh.kdv, u"muhkod"_s, m_lines, documents);
        if (muh.satkdv.isEmpty())
            m_gaps.need(u"Satış Kdv hesabı"_s, muh.kdv, u"muhkod"_s, m_lines, documents);
    }

    Fat &m_fat;
    Sablon m_line;
    std::optional<LineReader> m_reader;
    std::deque<Invoice> m_invoices;
    QHash<QStringView, Invoice *> m_unfound; // by the numbers that m_invoices hold
    QList<Invoice *> m_waiting;              // found, and no line behind them yet
    QList<Invoice *> m_current;              // whose lines these are
    Header m_header;
    std::deque<Product> m_products;
    QHash<QStringView, qsizetype> m_productPlaces; // by the codes that m_products hold
    bool m_noPacks = false;
    bool m_noCartons = false;
    int m_lines = 0; // that go into documents
};

} // namespace

std::unique_ptr<Survey> surveyOf(Fat &fat)
{
    return std::make_unique<BifSurvey>(fat);
}

} // namespace kervan
