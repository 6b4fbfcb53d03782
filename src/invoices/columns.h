#pragma once

#include "base/grid.h"

namespace kervan {

/// Columns of the invoice list.
namespace L1 {
enum Column {
    CariKodu,
    Unvani,
    FaturaNumarasi,
    BelgeNumarasi,
    FaturaTarihi,
    LogoPersonelKodu,
    SapPersonelKodu, // as the source has it
    OdemeTipi,
    ToplamTutar,
    IndirimToplami,
    KdvToplami,
    GenelToplam,
    EFatura,
    TahsilatOrani,
    TahsilatTutari,
    IslemNo,
    KasaIslemNo,
    KasaSatisElemani
};
}

/// Columns of the lines shown for the invoice clicked on.
namespace L2 {
enum Column {
    UrunKodu,
    UrunAdi,
    Miktar,
    BirimFiyat,
    Kdv,
    Tutar,
    IndirimTutari,
    KdvTutari,
    Toplam,
    Ind1Yuzde, // nine pairs of percent and amount from here on
    BayiSatisFiyati = 27,
    BayiKari,
    EkVergiTutari
};
}

/// Columns of the hidden working copy of one invoice's lines.
namespace L3 {
enum Column {
    UrunKodu,
    UrunAdi,
    Miktar,
    BirimFiyat,
    Kdv,
    Tutar,
    IndirimTutari,
    KdvTutari,
    Toplam,
    Birim,
    Yuzde1, // nine discount percentages from here on
    Yuzde9 = 18,
    Indirim1, // seven discount amounts from here on
    Tipi = 28,
    BayiSatisFiyati,
    BayiKari,
    EkVergiTutari
};
}

/// The columns of the invoice list, whose headings of title and source's personnel code differ.
QList<GridColumn> invoiceColumns(const QString &title, const QString &person);
/// The columns of the lines shown.
QList<GridColumn> lineColumns();

} // namespace kervan
