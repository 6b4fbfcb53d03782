#include "slips/slipform.h"

#include "slips/columns.h"
#include "slips/movements.h"
#include "slips/slipscreen.h"
#include "text/numbers.h"
#include "text/spellings.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int noField = -1;
constexpr int cutDate = 9; // characters of a date on `cafis`: a full one loses its last

QString untouched(const Reading &reading, int field)
{
    return reading.text(field);
}

QString trimmed(const Reading &reading, int field)
{
    return trimmedBlanks(reading.text(field)).toString();
}

QString withoutCommas(const Reading &reading, int field)
{
    return trimmed(reading, field).remove(u',');
}

QString nineCharacters(const Reading &reading, int field)
{
    return trimmedBlanks(reading.text(field).left(cutDate)).toString();
}

QString bareAmount(const Reading &reading, int field)
{
    return masked(trimmed(reading, field), "#,###.00"_mask);
}

QString amount(const Reading &reading, int field)
{
    return masked(trimmed(reading, field), "#,##0.00"_mask);
}

// Texts of these exports have a point before the decimals; a true number is spelled like them.
QString duzeyAmount(const Reading &reading, int field)
{
    QString text = trimmed(reading, field);
    if (reading.sheet.kind(reading.record, field) == Sheet::Kind::Number)
        text = commaToPoint(text);
    return tutarduzelt1(text);
}

QString dateOfName(const Reading &reading, int)
{
    return trimmedBlanks(reading.date).toString();
}

QString staffOfName(const Reading &reading, int)
{
    const QString kod = reading.screen.perseslestir(trimmedBlanks(reading.per).toString());
    return trimmedBlanks(kod).toString();
}

QString staff(const Reading &reading, int field)
{
    return reading.screen.perseslestir(trimmed(reading, field));
}

QString nt(const Reading &reading, int)
{
    return slipNumber(u"NT", reading.number);
}

QString kn(const Reading &reading, int)
{
    return slipNumber(u"KN", reading.number);
}

QString kk(const Reading &reading, int)
{
    return slipNumber(u"KK", reading.number);
}

QString cashCode(const Reading &reading, int)
{
    return reading.screen.kskod.text();
}

QString bankCode(const Reading &reading, int)
{
    return reading.screen.bankahesapno1.text();
}

const SheetLayout cafisLayout{.cells = {{Hareket::Tarih, 11, &nineCharacters},
                                        {Hareket::CariKodu, 5, &trimmed},
                                        {Hareket::Unvani, 6, &untouched},
                                        {Hareket::Tutar, 0, &bareAmount},
                                        {Hareket::IslemNo, noField, &nt},
                                        {Hareket::KasaIslemNo, noField, &kn},
                                        {Hareket::KasaKodu, 3, &trimmed}}};

const SheetLayout cafis2Layout{.headings = 5,
                               .passesOver = true,
                               .namedDate = NamedDate{1, 3, 5},
                               .endField = 0,
                               .cells = {{Hareket::Tarih, noField, &dateOfName},
                                         {Hareket::CariKodu, 0, &trimmed},
                                         {Hareket::Unvani, 2, &untouched},
                                         {Hareket::Tutar, 14, &amount},
                                         {Hareket::IslemNo, noField, &nt},
                                         {Hareket::KasaIslemNo, noField, &kn},
                                         {Hareket::KasaKodu, noField, &staffOfName}}};

const SheetLayout cafis3Layout{.passesOver = true,
                               .namedDate = NamedDate{17, 15, 11},
                               .kindField = 8,
                               .endField = 2,
                               .cells = {{Hareket::Tarih, noField, &dateOfName},
                                         {Hareket::CariKodu, 2, &trimmed},
                                         {Hareket::Unvani, 3, &untouched},
                                         {Hareket::Tutar, 7, &amount},
                                         {Hareket::IslemNo, noField, &nt},
                                         {Hareket::KasaIslemNo, noField, &kn},
                                         {Hareket::KasaKodu, 0, &trimmed}}};

