#include "check/listrules.h"
#include "invoices/columns.h"
#include "invoices/duzey/fatduzchecks.h"
#include "invoices/linesurvey.h"
#include "text/numbers.h"
#include "text/spellings.h"

#include <algorithm>
#include <deque>
#include <optional>

// What the records of a Düzey sheet are checked for.

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int recordsAtOnce = 100;
constexpr qsizetype shownPlaces = 3;
constexpr int rateCount = 6;

constexpr LineRule unread{u"satır okunamıyor", Level::Error,
                          u"Hücreyi sayfada sayı olarak düzeltip yeniden okutun."};
constexpr LineRule negative{u"eksi satır", Level::Warning,
                            u"İade ya da düzeltme değilse sayfada düzeltin."};
constexpr LineRule unit{
    u"birim", Level::Error,
    u"Birim Setleri ekranında birimin Logo kodunu girin, sonra bu ekranı kapatıp "
    "yeniden açın."};
constexpr LineRule foreign{
    u"başka kayıt", Level::Error,
    u"Kayıtların cari kodunu, tipini ya da fatura numarasını sayfada düzeltin."};
constexpr LineRule tooMany{u"satır sınırı", Level::Error,
                           u"Faturayı sayfada bölün ya da kalan satırları Logo'da girin."};
constexpr LineRule discount{u"indirim", Level::Warning,
                            u"İndirim oranlarını ve tutarını sayfada kontrol edin."};
constexpr LineRule unitMarkup{u"XML işareti", Level::Error,
                              u"Birimin Logo kodunu Birim Setleri ekranında düzeltin ya da "
                              "\"Logo'nun okuyacağı biçimde yaz\"ı işaretleyin."};
constexpr LineRule unitWord{u"şablon sözcüğü", Level::Error,
                            u"Birimin Logo kodunu Birim Setleri ekranında düzeltin."};
constexpr LineRule columns{u"sayfa", Level::Error,
                           u"Sayfayı 23 sütunuyla, indirim tutarı sütunuyla birlikte alın."};

class SheetSurvey : public LineSurvey
{
public:
    explicit SheetSurvey(Fatduz &fatduz)
        : m_fatduz(fatduz)
        , m_line(duzeyTemplates().xl2, lineWords())
        , m_scratch(QList<GridColumn>(L3::EkVergiTutari + 1))
    {
    }

protected:
    void clear() override
    {
        m_sheet.reset();
        m_invoices.clear();
        m_places.clear();
        m_units.clear();
        m_products.clear();
        m_last = nullptr;
        m_lastNumber.clear();
        m_record = 0;
        m_lines = 0;
    }

    Stage prepare() override
    {
        m_sheet = m_fatduz.okunanSayfa();
        const Grid &l1 = m_fatduz.liste.l1;
        if (!m_sheet || l1.isEmpty())
            return Stage::End;
        m_tip = m_fatduz.tipAdi();
        for (int row = 0; row < l1.rows(); ++row) {
            const QString &number = l1.cell(row, L1::FaturaNumarasi);
            Invoice *&invoice = m_places[number];
            if (!invoice) {
                invoice = &m_invoices.emplace_back();
                invoice->number = number;
            }
            invoice->rows << row;
        }
        if (m_sheet->columns() <= Duzey::IndirimTutari)
            m_found << findingOf(
                columns,
                u"%1 sayfasında %2 sütun var, indirim tutarı sütunu yok: her "
                "faturanın yalnız ilk satırı belgeye girer."_s.arg(
                    quoted(m_fatduz.okunanSayfaAdi()), QString::number(m_sheet->columns())));
        return Stage::Lines;
    }

    bool takeSome() override
    {
        for (int i = 0; i < recordsAtOnce; ++i) {
            if (m_record == m_sheet->rows())
                return false;
            takeRecord(m_record++);
        }
        return true;
    }

    // A few hundred at once.
    bool tellSome() override
    {
        for (int i = 0; i < recordsAtOnce && !m_invoices.empty(); ++i) {
            tellOf(m_invoices.front());
            m_invoices.pop_front();
        }
        if (!m_invoices.empty())
            return true;
        for (auto it = m_units.cbegin(); it != m_units.cend(); ++it) {
            if (!it->isDefined && !it.key().isEmpty())
                m_gaps.need(u"Birim"_s, it.key(), u"birimseti"_s, it->lines, it->documents);
        }
        needFirm(m_gaps, m_fatduz.tanimlar, m_lines, m_fatduz.liste.l1.rows());
        return false;
    }

