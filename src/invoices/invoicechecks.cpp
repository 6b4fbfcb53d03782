#include "invoices/invoicechecks.h"

#include "base/codepage.h"
#include "base/failure.h"
#include "check/listrules.h"
#include "invoices/columns.h"
#include "store/staff.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype fewNames = 5;

QString staffCure(const QString &kaynak)
{
    return u"Personel Kayıtları ekranında %1 personel kodunun Logo karşılığını girin, sonra "
           "dosyayı yeniden okutun."_s.arg(kaynak);
}

// Most dates stand as lists spell them; looking for another form costs a hundred times as much.
std::optional<QDate> listedDate(const QString &cell)
{
    const auto digits = [&](qsizetype first, qsizetype count) {
        int value = 0;
        for (qsizetype i = first; i < first + count; ++i) {
            if (cell[i] < u'0' || cell[i] > u'9')
                return -1;
            value = 10 * value + cell[i].digitValue();
        }
        return value;
    };
    if (cell.size() == 10 && cell[2] == u'.' && cell[5] == u'.') {
        const QDate date(digits(6, 4), digits(3, 2), digits(0, 2));
        if (date.isValid())
            return date;
    }
    return dateOf(cell);
}

// The database, and what the screen's loading made of it.
QList<Rule> loadRules(const InvoiceScreen &screen)
{
    const InvoiceDefinitions &tanimlar = screen.tanimlar;
    return {databaseRule(screen.program.path(u"data.dbs")),
            {.name = u"tanımlar"_s,
             .level = Level::Error,
             .cure = u"Nedenini giderip bu ekranı kapatın ve yeniden açın."_s,
             .ofScreen =
                 [&tanimlar] {
                     return !tanimlar.okundu && tanimlar.okunamayan
                                ? u"Tanımlar okunamadı: %1"_s.arg(tanimlar.okunamayan->headline())
                                : QString();
                 }},
            {.name = u"özel kodlar"_s,
             .cure = u"Özel kod belgeye girmez; liste için fatozkod.dbs dosyasını yerine koyun."_s,
             .ofScreen = [&tanimlar] {
                 return tanimlar.okundu && tanimlar.okunamayan
                            ? u"Fatura özel kodları okunamadı: %1"_s.arg(
                                  tanimlar.okunamayan->headline())
                            : QString();
             }}};
}

QList<Rule> linkRules(const InvoiceScreen &screen)
{
    const ScreenLink &link = screen.link;
    const InvoiceList &liste = screen.liste;
    return {{.name = u"SQL bağlantısı"_s,
             .cure = screen.linkCure,
             .ofScreen =
                 [&link] {
                     return link.durum.text() == u"SQL Bağlantı Var"
                                ? QString()
                                : u"Logo'ya bağlantı yok: e-fatura müşterileri sorulamaz."_s;
                 }},
            {.name = u"e-fatura işareti"_s,
             .cure = u"Bağlantı kurulunca dosyayı yeniden okutun."_s,
             .ofScreen = [&liste] {
                 const int rows = std::min(liste.eFaturaSorulmayan, liste.l1.rows());
                 return rows == 0 ? QString()
                                  : u"%1 faturanın müşterisi Logo'dan sorulamadı; e-fatura "
                                    "müşterisiyse de e-fatura olmadan yazılır."_s.arg(rows);
             }}};
}

