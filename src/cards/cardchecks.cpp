#include "cards/cardchecks.h"

#include "cards/cr.h"
#include "cards/st.h"
#include "cards/stoktrf.h"
#include "check/listrules.h"
#include "text/ini.h"
#include "text/numbers.h"
#include "text/spellings.h"

#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString sourceCure()
{
    return u"Kaynakta tamamlayıp yeniden okutun."_s;
}

QString doubledCure()
{
    return u"Fazla satırı kaynaktan silip yeniden okutun: Logo kodu ikinci kez almaz."_s;
}

// The rows depend on the field too, not only the screen.
void restartWith(Checks &checks, TextField &field)
{
    QObject::connect(&field, &TextField::changed, &checks, &Checks::restart);
}

// Accounts.

Rule referenceRule(const Program &program)
{
    return {.name = u"sayaç"_s,
            .cure = u"Dosyanın \"id\" satırına son verilen numarayı yazın."_s,
            .ofScreen = [path = program.path(u"cariref.kvz")] {
                const QString stored = inioku(u"id"_s, u"id"_s, path);
                return stored.isEmpty() || number(stored)
                           ? QString()
                           : u"cariref.kvz dosyasındaki %1 bir sayı değil: yeni carilere veri "
                             "referansı verilemez."_s.arg(quoted(stored));
            }};
}

// Materials.

constexpr std::size_t codeLists = std::tuple_size_v<decltype(Stoktrf::ozelKodlar)>;

QString listName(std::size_t list)
{
    return list == 0 ? u"Özel Kod"_s : u"Özel Kod %1"_s.arg(list + 1);
}

QList<Rule> codeListRules(Stoktrf &stoktrf)
{
    QList<Rule> rules;
    for (std::size_t i = 0; i < codeLists; ++i) {
        const ChoiceField &list = stoktrf.ozelKodlar[i];
        const QString name = listName(i);
        const QString control = u"c%1"_s.arg(i + 1);
        rules << emptyRule(list, u"özel kod"_s, Level::Error,
                           u"%1 seçilmedi: belgede yerine şablonun sözcüğü kalır."_s.arg(name),
                           u"Listeden bir kod seçin."_s, control);
        rules << Rule{
            .name = u"kısalan kod"_s,
            .cure = u"Tirenin arkası belgeye girmez: kodu Logo'da ve tanımında tiresiz "
                    "verin."_s,
            .control = control,
            .ofScreen = [&list, name] {
                const qsizetype hyphen = list.text().indexOf(u'-');
                const bool isCut = hyphen >= 0 && QStringView(list.text()).mid(hyphen, 2) != u"- ";
                return isCut ? u"%1 %2 belgeye %3 olarak yazılır."_s.arg(
                                   name, quoted(list.text()), quoted(list.text().left(hyphen)))
                             : QString();
            }};
        rules += letterRules(list, name, control);
    }
    return rules;
}

// A multiplier as documents have it; "0.000" of the source becomes 1 there.
QString faultOfMultiplier(const QString &cell)
{
    if (cell.isEmpty())
        return u"Birim çarpanı boş."_s;
    const auto value = documentNumber(cell);
    if (!value)
        return u"Birim çarpanı %1 belgenin okuyacağı bir sayı değil."_s.arg(quoted(cell));
    if (*value < 0)
        return u"Birim çarpanı %1 eksi."_s.arg(quoted(cell));
    return *value == 0 && cell != u"0.000" ? u"Birim çarpanı %1 sıfır."_s.arg(quoted(cell))
                                           : QString();
}

QString faultOfRate(const QString &cell)
{
    const QStringView rate = trimmedBlanks(cell);
    if (rate.isEmpty())
        return u"Kdv oranı boş."_s;
    return documentNumber(rate).value_or(-1) >= 0
               ? QString()
               : u"Kdv oranı %1 bir oran değil."_s.arg(quoted(cell));
}

// The Mey list.

constexpr std::array<QStringView, 3> headings{u"Kodu", u"Adı", u"Ticari Ünvan"};

QString faultOfHeading(const Grid &l1, int row)
{
    if (row > 0)
        return {};
    int fitting = 0;
    for (int column = 0; column < static_cast<int>(headings.size()); ++column)
        fitting += l1.cell(row, column) == headings[static_cast<std::size_t>(column)];
    return fitting > 0 ? u"Başlık satırı da kart olur: kodu %1, adı %2."_s.arg(
                             quoted(l1.cell(row, St::UrunKodu)), quoted(l1.cell(row, St::UrunAdi)))
                       : QString();
}

