#include "check/listrules.h"

#include "base/failure.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "text/spellings.h"

#include <QHash>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype othersNamed = 3;
constexpr int rowsAtOnce = 64;

// Of a value that stands in the source.
QString sourceCure()
{
    return u"Değeri kaynağında değiştirip yeniden okutun."_s;
}

bool isBlank(const QString &text)
{
    return trimmedBlanks(text).isEmpty();
}

Rule ofCells(const Cells &cells, Rule rule, std::function<QString(const QString &cell)> fault)
{
    rule.column = cells.column;
    rule.list = cells.list;
    rule.ofRow = [cells, fault = std::move(fault)](int row) {
        return !cells.counts || cells.counts(row) ? fault(cells.grid.cell(row, cells.column))
                                                  : QString();
    };
    return rule;
}

// Most rows of a list share their date.
ReadDate keptLast(ReadDate read)
{
    return [read = std::move(read), last = QString(),
            date = std::optional<QDate>()](const QString &cell) mutable {
        if (cell != last || cell.isEmpty()) {
            date = read(cell);
            last = cell;
        }
        return date;
    };
}

Rule markupRule()
{
    return {.name = u"XML işareti"_s,
            .level = Level::Error,
            .cure = orAsXml(u"Değeri kaynağında değiştirin."_s)};
}

Rule letterRule()
{
    return {.name = u"harf"_s, .level = Level::Warning, .cure = sourceCure()};
}

// "3. ve 7. satırlarda" of rows from 0, without the row itself.
QString otherRows(const QList<int> &rows, int row)
{
    QStringList named;
    for (qsizetype i = 0; i < rows.size() && named.size() < othersNamed; ++i) {
        if (rows[i] != row)
            named << QString::number(rows[i] + 1) + u'.';
    }
    const auto more = rows.size() - 1 - named.size();
    if (more > 0)
        return u"%1 ve %2 satırda daha"_s.arg(named.join(u", "_s)).arg(more);
    if (named.size() == 1)
        return named.first() + u" satırda"_s;
    const QString last = named.takeLast();
    return u"%1 ve %2 satırlarda"_s.arg(named.join(u", "_s), last);
}

// Walks a list in steps; the rules are asked as for the first list.
class ListSurvey : public Survey
{
public:
    ListSurvey(const Grid &list, QList<Rule> rules)
        : m_list(list)
        , m_rules(std::move(rules))
    {
    }
    void begin() override
    {
        m_row = 0;
        m_rule = 0;
        m_findings.clear();
    }
    bool step() override
    {
        for (int i = 0; i < rowsAtOnce && m_row < m_list.rows(); ++i, ++m_row) {
            for (const Rule &rule : std::as_const(m_rules)) {
                if (rule.ofRow)
                    take(rule, m_row, rule.ofRow(m_row));
            }
        }
        if (m_row < m_list.rows())
            return true;
        if (m_rule == m_rules.size())
            return false;
        const Rule &rule = m_rules[m_rule++];
        if (rule.ofRows) {
            for (const RowText &found : rule.ofRows())
                take(rule, found.row, found.text);
        }
        return true;
    }
    void tell(QList<Finding> &findings, QList<Gap> &) const override { findings += m_findings; }

private:
    void take(const Rule &rule, int row, const QString &text)
    {
        if (!text.isEmpty())
            m_findings << findingOf(rule, row, text);
    }

    const Grid &m_list;
    QList<Rule> m_rules;
    int m_row = 0;
    qsizetype m_rule = 0;
    QList<Finding> m_findings;
};

class GapSurvey : public Survey
{
public:
    GapSurvey(const Grid &list, QString kind, QString screen,
              std::function<std::optional<Need>(int row)> needOf)
        : m_list(list)
        , m_kind(std::move(kind))
        , m_screen(std::move(screen))
        , m_needOf(std::move(needOf))
    {
    }
    void begin() override
    {
        m_row = 0;
        m_gaps.clear();
        m_places.clear();
    }
    bool step() override
    {
        for (int i = 0; i < rowsAtOnce && m_row < m_list.rows(); ++i, ++m_row) {
            if (const auto need = m_needOf(m_row))
                take(*need);
        }
        return m_row < m_list.rows();
    }
    void tell(QList<Finding> &, QList<Gap> &gaps) const override { gaps += m_gaps; }

private:
    void take(const Need &need)
    {
        const auto known = m_places.constFind(need.code);
        const qsizetype place = known == m_places.cend() ? m_gaps.size() : *known;
        if (known == m_places.cend()) {
            m_places.insert(need.code, place);
            m_gaps << Gap{.kind = m_kind, .code = need.code, .name = need.name, .screen = m_screen};
        }
        ++m_gaps[place].lines;
        ++m_gaps[place].documents;
    }

