#include "slips/movements.h"

#include "base/failure.h"
#include "slips/columns.h"
#include "store/sidefiles.h"
#include "text/numbers.h"
#include "text/record.h"

#include <span>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The classes of a movement, by the codes of the text export. Exact and case-sensitive; a code
// outside the table gives an empty text.
struct Meaning
{
    QStringView code;
    QStringView meaning;
};

constexpr std::array<Meaning, 4> classes{
    {{u"20", u"Nakit Tahsil"}, {u"30", u"Çek"}, {u"40", u"Senet"}, {u"50", u"Kredi Kartı"}}};
constexpr std::array<Meaning, 3> ways{
    {{u"K", u"Nakit"}, {u"C", u"Çek/Senet"}, {u"T", u"Kredi Kartı"}}};
constexpr std::array<Meaning, 3> sides{{{u"1", u"Borç"}, {u"1 ", u"Borç"}, {u"-1", u"Alacak"}}};

QString meaningOf(QStringView code, std::span<const Meaning> table)
{
    for (const Meaning &entry : table) {
        if (entry.code == code)
            return entry.meaning.toString();
    }
    return {};
}

// Class of the row, by columns 1-2.
QString islemtipi(QStringView field)
{
    return meaningOf(field, classes);
}

// Way of payment, by column 13.
QString tipi(QStringView field)
{
    return meaningOf(field, ways);
}

// Side of the account, by columns 14-15.
QString bakiye(QStringView field)
{
    return meaningOf(field, sides);
}

constexpr std::array<RecordField, 17> movementFields{{
    {MetinHareket::IslemTipi, 1, 2, &islemtipi},
    {MetinHareket::CariKod, 3, 10, &untouchedField},
    {MetinHareket::IslemTuru, 13, 1, &tipi},
    {MetinHareket::BakiyeTuru, 14, 2, &bakiye},
    {MetinHareket::IslemTarihi, 16, 10, &untouchedField},
    {MetinHareket::VadeTarihi, 26, 10, &untouchedField},
    {MetinHareket::Cirolu, 36, 1, &untouchedField},
    {MetinHareket::Tutar, 37, 18, &fieldWithoutBlanks},
    {MetinHareket::BankaAdi, 55, 60, &untouchedField},
    {MetinHareket::BankaHesapNo, 115, 18, &untouchedField},
    {MetinHareket::BankaSube, 133, 40, &untouchedField},
    {MetinHareket::MemurNo, 173, 10, &untouchedField},
    {MetinHareket::CekSenetNo, 183, 10, &untouchedField},
    {MetinHareket::MakbuzNo, 193, 10, &untouchedField},
    {MetinHareket::Musteri, 203, 10, &untouchedField},
    {MetinHareket::CekSenet, 213, 4, &untouchedField},
    {MetinHareket::MuhBelgeNo, 217, 10, &untouchedField},
}};
static_assert(inOrder(movementFields));

} // namespace

QString IslemSira::islemsira(QStringView field)
{
    for (std::size_t i = 0; i < classes.size(); ++i) {
        if (classes[i].code == field)
            return toText(++m_counters[i]);
    }
    return {};
}

void addMovementLine(Grid &l1, QStringView line, IslemSira &sira)
{
    const int row = l1.addRow(sira.islemsira(cut(line, 1, 2)));
    cutRecord(line, movementFields,
              [&](int cell, const QString &text) { l1.setCell(row, cell, text); });
}

QString tutarduzelt1(QString amount)
{
    return masked(amount.remove(u',').replace(u'.', u','), "#,###.0000"_mask);
}

std::optional<Failure> SlipSequence::look()
{
    m_stored.clear();
    return endQuietly([&] { m_stored = readCounter(m_path); });
}

std::optional<Failure> SlipSequence::load()
{
    auto failed = look();
    m_last = number(m_stored).value_or(0);
    return failed;
}

void SlipSequence::store() const
{
    QString spelled = toText(m_last);
    if (m_spelling == Printed)
        spelled = (m_last < 0 ? QString() : u" "_s) + spelled + u' ';
    writeSingleValue(m_path, spelled);
}

QString slipNumber(QStringView prefix, double number)
{
    return prefix.toString() + masked(number, "000000"_mask);
}

} // namespace kervan
