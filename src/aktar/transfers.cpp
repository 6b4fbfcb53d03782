#include "aktar/transfers.h"

#include "base/failure.h"
#include "cards/cardchecks.h"
#include "cards/cr.h"
#include "cards/st.h"
#include "cards/stoktrf.h"
#include "invoices/cashslips.h"
#include "invoices/columns.h"
#include "invoices/duzey/fatduz.h"
#include "invoices/duzey/fatduzchecks.h"
#include "invoices/fat.h"
#include "invoices/fatchecks.h"
#include "slips/slipchecks.h"
#include "slips/slipscreen.h"
#include "stocktake/countchecks.h"
#include "stocktake/sayimform.h"
#include "store/sidefiles.h"

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// --- How options make the choices of a screen

// The entry that a value means: it itself, or the one whose code it is ("10 (Satış Faturaları)",
// "30<>Otuz gün", "KMP- Kampanya").
std::optional<QString> entryOf(const ChoiceField &field, const QString &value)
{
    for (const QString &entry : field.entries()) {
        if (entry == value)
            return entry;
    }
    for (const QString &entry : field.entries()) {
        for (const QString &mark : {u"<>"_s, u" ("_s, u"- "_s}) {
            if (entry.startsWith(value + mark))
                return entry;
        }
    }
    return std::nullopt;
}

Choice pick(
    const QString &option, ChoiceField &field, std::function<void()> picked = [] {})
{
    return {option, [option, &field, picked = std::move(picked)](const QString &value) {
                const auto entry = entryOf(field, value);
                if (!entry)
                    throw Failure(u"--%1 \"%2\": listede yok. Olanlar: %3"_s.arg(
                        option, value, field.entries().join(u", "_s)));
                return [&field, picked, entry = *entry] {
                    field.setText(entry);
                    picked();
                };
            }};
}

Choice enter(
    const QString &option, TextField &field, std::function<void()> entered = [] {})
{
    return {option, [&field, entered = std::move(entered)](const QString &value) {
                return [&field, entered, value] {
                    field.setText(value);
                    entered();
                };
            }};
}

Choice behind(Choice choice)
{
    choice.behindRead = true;
    return choice;
}

// --- The invoices

// What both screens call alike. The dates come first, so that the filter is on with both of them.
QList<Choice> dateFilter(const Program &program, InvoiceList &list,
                         const std::function<void()> &entered)
{
    const auto set = [&](const QString &option, DateField &field) {
        return Choice{option, [option, &program, &list, &field, entered](const QString &value) {
                          const QDate day = dayOf(option, value, program.clock.now().date());
                          return [&list, &field, entered, day] {
                              field.setDate(day);
                              list.tarihAraligi.setChecked(true);
                              entered();
                          };
                      }};
    };
    return {set(u"ilk-tarih"_s, list.ilkTarih), set(u"son-tarih"_s, list.sonTarih)};
}

std::function<bool(int row)> takesEInvoices(const Grid &l1)
{
    return [&l1](int row) {
        return l1.cell(row, L1::EFatura) == u"Evet";
    };
}

// The word is asked for before an automatic save and stands in no document.
Choice unitWord(Fat &fat)
{
    Choice choice = enter(u"birim-seti"_s, fat.birimSeti, [&fat] { fat.birimsetisec(); });
    choice.of = [&fat, made = choice.of](const QString &value) {
        QStringList words;
        for (int row = 0; row < fat.tanimlar.lbrm.rows(); ++row)
            words << fat.tanimlar.lbrm.cell(row, 0);
        if (!words.contains(value))
            throw Failure(u"--birim-seti \"%1\": tanımlarda yok. Olanlar: %2"_s.arg(
                value, words.join(u", "_s)));
        return made(value);
    };
    return choice;
}

// Of the screen's findings some are of the cash slips alone, which may be none.
bool concernsInvoices(const Finding &finding, const Grid &l1)
{
    if (finding.rule != u"kasa kodu" && !finding.rule.startsWith(u"sayaç"_s))
        return true;
    bool gets = false;
    for (int row = 0; row < l1.rows() && !gets; ++row)
        passOver([&] { gets = l1.ticked(row) && isBelowCashLimit(l1, row); });
    return gets;
}

