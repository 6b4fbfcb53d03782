#include "check/documentreader.h"

#include "base/codepage.h"
#include "base/filefault.h"
#include "base/filegate.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <span>
#include <vector>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype pieceSize = 1'048'576;
constexpr qsizetype longestLine = 64 * pieceSize;
constexpr int mostProblems = 200;
constexpr std::size_t deepest = 64;
constexpr qsizetype longestName = 40;
constexpr qsizetype shownValue = 80;

// Where an element stands: only records and their lines have any that are looked at.
enum class Place : quint8 { Other, Record, Line };

// What an element of a line is worth.
enum Part { Code, Unit, Quantity, Price, Vat, ExtraRate, ExtraBase, LineType, Parts };

// Tells names apart at one look: their first letters and their length.
constexpr quint64 keyOf(QByteArrayView name)
{
    auto key = static_cast<quint64>(name.size());
    for (qsizetype i = 0; i < std::min<qsizetype>(name.size(), 7); ++i)
        key = key << 8U | static_cast<unsigned char>(name[i]);
    return key;
}

struct Wanted
{
    DocumentFamily family;
    Place place;
    QByteArrayView name;
    int field = -1; // of the record
    int part = -1;  // of a line
    bool amount = false;
    quint64 key = keyOf(name);
};

using Field = DocumentRecord::Field;
using Family = DocumentFamily;

constexpr auto wanted = std::to_array<Wanted>({
    {Family::Invoices, Place::Line, "TYPE", -1, LineType},
    {Family::Invoices, Place::Line, "MASTER_CODE", -1, Code},
    {Family::Invoices, Place::Line, "QUANTITY", -1, Quantity},
    {Family::Invoices, Place::Line, "PRICE", -1, Price},
    {Family::Invoices, Place::Line, "UNIT_CODE", -1, Unit},
    {Family::Invoices, Place::Line, "VAT_RATE", -1, Vat},
    {Family::Invoices, Place::Line, "ADD_TAX_RATE", -1, ExtraRate},
    {Family::Invoices, Place::Line, "ADD_TAX_VAT_MATRAH", -1, ExtraBase},
    {Family::Invoices, Place::Record, "TYPE", Field::Kind},
    {Family::Invoices, Place::Record, "NUMBER", Field::Number},
    {Family::Invoices, Place::Record, "DATE", Field::Date},
    {Family::Invoices, Place::Record, "ARP_CODE", Field::Customer},
    {Family::Invoices, Place::Record, "GL_CODE", Field::Account},
    {Family::Invoices, Place::Record, "PAYMENT_CODE", Field::Plan},

    {Family::CashSlips, Place::Record, "TYPE", Field::Kind},
    {Family::CashSlips, Place::Record, "NUMBER", Field::Number},
    {Family::CashSlips, Place::Record, "DATE", Field::Date},
    {Family::CashSlips, Place::Record, "SD_CODE", Field::Account},
    {Family::CashSlips, Place::Record, "MASTER_TITLE", Field::Title},
    {Family::CashSlips, Place::Record, "AMOUNT", -1, -1, true},
    {Family::CashSlips, Place::Line, "ARP_CODE", Field::Customer},

    {Family::Rolls, Place::Record, "TYPE", Field::Kind},
    {Family::Rolls, Place::Record, "NUMBER", Field::Number},
    {Family::Rolls, Place::Record, "DATE", Field::Date},
    {Family::Rolls, Place::Record, "MASTER_CODE", Field::Customer},
    {Family::Rolls, Place::Record, "TOTAL", -1, -1, true},
    {Family::Rolls, Place::Line, "OWING", Field::Title},
    {Family::Rolls, Place::Line, "DUE_DATE", Field::Plan},

    {Family::BankSlips, Place::Record, "TYPE", Field::Kind},
    {Family::BankSlips, Place::Record, "NUMBER", Field::Number},
    {Family::BankSlips, Place::Record, "DATE", Field::Date},
    {Family::BankSlips, Place::Record, "AUXIL_CODE", Field::Customer},
    {Family::BankSlips, Place::Record, "NOTES1", Field::Title},
    {Family::BankSlips, Place::Record, "TOTAL_DEBIT", -1, -1, true},
    {Family::BankSlips, Place::Line, "BANKACC_CODE", Field::Account},

    {Family::CardSlips, Place::Record, "TYPE", Field::Kind},
    {Family::CardSlips, Place::Record, "NUMBER", Field::Number},
    {Family::CardSlips, Place::Record, "DATE", Field::Date},
    {Family::CardSlips, Place::Record, "ARP_CODE", Field::Customer},
    {Family::CardSlips, Place::Record, "NOTES1", Field::Title},
    {Family::CardSlips, Place::Record, "BANKACC_CODE", Field::Account},
    {Family::CardSlips, Place::Record, "TOTAL_CREDIT", -1, -1, true},

    {Family::Accounts, Place::Record, "ACCOUNT_TYPE", Field::Kind},
    {Family::Accounts, Place::Record, "CODE", Field::Number},
    {Family::Accounts, Place::Record, "TITLE", Field::Title},

    {Family::Items, Place::Record, "CARD_TYPE", Field::Kind},
    {Family::Items, Place::Record, "CODE", Field::Number},
    {Family::Items, Place::Record, "NAME", Field::Title},
    {Family::Items, Place::Record, "UNITSET_CODE", Field::Plan},
    {Family::Items, Place::Line, "GLACC_CODE", Field::Account},

    {Family::Counts, Place::Record, "TYPE", Field::Kind},
    {Family::Counts, Place::Record, "NUMBER", Field::Number},
    {Family::Counts, Place::Record, "DATE", Field::Date},
    {Family::Counts, Place::Line, "ITEM_CODE", -1, Code},
    {Family::Counts, Place::Line, "QUANTITY", -1, Quantity},
    {Family::Counts, Place::Line, "UNIT_CODE", -1, Unit},
});

