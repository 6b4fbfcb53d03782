#include "store/definition.h"

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The columns that `firma`, `odm` and `birim` share, whatever they hold.
QStringList sharedColumns()
{
    return {u"frno"_s, u"frkod"_s, u"firma"_s, u"kaskod"_s,
            u"dkod"_s, u"crkod"_s, u"alkod"_s, u"satkod"_s};
}

Definition fir()
{
    return {.screen = u"fir"_s,
            .caption = u"Firma Tanımlaması"_s,
            .listCaption = u"Firma Listesi"_s,
            .database = u"data.dbs"_s,
            .table = u"firma"_s,
            .columns = sharedColumns(),
            .fields = {{u"Text1"_s, u"Firma No"_s, u"frno"_s},
                       {u"Text2"_s, u"Firma Kodu"_s, u"frkod"_s},
                       {u"Text3"_s, u"Firma adı"_s, u"firma"_s},
                       {u"Text4"_s, u"Kasa Kodu"_s, u"kaskod"_s},
                       {u"Text5"_s, u"Depo Kodu"_s, u"dkod"_s},
                       {u"Text6"_s, u"Cari Kodu"_s, u"crkod"_s},
                       {u"Text7"_s, u"Satıcı Hesap Kodu"_s, u"satkod"_s},
                       {u"Text8"_s, u"Alıcı Hesap Kodu"_s, u"alkod"_s}},
            // `crkod` is not listed, so a change loses it unless it is typed again.
            .grid = {{u"Firma No"_s, 1764, u"frno"_s},
                     {u"Firma Kodu"_s, 1764, u"frkod"_s},
                     {u"Firma Adı"_s, 2646, u"firma"_s},
                     {u"Kasa Kodu"_s, 1764, u"kaskod"_s},
                     {u"Depo Kodu"_s, 1764, u"dkod"_s},
                     {u"Satıcı Hesap Kodu"_s, 2646, u"satkod"_s},
                     {u"Alıcı Hesap Kodu"_s, 2646, u"alkod"_s}},
            .sourceColumn = u"firma"_s};
}

Definition muhkod()
{
    return {.screen = u"muhkod"_s,
            .caption = u"Muhasebe Kodları Tanımı"_s,
            .listCaption = u"Muhasebe Kodları  Listesi"_s,
            .database = u"data.dbs"_s,
            .table = u"muh"_s,
            .columns = {u"ind"_s, u"kdv"_s, u"al"_s, u"sat"_s, u"ali"_s, u"sati"_s, u"alkdv"_s,
                        u"satkdv"_s, u"alikdv"_s, u"satikdv"_s},
            .fields = {{u"Text1"_s, u"Kdv Oranı"_s, u"kdv"_s},
                       {u"Text2"_s, u"Alış"_s, u"al"_s},
                       {u"Text3"_s, u"Satış"_s, u"sat"_s},
                       {u"Text4"_s, u"Alış İade"_s, u"ali"_s},
                       {u"Text5"_s, u"Satış İade"_s, u"sati"_s},
                       {u"Text6"_s, u"Alış Kdv"_s, u"alkdv"_s},
                       {u"Text7"_s, u"Satış Kdv"_s, u"satkdv"_s},
                       {u"Text8"_s, u"Alış İade Kdv"_s, u"alikdv"_s},
                       {u"Text9"_s, u"Satış İade Kdv"_s, u"satikdv"_s},
                       {u"Text10"_s, u"İndirimler Muhasebe Kodu"_s, u"ind"_s}},
            .grid = {{u"Kdv"_s, 882, u"kdv"_s},
                     {u"Alış"_s, 1411, u"al"_s},
                     {u"Satış"_s, 1411, u"sat"_s},
                     {u"Alış İade"_s, 1764, u"ali"_s},
                     {u"Satış İade"_s, 1764, u"sati"_s},
                     {u"Alış Kdv"_s, 1764, u"alkdv"_s},
                     {u"Satış Kdv"_s, 1764, u"satkdv"_s},
                     {u"Alış İade Kdv"_s, 2117, u"alikdv"_s},
                     {u"Satış İade Kdv"_s, 2293, u"satikdv"_s},
                     {u"İndirimler Muhasebe Kodu"_s, 5292, u"ind"_s}},
            .sideValue =
                SideValue{u"genkdv"_s, u"Genel Kdv Oranı: %"_s, u"18"_s, u"kdv"_s, u"kdv"_s},
            .sourceColumn = u"kdv"_s};
}