    const Grid &m_list;
    QString m_kind, m_screen;
    std::function<std::optional<Need>(int row)> m_needOf;
    int m_row = 0;
    QList<Gap> m_gaps;
    QHash<QString, qsizetype> m_places; // in m_gaps, by code
};

} // namespace

QList<Rule> letterRules(const Cells &cells)
{
    return {ofCells(cells, markupRule(),
                    [name = cells.name, broken = cells.broken](const QString &cell) {
                        return faultOfMarkup(name, cell, broken);
                    }),
            ofCells(cells, letterRule(), [name = cells.name](const QString &cell) {
                return faultOfLetters(name, cell);
            })};
}

QList<Rule> letterRules(const QList<Cells> &columns)
{
    QList<Rule> rules;
    for (const Cells &cells : columns)
        rules += letterRules(cells);
    return rules;
}

QList<Rule> letterRules(const TextField &field, const QString &name, const QString &control)
{
    Rule markup = markupRule();
    Rule letters = letterRule();
    letters.cure = u"Değeri kendi ekranında düzeltin."_s;
    markup.cure = orAsXml(letters.cure);
    markup.control = letters.control = control;
    markup.ofScreen = [&field, name] {
        return faultOfMarkup(name, field.text());
    };
    letters.ofScreen = [&field, name] {
        return faultOfLetters(name, field.text());
    };
    return {markup, letters};
}

Rule wordRule(const Sablon &record, const QList<QByteArray> &placeholders,
              std::function<QStringList(int row)> valuesOf)
{
    return {.name = u"şablon sözcüğü"_s,
            .level = Level::Error,
            .cure = sourceCure(),
            .ofRow = [record, placeholders, valuesOf = std::move(valuesOf)](int row) {
                QString fault;
                passOver([&] {
                    const QStringList values = valuesOf(row);
                    if (!values.isEmpty())
                        fault = faultOfWords(record, placeholders, values);
                });
                return fault;
            }};
}

Rule wordRule(std::function<Filling()> makeFilling)
{
    std::optional<Filling> filling;
    return {.name = u"şablon sözcüğü"_s,
            .level = Level::Error,
            .cure = sourceCure(),
            .ofRow = [filling, makeFilling = std::move(makeFilling)](int row) mutable {
                QString fault;
                passOver([&] {
                    if (row == 0 || !filling)
                        filling = makeFilling();
                    fault =
                        faultOfWords(filling->record, filling->placeholders, filling->values(row));
                });
                return fault;
            }};
}

Rule emptyRule(const Cells &cells, const QString &rule, Level level, const QString &cure)
{
    return ofCells(cells, {.name = rule, .level = level, .cure = cure},
                   [name = cells.name](const QString &cell) {
                       return isBlank(cell) ? u"%1 boş."_s.arg(name) : QString();
                   });
}

Rule emptyRule(const TextField &field, const QString &rule, Level level, const QString &text,
               const QString &cure, const QString &control)
{
    return {
        .name = rule, .level = level, .cure = cure, .control = control, .ofScreen = [&field, text] {
            return isBlank(field.text()) ? text : QString();
        }};
}

Rule doubledRule(const Cells &cells, const QString &what, Level level, const QString &cure,
                 const std::function<QString(int row)> &valueOf)
{
    return {.name = u"çift numara"_s,
            .level = level,
            .cure = cure,
            .column = cells.column,
            .list = cells.list,
            .ofRows = [cells, what, valueOf] {
                QHash<QString, int> firstOf;
                QHash<QString, QList<int>> rowsOf; // of the doubled ones, which are few
                firstOf.reserve(cells.grid.rows());
                for (int row = 0; row < cells.grid.rows(); ++row) {
                    if (cells.counts && !cells.counts(row))
                        continue;
                    const QString value =
                        (valueOf ? valueOf(row) : cells.grid.cell(row, cells.column)).trimmed();
                    if (value.isEmpty())
                        continue;
                    const auto known = firstOf.constFind(value);
                    if (known == firstOf.cend()) {
                        firstOf.insert(value, row);
                        continue;
                    }
                    QList<int> &rows = rowsOf[value];
                    if (rows.isEmpty())
                        rows << *known;
                    rows << row;
                }
                QList<RowText> found;
                for (auto it = rowsOf.cbegin(); it != rowsOf.cend(); ++it) {
                    for (const int row : *it)
                        found.append({row, u"%1 %2 %3 da var."_s.arg(quoted(it.key()), what,
                                                                     otherRows(*it, row))});
                }
                return found;
            }};
}