const SheetLayout duzeyCashLayout{.cells = {{DuzeyHareket::Tarih, 0, &trimmed},
                                            {DuzeyHareket::CariKodu, 1, &withoutCommas},
                                            {DuzeyHareket::Unvani, 2, &trimmed},
                                            {DuzeyHareket::Tutar, 6, &duzeyAmount},
                                            {DuzeyHareket::IslemNo, noField, &kn},
                                            {DuzeyHareket::KasaKodu, noField, &cashCode},
                                            {DuzeyHareket::BankaKodu, noField, &bankCode},
                                            {DuzeyHareket::SaticiKodu, 4, &staff},
                                            {DuzeyHareket::Aciklama, 3, &trimmed}}};

const SheetLayout duzeyCardLayout{.cells = {{DuzeyHareket::Tarih, 5, &trimmed},
                                            {DuzeyHareket::CariKodu, 3, &withoutCommas},
                                            {DuzeyHareket::Unvani, 4, &trimmed},
                                            {DuzeyHareket::Tutar, 7, &duzeyAmount},
                                            {DuzeyHareket::IslemNo, noField, &kk},
                                            {DuzeyHareket::KasaKodu, noField, &cashCode},
                                            {DuzeyHareket::BankaKodu, noField, &bankCode},
                                            {DuzeyHareket::SaticiKodu, 1, &staff},
                                            {DuzeyHareket::Aciklama, 2, &trimmed}}};

template<const SlipDocument &(*document)()>
void save(SlipScreen &screen)
{
    screen.kaydet(document());
}

template<int file>
void openFile(SlipScreen &screen)
{
    screen.dosyaac(screen.form().files[file]);
}

// The text export's commands, which no screen shows.
QList<SlipCommand> withTextCommands(QList<SlipCommand> commands)
{
    commands << SlipCommand{.name = u"chameleonButton5"_s,
                            .caption = u"Cari Haraket Dosyası Aç"_s,
                            .run =
                                [](SlipScreen &screen) {
                                    screen.metindosyasiac();
                                }}
             << SlipCommand{.name = u"chameleonButton1"_s,
                            .caption = u"Nakit"_s,
                            .run = &save<nakitkaydet>}
             << SlipCommand{.name = u"chameleonButton2"_s,
                            .caption = u"Kredi Kartı"_s,
                            .run = &save<kredikartkaydet>}
             << SlipCommand{.name = u"chameleonButton3"_s,
                            .caption = u"Senet"_s,
                            .run = &save<senetkaydet>}
             << SlipCommand{.name = u"chameleonButton6"_s,
                            .caption = u"Çek"_s,
                            .run = &save<cekkaydet>}
             << SlipCommand{.name = u"chameleonButton7"_s,
                            .caption = u"CH Kasa Nakit"_s,
                            .run = &save<kasanakitkaydet>};
    return commands;
}

SlipCommand openCommand()
{
    return {u"buton1"_s, u"Cari Haraket Dosyası Aç"_s, u"open"_s, u"Ctrl+O"_s, &openFile<0>};
}

SlipCommand cashCommand(const QString &caption)
{
    return {u"buton2"_s, caption, u"save"_s, u"Ctrl+S"_s, &save<exeldenkasanakitkaydet>};
}

SlipCommand bankCommand(bool shown)
{
    return {u"lvButtons_H2"_s, u"Banka işlem Fişi Xml Kaydet"_s, shown ? u"save"_s : QString(),
            u"Ctrl+B"_s, &save<exeldenbankafisikaydet>};
}

SlipFile movementFile(const SheetLayout &layout)
{
    return {.title = u"Cari Haraket Dosyası Seçin"_s, .layout = layout};
}

const QString cashList = u"CH Kasa Nakit Haraket Listesi"_s;

} // namespace