// The accounts that the chosen rate lacks: "alış, satış".
QString missingAccounts(const St &st)
{
    QStringList missing;
    if (!st.kdvOrani.text().isEmpty()) {
        for (const auto &[what, account] : st.hesaplar()) {
            if (account.isEmpty())
                missing << what;
        }
    }
    return missing.join(u", "_s);
}

bool lacksUnitNumber(const St &st)
{
    return !st.birimSeti.text().isEmpty() && st.birimNo().isEmpty();
}

} // namespace

ListShape shapeOf(const Cr &)
{
    return {.what = u"cari kart"_s, .number = Cr::CariKodu, .title = Cr::Unvani};
}

ListShape shapeOf(const Stoktrf &)
{
    return {.what = u"stok kartı"_s, .number = Stoktrf::MalzemeKodu};
}

// Its amounts are those of other lists: nothing of them goes into a document.
ListShape shapeOf(const St &)
{
    return {.what = u"kart"_s, .number = St::UrunKodu};
}

QList<Rule> rulesOf(Cr &cr)
{
    const Cells code{cr.l1, Cr::CariKodu, u"Cari kodu"_s};
    const Cells title{cr.l1, Cr::Unvani, u"Ünvan"_s};
    return QList<Rule>{programFolderRule(cr.program().folder),
                       targetRule(cr.program()),
                       referenceRule(cr.program()),
                       emptyRule(code, u"boş kod"_s, Level::Error, sourceCure()),
                       emptyRule(title, u"boş ünvan"_s, Level::Warning, sourceCure()),
                       doubledRule(code, u"cari kodu"_s, Level::Error, doubledCure()),
                       wordRule([&cr] { return cr.kartlar(); })} +
           letterRules(QList<Cells>{code, title});
}

QList<Rule> rulesOf(Stoktrf &stoktrf)
{
    const Grid &l1 = stoktrf.l1;
    const Cells code{l1, Stoktrf::MalzemeKodu, u"Malzeme kodu"_s};
    const Cells name{l1, Stoktrf::Aciklama, u"Açıklama"_s};
    const Cells unit{l1, Stoktrf::Birim, u"Birim"_s};
    const Rule multiplier{.name = u"birim çarpanı"_s,
                          .level = Level::Error,
                          .cure = u"Kaynakta noktalı bir sayı olarak düzeltip yeniden okutun."_s,
                          .column = Stoktrf::BirimCarpani,
                          .ofRow = [&l1](int row) {
                              return faultOfMultiplier(l1.cell(row, Stoktrf::BirimCarpani));
                          }};
    const Rule rate{.name = u"kdv oranı"_s,
                    .level = Level::Error,
                    .cure = sourceCure(),
                    .column = Stoktrf::Kdv,
                    .ofRow = [&l1](int row) {
                        return faultOfRate(l1.cell(row, Stoktrf::Kdv));
                    }};
    return QList<Rule>{programFolderRule(stoktrf.program().folder),
                       targetRule(stoktrf.program()),
                       definitionsRule([&stoktrf] { return stoktrf.ozkodOkunamadi(); }),
                       emptyRule(stoktrf.brmseti, u"birim seti"_s, Level::Error,
                                 u"Stok birim seti kodu boş."_s,
                                 u"Stok birim seti kodu ekranında ya da kutusunda verin."_s,
                                 u"brmseti"_s),
                       emptyRule(code, u"boş kod"_s, Level::Error, sourceCure()),
                       emptyRule(name, u"boş ad"_s, Level::Warning, sourceCure()),
                       emptyRule(unit, u"birim"_s, Level::Error, sourceCure()),
                       multiplier,
                       rate,
                       doubledRule(code, u"malzeme kodu"_s, Level::Error, doubledCure()),
                       wordRule([&stoktrf] { return stoktrf.kartlar(); })} +
           codeListRules(stoktrf) +
           letterRules(stoktrf.brmseti, u"Birim seti kodu"_s, u"brmseti"_s) +
           letterRules(QList<Cells>{code, name, unit});
}

