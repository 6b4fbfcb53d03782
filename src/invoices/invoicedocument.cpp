#include "invoices/invoicedocument.h"

#include "base/codepage.h"
#include "text/dates.h"

#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// One placeholder and the value that a filling gives it.
struct Step
{
    const char16_t *find;
    QString value;
};

// The steps in their order, which is part of the format: a value is searched again by the steps
// behind it.
auto headSteps(const InvoiceHead &head)
{
    const QTime time = head.an.time();
    const QString zero = u"0"_s;
    const auto ifEFatura = [&](const char16_t *element) {
        return head.eFatura ? QString::fromUtf16(element) : QString();
    };
    return std::to_array<Step>({
        {u"cari kod", head.cariKod},
        {u"faturano", head.faturaNo},
        {u"fatura no", head.faturaNo},
        {u"belgeno", head.belgeNo},
        {u"belge tarihi", head.belgeTarihi},
        {u"duzenleme tarihi", head.belgeTarihi},
        {u"acknotu", {}},
        {u"personel kodu", head.personelKodu},
        {u"toplam tutar", zero},
        {u"toplam indirimler", zero},
        {u"toplam kdv", zero},
        {u"genel toplam", zero},
        {u"fatozkod", head.fatOzKod},
        {u"indirimli top tutar", zero},
        {u"olusturma tarihi", systemDate(head.an.date())},
        {u"olusturma saati", QString::number(time.hour())},
        {u"olusturma dakika", QString::number(time.minute())},
        {u"olusturma saniye", QString::number(time.second())},
        {u"odeme planı kodu", head.odemePlaniKodu},
        {u"sube kodu", head.subeKodu},
        {u"sube alıcılar hesabı", head.subeAlicilarHesabi},
        {u"sube depo kodu", head.subeDepoKodu},
        {u"genel kdv", head.genelKdv},
        {u"<efatura>", ifEFatura(u"<EINVOICE>1</EINVOICE>")},
        {u"<edurationtipi>", ifEFatura(u"<EDURATION_TYPE>0</EDURATION_TYPE>")},
        {u"<profileid>", ifEFatura(u"<PROFILE_ID>1</PROFILE_ID>")},
        {u"<esatatus>", {}},
        {u"kdvmuafiyetgenelyazi", head.kdvMuafiyetGenel},
    });
}

auto lineSteps(const InvoiceGoods &goods, const InvoiceHead &head)
{
    return std::to_array<Step>({
        {u"urun kodu", goods.urunKodu},
        {u"miktar", goods.miktar},
        {u"birfyt", goods.birimFiyat},
        {u"indirim", goods.indirim},
        {u"brfytmik", {}},
        {u"birmfyat*mkt-ind", {}},
        {u"Kdv", goods.kdv},
        {u"kd tutarı", {}},
        {u"fatura no", head.faturaNo},
        {u"personel kodu", head.personelKodu},
        {u"birim", goods.birim},
        {u"satkod", goods.satKod},
        {u"satkdkdv", goods.satKdvKod},
        {u"sube depo kodu", head.subeDepoKodu},
        {u"kdvmuafiyetsatiryazi", goods.kdvMuafiyetSatir},
        {u"ekvergitutari", goods.ekVergiTutari},
    });
}

auto lineDiscountSteps(const QString &percent, const InvoiceGoods &goods, const InvoiceHead &head)
{
    return std::to_array<Step>({
        {u"iyuzdesi", percent},
        {u"indirim", {}},
        {u"fatura no", head.faturaNo},
        {u"muhindkod", goods.indirimMuhKod},
        {u"sube depo kodu", head.subeDepoKodu},
    });
}

template<std::size_t count>
QList<QByteArray> placeholders(const std::array<Step, count> &steps)
{
    QList<QByteArray> words;
    for (const Step &step : steps)
        words << toCodePage(step.find);
    return words;
}

template<std::size_t count>
QStringList valuesOf(const std::array<Step, count> &steps)
{
    QStringList values;
    for (const Step &step : steps)
        values << step.value;
    return values;
}

