#include "invoices/fat.h"

#include "base/failure.h"
#include "invoices/cashslips.h"
#include "invoices/columns.h"
#include "text/numbers.h"
#include "text/spellings.h"
#include "transfer/target.h"

#include <QScopeGuard>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr double vatFactor = 1.18;

// What the lines come to before any discount, in single precision at each step. A line whose price
// or quantity is no number adds nothing.
float grossOf(const Grid &l3)
{
    float gross = 0;
    for (int line = 0; line < l3.rows(); ++line) {
        passOver([&] {
            gross = toSingle(static_cast<double>(gross) + toNumber(l3.cell(line, L3::BirimFiyat)) *
                                                              toNumber(l3.cell(line, L3::Miktar)));
        });
    }
    return gross;
}

} // namespace

void Fat::logoyaaktar()
{
    if (l1().isEmpty())
        return warn(u"Fatura Listesinde Kayıt Bulunamadı...!"_s);
    if (tanimlar.firma.text().isEmpty())
        return warnAt(u"Firma Seçiniz...!"_s, tanimlar.firma);
    if (l1().tickedCount() == 0)
        return warn(u"Fatura Listesinden Seçim Yapılması Gerekiyor...!"_s);
    if (const auto name = askTarget(m_program, u"Fatura Xml Dosyası Kaydet"_s))
        kaydet(*name);
}

void Fat::otomatikkaydet()
{
    if (l1().isEmpty()) // "Stok" and not "Fatura": the words of this box
        return warn(u"Stok Listesinde Kayıt Bulunamadı...!"_s);
    if (tanimlar.firma.text().isEmpty())
        return warnAt(u"Firma Seçiniz...!"_s, tanimlar.firma);
    if (kdvOrani.text().isEmpty())
        return warnAt(u"Kdv Oranı Seçiniz...!"_s, kdvOrani);
    if (birimSeti.text().isEmpty())
        return warnAt(u"Birim Seti Seçiniz...!"_s, birimSeti);
    kaydet(fullName(m_program.folder, m_program.folders.xf));
}

void Fat::kaydet(const QString &dosya)
{
    if (!hasInvoiceTarget(m_program.boxes, dosya))
        return;
    bilgi.begin();
    writeDocument(dosya);
    // What is stored runs ahead of the numbers given out: it counts collections too.
    note(passOver([this] { kasacariislemnokaydet(m_program, m_kasaislemsayac); }));
    note(endQuietly([&] {
        exeldenkasanakitkaydet(m_program, l1(), tanimlar.kasakodu, dosya, bilgi,
                               okunurBicim.values());
    }));
    tellDone(m_program.boxes);
}

void Fat::writeDocument(const QString &dosya)
{
    ilerleme.start(l1().tickedCount());
    const auto hide = qScopeGuard([this] { ilerleme.finish(); }); // also where memory runs out
    IncompleteInvoices eksikler;
    auto lines = std::make_unique<BifLines>(m_program, m_dosyaadi, tickedNumbers());
    const std::optional<Failure> unreadable = lines->unreadable();
    InvoiceSource source = sourceOf(*lines);
    std::optional<Failure> unreadablePrices;
    source.close = [&] {
        unreadablePrices = lines->unreadablePrices();
        lines.reset();
    };
    const auto failed = passOver(
        [&] { writeInvoices(dosya, l1(), l3, faturaTuru.text(), source, ilerleme, eksikler); });
    bilgi.addDocument(dosya, u"fatura"_s, l1().tickedCount(), m_program.clock.now().time(), failed);
    if (eksikler.note().isEmpty()) // with no invoice that lacks lines, nothing else tells it
        bilgi.add(unreadable);
    else
        bilgi.add(eksikler.note());
    if (eksikler.lackSource())
        bilgi.setFailed();
    bilgi.add(lines ? lines->unreadablePrices() : unreadablePrices);
}

QSet<QString> Fat::tickedNumbers() const
{
    QSet<QString> numbers;
    for (int row = 0; row < liste.l1.rows(); ++row) {
        if (liste.l1.ticked(row))
            numbers << liste.l1.cell(row, L1::FaturaNumarasi);
    }
    return numbers;
}

InvoiceSource Fat::sourceOf(BifLines &lines)
{
    return {.templates = sapTemplates(),
            .liste3yukle =
                [this, &lines](const QString &faturano) {
                    lines.liste3yukle(faturano, tanimlar.lbrm, l3);
                },
            .headOf = [this](int row) { return headOf(row); },
            .goodsOf = [this](int line) { return goodsOf(line); },
            .discountOf = [this](int row) { return discountOf(row); },
            .spelling = okunurBicim.values()};
}

InvoiceHead Fat::headOf(int row) const
{
    InvoiceHead head = commonHead(liste.l1, row, tanimlar.firmakayit, m_program.clock.now());
    head.odemePlaniKodu = odemePlaniKodu.text();
    head.genelKdv = tanimlar.genelKdv.text();
    head.kdvMuafiyetGenel = tanimlar.kdvmuafiyetgenel;
    return head;
}

InvoiceGoods Fat::goodsOf(int line) const
{
    InvoiceGoods goods = commonGoods(l3, line);
    goods.indirim = commaToPoint(l3.cell(line, L3::IndirimTutari));
    goods.satKod = m_muhkayit.sat;
    goods.satKdvKod = m_muhkayit.satkdv;
    goods.kdvMuafiyetSatir = tanimlar.kdvmuafiyetsatir;
    // The element takes what the extra tax is reckoned from, which is the dealer's margin, and not
    // the tax itself.
    goods.ekVergiTutari = commaToPoint(l3.cell(line, L3::BayiKari));
    goods.indirimMuhKod = m_muhkayit.ind;
    goods.promosyon = l3.cell(line, L3::Tipi) == u"1";
    return goods;
}

std::optional<GeneralDiscount> Fat::discountOf(int row) const
{
    const double discount = number(liste.l1.cell(row, L1::IndirimToplami)).value_or(0);
    if (discount <= 0)
        return std::nullopt;
    GeneralDiscount general;
    passOver([&] {
        const double rate = divided(discount / vatFactor, static_cast<double>(grossOf(l3))) * 100;
        general.percent = commaToPoint(masked(rate, "#0.00000000"_mask));
    });
    return general;
}

} // namespace kervan
