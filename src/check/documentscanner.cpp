#include "check/documentscanner.h"

#include "base/codepage.h"

namespace kervan {

using namespace Qt::StringLiterals;
using namespace shape;
using namespace xml;

namespace {

constexpr int mostProblems = 200;
constexpr qsizetype shownValue = 80;

using Family = DocumentFamily;
using Field = DocumentRecord::Field;

// Unknown for a name that is not among them.
template<std::size_t count>
Family familyOf(const std::array<std::pair<QByteArrayView, Family>, count> &names,
                QByteArrayView name)
{
    for (const auto &[known, family] : names) {
        if (known == name)
            return family;
    }
    return Family::Unknown;
}

} // namespace

bool DocumentScanner::line(const char *at, const char *end)
{
    ++m_line;
    if (end != at && end[-1] == '\r')
        --end;
    const char *const begin = at;
    while (at != end && (*at == ' ' || *at == '\t'))
        ++at;
    if (at == end) {
        if (!m_text.isEmpty())
            m_text.append(begin, end - begin).append('\n');
        return true;
    }
    // Nearly all lines are one element with its value, or one tag.
    if (m_text.isEmpty() && *at == '<' && end - at > 2) {
        if (at[1] == '/') {
            const char *const name = at + 2;
            const char *const behind = endOfName(name, end);
            if (behind + 1 == end && *behind == '>' && !m_open.empty() &&
                same(name, behind, m_open.back().name())) {
                close();
                return !m_givenUp;
            }
        } else {
            const char *const name = at + 1;
            const char *const behind = endOfName(name, end);
            const qsizetype length = behind - name;
            if (length > 0 && behind != end && *behind == '>' && !m_open.empty()) {
                const char *const value = behind + 1;
                if (value == end)
                    return open({name, length});
                const char *const tag = end - length - 3; // "</" and ">" around the name
                if (tag >= value && tag[0] == '<' && tag[1] == '/' && end[-1] == '>' &&
                    same(tag + 2, end - 1, {name, length})) {
                    const QByteArrayView text(value, tag - value);
                    const bool holdsTag = find(value, tag, '<') != nullptr;
                    if (!holdsTag || !isBalanced(text)) {
                        m_open.back().hasChildren = true;
                        if (m_suspicious || holdsTag)
                            check({name, length}, text);
                        closeLeaf({name, length}, m_open.back().place, text);
                        return true;
                    }
                }
            }
        }
    }
    tokens(begin, end);
    if (!m_text.isEmpty())
        m_text += '\n';
    return !m_givenUp;
}

// Any other line, token by token: tags without line ends between them, values with some inside.
void DocumentScanner::tokens(const char *at, const char *end)
{
    while (at != end && !m_givenUp) {
        const char *tag = find(at, end, '<');
        const char *const textEnd = tag ? tag : end;
        const bool counts =
            !m_text.isEmpty() || std::any_of(at, textEnd, [](char c) { return !isBlank(c); });
        if (counts && !m_open.empty())
            m_text.append(at, textEnd - at);
        else if (counts)
            problem(u"Kök etiketin dışında yazı var"_s, {at, textEnd - at});
        if (!tag)
            return;
        at = tag;
        if (end - at >= 2 && at[1] == '?') {
            const char *close = find(at, end, '>');
            at = close ? close + 1 : end;
        } else if (end - at >= 4 && std::memcmp(at, "<!--", 4) == 0) {
            const qsizetype close = QByteArrayView(at, end - at).indexOf("-->");
            at = close < 0 ? end : at + close + 3;
        } else if (!endTag(at, end) && !startTag(at, end)) {
            if (m_open.empty())
                problem(u"Kök etiketin dışında \"<\" var"_s, {at, end - at});
            else
                m_text += '<';
            ++at;
        }
    }
}

bool DocumentScanner::endTag(const char *&at, const char *end)
{
    if (end - at < 3 || at[1] != '/')
        return false;
    const char *const name = at + 2;
    const char *behind = endOfName(name, end);
    const QByteArrayView text(name, behind - name);
    while (behind != end && isBlank(*behind))
        ++behind;
    if (text.isEmpty() || behind == end || *behind != '>')
        return false;
    const auto known = std::find_if(m_open.rbegin(), m_open.rend(),
                                    [&](const Element &each) { return each.name() == text; });
    if (known == m_open.rend()) {
        problem(u"</%1> etiketinin açılışı yok"_s.arg(fromCodePage(text)), {at, behind + 1 - at});
        at = behind + 1;
        return true;
    }
    for (auto between = m_open.rbegin(); between != known; ++between)
        problem(
            u"<%1> kapanmadan </%2> geldi"_s.arg(fromCodePage(between->name()), fromCodePage(text)),
            m_text);
    const auto depth = static_cast<std::size_t>(known.base() - m_open.begin());
    while (m_open.size() >= depth)
        close();
    at = behind + 1;
    return true;
}

bool DocumentScanner::startTag(const char *&at, const char *end)
{
    const char *const name = at + 1;
    const char *const behind = endOfName(name, end);
    if (behind == name || behind == end)
        return false;
    const char *close = behind;
    if (isBlank(*behind)) { // attributes
        const char *const another = find(behind, end, '<');
        close = find(behind, another ? another : end, '>');
        if (!close)
            return false;
    }
    const bool isEmpty = *close == '/' || (close != behind && close[-1] == '/');
    if (*close == '/' && (++close == end || *close != '>'))
        return false;
    if (*close != '>')
        return false;
    at = close + 1;
    if (open({name, behind - name}) && isEmpty)
        this->close();
    return true;
}

Place DocumentScanner::placeBelow(QByteArrayView name) const
{
    if (m_open.size() == 1)
        return Place::Record;
    if (m_open.size() == 3 &&
        (name == QByteArrayView("TRANSACTION") || name == QByteArrayView("GL_LINK")))
        return Place::Line;
    return Place::Other;
}

bool DocumentScanner::open(QByteArrayView name)
{
    if (m_open.size() == deepest || name.size() > longestName || m_ended) {
        problem(m_ended ? u"Kök etiket kapandıktan sonra yine etiket var"_s
                        : u"Etiketler iç içe çok derin ya da adı çok uzun"_s,
                name);
        m_givenUp = true;
        return false;
    }
    if (m_open.empty()) {
        m_reading.family = familyOf(roots, name);
        if (m_reading.family == Family::Unknown) {
            m_reading.fault =
                u"<%1> ile başlıyor, bu programın belgelerinden değil."_s.arg(fromCodePage(name));
            m_givenUp = true;
            return false;
        }
    }
    if (!m_text.isEmpty()) // text in front of a child
        check(m_open.back().name(), m_text);
    m_text.resize(0);
    Element element{{}, name.size(), placeBelow(name), false};
    std::ranges::copy(name, element.text.begin());
    if (!m_open.empty())
        m_open.back().hasChildren = true;
    if (m_open.empty())
        m_reading.root = name.toByteArray();
    else if (element.place == Place::Record)
        beginRecord(name);
    m_open.push_back(element);
    return true;
}

void DocumentScanner::close()
{
    const Element element = m_open.back();
    m_open.pop_back();
    if (!m_text.isEmpty())
        check(element.name(), m_text);
    if (!element.hasChildren)
        closeLeaf(element.name(), m_open.empty() ? Place::Other : m_open.back().place, m_text);
    m_text.resize(0);
    if (element.place == Place::Line)
        endLine();
    else if (element.place == Place::Record)
        endRecord();
    m_ended = m_open.empty();
}

void DocumentScanner::closeLeaf(QByteArrayView name, Place place, QByteArrayView value)
{
    if (place == Place::Other)
        return;
    const quint64 key = keyOf(name);
    for (const Wanted &each : m_wanted) {
        if (each.key != key || each.place != place || each.name != name)
            continue;
        if (each.part >= 0) {
            resolve(value, m_parts[static_cast<std::size_t>(each.part)]);
        } else if (each.amount) {
            m_record.sum = Decimal::ofDocument(value);
        } else if (const auto field = static_cast<Field>(each.field); !m_record.has(field)) {
            m_record.present |= 1U << field; // of several lines the first
            resolve(value, m_record.fields[field]);
        }
        return;
    }
}

void DocumentScanner::beginRecord(QByteArrayView name)
{
    const Family family = familyOf(records, name);
    if (family != m_record.family || m_wanted.empty()) {
        m_wanted = {std::ranges::lower_bound(wanted, family, {}, &Wanted::family),
                    std::ranges::upper_bound(wanted, family, {}, &Wanted::family)};
    }
    m_record.family = family;
    m_record.present = 0;
    for (QByteArray &field : m_record.fields)
        field.resize(0);
    m_record.line = m_line;
    m_record.lines = 0;
    m_record.linesLacking = 0;
    const bool counts = family == Family::Invoices || family == Family::Counts;
    m_record.net = family == Family::Invoices ? std::optional(Decimal()) : std::nullopt;
    m_record.sum = counts ? std::optional(Decimal()) : std::nullopt;
    for (QByteArray &part : m_parts)
        part.resize(0);
    m_vats.clear();
    m_extras.clear();
}

void DocumentScanner::endRecord()
{
    if (m_record.family == Family::Unknown)
        return;
    if (m_record.family == Family::Invoices) {
        const auto add = [this](const std::vector<Taxed> &taxed, qint64 whole) {
            for (const Taxed &each : taxed) {
                qint64 factor = whole; // 1 by the decimals of the rate
                for (int i = 0; i < each.rate.decimals; ++i)
                    factor *= 10;
                const int percent = whole == 0 ? 0 : 2;
                const auto part =
                    each.base.times(factor + each.rate.digits, each.rate.decimals + percent);
                if (m_record.sum && part)
                    *m_record.sum += *part;
                else
                    m_record.sum.reset();
            }
        };
        add(m_vats, 100);
        add(m_extras, 0);
        if (!m_record.net)
            m_record.sum.reset();
    }
    ++m_reading.records;
    m_take(m_record);
}

void DocumentScanner::endLine()
{
    if (m_record.family == Family::Invoices || m_record.family == Family::Counts)
        endGoodsLine();
    for (QByteArray &part : m_parts)
        part.resize(0);
}

void DocumentScanner::endGoodsLine()
{
    const bool isInvoice = m_record.family == Family::Invoices;
    if (isInvoice && m_parts[LineType] == "2") // a discount
        return;
    ++m_record.lines;
    m_record.linesLacking += m_parts[Code].isEmpty() || m_parts[Unit].isEmpty() ||
                             m_parts[Quantity].isEmpty() || (isInvoice && m_parts[Price].isEmpty());
    const Small quantity = smallNumber(m_parts[Quantity]);
    if (!isInvoice) {
        const auto amount = Decimal::ofDocument(m_parts[Quantity]);
        if (m_record.sum && amount)
            *m_record.sum += *amount;
        else
            m_record.sum.reset();
        return;
    }
    if (m_parts[LineType] != "0") // given away
        return;
    const Small price = smallNumber(m_parts[Price]);
    const auto worth =
        Decimal::product(quantity.digits, price.digits, quantity.decimals + price.decimals);
    if (!quantity.fine || !price.fine || !worth || !m_record.net)
        return m_record.net.reset();
    *m_record.net += *worth;
    const auto tax = [this](std::vector<Taxed> &taxed, const QByteArray &text, Decimal base) {
        const Small rate = smallNumber(text);
        if (!rate.fine || rate.decimals > 8)
            return m_record.sum.reset();
        const auto known = std::ranges::find(taxed, rate, &Taxed::rate);
        if (known == taxed.end())
            taxed.push_back({rate, base});
        else
            known->base += base;
    };
    tax(m_vats, m_parts[Vat], *worth);
    const auto base = Decimal::ofDocument(m_parts[ExtraBase]);
    if (!base)
        m_record.sum.reset();
    else if (!base->isZero())
        tax(m_extras, m_parts[ExtraRate], *base);
}

void DocumentScanner::check(QByteArrayView name, QByteArrayView value)
{
    const auto inValue = [&](const QString &what) {
        if (m_reading.problems.size() >= mostProblems) // none is told any more
            ++m_reading.problemCount;
        else
            problem(u"%1 değerinde %2 var"_s.arg(fromCodePage(name), what), value);
    };
    for (qsizetype at = value.indexOf('&'); at >= 0; at = value.indexOf('&', at + 1)) {
        char meant = 0;
        if (entity(value.sliced(at), meant) == 0) {
            inValue(u"\"&\""_s);
            break;
        }
    }
    if (value.contains('<'))
        inValue(u"\"<\""_s);
    const auto control = std::ranges::find_if(value, &isControl);
    if (control != value.end())
        inValue(u"denetim karakteri (kod %1)"_s.arg(int(static_cast<unsigned char>(*control))));
}

void DocumentScanner::problem(const QString &what, QByteArrayView value)
{
    ++m_reading.problemCount;
    if (m_reading.problems.size() < mostProblems)
        m_reading.problems << DocumentProblem{
            m_line, what, fromCodePage(value.first(std::min(value.size(), shownValue)))};
}

void DocumentScanner::finish()
{
    if (m_givenUp)
        return;
    if (m_reading.root.isEmpty() && m_open.empty()) {
        m_reading.fault = m_line == 0 ? emptyDocument.toString() : u"Bir Xml belgesi değil."_s;
        return;
    }
    m_reading.whole = m_ended;
    if (!m_ended)
        problem(u"Dosya yarım kalmış: </%1> yok"_s.arg(fromCodePage(m_open.back().name())), m_text);
}

} // namespace kervan
