#include "invoices/fatchecks.h"

#include "base/failure.h"
#include "check/listrules.h"
#include "invoices/cashslips.h"
#include "invoices/columns.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "transfer/target.h"

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

bool getsSlip(const Grid &l1, int row)
{
    bool gets = false;
    passOver([&] { gets = isBelowCashLimit(l1, row); });
    return gets;
}

QString automaticTarget(const Program &program)
{
    return fullName(program.folder, program.folders.xf);
}

QList<Rule> vatRules(Fat &fat)
{
    const auto isChosen = [&fat] {
        return !fat.kdvOrani.text().isEmpty() && fat.muhkayit().kdv == fat.kdvOrani.text();
    };
    const QString cure =
        u"Muhasebe Hesap Kodları ekranında girin, sonra bu ekranı kapatıp yeniden açın."_s;
    QList<Rule> rules{
        {.name = u"kdv satırı"_s,
         .level = Level::Error,
         .cure = u"Kdv Oranı listesinden seçin; listede yoksa Muhasebe Hesap Kodları ekranında "
                 "girip bu ekranı yeniden açın."_s,
         .control = u"c1"_s,
         .ofScreen =
             [&fat, isChosen] {
                 if (fat.kdvOrani.entries().isEmpty())
                     return u"Hiç muhasebe hesabı tanımı yok: satırlar hesapsız yazılır."_s;
                 if (fat.kdvOrani.text().isEmpty())
                     return u"Kdv oranı seçilmedi: satırlar hesapsız yazılır."_s;
                 return isChosen() ? QString()
                                   : u"%1 oranının hesapları okunamadı."_s.arg(
                                         quoted(fat.kdvOrani.text()));
             }},
        {.name = u"muhasebe hesabı"_s,
         .cure = cure,
         .control = u"c1"_s,
         .ofScreen = [&fat, isChosen] {
             QStringList missing;
             if (fat.muhkayit().sat.isEmpty())
                 missing << u"Satış"_s;
             if (fat.muhkayit().satkdv.isEmpty())
                 missing << u"Satış Kdv"_s;
             return missing.isEmpty() || !isChosen()
                        ? QString()
                        : u"%1 oranının %2 hesabı boş."_s.arg(quoted(fat.kdvOrani.text()),
                                                              missing.join(u" ve "_s));
         }}};
    rules += definitionValueRules(u"Satış hesabı"_s, cure, [&fat] { return fat.muhkayit().sat; });
    rules +=
        definitionValueRules(u"Satış Kdv hesabı"_s, cure, [&fat] { return fat.muhkayit().satkdv; });
    return rules;
}

QList<Rule> planRules(Fat &fat)
{
    const QString cure = u"Ödeme Plan Kodu listesinden seçin; listede yoksa Ödeme Plan Kodu "
                         "ekranında girin."_s;
    QList<Rule> rules{
        {.name = u"ödeme planı"_s, .cure = cure, .control = u"c5"_s, .ofScreen = [&fat] {
             return fat.odemePlaniKodu.text().isEmpty()
                        ? u"Ödeme planı seçilmedi: faturalar plansız yazılır."_s
                        : QString();
         }}};
    rules += definitionValueRules(u"Ödeme plan kodu"_s, cure,
                                  [&fat] { return fat.odemePlaniKodu.text(); });
    return rules;
}

QList<Rule> unitValueRules(const InvoiceDefinitions &tanimlar)
{
    QList<Rule> rules;
    for (const QString &word : {u"PAKET"_s, u"KARTON"_s})
        rules += definitionValueRules(u"%1 biriminin Logo kodu"_s.arg(word),
                                      u"Birim Setleri ekranında düzeltin."_s,
                                      [&tanimlar, word] { return birimbul(tanimlar.lbrm, word); });
    return rules;
}

QList<Rule> exemptionRules(const InvoiceDefinitions &tanimlar)
{
    const QString cure = u"Kdv Muafiyet Yazısı ekranında düzeltin."_s;
    return definitionValueRules(u"Genel muafiyet yazısı"_s, cure,
                                [&tanimlar] { return tanimlar.kdvmuafiyetgenel; }) +
           definitionValueRules(u"Satır muafiyet yazısı"_s, cure,
                                [&tanimlar] { return tanimlar.kdvmuafiyetsatir; }) +
           definitionValueRules(u"Genel Kdv oranı"_s,
                                u"Muhasebe Hesap Kodları ekranında düzeltin."_s,
                                [&tanimlar] { return tanimlar.genelKdv.text(); });
}