const SlipForm &cafis()
{
    static const SlipForm form{
        .screen = u"cafis"_s,
        .caption = u"Cari Fiş Transferi-1"_s,
        .heading = u"CARİ HESAP FİŞ AKTARIMLARI-1"_s,
        .sheetFile = u"exelsayfano.kvz"_s,
        .sheetDefault = u"Sayfa1"_s,
        .cashListCaption = cashList,
        .bankListCaption = u"Banka Fişi Haraket Listesi"_s,
        .columns = hareketColumns(),
        .files = {movementFile(cafisLayout)},
        .commands = withTextCommands(
            {openCommand(), cashCommand(u"CH Kasa Nakit Xml Kaydet"_s), bankCommand(true)})};
    return form;
}

const SlipForm &cafis2()
{
    static const SlipForm form{
        .screen = u"cafis2"_s,
        .caption = u"Cari Fiş Transferi-2"_s,
        .heading = u"SEYAHAT EXEL AKTARIMI"_s,
        .sheetFile = u"exelsayfano2.kvz"_s,
        .sheetDefault = u"Sayfa1"_s,
        .usesStaff = true,
        .cashListCaption = cashList,
        .bankListCaption = u"Fiş Toplamları"_s,
        .columns = hareketColumns(),
        .files = {movementFile(cafis2Layout)},
        .commands = withTextCommands(
            {openCommand(), cashCommand(u"Logoya Tahsilatları Aktar"_s), bankCommand(false)})};
    return form;
}

const SlipForm &cafis3()
{
    static const SlipForm form{
        .screen = u"cafis3"_s,
        .caption = u"Cari Fiş Transferi-3"_s,
        .heading = u"POS ANALİZ EXEL AKTARIMI"_s,
        .sheetFile = u"exelsayfano3.kvz"_s,
        .sheetDefault = u"Sayfa1"_s,
        .usesStaff = true,
        .cashListCaption = cashList,
        .bankListCaption = u"Banka Fişi Haraket Listesi"_s,
        .columns = hareketColumns(),
        .files = {movementFile(cafis3Layout)},
        .commands = withTextCommands(
            {openCommand(), cashCommand(u"CH Kasa Nakit Xml Kaydet"_s), bankCommand(true)})};
    return form;
}

const SlipForm &carifisduzey()
{
    static const SlipForm form{
        .screen = u"carifisduzey"_s,
        .caption = u"DÜZEY CARİ FİŞ AKTARIMLARI"_s,
        .heading = u"DÜZEY CARİ FİŞ AKTARIMLARI"_s,
        .sheetFile = u"carifisexelsayfano.kvz"_s,
        .sheetDefault = u"Sheet1"_s,
        .sheetButtonRests = false,
        .salesman = true,
        .usesStaff = true,
        .aktifform = u"2"_s,
        .cashListCaption = u"CH Kasa Nakit Haraket Listesi"_s,
        .columns = duzeyHareketColumns(),
        .files = {{u"Cari Haraket Nakit Dosyası Seçin"_s, false, ReadKind::Cash, duzeyCashLayout},
                  {u"Cari Haraket Kredi Kartı Dosyası Seçin"_s, false, ReadKind::Card,
                   duzeyCardLayout}},
        .commands = withTextCommands(
            {{u"buton1"_s, u"Nakit Dosyası Oku"_s, u"open"_s, u"Ctrl+O"_s, &openFile<0>},
             {u"lvButtons_H3"_s, u"Kredi Kartı Dosyası Oku"_s, u"open"_s, u"Ctrl+K"_s,
              &openFile<1>},
             {u"buton2"_s, u"Kasa Nakit Xml Kaydet"_s, u"save"_s, u"Ctrl+S"_s,
              &save<exelkasanakitkaydet>},
             {u"lvButtons_H2"_s, u"Kredi Kartı Xml Kaydet"_s, u"save"_s, u"Ctrl+Shift+S"_s,
              &save<exelkredikartkaydet>}})};
    return form;
}

} // namespace kervan
