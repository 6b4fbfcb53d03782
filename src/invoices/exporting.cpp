#include "invoices/exporting.h"

#include "invoices/columns.h"
#include "text/numbers.h"
#include "text/spellings.h"

#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

bool hasInvoiceTarget(Boxes &boxes, const QString &dosya)
{
    if (dosya.isEmpty())
        boxes.show({u"Dosya Konumu Hatalı...!Ayarlardan Dosya Konumlarını Kontrol Ediniz."_s,
                    u"Dikkat"_s, Icon::Stop});
    return !dosya.isEmpty();
}

InvoiceHead commonHead(const Grid &l1, int row, const FirmaKayit &firma, const QDateTime &now)
{
    const auto cell = [&](int column) -> const QString & {
        return l1.cell(row, column);
    };
    return {.cariKod = cell(L1::CariKodu),
            .faturaNo = cell(L1::FaturaNumarasi),
            .belgeNo = cell(L1::BelgeNumarasi),
            .belgeTarihi = cell(L1::FaturaTarihi),
            .personelKodu = cell(L1::LogoPersonelKodu),
            // The special code of an invoice is its personnel code again: what is chosen in the
            // screens' lists of special codes goes into no document.
            .fatOzKod = cell(L1::LogoPersonelKodu),
            .odemePlaniKodu = {},
            .subeKodu = firma.frkod,
            .subeAlicilarHesabi = firma.alkod,
            .subeDepoKodu = firma.dkod,
            .genelKdv = {},
            .kdvMuafiyetGenel = {},
            .eFatura = cell(L1::EFatura) == u"Evet",
            .an = now};
}

InvoiceGoods commonGoods(const Grid &l3, int line)
{
    const auto cell = [&](int column) -> const QString & {
        return l3.cell(line, column);
    };
    QStringList percents;
    for (int column = L3::Yuzde1; column <= L3::Yuzde9; ++column) {
        const QString &percent = cell(column);
        if (percent != u"0" && number(percent).value_or(0) > 0) // most are a bare "0"
            percents << commaToPoint(percent);
    }
    InvoiceGoods goods;
    goods.urunKodu = cell(L3::UrunKodu);
    goods.miktar = commaToPoint(cell(L3::Miktar));
    goods.birimFiyat = commaToPoint(cell(L3::BirimFiyat));
    goods.kdv = commaToPoint(cell(L3::Kdv));
    goods.birim = cell(L3::Birim);
    goods.yuzdeler = percents;
    return goods;
}

void IncompleteInvoices::add(const QString &faturano, const Failure &failed)
{
    if (faturano != std::exchange(m_last, faturano) || m_count == 0)
        ++m_count;
    m_lackSource = m_lackSource || failed.isOfFile();
    if (m_first.isEmpty())
        m_first = u"%1: %2"_s.arg(faturano, failed.headline());
}

QString IncompleteInvoices::note() const
{
    if (m_count == 0)
        return {};
    return u"%1 faturanın satırları eksik yazıldı. %2"_s.arg(m_count).arg(m_first);
}

void writeInvoices(const QString &dosya, const Grid &l1, const Grid &l3, const QString &faturaTuru,
                   const InvoiceSource &source, ProgressField &progress,
                   IncompleteInvoices &incomplete)
{
    InvoiceDocument document(faturaTuru, source.templates, source.spelling);
    const auto invoiceOf = [&](int row) {
        const QString &faturano = l1.cell(row, L1::FaturaNumarasi);
        if (const auto failed = passOver([&] { source.liste3yukle(faturano); }))
            incomplete.add(faturano, *failed);
        document.beginInvoice(source.headOf(row));
        for (int line = 0; line < l3.rows(); ++line)
            document.addLine(source.goodsOf(line));
        if (source.discountOf) {
            if (const auto discount = source.discountOf(row))
                document.addGeneralDiscount(discount->percent);
        }
        if (const int lost = document.lostLines())
            incomplete.add(faturano, Failure(u"%1. satırdan sonraki %2 satır belgeye sığmadı."_s
                                                 .arg(InvoiceDocument::mostLines)
                                                 .arg(lost)));
        return document.endInvoice();
    };
    belgeyaz(document.frame(), DocumentEnd::LineEnd, dosya, [&](const TakePiece &take) {
        for (int row = 0; row < l1.rows(); ++row) {
            if (!l1.ticked(row))
                continue;
            progress.step();
            take(" ");
            take(invoiceOf(row));
        }
        take(" ");
        if (source.close)
            source.close();
    });
}

} // namespace kervan