OpenScreen faturaScreen(Program &program, const Options &)
{
    auto screen = std::make_shared<Fat>(program);
    Fat &fat = *screen;
    QList<Choice> choices{pick(u"firma"_s, fat.tanimlar.firma, [&fat] { fat.firmasec(); }),
                          pick(u"kdv"_s, fat.kdvOrani, [&fat] { fat.kdvoranisec(); }),
                          unitWord(fat),
                          pick(u"tur"_s, fat.faturaTuru, [&fat] { fat.yenidenoku(); }),
                          pick(u"plan"_s, fat.odemePlani, [&fat] { fat.odemeplanisec(); }),
                          pick(u"ozel-kod"_s, fat.tanimlar.ozelKod),
                          pick(u"personel"_s, fat.tanimlar.personel, [&fat] { fat.yenidenoku(); })};
    choices += dateFilter(program, fat.liste, [] {}); // the read applies it
    return {
        .owner = screen,
        .list = fat.liste.l1,
        .notes = fat.bilgi,
        .report = fat.okuma,
        .xml = fat.okunurBicim,
        .open = [&fat] { fat.load(); },
        .choices = choices,
        .read = [&fat](const QString &path) { fat.dosyaac(path); },
        .write = [&fat] { fat.logoyaaktar(); },
        .writeAutomatically = [&fat] { fat.otomatikkaydet(); },
        .automaticTarget = &program.folders.xf,
        .shape = [&fat] { return shapeOf(fat); },
        .checks = [&fat] { return checksOf(fat); },
        .concerns =
            [&fat](const Finding &finding) { return concernsInvoices(finding, fat.liste.l1); },
        .listed =
            [&fat] { return listedInvoices(fat.liste.l1, fat.faturaTuru.text(), ListedRows::Sum); },
        .counters = {cashCounterFile.toString()},
        .writesCashSlips = true,
        .eInvoice = takesEInvoices(fat.liste.l1),
        .unasked = [&fat] { return fat.liste.eFaturaSorulmayan; },
        .link = &fat.link};
}

// Its kind is chosen of a list in hand, and a date alone starts the filter.
OpenScreen duzeyScreen(Program &program, const Options &)
{
    auto screen = std::make_shared<Fatduz>(program);
    Fatduz &fatduz = *screen;
    QList<Choice> choices{
        pick(u"firma"_s, fatduz.tanimlar.firma, [&fatduz] { fatduz.firmasec(); }),
        enter(u"sayfa"_s, fatduz.sayfaAdi), pick(u"ozel-kod"_s, fatduz.tanimlar.ozelKod),
        pick(u"personel"_s, fatduz.tanimlar.personel, [&fatduz] { fatduz.personelsec(); }),
        behind(pick(u"tur"_s, fatduz.faturaTuru, [&fatduz] { fatduz.yenidenoku(); }))};
    for (const Choice &date :
         dateFilter(program, fatduz.liste, [&fatduz] { fatduz.tarihdegisti(); }))
        choices << behind(date);
    return {.owner = screen,
            .list = fatduz.liste.l1,
            .notes = fatduz.bilgi,
            .report = fatduz.okuma,
            .xml = fatduz.okunurBicim,
            .open = [&fatduz] { fatduz.load(); },
            .choices = choices,
            .read = [&fatduz](const QString &path) { fatduz.dosyaac(path); },
            .write = [&fatduz] { fatduz.logoyaaktar(); },
            .shape = [&fatduz] { return shapeOf(fatduz); },
            .checks = [&fatduz] { return checksOf(fatduz); },
            .listed =
                [&fatduz] {
                    return listedInvoices(fatduz.liste.l1, fatduz.faturaTuru.text(),
                                          ListedRows::Net);
                },
            .guards = false,
            .eInvoice = takesEInvoices(fatduz.liste.l1),
            .unasked = [&fatduz] { return fatduz.liste.eFaturaSorulmayan; },
            .link = &fatduz.link};
}

// --- The cards and the count

