#pragma once

#include "base/grid.h"

namespace kervan {

// The lists of the slip screens by their columns, and what their headings say.

/// `l1` of `cafis`, `cafis2` and `cafis3`.
namespace Hareket {
enum Column { Sira, Tarih, CariKodu, Unvani, Tutar, IslemNo, KasaIslemNo, KasaKodu };
}
QList<GridColumn> hareketColumns();

/// `l2` of the same screens: one row per cash code of `l1`.
namespace BankaFisi {
enum Column { Sira, FisTarihi, Tutar, FisNo, OzelKod };
}
QList<GridColumn> bankaFisiColumns();

/// `l1` of `carifisduzey`.
namespace DuzeyHareket {
enum Column {
    Sira,
    Tarih,
    CariKodu,
    Unvani,
    Tutar,
    IslemNo,
    KasaKodu,
    BankaKodu,
    SaticiKodu,
    Aciklama
};
}
QList<GridColumn> duzeyHareketColumns();

/// `l1` after a text export was read, on all four screens; also `l1eski` and `ListView1`.
namespace MetinHareket {
enum Column {
    Sira,
    IslemTipi,
    CariKod,
    IslemTuru,
    BakiyeTuru,
    IslemTarihi,
    VadeTarihi,
    Cirolu,
    Tutar,
    BankaAdi,
    BankaHesapNo,
    BankaSube,
    MemurNo,
    CekSenetNo,
    MakbuzNo,
    Musteri,
    CekSenet,
    MuhBelgeNo
};
}
QList<GridColumn> metinHareketColumns();

} // namespace kervan