constexpr auto records = std::to_array<std::pair<QByteArrayView, Family>>({
    {"INVOICE", Family::Invoices},
    {"SD_TRANSACTION", Family::CashSlips},
    {"CHQPN_ROLL", Family::Rolls},
    {"BANK_VOUCHER", Family::BankSlips},
    {"ARP_VOUCHER", Family::CardSlips},
    {"AR_AP", Family::Accounts},
    {"ITEM", Family::Items},
    {"SLIP", Family::Counts},
});

constexpr auto roots = std::to_array<std::pair<QByteArrayView, Family>>({
    {"SALES_INVOICES", Family::Invoices},
    {"PURCHASE_INVOICES", Family::Invoices},
    {"SD_TRANSACTIONS", Family::CashSlips},
    {"CQPN_ROLLS", Family::Rolls},
    {"BANK_VOUCHERS", Family::BankSlips},
    {"ARP_VOUCHERS", Family::CardSlips},
    {"AR_APS", Family::Accounts},
    {"ITEMS", Family::Items},
    {"MATERIAL_SLIPS", Family::Counts},
});

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Logo's tags are in capitals, which tells them from values.
constexpr auto ofNames = [] {
    std::array<bool, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c)
        table[c] = (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    return table;
}();

bool isOfName(char c)
{
    return ofNames[static_cast<unsigned char>(c)];
}

const char *endOfName(const char *at, const char *end)
{
    if (at == end || *at < 'A' || *at > 'Z')
        return at;
    while (at != end && isOfName(*at))
        ++at;
    return at;
}

const char *find(const char *from, const char *end, char c)
{
    return static_cast<const char *>(
        std::memchr(from, c, static_cast<std::size_t>(std::max<qptrdiff>(end - from, 0))));
}

bool same(const char *at, const char *end, QByteArrayView name)
{
    return end - at == name.size() &&
           std::memcmp(at, name.data(), static_cast<std::size_t>(name.size())) == 0;
}

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 && !isBlank(c);
}

