#include "invoices/duzey/fatduzchecks.h"

#include "base/failure.h"
#include "check/listrules.h"
#include "check/readinessrules.h"
#include "invoices/columns.h"
#include "text/numbers.h"
#include "text/spellings.h"
#include "transfer/target.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

Rule sheetRule(const Fatduz &fatduz)
{
    return {.name = u"sayfa"_s,
            .level = Level::Error,
            .cure = u"Sayfa adını geri yazın ya da dosyayı bu adla yeniden okutun."_s,
            .control = u"Text1"_s,
            .ofScreen = [&fatduz] {
                if (fatduz.liste.l1.isEmpty() || fatduz.sayfaAdi.text() == fatduz.okunanSayfaAdi())
                    return QString();
                return u"Liste %1 sayfasından okundu, satırlar ise %2 sayfasından alınır."_s.arg(
                    quoted(fatduz.okunanSayfaAdi()), quoted(fatduz.sayfaAdi.text()));
            }};
}

} // namespace

ListShape shapeOf(const Fatduz &)
{
    return {.what = u"fatura"_s,
            .number = L1::FaturaNumarasi,
            .date = L1::FaturaTarihi,
            .customer = L1::CariKodu,
            .title = L1::Unvani,
            .amounts = {L1::ToplamTutar}};
}

QList<Rule> rulesOf(Fatduz &fatduz, const InvoiceHooks &)
{
    const Grid &l1 = fatduz.liste.l1;
    const Program &program = fatduz.program();
    const auto headOf = [&l1](int row) {
        InvoiceHead head = commonHead(l1, row, {}, {});
        head.odemePlaniKodu = l1.cell(row, L1::OdemeTipi);
        return head;
    };
    const auto chosenHead = [&fatduz] {
        const FirmaKayit &firma = fatduz.tanimlar.firmakayit;
        InvoiceHead head;
        head.subeKodu = firma.frkod;
        head.subeAlicilarHesabi = firma.alkod;
        head.subeDepoKodu = firma.dkod;
        return head;
    };
    QList<Rule> rules = sharedRules(
        {.program = program,
         .liste = fatduz.liste,
         .tanimlar = fatduz.tanimlar,
         .link = fatduz.link,
         .kaynakAdi = u"Düzey"_s,
         .linkCure = u"Sql Server Bağlantı ekranında ayarları kaydedin, sonra bu ekranı kapatıp "
                     "yeniden açın."_s,
         .numberless = u"Numarasız faturaya önceki faturanın satırları yazılır."_s,
         .values = {{L1::CariKodu, u"Cari kodu"_s},
                    {L1::FaturaNumarasi, u"Fatura numarası"_s},
                    {L1::BelgeNumarasi, u"Belge numarası"_s},
                    {L1::LogoPersonelKodu, u"Personel kodu"_s},
                    {L1::OdemeTipi, u"Ödeme tipi"_s}},
         .amounts = {},
         .templates = duzeyTemplates(),
         .headOf = headOf,
         .chosenHead = chosenHead});
    rules << sheetRule(fatduz)
          << withInvoice(emptyRule({l1, L1::OdemeTipi, u"Ödeme tipi"_s}, u"ödeme planı"_s,
                                   Level::Warning,
                                   u"Ödeme planını sayfada girin ya da Logo'da seçin."_s),
                         l1)
          << targetRule(program);
    Rule split = doubledRule({l1, L1::FaturaNumarasi, u"Fatura numarası"_s}, u"fatura numarası"_s,
                             Level::Error,
                             u"Sayfayı fatura numarasına göre sıralayıp yeniden okutun: bölünmüş "
                             "bir faturanın her parçasına bütün satırları yazılır."_s);
    split.name = u"bölünmüş fatura"_s;
    return rules << split;
}

std::unique_ptr<Checks> checksOf(Fatduz &fatduz, const InvoiceHooks &hooks)
{
    auto checks = std::make_unique<Checks>(fatduz.liste.l1, rulesOf(fatduz, hooks));
    checks->add(surveyOf(fatduz));
    for (TextField *field :
         {static_cast<TextField *>(&fatduz.tanimlar.firma), &fatduz.sayfaAdi, &fatduz.link.durum})
        checks->watch(*field);
    checks->watch(fatduz.tanimlar.lbrm);
    checks->watch(fatduz.tanimlar.persl);
    QObject::connect(&fatduz.okuma, &ReadReport::changed, checks.get(), &Checks::restart);
    return checks;
}

} // namespace kervan
