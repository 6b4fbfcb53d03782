// Numbers, masks, dates, spellings and formats of cells, against the plainest way to reckon them.

#include "base/codepage.h"
#include "base/failure.h"
#include "check/decimal.h"
#include "check/xmltext.h"
#include "support/harness.h"
#include "text/dates.h"
#include "text/needle.h"
#include "text/numbers.h"
#include "text/spellings.h"
#include "workbook/cellformat.h"

#include <array>
#include <cmath>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

constexpr auto masks =
    std::to_array<Mask>({"#.00"_mask, "#.0000"_mask, "#0.0000"_mask, "000"_mask, "#,##0.00"_mask,
                         "#0.00000000"_mask, "000000"_mask, "#,##0"_mask});

// What number() takes: a sign, digits with group marks, decimals; no more than 64 letters.
bool spellsNumber(QStringView text)
{
    qsizetype at = 0;
    int digits = 0;
    bool behind = false;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+'))
        ++at;
    for (; at < text.size(); ++at) {
        if (text[at] >= u'0' && text[at] <= u'9')
            ++digits;
        else if (text[at] == u',' && !behind)
            behind = true;
        else if (text[at] != u'.' || behind || digits == 0)
            return false;
    }
    return digits > 0 && text.size() <= 64;
}

// Half away from zero, on decimal digits: the amount as text without marks but the point.
QString plainlyMasked(const QString &plain, Mask mask)
{
    const bool negative = plain.startsWith(u'-');
    const QString bare = negative ? plain.sliced(1) : plain;
    QString whole = bare.section(u',', 0, 0);
    const QString decimals = bare.section(u',', 1).leftJustified(mask.decimals + 1, u'0');
    QString digits = whole + decimals.left(mask.decimals);
    if (decimals[mask.decimals] >= u'5') {
        qsizetype at = digits.size() - 1;
        for (; at >= 0 && digits[at] == u'9'; --at)
            digits[at] = u'0';
        if (at >= 0)
            digits[at] = QChar(digits[at].unicode() + 1);
        else
            digits.prepend(u'1');
    }
    const QString behind = mask.decimals > 0 ? u',' + digits.right(mask.decimals) : QString();
    whole = digits.chopped(mask.decimals);
    while (whole.startsWith(u'0'))
        whole.remove(0, 1);
    whole = whole.rightJustified(mask.leadingDigits, u'0');
    const bool isZero = std::ranges::all_of(digits, [](QChar c) { return c == u'0'; });
    for (qsizetype at = whole.size() - 3; mask.grouped && at > 0; at -= 3)
        whole.insert(at, u'.');
    return (negative && !isZero ? u"-"_s : QString()) + whole + behind;
}

void readNumber(const QString &text)
{
    const QStringView trimmed = QStringView(text).trimmed();
    const auto value = number(text);
    fuzz::expect(value.has_value() == spellsNumber(trimmed), "number() takes what it should not",
                 text);
    if (!value)
        return;
    QString plain = trimmed.toString().remove(u'.').replace(u',', u'.');
    fuzz::expect(*value == plain.toDouble(), "another number is read", text,
                 QString::number(*value, 'g', 17));
    const QString shortest = toText(*value);
    const auto again = number(shortest);
    fuzz::expect(again.has_value() || shortest.size() > 64, "its own spelling is none", shortest);
    fuzz::expect(!again || std::abs(*again - *value) <= std::abs(*value) * 1e-14,
                 "its own spelling is another number", shortest);
    for (const Mask mask : masks) {
        fuzz::expectSame(masked(*value, mask), plainlyMasked(shortest, mask), "masked otherwise");
        fuzz::expectSame(masked(text, mask), masked(*value, mask), "text and number part");
    }
    if (const auto cell = Decimal::ofCell(text)) {
        const auto read = number(cell->text(0));
        fuzz::expect(read && std::abs(*read - *value) <= std::abs(*value) * 1e-15,
                     "the exact amount is another one", text, cell->text(0));
        fuzz::expect(Decimal::ofCell(cell->text()) == cell, "an amount's own spelling", text);
        fuzz::expect(Decimal::ofDocument(tutarnoktasil(cell->text()).toLatin1()) == cell,
                     "an amount of a document is another one", text);
    }
    passOver([&] {
        const float single = toSingleNumber(text);
        fuzz::expect(toSingleNumber(toText(single)) == single ||
                         std::abs(toSingleNumber(toText(single)) - single) <=
                             std::abs(single) * 1e-6F,
                     "a single's spelling is another one", text);
    });
}