ListedRows listedCards(const Grid &l1, DocumentFamily family, const ListShape &shape)
{
    return {.grid = &l1, .family = family, .number = shape.number};
}

OpenScreen cariScreen(Program &program, const Options &options)
{
    auto screen = std::make_shared<Cr>(program);
    Cr &cr = *screen;
    const bool updates = options.value(u"belge"_s) == u"guncelle";
    return {.owner = screen,
            .list = cr.l1,
            .notes = cr.bilgi,
            .report = cr.okuma,
            .xml = cr.okunurBicim,
            .open = [] {},
            .choices = {},
            .read = [&cr](const QString &path) { cr.dosyaac(path); },
            .write = [&cr, updates] { updates ? cr.guncellemexmlkaydet() : cr.xmlkaydet(); },
            .shape = [&cr] { return shapeOf(cr); },
            .checks = [&cr] { return checksOf(cr); },
            .listed = [&cr] { return listedCards(cr.l1, DocumentFamily::Accounts, shapeOf(cr)); },
            .ticks = false};
}

OpenScreen stokScreen(Program &program, const Options &)
{
    auto screen = std::make_shared<Stoktrf>(program);
    Stoktrf &stok = *screen;
    QList<Choice> choices{enter(u"birim-seti"_s, stok.brmseti)};
    for (std::size_t i = 0; i < stok.ozelKodlar.size(); ++i)
        choices << pick(i == 0 ? u"ozel-kod"_s : u"ozel-kod%1"_s.arg(i + 1), stok.ozelKodlar[i]);
    return {
        .owner = screen,
        .list = stok.l1,
        .notes = stok.bilgi,
        .report = stok.okuma,
        .xml = stok.okunurBicim,
        .open = [&stok] { stok.load(); },
        .choices = choices,
        .read = [&stok](const QString &path) { stok.dosyaac(path); },
        .write = [&stok] { stok.xmlkaydet(); },
        .shape = [&stok] { return shapeOf(stok); },
        .checks = [&stok] { return checksOf(stok); },
        .listed = [&stok] { return listedCards(stok.l1, DocumentFamily::Items, shapeOf(stok)); },
        .ticks = false};
}

OpenScreen meyScreen(Program &program, const Options &)
{
    auto screen = std::make_shared<St>(program);
    St &st = *screen;
    return {.owner = screen,
            .list = st.l1,
            .notes = st.bilgi,
            .report = st.okuma,
            .xml = st.okunurBicim,
            .open = [&st] { st.load(); },
            .choices = {pick(u"kdv"_s, st.kdvOrani, [&st] { st.kdvoranisec(); }),
                        pick(u"birim-seti"_s, st.birimSeti, [&st] { st.birimsetisec(); }),
                        pick(u"statu"_s, st.statu)},
            .read = [&st](const QString &path) { st.kontrol(path); },
            .write = [&st] { st.manualkaydet(); },
            .writeAutomatically = [&st] { st.otomatikkaydet(); },
            .automaticTarget = &program.folders.xs,
            .shape = [&st] { return shapeOf(st); },
            .checks = [&st] { return checksOf(st); },
            .listed = [&st] { return listedCards(st.l1, DocumentFamily::Items, shapeOf(st)); },
            .ticks = false};
}

OpenScreen sayimScreen(Program &program, const Options &)
{
    auto screen = std::make_shared<Sayimform>(program);
    Sayimform &sayim = *screen;
    return {.owner = screen,
            .list = sayim.l1,
            .notes = sayim.bilgi,
            .report = sayim.okuma,
            .xml = sayim.okunurBicim,
            .open = [&sayim] { sayim.load(); },
            .choices = {enter(u"fis-no"_s, sayim.fisno)},
            .read = [&sayim](const QString &path) { sayim.dosyaac(path); },
            .write = [&sayim] { sayim.xmlkaydet(); },
            .shape = [&sayim] { return shapeOf(sayim); },
            .checks = [&sayim] { return checksOf(sayim); },
            .ticks = false,
            .link = &sayim.link};
}

// --- The slips