QList<Rule> rulesOf(St &st, const ContentOf &contentOf)
{
    const Grid &l1 = st.l1;
    const Cells code{l1, St::UrunKodu, u"Ürün kodu"_s};
    const Cells name{l1, St::UrunAdi, u"Ürün adı"_s};
    const auto target = [&program = st.program()] {
        return fullName(program.folder, program.folders.xs);
    };
    const Rule accounts{.name = u"muhasebe kodu"_s,
                        .cure = u"Muhasebe hesap kodları ekranında tamamlayıp oranı yeniden "
                                "seçin."_s,
                        .control = u"c1"_s,
                        .ofScreen = [&st] {
                            const QString missing = missingAccounts(st);
                            return missing.isEmpty() ? QString()
                                                     : u"%%1 oranının hesap kodu eksik: %2."_s.arg(
                                                           st.kdvOrani.text(), missing);
                        }};
    const Rule unit{.name = u"birim seti"_s,
                    .level = Level::Error,
                    .cure = u"Birim setleri ekranında numarasını verip seti yeniden seçin."_s,
                    .control = u"c2"_s,
                    .ofScreen = [&st] {
                        return lacksUnitNumber(st) ? u"%1 birim setinin numarası yok."_s.arg(
                                                         quoted(st.birimSeti.text()))
                                                   : QString();
                    }};
    const Rule heading{.name = u"başlık satırı"_s,
                       .cure = u"Aktardıktan sonra bu kartı Logo'da silin."_s,
                       .column = St::UrunKodu,
                       .ofRow = [&l1](int row) {
                           return faultOfHeading(l1, row);
                       }};
    return QList<Rule>{definitionsRule([&st] { return st.tanimOkunamadi(); }),
                       folderRule(target),
                       existingFileRule(target, contentOf),
                       emptyRule(st.kdvOrani, u"kdv satırı"_s, Level::Error,
                                 u"Kdv oranı seçilmedi."_s, u"Listeden bir oran seçin."_s, u"c1"_s),
                       emptyRule(st.birimSeti, u"birim seti"_s, Level::Error,
                                 u"Birim seti seçilmedi."_s, u"Listeden bir birim seti seçin."_s,
                                 u"c2"_s),
                       accounts,
                       unit,
                       heading,
                       emptyRule(code, u"boş kod"_s, Level::Error, sourceCure()),
                       emptyRule(name, u"boş ad"_s, Level::Warning, sourceCure()),
                       doubledRule(code, u"ürün kodu"_s, Level::Error, doubledCure()),
                       wordRule([&st] { return st.kartlar(); })} +
           letterRules(QList<Cells>{code, name});
}

std::unique_ptr<Checks> checksOf(Cr &cr)
{
    return std::make_unique<Checks>(cr.l1, rulesOf(cr));
}

std::unique_ptr<Checks> checksOf(Stoktrf &stoktrf)
{
    auto checks = std::make_unique<Checks>(stoktrf.l1, rulesOf(stoktrf));
    checks->add(gapsOf(stoktrf.l1, u"Stok birim seti kodu"_s, u"brmset"_s,
                       [&stoktrf](int) -> std::optional<Need> {
                           if (!trimmedBlanks(stoktrf.brmseti.text()).isEmpty())
                               return std::nullopt;
                           return Need{};
                       }));
    checks->add(gapsOf(stoktrf.l1, u"Stok özel kodu"_s, u"stokozkod"_s,
                       [&stoktrf](int) -> std::optional<Need> {
                           if (stoktrf.ozelKodlar[0].entries().size() > 1)
                               return std::nullopt;
                           return Need{};
                       }));
    restartWith(*checks, stoktrf.brmseti);
    for (ChoiceField &list : stoktrf.ozelKodlar)
        restartWith(*checks, list);
    return checks;
}

std::unique_ptr<Checks> checksOf(St &st, const ContentOf &contentOf)
{
    auto checks = std::make_unique<Checks>(st.l1, rulesOf(st, contentOf));
    checks->add(gapsOf(st.l1, u"Muhasebe kodu"_s, u"muhkod"_s, [&st](int) -> std::optional<Need> {
        const QString missing = missingAccounts(st);
        if (missing.isEmpty())
            return std::nullopt;
        return Need{st.kdvOrani.text(), missing};
    }));
    checks->add(gapsOf(st.l1, u"Birim seti"_s, u"birimseti"_s, [&st](int) -> std::optional<Need> {
        if (!lacksUnitNumber(st))
            return std::nullopt;
        return Need{st.birimSeti.text()};
    }));
    restartWith(*checks, st.kdvOrani);
    restartWith(*checks, st.birimSeti);
    return checks;
}

} // namespace kervan
