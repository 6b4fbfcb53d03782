#include "invoices/fat.h"

#include "base/failure.h"
#include "invoices/columns.h"
#include "logoxml/accumulated.h"
#include "store/sidefiles.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "transfer/target.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr float cashLimit = 7000;
constexpr double vatFactor = 1.18;
constexpr qsizetype endingLength = 4; // ".xml", or whatever stands there

const QList<QByteArray> cashPlaceholders{
    "saat",        "dakika",    "saniye", "yil",     "ay",      "tarih",    "kasakodu",
    "kasaislemno", "cariunvan", "tutar",  "carikod", "islemno", "makbuzno", "satiselemani"};

} // namespace

Fat::Export::Export(Program &program, const QString &dosyaadi, const QSet<QString> &numbers)
    : prices(program.db, program.path(u"data.dbs"))
    , file(dosyaadi, numbers)
{
}

void Fat::logoyaaktar()
{
    if (l1().isEmpty())
        return warn(u"Fatura Listesinde Kayıt Bulunamadı...!"_s);
    if (c3.text().isEmpty())
        return warnAt(u"Firma Seçiniz...!"_s, c3);
    if (l1().tickedCount() == 0)
        return warn(u"Fatura Listesinden Seçim Yapılması Gerekiyor...!"_s);
    if (const auto name = askTarget(m_program, u"Fatura Xml Dosyası Kaydet"_s))
        kaydet(*name);
}

void Fat::otomatikkaydet()
{
    if (l1().isEmpty()) // "Stok" is meant here
        return warn(u"Stok Listesinde Kayıt Bulunamadı...!"_s);
    if (c3.text().isEmpty())
        return warnAt(u"Firma Seçiniz...!"_s, c3);
    if (c1.text().isEmpty())
        return warnAt(u"Kdv Oranı Seçiniz...!"_s, c1);
    if (c2.text().isEmpty())
        return warnAt(u"Birim Seti Seçiniz...!"_s, c2);
    kaydet(m_program.folders.xf);
}

void Fat::kaydet(const QString &dosya)
{
    if (!hasInvoiceTarget(m_program.boxes, dosya))
        return;
    bilgi.setText({});
    ilerleme.start(l1().tickedCount());
    InvoiceDocument document(fatbilgi.text());
    writeInvoices(document);
    if (const QString eksik = m_eksikler.note(); !eksik.isEmpty())
        bilgi.setText(eksik);
    note(passOver([&] { belgeyaz(document.belge(), DocumentEnd::LineEnd, dosya); }));
    ilerleme.finish();
    note(passOver([this] { kasacariislemnokaydet(); }));
    exeldenkasanakitkaydet(dosya);
    tellDone(m_program.boxes);
}

void Fat::writeInvoices(InvoiceDocument &document)
{
    QSet<QString> numbers;
    for (int row = 0; row < l1().rows(); ++row) {
        if (l1().ticked(row))
            numbers << l1().cell(row, L1::FaturaNumarasi);
    }
    m_eksikler = {};
    note(passOver([&] { m_export.emplace(m_program, dosyaadi, numbers); }));
    for (int row = 0; row < l1().rows(); ++row) {
        if (l1().ticked(row))
            writeInvoice(document, row);
    }
    m_export.reset();
}

void Fat::writeInvoice(InvoiceDocument &document, int row)
{
    ilerleme.step();
    const QString &faturano = l1().cell(row, L1::FaturaNumarasi);
    if (const auto failed = liste3yukle(faturano))
        m_eksikler.add(faturano, *failed);
    document.beginInvoice(headOf(row));
    float gross = 0;
    writeLines(document, gross);
    const double discount = number(l1().cell(row, L1::IndirimToplami)).value_or(0);
    if (discount > 0) {
        std::optional<QString> percent;
        passOver([&] {
            const double rate = divided(discount / vatFactor, static_cast<double>(gross)) * 100;
            percent = commaToPoint(masked(rate, "#0.00000000"_mask));
        });
        document.addGeneralDiscount(percent);
    }
    document.endInvoice();
}