    void letGo() override { m_sheet.reset(); }
    void giveUp(const Failure &) override {} // the list tells what can't be read

private:
    // What the records that bear an invoice number come to.
    struct Invoice
    {
        QString number;
        QList<int> rows; // of the list; more than one where the invoice is split
        int lines = 0;
        int foreign = 0;
        QString firstForeign;
        QStringList unread, negative, discounts;
        QList<QString> units; // that are not defined
        int unitLines = 0;
        QList<QString> odd; // products with something to tell
    };

    QString text(int record, Duzey::Field field) const
    {
        return field < m_sheet->columns() ? fieldOf(*m_sheet, record, field) : QString();
    }

    // An export takes all records that bear the number, whatever else stands in them.
    void takeRecord(int record)
    {
        const QString number = text(record, Duzey::FaturaNumarasi);
        if (!m_last || number != m_lastNumber) {
            m_last = number.isEmpty() ? nullptr : m_places.value(number);
            m_lastNumber = number;
        }
        if (!m_last)
            return;
        Invoice &invoice = *m_last;
        ++invoice.lines;
        ++m_lines;
        takeOwner(invoice, record);
        takeUnit(invoice, record);
        takeProduct(invoice, record);
        takeNumbers(invoice, record);
    }

    void takeOwner(Invoice &invoice, int record)
    {
        const QString &cari = m_fatduz.liste.l1.cell(invoice.rows.first(), L1::CariKodu);
        const QString here = text(record, Duzey::CariKodu);
        const QString kind = text(record, Duzey::FaturaTipi);
        if (here == cari && kind == m_tip)
            return;
        if (invoice.foreign++ > 0)
            return;
        const QString place =
            m_sheet->address(record, here == cari ? Duzey::FaturaTipi : Duzey::CariKodu);
        invoice.firstForeign = here.isEmpty() ? u"%1 cari kodu boş"_s.arg(place)
                               : here != cari ? u"%1 cari kodu %2"_s.arg(place, quoted(here))
                                              : u"%1 fatura tipi %2"_s.arg(place, quoted(kind));
    }

    void takeUnit(Invoice &invoice, int record)
    {
        const QString word = text(record, Duzey::Birim);
        auto known = m_units.find(word);
        if (known == m_units.end()) {
            const QString code = birimbul(m_fatduz.tanimlar.lbrm, word);
            known = m_units.insert(word, {.isDefined = !code.isEmpty()});
            InvoiceGoods goods;
            goods.birim = code;
            const QString name = u"%1 biriminin Logo kodu"_s.arg(quoted(word));
            if (const QString fault = faultOfMarkup(name, code); !fault.isEmpty())
                m_found << findingOf(unitMarkup, fault);
            if (!faultOfWords(m_line, lineWords(), lineValues(goods, {})).isEmpty())
                m_found << findingOf(unitWord, u"%1 %2 şablonun bir sözcüğünü taşıyor, belgede "
                                               "başka bir değere döner."_s.arg(name, quoted(code)));
        }
        if (known->isDefined)
            return;
        ++invoice.unitLines;
        ++known->lines;
        if (!invoice.units.contains(word)) { // the records of a split invoice come by turns
            invoice.units << word;
            known->documents += static_cast<int>(invoice.rows.size());
        }
    }

    void takeProduct(Invoice &invoice, int record)
    {
        const QString code = text(record, Duzey::UrunKodu);
        auto known = m_products.constFind(code);
        if (known == m_products.cend())
            known = m_products.insert(code, CodeFaults(code, m_line));
        if (!known->faults.isEmpty() && !invoice.odd.contains(code))
            invoice.odd << code;
    }

    // The number of a field as an export reads it. What it can't read is 0 there, and told.
    double numberIn(Invoice &invoice, int record, Duzey::Field field, QStringView name,
                    bool isWanted)
    {
        if (field >= m_sheet->columns())
            return 0;
        if (const auto value = m_sheet->number(record, field)) {
            tellNegative(invoice, record, field, name, *value);
            return *value;
        }
        const QString spelled = text(record, field);
        const auto value = tutarsayisi(spelled);
        // Of two marks the last three zeros are cut off: "1.000.000" comes out as 1.
        const bool isCut = value && spelled.count(u'.') + spelled.count(u',') > 1;
        if ((!value && (isWanted || !spelled.isEmpty())) || isCut) {
            if (invoice.unread.size() < shownPlaces)
                invoice.unread << u"%1 %2 (%3) %4"_s.arg(
                    name, spelled.isEmpty() ? u"boş"_s : quoted(spelled),
                    m_sheet->address(record, field),
                    u"%1 sayılır"_s.arg(isCut ? toText(*value) : u"0"_s));
        } else if (value) {
            tellNegative(invoice, record, field, name, *value);
        }
        return value.value_or(0);
    }

