#include "slips/slipchecks.h"

#include "base/failure.h"
#include "check/listrules.h"
#include "check/readinessrules.h"
#include "slips/columns.h"
#include "slips/slipscreen.h"
#include "slips/slipwords.h"
#include "store/sidefiles.h"
#include "text/numbers.h"
#include "text/spellings.h"

#include <QHash>

#include <cmath>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString sourceCure()
{
    return u"Kaynakta tamamlayıp yeniden okutun."_s;
}

// Dates and amounts.

std::optional<QDate> dayOfCell(const QString &cell)
{
    std::optional<QDate> day;
    passOver([&] { day = movementDay(cell); });
    return day;
}

// 20240307, as text exports have it.
std::optional<QDate> dayOfText(const QString &cell)
{
    const QDate day = QDate::fromString(cell.left(8), u"yyyyMMdd"_s);
    return day.isValid() ? std::optional(day) : std::nullopt;
}

std::optional<double> amountOf(QStringView cell)
{
    return number(cell);
}

// A year that lost its last digit is none.
std::optional<QDate> dayOfCutCell(const QString &cell)
{
    const auto day = dayOfCell(cell);
    return day && day->year() >= 1000 ? day : std::nullopt;
}

QList<Rule> movementDateRules(const Cells &cells, const SlipScreen &screen)
{
    if (screen.form().screen != u"cafis")
        return dateRules(cells, screen.program().clock, &dayOfCell);
    QList<Rule> rules = dateRules(cells, screen.program().clock, &dayOfCutCell);
    rules.first().cure = u"Bu ekran tarihin ilk dokuz karakterini alır: kaynağa 15.03.21 gibi iki "
                         "haneli yılla, metin olarak yazıp yeniden okutun."_s;
    return rules;
}

QList<Rule> slipAmountRules(const Cells &cells, const ReadAmount &read)
{
    const Rule zero{.name = u"sıfır tutar"_s,
                    .cure = u"Fişi işaretlemeyin ya da kaynağında düzeltin."_s,
                    .column = cells.column,
                    .list = cells.list,
                    .ofRow = [cells, read](int row) {
                        const bool counts = !cells.counts || cells.counts(row);
                        const auto value =
                            counts ? read(cells.grid.cell(row, cells.column)) : std::nullopt;
                        return value && *value == 0 ? u"%1 sıfır."_s.arg(cells.name) : QString();
                    }};
    return amountRules(cells, read) << zero;
}

// A mark of the source that was taken for a group mark makes the amount another.
Rule oddAmountRule(const SlipScreen &screen)
{
    return {.name = u"şüpheli tutar"_s,
            .level = Level::Error,
            .cure = u"Tutarı kaynakta sayı hücresi olarak yazıp yeniden okutun."_s,
            .column = Hareket::Tutar,
            .ofRow = [&screen](int row) {
                const auto odd = screen.supheliTutar().constFind(row);
                // One that is no number is told as such.
                if (odd == screen.supheliTutar().cend() ||
                    !number(screen.l1.cell(row, Hareket::Tutar)))
                    return QString();
                return u"Kaynakta %1 olan tutar %2 olarak okundu."_s.arg(
                    quoted(*odd), quoted(screen.l1.cell(row, Hareket::Tutar)));
            }};
}

// Staff.

QString faultOfStaff(const SlipScreen &screen, int row, const QString &lacking)
{
    const auto missing = screen.eksikPersonel().constFind(row);
    if (missing == screen.eksikPersonel().cend())
        return {};
    return missing->isEmpty()
               ? u"Personel kodu yok: %1"_s.arg(lacking)
               : u"%1 personel kodunun tanımı yok: %2"_s.arg(quoted(*missing), lacking);
}

Rule staffRule(const SlipScreen &screen, int column, Level level, const QString &lacking)
{
    return {.name = u"personel"_s,
            .level = level,
            .cure = u"Personel kayıtları ekranında tanımlayın, sonra bu ekranı kapatıp yeniden "
                    "açın ve dosyayı yeniden okutun."_s,
            .column = column,
            .ofRow = [&screen, lacking](int row) {
                return faultOfStaff(screen, row, lacking);
            }};
}

// The lists.

// Makes the cells of columns of `l1`, which count while the list is of a text export or is not.
auto columnsOf(const SlipScreen &screen, bool ofText)
{
    return [&screen, ofText](int column, const QString &name) {
        return Cells{
            .grid = screen.l1, .column = column, .name = name, .counts = [&screen, ofText](int) {
                return screen.metinden() == ofText;
            }};
    };
}

