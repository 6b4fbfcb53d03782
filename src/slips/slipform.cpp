#include "slips/slipform.h"

#include "slips/columns.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The text export's commands, which no screen shows.
QList<SlipCommand> withTextCommands(QList<SlipCommand> commands)
{
    return commands << QList<SlipCommand>{
               {u"chameleonButton5"_s, u"Cari Haraket Dosyası Aç"_s, OpenText{}},
               {u"chameleonButton1"_s, u"Nakit"_s, WriteDocument{&nakitkaydet}},
               {u"chameleonButton2"_s, u"Kredi Kartı"_s, WriteDocument{&kredikartkaydet}},
               {u"chameleonButton3"_s, u"Senet"_s, WriteDocument{&senetkaydet}},
               {u"chameleonButton6"_s, u"Çek"_s, WriteDocument{&cekkaydet}},
               {u"chameleonButton7"_s, u"CH Kasa Nakit"_s, WriteDocument{&kasanakitkaydet}}};
}

enum class BankCommand { Hidden, Shown };

// The commands of a screen with a cash list and a bank list.
QList<SlipCommand> movementCommands(const QString &cashCaption, BankCommand bank)
{
    return withTextCommands(
        {{u"buton1"_s, u"Cari Haraket Dosyası Aç"_s, OpenWorkbook{0}, true, u"Ctrl+O"_s},
         {u"buton2"_s, cashCaption, WriteDocument{&exeldenkasanakitkaydet}, true, u"Ctrl+S"_s},
         {u"lvButtons_H2"_s, u"Banka işlem Fişi Xml Kaydet"_s,
          WriteDocument{&exeldenbankafisikaydet}, bank == BankCommand::Shown, u"Ctrl+B"_s}});
}

SlipFile movementFile(const SheetLayout &layout)
{
    return {.title = u"Cari Haraket Dosyası Seçin"_s, .layout = layout};
}

} // namespace

const SlipForm &cafis()
{
    static const SlipForm form{
        .screen = u"cafis"_s,
        .caption = u"Cari Fiş Transferi-1"_s,
        .heading = u"CARİ HESAP FİŞ AKTARIMLARI-1"_s,
        .sheetFile = u"exelsayfano.kvz"_s,
        .sheetDefault = u"Sayfa1"_s,
        .bankListCaption = u"Banka Fişi Haraket Listesi"_s,
        .columns = hareketColumns(),
        .files = {movementFile(cafisLayout())},
        .commands = movementCommands(u"CH Kasa Nakit Xml Kaydet"_s, BankCommand::Shown)};
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
        .bankListCaption = u"Fiş Toplamları"_s,
        .columns = hareketColumns(),
        .files = {movementFile(cafis2Layout())},
        .commands = movementCommands(u"Logoya Tahsilatları Aktar"_s, BankCommand::Hidden)};
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
        .bankListCaption = u"Banka Fişi Haraket Listesi"_s,
        .columns = hareketColumns(),
        .files = {movementFile(cafis3Layout())},
        .commands = movementCommands(u"CH Kasa Nakit Xml Kaydet"_s, BankCommand::Shown)};
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
        .columns = duzeyHareketColumns(),
        .files = {{u"Cari Haraket Nakit Dosyası Seçin"_s, false, ReadKind::Cash, duzeyCashLayout()},
                  {u"Cari Haraket Kredi Kartı Dosyası Seçin"_s, false, ReadKind::Card,
                   duzeyCardLayout()}},
        .commands = withTextCommands(
            {{u"buton1"_s, u"Nakit Dosyası Oku"_s, OpenWorkbook{0}, true, u"Ctrl+O"_s},
             {u"lvButtons_H3"_s, u"Kredi Kartı Dosyası Oku"_s, OpenWorkbook{1}, true, u"Ctrl+K"_s},
             {u"buton2"_s, u"Kasa Nakit Xml Kaydet"_s, WriteDocument{&exelkasanakitkaydet}, true,
              u"Ctrl+S"_s},
             {u"lvButtons_H2"_s, u"Kredi Kartı Xml Kaydet"_s, WriteDocument{&exelkredikartkaydet},
              true, u"Ctrl+Shift+S"_s}})};
    return form;
}

} // namespace kervan