// A "&" that XML takes, with the character that it stands for: its length, 0 for any other.
qsizetype entity(QByteArrayView text, char &meant)
{
    struct Known
    {
        QByteArrayView word;
        char meant;
    };
    static constexpr std::array<Known, 5> known{
        {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};
    for (const Known &each : known) {
        if (text.startsWith(each.word)) {
            meant = each.meant;
            return each.word.size();
        }
    }
    if (!text.startsWith("&#"))
        return 0;
    const bool hex = text.size() > 2 && text[2] == 'x';
    const qsizetype from = hex ? 3 : 2;
    const qsizetype end = text.first(std::min<qsizetype>(text.size(), 12)).indexOf(';');
    bool fine = false;
    const uint code = end > from ? text.sliced(from, end - from).toUInt(&fine, hex ? 16 : 10) : 0;
    if (!fine || code == 0 || code > 0x10FFFF)
        return 0;
    meant = code > 0xFFFF ? '?' : toCodePage(QString(QChar(static_cast<char16_t>(code))))[0];
    return end + 1;
}

void resolve(QByteArrayView text, QByteArray &out)
{
    out.resize(0);
    while (true) {
        const qsizetype at = text.indexOf('&');
        if (at < 0)
            break;
        out += text.first(at);
        char meant = '&';
        const qsizetype length = entity(text.sliced(at), meant);
        out += meant;
        text = text.sliced(at + std::max<qsizetype>(length, 1));
    }
    out += text;
}

// A number of a document in so small a form that sums of products stay fast: digits of 10 to the
// minus `decimals`.
struct Small
{
    qint64 digits = 0;
    int decimals = 0;
    bool fine = false;
};

Small small(QByteArrayView text)
{
    text = text.trimmed();
    Small result;
    const bool negative = text.startsWith('-');
    if (negative)
        text = text.sliced(1);
    int count = 0;
    int behind = -1;
    for (const char c : text) {
        if (c == '.' && behind < 0) {
            behind = 0;
            continue;
        }
        if (c < '0' || c > '9' || ++count > 18)
            return {};
        result.digits = result.digits * 10 + (c - '0');
        behind += behind >= 0;
    }
    for (; behind > 0 && result.digits % 10 == 0; --behind)
        result.digits /= 10;
    result.decimals = std::max(behind, 0);
    result.digits = negative ? -result.digits : result.digits;
    result.fine = count > 0;
    return result;
}

// Whether the tags in a value open and close each other, so that an XML reader takes them as such.
bool isBalanced(QByteArrayView value)
{
    std::vector<QByteArrayView> open;
    const char *const end = value.data() + value.size();
    for (const char *at = find(value.data(), end, '<'); at; at = find(at, end, '<')) {
        const bool closes = end - at > 1 && at[1] == '/';
        const char *const name = at + (closes ? 2 : 1);
        at = endOfName(name, end);
        if (at == name || at == end || *at != '>')
            return false;
        const QByteArrayView text(name, at - name);
        if (!closes)
            open.push_back(text);
        else if (open.empty() || open.back() != text)
            return false;
        else
            open.pop_back();
    }
    return open.empty();
}

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

bool operator==(const Small &a, const Small &b)
{
    return a.digits == b.digits && a.decimals == b.decimals;
}

class Scanner
{
public:
    Scanner(const TakeRecord &take, DocumentReading &reading)
        : m_take(take)
        , m_reading(reading)
    {
        m_open.reserve(deepest);
    }

    /// The next line, without its line feed. False once there is no sense in going on.
    bool line(const char *at, const char *end);
    /// Whether the lines that follow may hold what check() looks for.
    void setSuspicious(bool suspicious) { m_suspicious = suspicious; }
    void finish();

private:
    struct Element
    {
        std::array<char, longestName> text;
        qsizetype length;
        Place place;
        bool hasChildren;

        QByteArrayView name() const { return {text.data(), length}; }
    };

    bool open(QByteArrayView name);
    void close();
    void closeLeaf(QByteArrayView name, Place place, QByteArrayView value);
    void tokens(const char *at, const char *end);
    bool endTag(const char *&at, const char *end);
    bool startTag(const char *&at, const char *end);
    void check(QByteArrayView name, QByteArrayView value);
    void problem(const QString &what, QByteArrayView value);
    void beginRecord(QByteArrayView name);
    void endRecord();
    void endLine();
    void endGoodsLine();
    Place placeBelow(QByteArrayView name) const;

    const TakeRecord &m_take;
    DocumentReading &m_reading;
    std::vector<Element> m_open;
    QByteArray m_text; // of the element in hand, where it does not stand on one line
    qint64 m_line = 0;
    bool m_ended = false; // the root was closed
    bool m_givenUp = false;
    bool m_suspicious = true;

    DocumentRecord m_record;
    std::span<const Wanted> m_wanted; // of the record's family
    std::array<QByteArray, Parts> m_parts;
    struct Taxed
    {
        Small rate;
        Decimal base;
    };
    std::vector<Taxed> m_vats, m_extras; // what the lines of an invoice come to by each rate
};

bool Scanner::line(const char *at, const char *end)
{
    ++m_line;
    if (end != at && end[-1] == '\r')
        --end;
    const char *const begin = at;
    while (at != end && (*at == ' ' || *at == '\t'))
        ++at;
    if (at == end) {
        if (!m_text.isEmpty())
            m_text += '\n';
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
void Scanner::tokens(const char *at, const char *end)
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

bool Scanner::endTag(const char *&at, const char *end)
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

bool Scanner::startTag(const char *&at, const char *end)
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

Place Scanner::placeBelow(QByteArrayView name) const
{
    if (m_open.size() == 1)
        return Place::Record;
    if (m_open.size() == 3 &&
        (name == QByteArrayView("TRANSACTION") || name == QByteArrayView("GL_LINK")))
        return Place::Line;
    return Place::Other;
}

bool Scanner::open(QByteArrayView name)
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

void Scanner::close()
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

void Scanner::closeLeaf(QByteArrayView name, Place place, QByteArrayView value)
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

void Scanner::beginRecord(QByteArrayView name)
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

void Scanner::endRecord()
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

void Scanner::endLine()
{
    if (m_record.family == Family::Invoices || m_record.family == Family::Counts)
        endGoodsLine();
    for (QByteArray &part : m_parts)
        part.resize(0);
}

void Scanner::endGoodsLine()
{
    const bool isInvoice = m_record.family == Family::Invoices;
    if (isInvoice && m_parts[LineType] == "2") // a discount
        return;
    ++m_record.lines;
    m_record.linesLacking += m_parts[Code].isEmpty() || m_parts[Unit].isEmpty() ||
                             m_parts[Quantity].isEmpty() || (isInvoice && m_parts[Price].isEmpty());
    const Small quantity = small(m_parts[Quantity]);
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
    const Small price = small(m_parts[Price]);
    const auto worth =
        Decimal::product(quantity.digits, price.digits, quantity.decimals + price.decimals);
    if (!quantity.fine || !price.fine || !worth || !m_record.net)
        return m_record.net.reset();
    *m_record.net += *worth;
    const auto tax = [this](std::vector<Taxed> &taxed, const QByteArray &text, Decimal base) {
        const Small rate = small(text);
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

void Scanner::check(QByteArrayView name, QByteArrayView value)
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

void Scanner::problem(const QString &what, QByteArrayView value)
{
    ++m_reading.problemCount;
    if (m_reading.problems.size() < mostProblems)
        m_reading.problems << DocumentProblem{
            m_line, what, fromCodePage(value.first(std::min(value.size(), shownValue)))};
}

void Scanner::finish()
{
    if (m_givenUp)
        return;
    if (m_reading.root.isEmpty() && m_open.empty()) {
        m_reading.fault = m_line == 0 ? u"Dosya boş."_s : u"Bir Xml belgesi değil."_s;
        return;
    }
    m_reading.whole = m_ended;
    if (!m_ended)
        problem(u"Dosya yarım kalmış: </%1> yok"_s.arg(fromCodePage(m_open.back().name())), m_text);
}

// Whether there is a "&" or a control character at all, which whole pieces seldom hold. Simple
// enough to be done for many bytes at once.
bool isSuspicious(const char *at, const char *end)
{
    unsigned found = 0;
    for (; at != end; ++at) {
        const auto c = static_cast<unsigned char>(*at);
        const bool control = (c < 0x20) & (c != '\n') & (c != '\r') & (c != '\t');
        found |= static_cast<unsigned>(control | (c == '&'));
    }
    return found != 0;
}

// Feeds whole lines of the bytes; gives how many were taken, or -1 once there is no sense in more.
qsizetype feed(Scanner &scanner, const char *begin, const char *end)
{
    const char *at = begin;
    while (const char *feedAt = find(at, end, '\n')) {
        if (!scanner.line(at, feedAt))
            return -1;
        at = feedAt + 1;
    }
    return at - begin;
}

void feedLast(Scanner &scanner, const char *begin, const char *end)
{
    if (begin == end || scanner.line(begin, end))
        scanner.finish();
}

// The pieces of a file, which is open for none longer than it takes to read it.
class Pieces
{
public:
    explicit Pieces(QString path)
        : m_path(std::move(path))
    {
    }
    const QString &fault() const { return m_fault; }

    /// As many bytes as were read; 0 at the end, and -1 where there is a fault.
    qint64 read(char *buffer)
    {
        const std::lock_guard gate(fileGate());
        QFile file(m_path);
        clearFault();
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return fail(filefault(file, lastFault()));
        const auto state = std::pair(file.size(), file.fileTime(QFile::FileModificationTime));
        if (m_place == 0)
            m_state = state;
        else if (state != m_state)
            return fail(u"Okunurken değişti."_s);
        const qint64 count = file.seek(m_place) ? file.read(buffer, pieceSize) : -1;
        if (count < 0)
            return fail(filefault(file, lastFault()));
        m_place += count;
        return count;
    }

private:
    qint64 fail(const QString &why)
    {
        m_fault = why;
        return -1;
    }

    QString m_path;
    QString m_fault;
    qint64 m_place = 0;
    std::pair<qint64, QDateTime> m_state; // size and time
};

} // namespace

bool isSameAmount(DocumentFamily family, Decimal listed, Decimal written, qint64 lines)
{
    if (family != DocumentFamily::Invoices)
        return listed == written;
    const Decimal difference = listed < written ? written - listed : listed - written;
    const auto part = (written.isNegative() ? -written : written).times(2, 6);
    const auto perLine = Decimal::product(5, lines, 3); // each is spelled by a price of its own
    return difference <=
           part.value_or(Decimal()) + *Decimal::product(1, 1, 2) + perLine.value_or(Decimal());
}

// Pieces are read and not mapped: a file that shrinks or a share that goes away would end the
// program at the next look at a mapped byte.
DocumentReading readDocument(const QString &path, const TakeRecord &take,
                             const std::atomic_bool *stop)
{
    DocumentReading reading;
    Pieces pieces(path);
    Scanner scanner(take, reading);
    std::vector<char> buffer(static_cast<std::size_t>(pieceSize));
    qsizetype kept = 0; // of the line that the last piece began
    while (true) {
        if (stop && stop->load(std::memory_order_relaxed)) {
            reading.fault = u"Okuma yarıda bırakıldı."_s;
            return reading;
        }
        if (static_cast<qsizetype>(buffer.size()) - kept < pieceSize) {
            if (kept > longestLine) {
                reading.fault = u"Satırları bir belge için çok uzun."_s;
                return reading;
            }
            buffer.resize(buffer.size() * 2);
        }
        char *const begin = buffer.data();
        const qint64 count = pieces.read(begin + kept);
        if (count < 0) {
            reading.fault = pieces.fault();
            return reading;
        }
        if (count == 0)
            break;
        reading.bytes += count;
        const char *const end = begin + kept + count;
        scanner.setSuspicious(isSuspicious(begin, end));
        const qsizetype taken = feed(scanner, begin, end);
        if (taken < 0)
            return reading;
        kept = end - begin - taken;
        std::memmove(begin, begin + taken, static_cast<std::size_t>(kept));
    }
    feedLast(scanner, buffer.data(), buffer.data() + kept);
    return reading;
}

DocumentReading readDocumentBytes(QByteArrayView bytes, const TakeRecord &take)
{
    DocumentReading reading;
    reading.bytes = bytes.size();
    Scanner scanner(take, reading);
    const char *const end = bytes.data() + bytes.size();
    const qsizetype taken = feed(scanner, bytes.data(), end);
    if (taken >= 0)
        feedLast(scanner, bytes.data() + taken, end);
    return reading;
}

} // namespace kervan