QList<Rule> firmRules(const InvoiceDefinitions &tanimlar)
{
    const auto isChosen = [&tanimlar] {
        return !tanimlar.firma.text().isEmpty() &&
               tanimlar.firmakayit.firma == tanimlar.firma.text();
    };
    QList<Rule> rules{
        {.name = u"firma"_s,
         .level = Level::Error,
         .cure = u"Firma Seçimi listesinden firmayı seçin; listede yoksa Firma Tanımlaması "
                 "ekranında girin."_s,
         .control = u"c3"_s,
         .ofScreen =
             [&tanimlar, isChosen] {
                 if (tanimlar.firma.entries().isEmpty())
                     return u"Hiç firma tanımı yok."_s;
                 if (tanimlar.firma.text().isEmpty())
                     return u"Firma seçilmedi."_s;
                 return isChosen() ? QString()
                                   : u"%1 firmasının kaydı okunamadı: belgeye %2 yazılır."_s.arg(
                                         quoted(tanimlar.firma.text()),
                                         tanimlar.firmakayit.firma.isEmpty()
                                             ? u"boş kod"_s
                                             : quoted(tanimlar.firmakayit.firma) +
                                                   u" firmasının kodları"_s);
             }},
        {.name = u"firma hesabı"_s,
         .cure = u"Firma Tanımlaması ekranında girin, sonra firmayı yeniden seçin."_s,
         .control = u"c3"_s,
         .ofScreen = [&tanimlar, isChosen] {
             QStringList missing;
             if (tanimlar.firmakayit.alkod.isEmpty())
                 missing << u"Alıcı Hesap Kodu"_s;
             if (tanimlar.firmakayit.dkod.isEmpty())
                 missing << u"Depo Kodu"_s;
             return missing.isEmpty() || !isChosen()
                        ? QString()
                        : u"%1 firmasında %2 boş."_s.arg(quoted(tanimlar.firma.text()),
                                                         missing.join(u" ve "_s));
         }}};
    const QString cure = u"Firma Tanımlaması ekranında düzeltin, sonra firmayı yeniden seçin."_s;
    rules += definitionValueRules(u"Alıcı Hesap Kodu"_s, cure,
                                  [&tanimlar] { return tanimlar.firmakayit.alkod; });
    rules += definitionValueRules(u"Depo Kodu"_s, cure,
                                  [&tanimlar] { return tanimlar.firmakayit.dkod; });
    return rules;
}

Rule personRule(const InvoiceScreen &screen)
{
    const Grid &l1 = screen.liste.l1;
    const Grid &persl = screen.tanimlar.persl;
    const auto codes = std::make_shared<std::optional<StaffCodes>>(); // of the walk in hand
    return {.name = u"personel"_s,
            .cure = staffCure(screen.kaynakAdi),
            .column = L1::LogoPersonelKodu,
            .begin = [codes] { codes->reset(); },
            .ofRow = [&l1, &persl, codes](int row) -> QString {
                if (!l1.cell(row, L1::LogoPersonelKodu).isEmpty())
                    return {};
                const QString &code = l1.cell(row, L1::SapPersonelKodu);
                if (code.isEmpty())
                    return u"Kaynakta personel kodu yok."_s;
                if (!*codes)
                    codes->emplace(persl);
                return (*codes)->perseslestir(code).isEmpty()
                           ? u"%1 personelinin Logo kodu tanımlı değil."_s.arg(quoted(code))
                           : u"%1 personelinin Logo kodu okumadan sonra tanımlandı."_s.arg(
                                 quoted(code));
            }};
}

// A template with the words of its filling.
struct Filled
{
    QList<QByteArray> words;
    Sablon sablon;
};

Filled headOf(const InvoiceTemplates &templates)
{
    return {headWords(), Sablon(templates.xl1, headWords())};
}

Filled lineOf(const InvoiceTemplates &templates)
{
    return {lineWords(), Sablon(templates.xl2, lineWords())};
}

// A value that a step behind its own changes. What it becomes is that step's value, which here may
// be another at each line.
QString changedValue(const Filled &filled, const QStringList &values)
{
    if (faultOfWords(filled.sablon, filled.words, values).isEmpty())
        return {};
    for (qsizetype value = 0; value < values.size(); ++value) {
        const QByteArray bytes = toCodePage(values[value]);
        for (qsizetype step = value + 1; step < filled.words.size(); ++step) {
            if (bytes.contains(filled.words[step]))
                return u"%1 içindeki \"%2\" şablonun sözcüğüdür, belgede başka bir değere döner."_s
                    .arg(quoted(values[value]), fromCodePage(filled.words[step]));
        }
    }
    return {};
}