template<std::size_t count>
void fill(const Sablon &sablon, std::array<Step, count> steps, QByteArray &out)
{
    std::array<QString, count> values;
    for (std::size_t i = 0; i < count; ++i)
        values[i] = std::move(steps[i].value);
    sablon.doldur(values, out);
}

// Sales of kind 10 and 80 keep the type 8 of the template.
QByteArray typeOf(QStringView kind)
{
    if (kind == u"20")
        return "1";
    if (kind == u"30")
        return "3";
    if (kind == u"40")
        return "6";
    return "8";
}

QByteArray ofKind(QByteArray head, QStringView kind)
{
    return head.replace("<TYPE>8</TYPE>", "<TYPE>" + typeOf(kind) + "</TYPE>");
}

} // namespace

QList<QByteArray> headWords()
{
    return placeholders(headSteps({}));
}

QStringList headValues(const InvoiceHead &head)
{
    return valuesOf(headSteps(head));
}

QList<QByteArray> lineWords()
{
    return placeholders(lineSteps({}, {}));
}

QStringList lineValues(const InvoiceGoods &goods, const InvoiceHead &head)
{
    return valuesOf(lineSteps(goods, head));
}

InvoiceTemplates sapTemplates()
{
    return {.xl1 = sablon(u"xl1"_s), .xl2 = sablon(u"xl2"_s)};
}

InvoiceDocument::InvoiceDocument(const QString &faturaTuru, const InvoiceTemplates &templates,
                                 Values spelling)
    : m_head(ofKind(templates.xl1, QStringView(faturaTuru).left(2)), placeholders(headSteps({})),
             spelling)
    , m_line(templates.xl2, placeholders(lineSteps({}, {})), spelling)
    , m_lineDiscount(sablon(u"xl3"_s), placeholders(lineDiscountSteps({}, {}, {})), spelling)
    , m_generalDiscount(sablon(u"xl4"_s))
    , m_kalemson(sablon(u"kalemson"_s))
    , m_baslik(sablon(u"baslik"_s))
    , m_sonu(sablon(u"sonu"_s))
{
    if (faturaTuru.startsWith(u"20") || faturaTuru.startsWith(u"40")) {
        m_baslik.replace("SALES_INVOICES", "PURCHASE_INVOICES");
        m_sonu.replace("SALES_INVOICES", "PURCHASE_INVOICES");
    }
}

void InvoiceDocument::beginInvoice(const InvoiceHead &head)
{
    m_current = head;
    m_lines = 0;
    m_text.resize(0);
    fill(m_head, headSteps(head), m_text);
}

void InvoiceDocument::addLine(const InvoiceGoods &goods)
{
    if (++m_lines > mostLines)
        return;
    m_text += ' ';
    const qsizetype start = m_text.size();
    fill(m_line, lineSteps(goods, m_current), m_text);
    if (goods.promosyon) {
        QByteArray line = m_text.sliced(start).replace("<TYPE>0</TYPE>", "<TYPE>4</TYPE>");
        m_text.truncate(start);
        m_text += line;
    }
    for (const QString &percent : goods.yuzdeler) {
        fill(m_lineDiscount, lineDiscountSteps(percent, goods, m_current), m_text);
        m_text += "\r\n";
    }
}

void InvoiceDocument::addGeneralDiscount(const std::optional<QString> &percent)
{
    QList<Fill> fills;
    if (percent)
        fills << Fill{"iyuzdesi", toCodePage(*percent)};
    fills << Fill{"indirim", {}}
          << Fill{"fatura no", valueBytes(m_current.faturaNo, m_head.spelling())}
          << Fill{"muhindkod", {}} << Fill{"sube depo kodu", {}};
    m_text += sablondoldur(m_generalDiscount, fills);
}

QByteArrayView InvoiceDocument::endInvoice()
{
    return m_text += m_kalemson;
}

Belge InvoiceDocument::frame() const
{
    return {m_baslik, {}, {}, m_sonu, m_head.spelling()};
}

} // namespace kervan