// What the workbooks of all screens have alike.
QList<Rule> sharedRules(const SlipScreen &screen, const Cells &date, const Cells &amount,
                        const Cells &code)
{
    return movementDateRules(date, screen) + slipAmountRules(amount, &amountOf)
           << emptyRule(code, u"boş cari kodu"_s, Level::Error, sourceCure())
           << oddAmountRule(screen);
}

QList<Rule> movementRules(SlipScreen &screen)
{
    const auto cells = columnsOf(screen, false);
    const Cells code = cells(Hareket::CariKodu, u"Cari kodu"_s);
    const Cells title = cells(Hareket::Unvani, u"Ünvan"_s);
    const Cells till = cells(Hareket::KasaKodu, u"Kasa kodu"_s);
    QList<Rule> rules = sharedRules(screen, cells(Hareket::Tarih, u"Tarih"_s),
                                    cells(Hareket::Tutar, u"Tutar"_s), code);
    rules << emptyRule(title, u"boş ünvan"_s, Level::Warning, sourceCure());
    if (screen.form().files.first().layout.staff)
        rules << staffRule(screen, Hareket::KasaKodu, Level::Error, u"kasa kodu boş kalır."_s);
    else
        rules << emptyRule(till, u"boş kasa kodu"_s, Level::Error, sourceCure());
    return rules + letterRules(QList<Cells>{code, title, till});
}

QList<Rule> duzeyRules(SlipScreen &screen)
{
    const auto cells = columnsOf(screen, false);
    const Cells code = cells(DuzeyHareket::CariKodu, u"Cari kodu"_s);
    const Cells text = cells(DuzeyHareket::Aciklama, u"Açıklama"_s);
    const Cells seller = cells(DuzeyHareket::SaticiKodu, u"Satıcı kodu"_s);
    QList<Rule> rules = sharedRules(screen, cells(DuzeyHareket::Tarih, u"Tarih"_s),
                                    cells(DuzeyHareket::Tutar, u"Tutar"_s), code);
    rules << staffRule(screen, DuzeyHareket::SaticiKodu, Level::Warning,
                       u"fişin satıcısı boş kalır."_s);
    return rules + letterRules(QList<Cells>{code, text, seller});
}

QList<Rule> textRules(SlipScreen &screen)
{
    const auto cells = columnsOf(screen, true);
    const Cells code = cells(MetinHareket::CariKod, u"Cari kodu"_s);
    const Cells number = cells(MetinHareket::MuhBelgeNo, u"Belge no"_s);
    Cells due = cells(MetinHareket::VadeTarihi, u"Vade tarihi"_s);
    due.counts = [&screen](int row) {
        const QString type =
            screen.metinden() ? screen.l1.cell(row, MetinHareket::IslemTipi) : QString();
        return type == u"Çek" || type == u"Senet";
    };
    const auto documents = documentsOf(screen.form(), false);
    const Rule untaken{.name = u"belgesiz satır"_s,
                       .cure = u"İşlem tipini kaynakta 20, 30, 40 ya da 50 yapıp yeniden okutun."_s,
                       .column = MetinHareket::IslemTipi,
                       .ofRow = [&screen, documents](int row) {
                           const bool isTaken =
                               std::ranges::any_of(documents, [&](const SlipDocument *document) {
                                   return takesRow(screen, *document, row);
                               });
                           return screen.metinden() && !isTaken
                                      ? u"Satırın işlem tipini hiçbir belge almaz."_s
                                      : QString();
                       }};
    const Rule unwritten{.name = u"metin listesi"_s,
                         .cure = u"Bu ekranın kendi Excel dosyasını okutun."_s,
                         .control = u"buton1"_s,
                         .ofScreen = [&screen] {
                             return screen.metinden() && !screen.l1.isEmpty()
                                        ? u"Liste bir metin dosyasından: bu ekranın düğmeleri "
                                          "onu yazmaz."_s
                                        : QString();
                         }};
    QList<Rule> rules{unwritten, untaken};
    rules +=
        dateRules(cells(MetinHareket::IslemTarihi, u"Tarih"_s), screen.program().clock, &dayOfText);
    rules << dateRules(due, screen.program().clock, &dayOfText).first(); // it may well be to come
    rules += slipAmountRules(cells(MetinHareket::Tutar, u"Tutar"_s), &documentNumber);
    rules << emptyRule(code, u"boş cari kodu"_s, Level::Error, sourceCure())
          << emptyRule(number, u"boş numara"_s, Level::Error, sourceCure())
          // Slips of different kinds are numbered apart, by the last eight letters.
          << doubledRule(number, u"numarası aynı türde"_s, Level::Error,
                         u"Numarayı kaynağında düzeltip yeniden okutun."_s, [&screen](int row) {
                             const QString no = screen.l1.cell(row, MetinHareket::MuhBelgeNo);
                             return no.isEmpty() ? no
                                                 : screen.l1.cell(row, MetinHareket::IslemTipi) +
                                                       u' ' + no.right(8);
                         });
    return rules + letterRules(QList<Cells>{code, number});
}