// Whether a finding of the screen is of this document and not of its other one.
bool concernsSlips(const Finding &finding, bool second, const QString &counter)
{
    if (finding.rule == u"sayaç")
        return finding.text.startsWith(counter);
    return finding.control != (second ? u"kskod" : u"bankahesapno1");
}

// The button that writes the wanted document, by the word of its option: the first document of a
// screen is that of cash, the second one of the bank or of cards.
const SlipCommand &writer(const SlipForm &form, bool second)
{
    int wanted = second ? 1 : 0;
    for (const SlipCommand &command : form.commands) {
        if (std::holds_alternative<WriteDocument>(command.action) && wanted-- == 0)
            return command;
    }
    throw Failure(u"%1 ekranında böyle bir belge yok."_s.arg(form.caption));
}

OpenScreen slipScreen(Program &program, const SlipForm &form, bool second)
{
    auto screen = std::make_shared<SlipScreen>(program, form);
    SlipScreen &slips = *screen;
    const bool ofBankList = second && form.hasBankList();
    const bool ofCards = second && !form.hasBankList();
    const SlipFile &file = form.files[ofCards ? 1 : 0];
    const SlipCommand &command = writer(form, second);
    // Its numbers come from there, also where the document does not store them.
    const QString counter = (ofBankList ? bankCounterFile : cashCounterFile).toString();
    return {
        .owner = screen,
        .list = ofBankList ? slips.l2 : slips.l1,
        .notes = slips.bilgi,
        .report = slips.okuma,
        .xml = slips.okunurBicim,
        .open = [&slips] { slips.load(); },
        .choices = {enter(u"sayfa"_s, slips.sayfaAdi),
                    enter(u"banka-hesabi"_s, slips.bankaHesapKodu)},
        .read = [&slips, &file](const QString &path) { slips.dosyaac(file, path); },
        .write = [&slips, &command] { slips.run(command); },
        .shape = [&slips,
                  ofBankList] { return ofBankList ? bankListShapeOf(slips) : shapeOf(slips); },
        .checks = [&slips] { return checksOf(slips); },
        .listName = ofBankList ? u"l2"_s : u"l1"_s,
        .concerns = [second, counter](
                        const Finding &finding) { return concernsSlips(finding, second, counter); },
        .listed = [&slips,
                   family = ofBankList ? DocumentFamily::BankSlips
                            : ofCards
                                ? DocumentFamily::CardSlips
                                : DocumentFamily::CashSlips] { return listedSlips(slips, family); },
        .counters = {counter}};
}

std::function<OpenScreen(Program &program, const Options &options)> slips(const SlipForm &(*form)(),
                                                                          const QString &second)
{
    return [form, second](Program &program, const Options &options) {
        return slipScreen(program, form(),
                          !second.isEmpty() && options.value(u"belge"_s) == second);
    };
}

Option documents(const QString &words)
{
    return {u"belge"_s, words, u"yazılacak belge; verilmezse ilki"_s};
}

} // namespace