void Fat::writeLines(InvoiceDocument &document, float &gross)
{
    for (int row = 0; row < l3.rows(); ++row) {
        document.addLine(goodsOf(row));
        passOver([&] {
            gross = toSingle(static_cast<double>(gross) + toNumber(l3.cell(row, L3::BirimFiyat)) *
                                                              toNumber(l3.cell(row, L3::Miktar)));
        });
    }
}

InvoiceHead Fat::headOf(int row) const
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
            .odemePlaniKodu = odmplnkod.text(),
            .subeKodu = firmakayit.frkod,
            .subeAlicilarHesabi = firmakayit.alkod,
            .subeDepoKodu = firmakayit.dkod,
            .genelKdv = kdyaz.text(),
            .kdvMuafiyetGenel = kdvmuafiyetgenel,
            .eFatura = cell(L1::EFatura) == u"Evet",
            .an = m_program.clock.now()};
}

InvoiceGoods Fat::goodsOf(int row) const
{
    const auto cell = [&](int column) {
        return l3.cell(row, column);
    };
    QStringList percents;
    for (int column = L3::Yuzde1; column <= L3::Yuzde9; ++column) {
        const QString &percent = cell(column);
        if (percent != u"0" && number(percent).value_or(0) > 0)
            percents << commaToPoint(cell(column));
    }
    return {.urunKodu = cell(L3::UrunKodu),
            .miktar = commaToPoint(cell(L3::Miktar)),
            .birimFiyat = commaToPoint(cell(L3::BirimFiyat)),
            .indirim = commaToPoint(cell(L3::IndirimTutari)),
            .kdv = commaToPoint(cell(L3::Kdv)),
            .birim = cell(L3::Birim),
            .satKod = muhkayit.sat,
            .satKdvKod = muhkayit.satkdv,
            .kdvMuafiyetSatir = kdvmuafiyetsatir,
            .ekVergiTutari = commaToPoint(cell(L3::BayiKari)),
            .indirimMuhKod = muhkayit.ind,
            .promosyon = cell(L3::Tipi) == u"1",
            .yuzdeler = percents};
}

// What is stored runs ahead of the numbers given out: it counts collections too.
void Fat::kasacariislemnokaydet()
{
    writeSingleValue(m_program.path(u"kasacariislemno.kvz"), toText(kasaislemsayac));
}

// In the order of the placeholders.
std::array<QString, 14> Fat::cashValues(int row) const
{
    const auto cell = [&](int column) {
        return liste.l1.cell(row, column);
    };
    const QTime time = m_program.clock.now().time();
    const QDate date = toDate(cell(L1::FaturaTarihi));
    const QString day = masked(double(date.day()), "00"_mask);
    const QString month = masked(double(date.month()), "00"_mask);
    const QString year = QString::number(date.year());
    return {QString::number(time.hour()),
            QString::number(time.minute()),
            QString::number(time.second()),
            year,
            month,
            day + u'.' + month + u'.' + year,
            kasakodu,
            cell(L1::KasaIslemNo),
            cell(L1::Unvani),
            tutarnoktasil(cell(L1::ToplamTutar)),
            cell(L1::CariKodu),
            cell(L1::IslemNo),
            QString(),
            trimmedField(cell(L1::KasaSatisElemani))};
}

void Fat::exeldenkasanakitkaydet(const QString &dosya)
{
    note(endQuietly([&] {
        if (dosya.size() < endingLength)
            throw Failure(u"%1 için kasa dosyası adı kurulamadı."_s.arg(dosya));
        AccumulatedBody body(sablon(u"kasatex"_s), cashPlaceholders);
        for (int row = 0; row < l1().rows(); ++row) {
            if (l1().ticked(row) && toSingleNumber(l1().cell(row, L1::GenelToplam)) < cashLimit)
                body.add(cashValues(row));
        }
        // The line end in front of the footer belongs to it, not to the last record.
        belgeyaz({sablon(u"kasabastex"_s), body.records(), {}, "\r\n" + sablon(u"kasasontex"_s)},
                 DocumentEnd::AsItStands, dosya.chopped(endingLength) + u"-KASANAKIT.xml"_s);
        m_program.boxes.show(
            {u"Kasa Nakit Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
    }));
}

} // namespace kervan