// A slip's values are searched by the steps behind their own and, since each filling runs over all
// slips so far, by all steps of the next slip.
Rule slipWords(Fat &fat)
{
    const QList<QByteArray> words = kasaSozcukleri();
    return {.name = u"şablon sözcüğü"_s,
            .level = Level::Error,
            .cure = u"Ünvanı kaynağında değiştirin ya da kasa fişini Logo'da düzeltin."_s,
            .column = L1::Unvani,
            .ofRow = [&fat, words, slip = Sablon(sablon(u"kasatex"_s), words)](int row) -> QString {
                const Grid &l1 = fat.liste.l1;
                const auto mayHoldWord = [](const QString &value) {
                    return std::ranges::any_of(value, [](QChar c) { return c.isLower(); });
                };
                if (!mayHoldWord(l1.cell(row, L1::Unvani)) &&
                    !mayHoldWord(l1.cell(row, L1::CariKodu)) &&
                    !mayHoldWord(l1.cell(row, L1::KasaSatisElemani)) &&
                    !mayHoldWord(fat.tanimlar.kasakodu))
                    return {};
                QString fault;
                if (getsSlip(l1, row)) {
                    passOver([&] {
                        const QStringList values =
                            kasaDegerleri(l1, row, fat.tanimlar.kasakodu, QTime(0, 0));
                        fault = faultOfWords(slip, words, values);
                        if (!fault.isEmpty() || !slip.mayChange(values, Sablon::Steps::All))
                            return;
                        int next = row + 1;
                        while (next < l1.rows() && !getsSlip(l1, next))
                            ++next;
                        if (next < l1.rows())
                            fault =
                                u"%1 içinde şablonun sözcüğü var; arkasındaki %2 faturasının fişi "
                                "de yazılırsa değişir."_s.arg(quoted(l1.cell(row, L1::Unvani)),
                                                              l1.cell(next, L1::FaturaNumarasi));
                    });
                }
                return fault.isEmpty() ? fault : u"Kasa fişinde "_s + fault;
            }};
}

// One ticked row that can't be read ends the writing of all slips, once the invoices are written.
Rule lostSlips(const Grid &l1)
{
    return {.name = u"kasa fişi"_s,
            .level = Level::Error,
            .cure = u"Kaynağında düzeltip dosyayı yeniden okutun ya da bu faturayı ayrı yazın."_s,
            .ofRow = [&l1](int row) {
                QString value = u"genel toplamı"_s;
                const auto failed = passOver([&] {
                    if (!isBelowCashLimit(l1, row))
                        return;
                    value = u"tarihi"_s;
                    toDate(l1.cell(row, L1::FaturaTarihi));
                });
                return failed ? u"İşaretli olursa kasa fişlerinin hiçbiri yazılmaz: %1 "
                                "okunamıyor."_s.arg(value)
                              : QString();
            }};
}

QList<Rule> slipRules(Fat &fat, const InvoiceHooks &hooks)
{
    const Grid &l1 = fat.liste.l1;
    const auto gets = [&l1](int row) {
        return getsSlip(l1, row);
    };
    const QString cure = u"Kasa Kodu ekranında girin, sonra bu ekranı kapatıp yeniden açın."_s;
    QList<Rule> rules{
        {.name = u"kasa kodu"_s,
         .level = Level::Error,
         .cure = cure,
         .ofScreen =
             [&fat] {
                 return fat.tanimlar.kasakodu.isEmpty()
                            ? u"Kasa kodu boş: kasa fişleri kasasız yazılır."_s
                            : QString();
             }},
        {.name = u"ortak sayaç"_s,
         .cure = u"Öteki ekranı kapatın, sonra dosyayı yeniden okutun."_s,
         .ofScreen = [&l1, shared = hooks.counterIsShared] {
             return !l1.isEmpty() && shared && shared()
                        ? u"Kasa sayacını açık olan başka bir ekran da kullanıyor: aynı fiş "
                          "numaraları iki kez verilebilir."_s
                        : QString();
         }}};
    rules += definitionValueRules(u"Kasa kodu"_s, cure, [&fat] { return fat.tanimlar.kasakodu; });
    for (const Rule &rule : letterRules(Cells{.grid = l1,
                            .column = L1::Unvani,
                            .name = u"Ünvanı"_s,
                            .counts = gets,
                            .broken = u"kasa fişlerinin hiçbirini"_s}))
        rules << withInvoice(rule, l1);
    rules << withInvoice(slipWords(fat), l1) << withInvoice(lostSlips(l1), l1);
    return rules;
}

