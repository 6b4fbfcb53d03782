#include "invoices/duzey/fatduz.h"

#include "invoices/columns.h"
#include "text/numbers.h"
#include "text/spellings.h"
#include "transfer/target.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The three places where the templates of this source differ.
InvoiceTemplates duzeyTemplates()
{
    return {.xl1 = sablon(u"xl1"_s).replace("<SOURCE_COST_GRP>sube depo kodu</SOURCE_COST_GRP>\r\n"
                                            "    <POST_FLAGS>247<",
                                            "<SOURCE_COST_GRP></SOURCE_COST_GRP>\r\n"
                                            "    <POST_FLAGS>246<"),
            .xl2 = sablon(u"xl2"_s).replace("<ADD_TAX_RATE>0.18<", "<ADD_TAX_RATE>0<")};
}

} // namespace

// Neither list, firm nor ticks are asked for here: without a tick the document has no invoice.
void Fatduz::logoyaaktar()
{
    if (const auto name = askTarget(m_program, u"Fatura Xml Dosyası Kaydet"_s))
        kaydet(*name);
}

void Fatduz::kaydet(const QString &dosya)
{
    if (!hasInvoiceTarget(m_program.boxes, dosya))
        return;
    bilgi.setText({});
    bekle.setChecked(true);
    ilerleme.start(l1().tickedCount());
    InvoiceDocument document(fatbilgi.text(), duzeyTemplates());
    writeInvoices(document);
    bilgi.setText(m_eksikler.note());
    note(passOver([&] { belgeyaz(document.belge(), DocumentEnd::LineEnd, dosya); }));
    ilerleme.finish();
    bekle.setChecked(false);
    tellDone(m_program.boxes);
}

void Fatduz::writeInvoices(InvoiceDocument &document)
{
    m_eksikler = {};
    for (int row = 0; row < l1().rows(); ++row) {
        if (!l1().ticked(row))
            continue;
        ilerleme.step();
        const QString &faturano = l1().cell(row, L1::FaturaNumarasi);
        if (const auto failed = passOver([&] { liste3yukle(faturano); }))
            m_eksikler.add(faturano, *failed);
        document.beginInvoice(headOf(row));
        for (int line = 0; line < l3.rows(); ++line)
            document.addLine(goodsOf(line));
        document.endInvoice();
    }
}

// Amounts are left for Logo to work out, and the texts of exemption and general rate stay empty.
InvoiceHead Fatduz::headOf(int row) const
{
    const auto cell = [&](int column) {
        return liste.l1.cell(row, column);
    };
    return {.cariKod = cell(L1::CariKodu),
            .faturaNo = cell(L1::FaturaNumarasi),
            .belgeNo = cell(L1::BelgeNumarasi),
            .belgeTarihi = cell(L1::FaturaTarihi),
            .personelKodu = cell(L1::LogoPersonelKodu),
            .fatOzKod = cell(L1::LogoPersonelKodu),
            .odemePlaniKodu = cell(L1::OdemeTipi),
            .subeKodu = firmakayit.frkod,
            .subeAlicilarHesabi = firmakayit.alkod,
            .subeDepoKodu = firmakayit.dkod,
            .genelKdv = {},
            .kdvMuafiyetGenel = {},
            .eFatura = cell(L1::EFatura) == u"Evet",
            .an = m_program.clock.now()};
}

// No accounting row is chosen on this screen, so the accounts of a line stay empty.
InvoiceGoods Fatduz::goodsOf(int row) const
{
    const auto cell = [&](int column) {
        return l3.cell(row, column);
    };
    QStringList percents;
    for (int column = L3::Yuzde1; column <= L3::Yuzde9; ++column) {
        if (number(cell(column)).value_or(0) > 0)
            percents << commaToPoint(cell(column));
    }
    return {.urunKodu = cell(L3::UrunKodu),
            .miktar = commaToPoint(cell(L3::Miktar)),
            .birimFiyat = commaToPoint(cell(L3::BirimFiyat)),
            .indirim = {},
            .kdv = commaToPoint(cell(L3::Kdv)),
            .birim = cell(L3::Birim),
            .satKod = {},
            .satKdvKod = {},
            .kdvMuafiyetSatir = {},
            .ekVergiTutari = u"0"_s,
            .indirimMuhKod = {},
            .promosyon = false,
            .yuzdeler = percents};
}

} // namespace kervan
