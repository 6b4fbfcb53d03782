#include "slips/sheetlayout.h"

#include "slips/columns.h"
#include "slips/movements.h"
#include "text/numbers.h"
#include "text/record.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Treatments of a field.

QString withoutCommas(QStringView text)
{
    return trimmedField(text).remove(u',');
}

// A date written out in full has ten characters and loses its last.
QString nineCharacters(QStringView text)
{
    return trimmedField(text.left(9));
}

QString amount(QStringView text)
{
    return masked(trimmedField(text), "#,##0.00"_mask);
}

QString amountWithoutLeadingZero(QStringView text)
{
    return masked(trimmedField(text), "#,###.00"_mask);
}

// Values of other sources, or of more than one.

// Texts of these exports have a point before the decimals; a true number is spelled like them.
QString duzeyAmount(const Reading &reading, int field)
{
    QString text = trimmedField(reading.text(field));
    if (reading.sheet.kind(reading.record, field) == Sheet::Kind::Number)
        text = commaToPoint(text);
    return tutarduzelt1(text);
}

QString staff(const Reading &reading, int field)
{
    return reading.persl.perseslestir(trimmedField(reading.text(field)));
}

QString staffOfName(const Reading &reading, int)
{
    return trimmedField(reading.persl.perseslestir(trimmedField(reading.per)));
}

QString dateOfName(const Reading &reading, int)
{
    return trimmedField(reading.tarih);
}

QString nt(const Reading &reading, int)
{
    return slipNumber(u"NT", reading.sira);
}

QString kn(const Reading &reading, int)
{
    return slipNumber(u"KN", reading.sira);
}

QString kk(const Reading &reading, int)
{
    return slipNumber(u"KK", reading.sira);
}

QString kasaKodu(const Reading &reading, int)
{
    return reading.codes.kasaKodu;
}

QString bankaHesapKodu(const Reading &reading, int)
{
    return reading.codes.bankaHesapKodu;
}

} // namespace

SheetLayout cafisLayout()
{
    return {.cells = {{Hareket::Tarih, 11, &nineCharacters},
                      {Hareket::CariKodu, 5, &trimmedField},
                      {Hareket::Unvani, 6},
                      {Hareket::Tutar, 0, &amountWithoutLeadingZero},
                      {Hareket::IslemNo, &nt},
                      {Hareket::KasaIslemNo, &kn},
                      {Hareket::KasaKodu, 3, &trimmedField}}};
}

SheetLayout cafis2Layout()
{
    return {.headings = 5,
            .passesOver = true,
            .namedDate = NamedDate{.day = 1, .month = 3, .year = 5},
            .endField = 0,
            .staff = StaffCell{Hareket::KasaKodu},
            .cells = {{Hareket::Tarih, &dateOfName},
                      {Hareket::CariKodu, 0, &trimmedField},
                      {Hareket::Unvani, 2},
                      {Hareket::Tutar, 14, &amount},
                      {Hareket::IslemNo, &nt},
                      {Hareket::KasaIslemNo, &kn},
                      {Hareket::KasaKodu, &staffOfName}}};
}

SheetLayout cafis3Layout()
{
    return {.passesOver = true,
            .namedDate = NamedDate{.day = 17, .month = 15, .year = 11},
            .kindField = 8,
            .endField = 2,
            .cells = {{Hareket::Tarih, &dateOfName},
                      {Hareket::CariKodu, 2, &trimmedField},
                      {Hareket::Unvani, 3},
                      {Hareket::Tutar, 7, &amount},
                      {Hareket::IslemNo, &nt},
                      {Hareket::KasaIslemNo, &kn},
                      {Hareket::KasaKodu, 0, &trimmedField}}};
}

SheetLayout duzeyCashLayout()
{
    return {.staff = StaffCell{DuzeyHareket::SaticiKodu, 4},
            .groupMark = u',',
            .cells = {{DuzeyHareket::Tarih, 0, &trimmedField},
                      {DuzeyHareket::CariKodu, 1, &withoutCommas},
                      {DuzeyHareket::Unvani, 2, &trimmedField},
                      {DuzeyHareket::Tutar, &duzeyAmount, 6},
                      {DuzeyHareket::IslemNo, &kn},
                      {DuzeyHareket::KasaKodu, &kasaKodu},
                      {DuzeyHareket::BankaKodu, &bankaHesapKodu},
                      {DuzeyHareket::SaticiKodu, &staff, 4},
                      {DuzeyHareket::Aciklama, 3, &trimmedField}}};
}

SheetLayout duzeyCardLayout()
{
    return {.staff = StaffCell{DuzeyHareket::SaticiKodu, 1},
            .groupMark = u',',
            .cells = {{DuzeyHareket::Tarih, 5, &trimmedField},
                      {DuzeyHareket::CariKodu, 3, &withoutCommas},
                      {DuzeyHareket::Unvani, 4, &trimmedField},
                      {DuzeyHareket::Tutar, &duzeyAmount, 7},
                      {DuzeyHareket::IslemNo, &kk},
                      {DuzeyHareket::KasaKodu, &kasaKodu},
                      {DuzeyHareket::BankaKodu, &bankaHesapKodu},
                      {DuzeyHareket::SaticiKodu, &staff, 1},
                      {DuzeyHareket::Aciklama, 2, &trimmedField}}};
}

} // namespace kervan