// Sums in single precision lose what stands behind their seventh digit.
QList<RowText> faultsOfSums(const SlipScreen &screen)
{
    struct Sum
    {
        qint64 cents = 0;
        int rows = 0; // of the bank list
        bool isKnown = true;
    };
    QHash<QString, Sum> sums;
    const auto cents = [](double amount) {
        return std::llround(amount * 100);
    };
    for (int row = 0; row < screen.l1.rows() && !screen.metinden(); ++row) {
        Sum &sum = sums[screen.l1.cell(row, Hareket::KasaKodu)];
        const auto amount = number(screen.l1.cell(row, Hareket::Tutar));
        sum.isKnown = sum.isKnown && amount;
        sum.cents += cents(amount.value_or(0));
    }
    for (int row = 0; row < screen.l2.rows(); ++row)
        ++sums[screen.l2.cell(row, BankaFisi::OzelKod)].rows;
    QList<RowText> faults;
    for (int row = 0; row < screen.l2.rows(); ++row) {
        const Sum &sum = sums[screen.l2.cell(row, BankaFisi::OzelKod)];
        const QString &shown = screen.l2.cell(row, BankaFisi::Tutar);
        const auto amount = number(shown);
        if (amount && sum.isKnown && sum.rows == 1 && cents(*amount) != sum.cents)
            faults.append({row, u"Banka fişinin tutarı %1, hareketlerinin toplamı %2."_s.arg(
                                    quoted(shown),
                                    quoted(masked(double(sum.cents) / 100, "#,##0.00"_mask)))});
    }
    return faults;
}

// What the screen needs before anything is read.

bool writesBankList(const SlipForm &form)
{
    return form.hasBankList() && !documentsOf(form, true).isEmpty();
}

// Whether what is in hand, or may be read next, goes into slips of the kind.
bool mayWrite(const SlipScreen &screen, ReadKind kind)
{
    if (screen.form().hasBankList())
        return kind == ReadKind::Card && writesBankList(screen.form());
    return screen.okunan() == ReadKind::None || screen.okunan() == kind;
}

bool lacksTill(const SlipScreen &screen)
{
    return mayWrite(screen, ReadKind::Cash) && trimmedBlanks(screen.kasaKodu.text()).isEmpty();
}

bool lacksBank(const SlipScreen &screen)
{
    return mayWrite(screen, ReadKind::Card) &&
           trimmedBlanks(screen.bankaHesapKodu.text()).isEmpty();
}

QList<Rule> readinessRules(SlipScreen &screen, SharesCounter sharesCounter)
{
    const Program &program = screen.program();
    QList<Rule> rules{
        programFolderRule(program.folder),
        targetRule(program),
        definitionsRule([&screen] { return screen.personelOkunamadi(); }),
        {.name = u"boş kasa kodu"_s,
         .level = Level::Error,
         .cure = u"Kasa kodu ekranında verin, sonra bu ekranı kapatıp yeniden açın."_s,
         .control = u"kskod"_s,
         .ofScreen =
             [&screen] {
                 return lacksTill(screen) ? u"Kasa kodu boş."_s : QString();
             }},
        {.name = u"boş banka kodu"_s,
         .level = Level::Error,
         .cure = u"Banka hesap kodu ekranında ya da kutusunda verin."_s,
         .control = u"bankahesapno1"_s,
         .ofScreen =
             [&screen] {
                 return lacksBank(screen) ? u"Banka hesap kodu boş."_s : QString();
             }},
        counterRule(cashCounterFile.toString(), [&screen] { return screen.kasaSirasi().stored(); }),
        {.name = u"ortak sayaç"_s,
         .cure = u"Ötekinin belgesini yazın, sonra bu ekranın dosyasını yeniden okutun."_s,
         .ofScreen = [shares = std::move(sharesCounter), &screen] {
             return shares && !screen.l1.isEmpty() && shares()
                        ? u"Açık olan başka bir ekran da kasa sayacıyla numara veriyor: numaralar "
                          "çakışır."_s
                        : QString();
         }}};
    if (writesBankList(screen.form()))
        rules << counterRule(bankCounterFile.toString(),
                             [&screen] { return screen.bankaSirasi().stored(); });
    rules += letterRules(screen.bankaHesapKodu, u"Banka hesap kodu"_s, u"bankahesapno1"_s);
    if (!screen.form().hasBankList())
        rules += letterRules(screen.kasaKodu, u"Kasa kodu"_s, u"kskod"_s);
    return rules;
}

} // namespace