// Words of the templates in what a row gives, and once for all rows in what the screen's choices
// give.
QList<Rule> wordRules(const InvoiceScreen &screen)
{
    const Filled head = headOf(screen.templates);
    const Filled line = lineOf(screen.templates);
    const Rule word{.name = u"şablon sözcüğü"_s,
                    .level = Level::Error,
                    .cure = u"Değeri kaynağında değiştirip yeniden okutun."_s};
    Rule ofRow = word;
    ofRow.ofRow = [head, line, headOf = screen.headOf](int row) {
        const InvoiceHead given = headOf(row);
        const QString fault = changedValue(head, headValues(given));
        return fault.isEmpty() ? changedValue(line, lineValues({}, given)) : fault;
    };
    Rule ofChoices = word;
    ofChoices.cure = u"Değeri tanım ekranında değiştirin."_s;
    ofChoices.ofScreen = [head, line, chosenHead = screen.chosenHead,
                          chosenGoods = screen.chosenGoods] {
        const InvoiceHead chosen = chosenHead();
        QString fault = changedValue(head, headValues(chosen));
        const QList<InvoiceGoods> lines =
            chosenGoods ? chosenGoods() : QList<InvoiceGoods>{InvoiceGoods()};
        for (const InvoiceGoods &goods : lines) {
            if (fault.isEmpty())
                fault = changedValue(line, lineValues(goods, chosen));
        }
        return fault;
    };
    return {ofRow, ofChoices};
}

} // namespace

Rule withInvoice(Rule rule, const Grid &l1)
{
    const auto named = [&l1](int row, const QString &text) {
        const QString &number = l1.cell(row, L1::FaturaNumarasi);
        return text.isEmpty() || number.isEmpty() ? text : number + u": "_s + text;
    };
    if (rule.ofRow)
        rule.ofRow = [named, look = std::move(rule.ofRow)](int row) {
            return named(row, look(row));
        };
    if (rule.ofRows)
        rule.ofRows = [named, look = std::move(rule.ofRows)] {
            QList<RowText> found = look();
            for (RowText &text : found)
                text.text = named(text.row, text.text);
            return found;
        };
    return rule;
}

QList<Rule> definitionValueRules(const QString &name, const QString &cure,
                                 const std::function<QString()> &value)
{
    return {{.name = u"XML işareti"_s,
             .level = Level::Error,
             .cure = orAsXml(cure),
             .ofScreen =
                 [name, value] {
                     return faultOfMarkup(name, value());
                 }},
            {.name = u"harf"_s, .cure = cure, .ofScreen = [name, value] {
                 return faultOfLetters(name, value());
             }}};
}

QList<Rule> sharedRules(const InvoiceScreen &screen)
{
    const Grid &l1 = screen.liste.l1;
    QList<Rule> ofRows{personRule(screen)};
    const QString sourceCure = u"Kaynağında düzeltip dosyayı yeniden okutun."_s;
    ofRows << emptyRule({l1, L1::FaturaNumarasi, u"Fatura numarası"_s}, u"fatura numarası"_s,
                        Level::Error, screen.numberless + u' ' + sourceCure)
           << emptyRule({l1, L1::CariKodu, u"Cari kodu"_s}, u"cari kodu"_s, Level::Error,
                        sourceCure);
    ofRows +=
        dateRules({l1, L1::FaturaTarihi, u"Fatura tarihi"_s}, screen.program.clock, &listedDate);
    for (const auto &[column, name] : screen.amounts)
        ofRows += amountRules({l1, column, name});
    for (const auto &[column, name] : screen.values)
        ofRows += letterRules(Cells{l1, column, name});
    ofRows += wordRules(screen);

    QList<Rule> rules = loadRules(screen) + linkRules(screen) + firmRules(screen.tanimlar);
    for (const Rule &rule : std::as_const(ofRows))
        rules << withInvoice(rule, l1);
    return rules;
}

