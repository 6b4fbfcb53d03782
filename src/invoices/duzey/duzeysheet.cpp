#include "invoices/duzey/duzeysheet.h"

#include "base/failure.h"
#include "invoices/columns.h"
#include "invoices/invoicedefinitions.h"
#include "text/numbers.h"
#include "text/spellings.h"

#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t rateCount = 6;
constexpr Mask fourDecimals = "#0.0000"_mask;

// Where a list has the rates and the amounts of the seven discounts.
struct DiscountCells
{
    int firstRate, rateStep;
    int firstAmount, amountStep;

    int rate(std::size_t i) const { return firstRate + rateStep * static_cast<int>(i); }
    int amount(std::size_t i) const { return firstAmount + amountStep * static_cast<int>(i); }
};
constexpr DiscountCells shownCells{L2::Ind1Yuzde, 2, L2::Ind1Yuzde + 1, 2};
constexpr DiscountCells copiedCells{L3::Yuzde1, 1, L3::Indirim1, 1};

QString withoutThreeZeros(const QString &text)
{
    QString spelled = pointToComma(text);
    if (spelled.endsWith(u",000"))
        spelled.chop(4);
    return spelled;
}

QString numberOf(const Sheet &sheet, int record, int field)
{
    return tutarayarlama(fieldOf(sheet, record, static_cast<Duzey::Field>(field)));
}

// Every operation is rounded to single precision. A double holds the exact sum or product of two
// singles, and its quotient rounds as theirs does.
double single(double value)
{
    return static_cast<double>(toSingle(value));
}

QString textOf(double value)
{
    return toText(static_cast<float>(value));
}

// Both lists have the same cells up to the discounts.
int addGoods(const Sheet &sheet, int record, Grid &lines, const DiscountCells &cells)
{
    const int row = lines.addRow(fieldOf(sheet, record, Duzey::UrunKodu));
    lines.setCell(row, L2::Miktar, numberOf(sheet, record, Duzey::Miktar));
    lines.setCell(row, L2::BirimFiyat, numberOf(sheet, record, Duzey::BirimFiyat));
    lines.setCell(
        row, L2::Tutar,
        masked(toNumber(lines.cell(row, L2::Miktar)) * toNumber(lines.cell(row, L2::BirimFiyat)),
               fourDecimals));
    lines.setCell(row, L2::Kdv, numberOf(sheet, record, Duzey::KdvOrani));
    for (std::size_t i = 0; i < rateCount; ++i)
        lines.setCell(row, cells.rate(i),
                      numberOf(sheet, record, Duzey::Oran1 + static_cast<int>(i)));
    lines.setCell(row, cells.rate(rateCount), u"0"_s);
    return row;
}

// The first two discounts are both taken on the whole amount, each later one on what is left.
// Gives the sum of all seven.
double addDiscounts(const Sheet &sheet, int record, Grid &lines, int row,
                    const DiscountCells &cells)
{
    const auto cell = [&](int column) {
        return static_cast<double>(toSingleNumber(lines.cell(row, column)));
    };
    const double total = cell(L2::Tutar);
    std::array<double, rateCount + 1> amounts{};
    double given = 0;
    for (std::size_t i = 0; i < rateCount; ++i) {
        const double rate = cell(cells.rate(i));
        const double base = i < 2 ? total : single(total - given);
        amounts[i] = rate > 0 ? single(single(base * rate) / 100) : 0;
        given = single(given + amounts[i]);
    }
    const auto money =
        static_cast<double>(toSingleNumber(numberOf(sheet, record, Duzey::IndirimTutari)));
    if (money > 0) {
        amounts[rateCount] = money;
        const double part = single(divided(money, single(total - given)));
        lines.setCell(row, cells.rate(rateCount), textOf(single(part * 100)));
        given = single(given + money);
    }
    for (std::size_t i = 0; i < amounts.size(); ++i)
        lines.setCell(row, cells.amount(i), textOf(amounts[i]));
    return given;
}

} // namespace

QString fieldOf(const Sheet &sheet, int record, Duzey::Field field)
{
    return trimmedBlanks(sheet.text(record, field)).toString();
}

std::optional<double> tutarsayisi(const QString &text)
{
    return number(withoutThreeZeros(text));
}

QString tutarayarlama(const QString &text)
{
    const QString spelled = withoutThreeZeros(text);
    QString result = u"0,0000"_s;
    if (number(spelled))
        passOver([&] { result = masked(spelled, fourDecimals); });
    return result;
}

double amountOf(const Sheet &sheet, int record)
{
    return toNumber(numberOf(sheet, record, Duzey::BirimFiyat)) *
           toNumber(numberOf(sheet, record, Duzey::Miktar));
}

void addToL2(const Sheet &sheet, int record, Grid &l2)
{
    const int row = addGoods(sheet, record, l2, shownCells);
    const double sum = addDiscounts(sheet, record, l2, row, shownCells);
    l2.setCell(row, L2::IndirimTutari, textOf(sum));
    l2.setCell(row, L2::KdvTutari, u"0"_s);
    l2.setCell(row, L2::Toplam, l2.cell(row, L2::Tutar));
}

void addToL3(const Sheet &sheet, int record, const Grid &lbrm, Grid &l3)
{
    const int row = addGoods(sheet, record, l3, copiedCells);
    l3.setCell(row, L3::Birim, birimbul(lbrm, fieldOf(sheet, record, Duzey::Birim)));
    for (const int column : {int(L3::IndirimTutari), int(L3::KdvTutari), int(L3::Toplam),
                             L3::Yuzde9 - 1, int(L3::Yuzde9)})
        l3.setCell(row, column, u"0"_s);
    addDiscounts(sheet, record, l3, row, copiedCells);
}

QList<int> InvoiceRecords::of(const std::shared_ptr<const Sheet> &sheet, const QString &faturano)
{
    if (m_sheet != sheet) {
        QHash<QString, QList<int>> records;
        for (int record = 0; record < sheet->rows(); ++record)
            records[fieldOf(*sheet, record, Duzey::FaturaNumarasi)] << record;
        m_records = std::move(records);
        m_sheet = sheet;
    }
    return m_records.value(faturano);
}

} // namespace kervan