    void tellNegative(Invoice &invoice, int record, Duzey::Field field, QStringView name,
                      double value) const
    {
        if (value < 0 && invoice.negative.size() < shownPlaces)
            invoice.negative << u"%1 %2 (%3)"_s.arg(name, toText(value),
                                                    m_sheet->address(record, field));
    }

    void takeNumbers(Invoice &invoice, int record)
    {
        const double quantity = numberIn(invoice, record, Duzey::Miktar, u"miktar", true);
        const double price = numberIn(invoice, record, Duzey::BirimFiyat, u"fiyat", true);
        numberIn(invoice, record, Duzey::KdvOrani, u"kdv oranı", true);
        // As addDiscounts() takes them, but for its roundings.
        const double total = quantity * price;
        double given = 0;
        for (int i = 0; i < rateCount; ++i) {
            const double rate =
                numberIn(invoice, record, static_cast<Duzey::Field>(Duzey::Oran1 + i),
                         u"indirim oranı", false);
            if (rate > 0)
                given += (i < 2 ? total : total - given) * rate / 100;
        }
        const double money =
            numberIn(invoice, record, Duzey::IndirimTutari, u"indirim tutarı", false);
        if (money > 0) {
            given += money;
            m_scratch.clear();
            const auto failed =
                passOver([&] { addToL3(*m_sheet, record, m_fatduz.tanimlar.lbrm, m_scratch); });
            if (failed && invoice.unread.size() < shownPlaces)
                invoice.unread << u"indirim tutarının (%1) indireceği tutar yok, arkasındaki "
                                  "satırlar belgeye girmez"_s.arg(
                                      m_sheet->address(record, Duzey::IndirimTutari));
        }
        if (total > 0 && given > total * 1.000001 && invoice.discounts.size() < shownPlaces)
            invoice.discounts << m_sheet->address(record, Duzey::UrunKodu);
    }

    void tellOf(const Invoice &invoice)
    {
        for (const int row : invoice.rows) {
            needPerson(m_gaps, m_fatduz.liste.l1, row, invoice.lines);
            tellRow(invoice, row);
        }
    }

    void tellRow(const Invoice &invoice, int row)
    {
        const auto add = [&](const LineRule &rule, const QString &text) {
            m_found << findingOf(rule, text, row, invoice.number);
        };
        if (invoice.foreign > 0)
            add(foreign, u"Bu numarayla başka carinin ya da türün %1 kaydı var, satırları belgeye "
                         "girer: %2."_s.arg(invoice.foreign)
                             .arg(invoice.firstForeign));
        if (!invoice.unread.isEmpty())
            add(unread, u"Okunamayan değer: %1."_s.arg(invoice.unread.join(u", "_s)));
        if (!invoice.negative.isEmpty())
            add(negative, u"Eksi değer: %1."_s.arg(invoice.negative.join(u", "_s)));
        if (!invoice.discounts.isEmpty())
            add(discount,
                u"İndirimler satırın tutarını aşıyor: %1."_s.arg(invoice.discounts.join(u", "_s)));
        if (invoice.unitLines > 0) {
            QStringList units;
            for (const QString &word : invoice.units)
                units << shown(word);
            add(unit, u"%1 satırın birimi tanımlı değil: %2."_s.arg(invoice.unitLines)
                          .arg(someOf(units, u"birim"_s)));
        }
        if (invoice.lines > InvoiceDocument::mostLines)
            add(tooMany, u"%1 satırı var, belgeye ilk %2 satır sığar."_s.arg(invoice.lines)
                             .arg(InvoiceDocument::mostLines));
        for (const QString &code : invoice.odd) {
            const CodeFaults known = m_products.value(code);
            for (const auto &[rule, fault] : known.faults)
                add(*rule, fault);
        }
    }

    struct Unit
    {
        bool isDefined = false;
        int lines = 0;
        int documents = 0;
    };

    Fatduz &m_fatduz;
    Sablon m_line;
    Grid m_scratch;
    std::shared_ptr<const Sheet> m_sheet;
    QString m_tip;
    int m_record = 0;
    int m_lines = 0;
    std::deque<Invoice> m_invoices;
    QHash<QString, Invoice *> m_places; // by number
    Invoice *m_last = nullptr;          // of the record before, if it is listed
    QString m_lastNumber;
    QHash<QString, Unit> m_units;
    QHash<QString, CodeFaults> m_products;
};

} // namespace

std::unique_ptr<Survey> surveyOf(Fatduz &fatduz)
{
    return std::make_unique<SheetSurvey>(fatduz);
}

} // namespace kervan