const QList<Transfer> &transfers()
{
    // The options that several of them have.
    static const Option firma{u"firma"_s, u"ADI"_s, u"Firma Seçimi; adı tanımlardaki gibi"_s};
    static const Option kdv{u"kdv"_s, u"ORAN"_s, u"Kdv Oranı: hesapları bu satırdan alınır"_s};
    static const Option tur{u"tur"_s, u"TÜR"_s,
                            u"fatura türü: 10, 20, 30, 40 (fatura ayrıca 80)"_s};
    static const Option ozelKod{u"ozel-kod"_s, u"KOD"_s, u"Fatura Özel Kodu"_s};
    static const Option personel{u"personel"_s, u"AD"_s, u"Personel"_s};
    static const Option ilkTarih{u"ilk-tarih"_s, u"GÜN"_s, u"Tarih Aralığı Belirle: İlk Tarih"_s};
    static const Option sonTarih{u"son-tarih"_s, u"GÜN"_s, u"Tarih Aralığı Belirle: Son Tarih"_s};
    static const Option sayfa{u"sayfa"_s, u"AD"_s, u"Exel Sayfa Adı; verilmezse saklanan"_s};
    static const Option birimSeti{u"birim-seti"_s, u"KOD"_s, u"birim seti"_s};
    static const Option otomatik{
        u"otomatik"_s, {}, u"belgeyi --hedef yerine Dosya konumları'ndaki adla yazar"_s};
    static const Option bankaHesabi{u"banka-hesabi"_s, u"KOD"_s,
                                    u"Banka Hesap Kodu; verilmezse saklanan"_s};
    static const QList<Transfer> all{
        {u"fatura"_s,
         u"SAP faturaları (.bif)"_s,
         u"*.bif"_s,
         {firma,
          kdv,
          {u"plan"_s, u"KOD"_s, u"Ödeme Plan Kodu"_s},
          {u"birim-seti"_s, u"BİRİM"_s, u"Birim; --otomatik ister, belgeye girmez"_s},
          tur,
          ozelKod,
          personel,
          ilkTarih,
          sonTarih,
          otomatik},
         faturaScreen},
        {u"duzey"_s,
         u"Düzey faturaları (.xlsx, .xls)"_s,
         u"*.xlsx *.xls"_s,
         {firma, sayfa, tur, ozelKod, personel, ilkTarih, sonTarih},
         duzeyScreen},
        {u"cari"_s,
         u"cari kartlar (.txt)"_s,
         u"*.txt"_s,
         {documents(u"ekle|guncelle"_s)},
         cariScreen},
        {u"stok"_s,
         u"stok kartları (.txt)"_s,
         u"*.txt"_s,
         {birimSeti,
          {u"ozel-kod"_s, u"KOD"_s, u"Özel Kod"_s},
          {u"ozel-kod2"_s, u"KOD"_s, u"Özel Kod 2"_s},
          {u"ozel-kod3"_s, u"KOD"_s, u"Özel Kod 3"_s},
          {u"ozel-kod4"_s, u"KOD"_s, u"Özel Kod 4"_s},
          {u"ozel-kod5"_s, u"KOD"_s, u"Özel Kod 5"_s}},
         stokScreen},
        {u"mey"_s,
         u"Mey stok listesi (.xls)"_s,
         u"*.xls *.xlsx"_s,
         {kdv, birimSeti, {u"statu"_s, u"AD"_s, u"Statü Seçimi"_s}, otomatik},
         meyScreen},
        {u"sayim"_s,
         u"sayım dosyası (.txt)"_s,
         u"*.txt"_s,
         {{u"fis-no"_s, u"NO"_s, u"Fisno; verilmezse SYM000001"_s}},
         sayimScreen},
        {u"nakit"_s,
         u"Cari Fiş-1: kasa tahsilatları (.xlsx, .xls)"_s,
         u"*.xlsx *.xls"_s,
         {sayfa, bankaHesabi, documents(u"kasa|banka"_s)},
         slips(cafis, u"banka"_s)},
        {u"seyahat"_s,
         u"Seyahat tahsilatları (.xlsx, .xls)"_s,
         u"*.xlsx *.xls"_s,
         {sayfa, bankaHesabi},
         slips(cafis2, {})},
        {u"pos"_s,
         u"Pos analizi (.xlsx, .xls)"_s,
         u"*.xlsx *.xls"_s,
         {sayfa, bankaHesabi, documents(u"kasa|banka"_s)},
         slips(cafis3, u"banka"_s)},
        {u"duzey-tahsilat"_s,
         u"Düzey tahsilatları: nakit ya da kredi kartı (.xlsx, .xls)"_s,
         u"*.xlsx *.xls"_s,
         {sayfa, bankaHesabi, documents(u"kasa|kart"_s)},
         slips(carifisduzey, u"kart"_s)}};
    return all;
}

const Transfer *findTransfer(const QString &command)
{
    const auto found = std::ranges::find(transfers(), command, &Transfer::command);
    return found == transfers().end() ? nullptr : &*found;
}

QList<Option> optionsOf(const Transfer &transfer)
{
    return transfer.options + lookOptions() + commonOptions();
}

QList<Option> allOptions()
{
    QList<Option> all = commonOptions() + lookOptions() + watchOptions();
    for (const Transfer &transfer : transfers())
        all += transfer.options;
    return all;
}

} // namespace kervan