std::optional<QDate> dateOf(const QString &cell)
{
    std::optional<QDate> date;
    passOver([&] { date = toDate(cell); });
    return date;
}

QList<Rule> dateRules(const Cells &cells, const Clock &clock, const ReadDate &read)
{
    const ReadDate kept = keptLast(read);
    const Rule unreadable = ofCells(
        cells,
        {.name = u"tarih okunamıyor"_s,
         .level = Level::Error,
         .cure = u"Kaynaktaki tarihi gün.ay.yıl olarak düzeltip yeniden okutun."_s},
        [name = cells.name, read = kept](const QString &cell) {
            if (isBlank(cell))
                return u"%1 boş."_s.arg(name);
            return read(cell) ? QString() : u"%1 %2 bir tarih değil."_s.arg(name, quoted(cell));
        });
    const Rule strange = ofCells(
        cells,
        {.name = u"tarih"_s, .cure = u"Tarih doğru değilse kaynağında düzeltip yeniden okutun."_s},
        [name = cells.name, read = kept, &clock](const QString &cell) {
            const auto date = read(cell);
            const QDate today = clock.now().date();
            if (date && *date > today)
                return u"%1 %2 gelecekte."_s.arg(name, quoted(cell));
            if (date && *date < today.addDays(-daysBack))
                return u"%1 %2 son %3 günün dışında."_s.arg(name, quoted(cell)).arg(daysBack);
            return QString();
        });
    return {unreadable, strange};
}

std::optional<double> documentNumber(QStringView text)
{
    const bool isPlain = std::ranges::all_of(
        text, [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.' || c == u'-'; });
    bool isNumber = false;
    const double value = isPlain ? text.toDouble(&isNumber) : 0;
    return isNumber ? std::optional(value) : std::nullopt;
}

bool isOddlyGrouped(QStringView number, QChar groupMark, QChar decimalMark)
{
    const QStringView text = number.trimmed();
    const qsizetype decimals = text.indexOf(decimalMark);
    if (decimals >= 0 && text.sliced(decimals).contains(groupMark))
        return true;
    const auto groups = text.first(decimals < 0 ? text.size() : decimals).split(groupMark);
    const auto isWrong = [](QStringView group) {
        return group.size() != 3;
    };
    return groups.size() > 1 && (groups.first().size() > 4 || // with its sign
                                 std::any_of(groups.cbegin() + 1, groups.cend(), isWrong));
}

QList<Rule> amountRules(const Cells &cells, const ReadAmount &read)
{
    const Rule unreadable = ofCells(
        cells,
        {.name = u"tutar okunamıyor"_s,
         .level = Level::Error,
         .cure = u"Kaynakta sayı olarak düzeltip yeniden okutun."_s},
        [name = cells.name, read](const QString &cell) {
            if (isBlank(cell))
                return u"%1 boş."_s.arg(name);
            return read(cell) ? QString() : u"%1 %2 bir sayı değil."_s.arg(name, quoted(cell));
        });
    const Rule negative = ofCells(
        cells,
        {.name = u"eksi tutar"_s, .cure = u"İade ya da düzeltme değilse kaynağında düzeltin."_s},
        [name = cells.name, read](const QString &cell) {
            return read(cell).value_or(0) < 0 ? u"%1 %2 eksi."_s.arg(name, quoted(cell))
                                              : QString();
        });
    return {unreadable, negative};
}

QList<Rule> amountRules(const Cells &cells)
{
    return amountRules(cells, [](QStringView cell) { return number(cell); });
}

std::unique_ptr<Survey> surveyOf(const Grid &list, QList<Rule> rules)
{
    return std::make_unique<ListSurvey>(list, std::move(rules));
}

std::unique_ptr<Survey> gapsOf(const Grid &list, const QString &kind, const QString &screen,
                               std::function<std::optional<Need>(int row)> needOf)
{
    return std::make_unique<GapSurvey>(list, kind, screen, std::move(needOf));
}

} // namespace kervan