Definition odmplan()
{
    const auto hidden = [](const QString &name, const QString &column) {
        return DefinitionField{name, {}, column, DefinitionField::HiddenText};
    };
    return {.screen = u"odmplan"_s,
            .caption = u"Ödeme Plan Kodu Tanımı"_s,
            .listCaption = u"Ödeme Planı  Listesi"_s,
            .database = u"data.dbs"_s,
            .table = u"odm"_s,
            .columns = sharedColumns(),
            .fields = {{u"Text1"_s, u"Ödeme Plan Kodu:"_s, u"frno"_s},
                       {u"Text2"_s, u"Açıklama:"_s, u"frkod"_s},
                       hidden(u"Text3"_s, u"firma"_s),
                       hidden(u"Text4"_s, u"kaskod"_s),
                       hidden(u"Text5"_s, u"dkod"_s),
                       hidden(u"Text6"_s, u"crkod"_s),
                       hidden(u"Text7"_s, u"satkod"_s),
                       hidden(u"Text8"_s, u"alkod"_s)},
            .grid = {{u"Ödeme Plan Kodu"_s, 2540, u"frno"_s}, {u"Açıklama"_s, 2540, u"frkod"_s}},
            .sourceColumn = u"frno"_s};
}

Definition birimseti()
{
    return {.screen = u"birimseti"_s,
            .caption = u"Birim Setleri"_s,
            .listCaption = u"Birim Seti Listesi"_s,
            .database = u"data.dbs"_s,
            .table = u"birim"_s,
            .columns = sharedColumns(),
            .updateColumns = {u"frno"_s, u"frkod"_s, u"firma"_s, u"kaskod"_s},
            .fields = {{u"Text1"_s, u"Birim Seti Kodu:"_s, u"frno"_s},
                       {u"Text2"_s, u"Açıklama:"_s, u"frkod"_s},
                       {u"Text3"_s, u"Tex Birim Kodu:"_s, u"kaskod"_s},
                       {u"Text4"_s, u"Logo Birim Kodu:"_s, u"firma"_s}},
            .grid = {{u"Birim Seti kodu"_s, 2540, u"frno"_s},
                     {u"Açıklama"_s, 2540, u"frkod"_s},
                     {u"Logo Birim Kodu"_s, 2540, u"firma"_s},
                     {u"SAP Birim Kodu"_s, 2540, u"kaskod"_s}},
            .sourceColumn = u"kaskod"_s};
}

Definition ststatu()
{
    return {
        .screen = u"ststatu"_s,
        .caption = u"Stok Kartı Statü Kayıtları"_s,
        .listCaption = u"Stok Statu  Listesi"_s,
        .database = u"data.dbs"_s,
        .table = u"statu"_s,
        .columns = {u"statu"_s, u"var"_s},
        .whereWord = u"where"_s,
        .fields = {{u"Text1"_s, u"Statu:"_s, u"statu"_s},
                   {u"c1"_s, u"Varsayılan"_s, u"var"_s, DefinitionField::Check}},
        .grid = {{u"Statu"_s, 2540, u"statu"_s}, {u"Durum"_s, 2540, u"var"_s, u"Varsayılan"_s}}};
}

Definition per()
{
    return {.screen = u"per"_s,
            .caption = u"Personel Kayıt"_s,
            .listCaption = u"Personel Listesi"_s,
            .database = u"data.dbs"_s,
            .table = u"per"_s,
            .columns = {u"kod"_s, u"per"_s},
            .fields = {{u"Text1"_s, u"Logo Personel Kodu:"_s, u"kod"_s},
                       {u"Text2"_s, u"Sap Personel Kodu:"_s, u"per"_s}},
            .grid = {{u"Logo Personel Kodu"_s, 3528, u"kod"_s},
                     {u"Sap Personel Kodu"_s, 3528, u"per"_s}},
            .sourceColumn = u"per"_s};
}

Definition ozkod()
{
    return {.screen = u"ozkod"_s,
            .caption = u"Form1"_s,
            .listCaption = u"Fatura Özel Kod Listesi"_s,
            .database = u"fatozkod.dbs"_s,
            .table = u"ozkod"_s,
            .columns = {u"ozkod"_s},
            .setWord = u"SET"_s,
            .fields = {{u"Text1"_s, u"Fatura Özel Kodu:"_s, u"ozkod"_s}},
            .grid = {{u"Fatura Özel kodu"_s, 3528, u"ozkod"_s}}};
}

Definition stokozkod()
{
    return {.screen = u"stokozkod"_s,
            .caption = u"Stok Özel Kodları"_s,
            .listCaption = u"Stok Özel Kod Listesi"_s,
            .database = u"stokozkod.dbs"_s,
            .table = u"ozkod"_s,
            .columns = {u"ack"_s, u"ozkod"_s},
            .updateColumns = {u"ozkod"_s, u"ack"_s},
            .setWord = u"SET"_s,
            .fields = {{u"Text1"_s, u"Özel Kod:"_s, u"ozkod"_s},
                       {u"Text2"_s, u"Açıklama:"_s, u"ack"_s}},
            .grid = {{u"Özel Kod"_s, 3528, u"ozkod"_s}, {u"Açıklama"_s, 4410, u"ack"_s}}};
}

} // namespace

const QList<Definition> &definitions()
{
    static const QList<Definition> all{fir(),     muhkod(), odmplan(), birimseti(),
                                       ststatu(), per(),    ozkod(),   stokozkod()};
    return all;
}

const Definition *definitionOf(QStringView screen)
{
    const auto found = std::ranges::find(definitions(), screen, &Definition::screen);
    return found == definitions().end() ? nullptr : &*found;
}

} // namespace kervan