void readSmall(const QByteArray &bytes)
{
    const xml::Small small = xml::smallNumber(bytes);
    const auto exact = Decimal::ofDocument(bytes);
    if (!small.fine || !exact)
        return;
    const auto product = Decimal::product(small.digits, 1, small.decimals);
    fuzz::expect(product == exact, "two readers of documents' amounts part",
                 QString::fromLatin1(bytes));
}

void formatCells(const QString &code, double value)
{
    const CellFormat format = cellFormat(static_cast<int>(code.size()) * 7 % 60, code);
    const QString text = numberText(value, format.zeros);
    fuzz::expect(number(text).has_value() || text.size() > 64 || !std::isfinite(value),
                 "a cell's number is none", text);
    if (!isDay(value))
        return;
    const QString spelled = dateText(value);
    if (spelled.size() != 10 || spelled == u"29.02.1900") // a day without its time, that was one
        return;
    const QDate date = QDate::fromString(spelled, u"dd.MM.yyyy"_s);
    fuzz::expect(isoSerial(date.toString(Qt::ISODate)) == std::floor(value + 0.00001),
                 "a day number and its date part", spelled);
}

void readDate(const QString &text)
{
    passOver([&] {
        const QDate date = toDate(text);
        fuzz::expect(toDate(date.toString(u"dd.MM.yyyy"_s)) == date || date.year() < 1000 ||
                         date.year() > 9999,
                     "a date's own spelling is another one", text);
        const QString trimmed = text.trimmed();
        qsizetype at = trimmed.size();
        while (at > 0 && trimmed[at - 1].isDigit())
            --at;
        const int year = trimmed.sliced(at).toInt();
        if (trimmed.size() - at <= 2)
            fuzz::expect(date.year() == year + (year < 30 ? 2000 : 1900), "another century", text);
    });
    if (const auto date = typedDate(text, 2024)) {
        fuzz::expect(date->year() >= 1900 && date->year() < 2100, "a day out of bounds", text);
        fuzz::expect(typedDate(date->toString(u"dd.MM.yyyy"_s), 2024) == date, "typed otherwise",
                     text);
    }
    if (const double serial = isoSerial(text); std::isfinite(serial))
        formatCells(text, serial);
}

void spell(const QString &text, const QString &other)
{
    tarihanahtari(text, other, text);
    const QString date = tarihcevir(text);
    fuzz::expect(date.size() <= 10 && date.count(u'.') >= 2, "a date of the file", text, date);
    QString bare = text;
    while (bare.endsWith(u' '))
        bare.chop(1);
    fuzz::expectSame(sonbosluksil(text), bare, "blanks at the end");
    fuzz::expectSame(cut(text, 3, 5).toString(), text.mid(2, 5), "cut otherwise");
    fuzz::expectSame(fromCodePage(toCodePage(fuzz::asWritten(text))), fuzz::asWritten(text),
                     "a letter of the code page is lost");
    fuzz::expect(isOfCodePage(text) == (fuzz::asWritten(text) == text),
                 "letters that a document holds", text);
    const QString folded = other + text + other;
    fuzz::expect(text.isEmpty() || Needle(text).isIn(folded), "a needle in its own hay", text);
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const QByteArray bytes = pieces.bytes();
    const QString text = QString::fromUtf8(bytes);
    const QString other = pieces.text();
    readNumber(text);
    readSmall(bytes);
    readDate(text);
    spell(text, other);
    formatCells(other, number(text).value_or(0.5));
}