QList<Rule> targetRules(Fat &fat, const InvoiceHooks &hooks)
{
    const Program &program = fat.program();
    Rule existing =
        existingFileRule([&program] { return automaticTarget(program); }, hooks.contentOf);
    existing.ofScreen = [&fat, look = existing.ofScreen]() -> QString {
        if (fat.liste.l1.isEmpty()) // nothing would be written
            return {};
        const QString text = look();
        return text.isEmpty() ? text : u"Otomatik kayıt dosyası "_s + text;
    };
    return {folderRule([&program] {
                const Folders &folders = program.folders;
                return folders.xf.isEmpty()
                           ? fullName(program.folder, ilkKlasor(program.folder, folders.xc, {}))
                           : automaticTarget(program);
            }),
            programFolderRule(program.folder), existing};
}

} // namespace

ListShape shapeOf(const Fat &)
{
    return {.what = u"fatura"_s,
            .number = L1::FaturaNumarasi,
            .date = L1::FaturaTarihi,
            .customer = L1::CariKodu,
            .title = L1::Unvani,
            .amounts = {L1::GenelToplam, L1::ToplamTutar, L1::IndirimToplami, L1::KdvToplami}};
}

QList<Rule> rulesOf(Fat &fat, const InvoiceHooks &hooks)
{
    const Grid &l1 = fat.liste.l1;
    const auto headOf = [&l1](int row) {
        return commonHead(l1, row, {}, {});
    };
    const auto chosenHead = [&fat] {
        const FirmaKayit &firma = fat.tanimlar.firmakayit;
        InvoiceHead head;
        head.odemePlaniKodu = fat.odemePlaniKodu.text();
        head.subeKodu = firma.frkod;
        head.subeAlicilarHesabi = firma.alkod;
        head.subeDepoKodu = firma.dkod;
        head.genelKdv = fat.tanimlar.genelKdv.text();
        head.kdvMuafiyetGenel = fat.tanimlar.kdvmuafiyetgenel;
        return head;
    };
    QList<Rule> rules =
        sharedRules({.program = fat.program(),
                     .liste = fat.liste,
                     .tanimlar = fat.tanimlar,
                     .link = fat.link,
                     .kaynakAdi = u"SAP"_s,
                     .linkCure = u"Sql Server Bağlantı ekranında ayarları kaydedin."_s,
                     .numberless = u"Numarasız fatura satırsız yazılır."_s,
                     .values = {{L1::CariKodu, u"Cari kodu"_s},
                                {L1::FaturaNumarasi, u"Fatura numarası"_s},
                                {L1::LogoPersonelKodu, u"Personel kodu"_s}},
                     .amounts = {{L1::ToplamTutar, u"Toplam Tutar"_s},
                                 {L1::IndirimToplami, u"İndirim Toplamı"_s},
                                 {L1::KdvToplami, u"Kdv Toplamı"_s},
                                 {L1::GenelToplam, u"Genel Toplam"_s}},
                     .templates = sapTemplates(),
                     .headOf = headOf,
                     .chosenHead = chosenHead,
                     .chosenGoods = [&fat] {
                         QList<InvoiceGoods> goods(2);
                         for (InvoiceGoods &line : goods) {
                             line.satKod = fat.muhkayit().sat;
                             line.satKdvKod = fat.muhkayit().satkdv;
                             line.kdvMuafiyetSatir = fat.tanimlar.kdvmuafiyetsatir;
                         }
                         goods[0].birim = birimbul(fat.tanimlar.lbrm, u"PAKET"_s);
                         goods[1].birim = birimbul(fat.tanimlar.lbrm, u"KARTON"_s);
                         return goods;
                     }});
    rules += vatRules(fat);
    rules += planRules(fat);
    rules += unitValueRules(fat.tanimlar);
    rules += exemptionRules(fat.tanimlar);
    rules += slipRules(fat, hooks);
    rules += targetRules(fat, hooks);
    rules << doubledRule({l1, L1::FaturaNumarasi, u"Fatura numarası"_s}, u"fatura numarası"_s,
                         Level::Error,
                         u"Fazla olanı listeden silin ya da işaretlemeyin: ikisine de ilkinin "
                         "satırları yazılır."_s);
    return rules;
}

std::unique_ptr<Checks> checksOf(Fat &fat, const InvoiceHooks &hooks)
{
    auto checks = std::make_unique<Checks>(fat.liste.l1, rulesOf(fat, hooks));
    checks->add(surveyOf(fat));
    for (TextField *field :
         {static_cast<TextField *>(&fat.tanimlar.firma), static_cast<TextField *>(&fat.kdvOrani),
          &fat.odemePlaniKodu, &fat.tanimlar.genelKdv, &fat.link.durum})
        checks->watch(*field);
    checks->watch(fat.tanimlar.lbrm);
    checks->watch(fat.tanimlar.persl);
    QObject::connect(&fat.okuma, &ReadReport::changed, checks.get(), &Checks::restart);
    return checks;
}

} // namespace kervan