Finding findingOf(const LineRule &rule, const QString &text, int row, const QString &number,
                  int column)
{
    return {.rule = QString::fromUtf16(rule.name),
            .level = rule.level,
            .text = number.isEmpty() ? text : number + u": "_s + text,
            .cure = QString::fromUtf16(rule.cure),
            .row = row,
            .column = column};
}

CodeFaults::CodeFaults(const QString &code, const Sablon &line)
{
    static constexpr LineRule empty{u"ürün kodu", Level::Error,
                                    u"Ürün kodunu kaynağında girip dosyayı yeniden okutun."};
    static constexpr const char16_t *change = u"Değeri kaynağında değiştirip yeniden okutun.";
    static constexpr LineRule markup{
        u"XML işareti", Level::Error,
        u"Değeri kaynağında değiştirip yeniden okutun ya da \"Logo'nun okuyacağı biçimde yaz\"ı "
        "işaretleyin."};
    static constexpr LineRule letters{u"harf", Level::Warning, change};
    static constexpr LineRule word{u"şablon sözcüğü", Level::Error, change};

    InvoiceGoods goods;
    goods.urunKodu = code;
    const auto add = [this](const LineRule &rule, const QString &fault) {
        if (!fault.isEmpty())
            faults.append({&rule, fault});
    };
    add(empty, code.isEmpty() ? u"Ürün kodu boş olan satır var."_s : QString());
    add(markup, faultOfMarkup(u"Ürün kodu"_s, code));
    add(letters, faultOfLetters(u"Ürün kodu"_s, code));
    add(word, changedValue({lineWords(), line}, lineValues(goods, {})));
}

void Gaps::clear()
{
    m_gaps.clear();
    m_places.clear();
}

void Gaps::need(const QString &kind, const QString &code, const QString &screen, int lines,
                int documents, const QString &name)
{
    const auto key = std::pair(kind, code);
    const auto known = m_places.constFind(key);
    const qsizetype place = known == m_places.cend() ? m_gaps.size() : *known;
    if (known == m_places.cend()) {
        m_places.insert(key, place);
        m_gaps << Gap{.kind = kind, .code = code, .name = name, .screen = screen};
    }
    m_gaps[place].lines += lines;
    m_gaps[place].documents += documents;
}

void needFirm(Gaps &gaps, const InvoiceDefinitions &tanimlar, int lines, int documents)
{
    const FirmaKayit &firma = tanimlar.firmakayit;
    if (firma.firma.isEmpty() || firma.firma != tanimlar.firma.text() || documents == 0)
        return;
    if (firma.alkod.isEmpty())
        gaps.need(u"Alıcı hesabı"_s, firma.firma, u"fir"_s, lines, documents,
                  u"Alıcı Hesap Kodu"_s);
    if (firma.dkod.isEmpty())
        gaps.need(u"Depo"_s, firma.firma, u"fir"_s, lines, documents, u"Depo Kodu"_s);
}

void needPerson(Gaps &gaps, const Grid &l1, int row, int lines)
{
    const QString &code = l1.cell(row, L1::SapPersonelKodu);
    if (!code.isEmpty() && l1.cell(row, L1::LogoPersonelKodu).isEmpty())
        gaps.need(u"Personel"_s, code, u"per"_s, lines, 1);
}

ListedRows listedInvoices(const Grid &l1, const QString &faturaTuru, ListedRows::Amount amountIs)
{
    return {.grid = &l1,
            .family = DocumentFamily::Invoices,
            .kind = invoiceKind(faturaTuru),
            .number = L1::FaturaNumarasi,
            .date = L1::FaturaTarihi,
            .customer = L1::CariKodu,
            .amount = L1::ToplamTutar,
            .amountIs = amountIs};
}

QString shown(const QString &code)
{
    return code.isEmpty() ? u"(boş)"_s : code;
}

QString someOf(const QStringList &names, const QString &what)
{
    if (names.size() <= fewNames)
        return names.join(u", "_s);
    return u"%1 ve %2 %3 daha"_s.arg(names.first(fewNames).join(u", "_s),
                                     QString::number(names.size() - fewNames), what);
}

} // namespace kervan