ListShape shapeOf(const SlipScreen &screen)
{
    if (screen.metinden())
        return {.what = u"hareket"_s,
                .number = MetinHareket::MuhBelgeNo,
                .date = MetinHareket::IslemTarihi,
                .customer = MetinHareket::CariKod,
                .amounts = {MetinHareket::Tutar}};
    const bool hasBankList = screen.form().hasBankList();
    static_assert(int(Hareket::Tutar) == int(DuzeyHareket::Tutar));
    return {.what = u"hareket"_s,
            .number = hasBankList ? int(Hareket::KasaIslemNo) : int(DuzeyHareket::IslemNo),
            .date = Hareket::Tarih,
            .customer = Hareket::CariKodu,
            .title = Hareket::Unvani,
            .amounts = {Hareket::Tutar},
            .renumbered = true};
}

ListShape bankListShapeOf(const SlipScreen &)
{
    return {.what = u"banka fişi"_s,
            .number = BankaFisi::FisNo,
            .date = BankaFisi::FisTarihi,
            .amounts = {BankaFisi::Tutar},
            .renumbered = true};
}

// A text export goes into documents of other screens.
ListedRows listedSlips(const SlipScreen &screen, DocumentFamily family)
{
    const bool ofBank = family == DocumentFamily::BankSlips;
    if (screen.metinden())
        return {};
    const ListShape shape = ofBank ? bankListShapeOf(screen) : shapeOf(screen);
    return {.grid = ofBank ? &screen.l2 : &screen.l1,
            .family = family,
            .by = ListedRows::ByContent,
            .date = shape.date,
            .customer = ofBank ? int(BankaFisi::OzelKod) : shape.customer, // which AUXIL_CODE holds
            .amount = shape.amounts.first()};
}

QList<Rule> rulesOf(SlipScreen &screen, SharesCounter sharesCounter)
{
    return readinessRules(screen, std::move(sharesCounter)) +
           (screen.form().hasBankList() ? movementRules(screen) : duzeyRules(screen)) +
           textRules(screen) + wordRules(screen, screen.l1, false);
}

QList<Rule> bankListRulesOf(SlipScreen &screen)
{
    if (!writesBankList(screen.form()))
        return {};
    const auto cells = [&](int column, const QString &name) {
        return Cells{.grid = screen.l2, .column = column, .name = name, .list = u"l2"_s};
    };
    const Rule sums{.name = u"toplam"_s,
                    .level = Level::Error,
                    .cure = u"Toplam yedi basamakla tutulur: belgedeki tutarı Logo'da düzeltin ya "
                            "da kaynağı bölerek okutun."_s,
                    .column = BankaFisi::Tutar,
                    .list = u"l2"_s,
                    .ofRows = [&screen] {
                        return faultsOfSums(screen);
                    }};
    return movementDateRules(cells(BankaFisi::FisTarihi, u"Banka fişinin tarihi"_s), screen) +
           slipAmountRules(cells(BankaFisi::Tutar, u"Banka fişinin tutarı"_s), &amountOf) +
           letterRules(cells(BankaFisi::OzelKod, u"Banka fişinin özel kodu"_s)) +
           QList<Rule>{sums} + wordRules(screen, screen.l2, true);
}

std::unique_ptr<Checks> checksOf(SlipScreen &screen, SharesCounter sharesCounter)
{
    auto checks = std::make_unique<Checks>(screen.l1, rulesOf(screen, std::move(sharesCounter)));
    if (writesBankList(screen.form()))
        checks->add(surveyOf(screen.l2, bankListRulesOf(screen)));
    const auto gaps = [&](const Grid &list, const QString &kind, const QString &word,
                          const std::function<std::optional<Need>(int)> &needOf) {
        checks->add(gapsOf(list, kind, word, needOf));
    };
    gaps(screen.l1, u"Personel"_s, u"per"_s, [&screen](int row) -> std::optional<Need> {
        const QString code = screen.eksikPersonel().value(row);
        return code.isEmpty() ? std::nullopt : std::optional(Need{code});
    });
    gaps(screen.l1, u"Kasa kodu"_s, u"kskod"_s, [&screen](int) -> std::optional<Need> {
        return lacksTill(screen) ? std::optional(Need{}) : std::nullopt;
    });
    gaps(screen.form().hasBankList() ? screen.l2 : screen.l1, u"Banka hesap kodu"_s, u"bankakodu"_s,
         [&screen](int) -> std::optional<Need> {
             return lacksBank(screen) ? std::optional(Need{}) : std::nullopt;
         });
    for (TextField *field : {&screen.kasaKodu, &screen.bankaHesapKodu})
        QObject::connect(field, &TextField::changed, checks.get(), &Checks::restart);
    return checks;
}

} // namespace kervan
