#include "slips/columns.h"

namespace kervan {

using namespace Qt::StringLiterals;

QList<GridColumn> hareketColumns()
{
    return {{u"SIRA"_s, 1058},
            {u"TARİH"_s, 1411},
            {u"CARİ KODU"_s, 2117},
            {u"UNVANI"_s, 4939},
            {u"TUTAR"_s, 1764, Qt::AlignRight},
            {u"İŞLEM NO"_s, 1588},
            {u"KASA İŞLEM NO"_s, 1764},
            {u"KASA KODU"_s, 1588}};
}

QList<GridColumn> bankaFisiColumns()
{
    return {{u"SIRA"_s, 1058},
            {u"FİŞ TARİHİ"_s, 1411},
            {u"TUTAR"_s, 1764, Qt::AlignRight},
            {u"FİŞ NO"_s, 1588},
            {u"ÖZEL KOD"_s, 1764}};
}

QList<GridColumn> duzeyHareketColumns()
{
    return {{u"SIRA"_s, 1058},
            {u"TARİH"_s, 1411},
            {u"CARİ KODU"_s, 2117},
            {u"UNVANI"_s, 4939},
            {u"TUTAR"_s, 1764, Qt::AlignRight},
            {u"İŞLEM NO"_s, 1588},
            {u"KASA KODU"_s, 1588},
            {u"BANKA KODU"_s, 1764},
            {u"SATICI KODU"_s, 1588},
            {u"AÇIKLAMA"_s, 3528}};
}

QList<GridColumn> metinHareketColumns()
{
    return {
        {u"SIRA"_s, 1058},        {u"İŞLEM TİPİ"_s, 1588},     {u"CARIKOD"_s, 1764},
        {u"İŞLEM TÜRÜ"_s, 1588},  {u"BAKİYE TÜRÜ"_s, 1588},    {u"İŞLEM TARİHİ"_s, 1588},
        {u"VADE TARİHİ"_s, 1588}, {u"CİROLU"_s, 1058},         {u"TUTAR"_s, 1764, Qt::AlignRight},
        {u"BANKA ADI"_s, 3528},   {u"BANKA HESAP NO"_s, 2117}, {u"BANKA SUBE"_s, 2822},
        {u"MEMUR NO"_s, 1588},    {u"ÇEK/SENET NO"_s, 1764},   {u"MAKBUZ NO"_s, 1588},
        {u"MÜŞTERİ"_s, 1588},     {u"ÇEK-SENET"_s, 1588},      {u"MUH BELGE NO"_s, 1764}};
}

} // namespace kervan
