#include "slips/slipdocuments.h"

#include "text/record.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Treatments of a cell.

QString xmlAmount(QStringView amount)
{
    return tutarnoktasil(amount.toString());
}

QString kodluCari(QStringView text)
{
    return text.toString() + u" Kodlu Cari"_s;
}

// Notes and cheques have two blanks there.
QString ikiBoslukluKodluCari(QStringView text)
{
    return text.toString() + u"  Kodlu Cari"_s;
}

QString kodluPersonel(QStringView kod)
{
    return kod.toString() + u" Kodlu Personel İşlem Yapmıştır"_s;
}

QString lastEight(QStringView text)
{
    return text.right(8).toString();
}

QString fileYear(QStringView fileDate)
{
    return cut(fileDate, 1, 4).toString();
}

QString fileMonth(QStringView fileDate)
{
    return cut(fileDate, 5, 2).toString();
}

// Values of other sources.

QString tarih(const SlipRow &row)
{
    return row.date().tarih;
}

QString ay(const SlipRow &row)
{
    return row.date().ay;
}

QString ikiHaneliAy(const SlipRow &row)
{
    return row.date().ikiHaneliAy;
}

QString yil(const SlipRow &row)
{
    return row.date().yil;
}

QString kasaKodu(const SlipRow &row)
{
    return row.codes().kasaKodu;
}

QString bankaHesapKodu(const SlipRow &row)
{
    return row.codes().bankaHesapKodu;
}

QString nothing(const SlipRow &)
{
    return {};
}

} // namespace

const SlipDocument &exeldenkasanakitkaydet()
{
    static const SlipDocument document{.title = u"Kasa Nakit Tahsilat Xml Dosyası Kaydet"_s,
                                       .kind = SlipKind::Cash,
                                       .stores = SlipSequenceKind::Cash,
                                       .words = {{u"yil", &yil},
                                                 {u"ay", &ikiHaneliAy},
                                                 {u"tarih", &tarih},
                                                 {u"kasakodu", Hareket::KasaKodu, &trimmedField},
                                                 {u"kasaislemno", Hareket::KasaIslemNo},
                                                 {u"cariunvan", Hareket::Unvani, &kodluCari},
                                                 {u"tutar", Hareket::Tutar, &xmlAmount},
                                                 {u"carikod", Hareket::CariKodu},
                                                 {u"islemno", Hareket::IslemNo},
                                                 {u"makbuzno", &nothing}}};
    return document;
}

const SlipDocument &exeldenbankafisikaydet()
{
    static const SlipDocument document{
        .title = u"Banka İşlem Fişi Xml Dosyası Kaydet"_s,
        .kind = SlipKind::Bank,
        .ofBankList = true,
        .stores = SlipSequenceKind::Bank,
        .words = {{u"tarih", &tarih},
                  {u"fisno", BankaFisi::FisNo, &trimmedField},
                  {u"personelkodu", BankaFisi::OzelKod, &trimmedField},
                  {u"tutar", BankaFisi::Tutar, &xmlAmount},
                  {u"bankakodu", &bankaHesapKodu},
                  {u"belgeno", &nothing},
                  {u"aciklama", BankaFisi::OzelKod, &kodluPersonel}}};
    return document;
}

const SlipDocument &exelkasanakitkaydet()
{
    static const SlipDocument document{.title = u"Kasa Nakit Tahsilat Xml Dosyası Kaydet"_s,
                                       .kind = SlipKind::Cash,
                                       .needs = ReadKind::Cash,
                                       .barCountsAllRows = true,
                                       .words = {{u"yil", &yil},
                                                 {u"ay", &ay},
                                                 {u"tarih", &tarih},
                                                 {u"kasakodu", &kasaKodu},
                                                 {u"kasaislemno", DuzeyHareket::IslemNo},
                                                 {u"cariunvan", DuzeyHareket::Aciklama},
                                                 {u"tutar", DuzeyHareket::Tutar, &xmlAmount},
                                                 {u"carikod", DuzeyHareket::CariKodu},
                                                 {u"islemno", DuzeyHareket::IslemNo},
                                                 {u"makbuzno", &nothing},
                                                 {u"sateleman", DuzeyHareket::SaticiKodu}}};
    return document;
}

const SlipDocument &exelkredikartkaydet()
{
    static const SlipDocument document{.title = u"Kredi Kartı Tahsilat Xml Dosyası Kaydet"_s,
                                       .kind = SlipKind::Card,
                                       .needs = ReadKind::Card,
                                       .barCountsAllRows = true,
                                       .words = {{u"kartfisno", DuzeyHareket::IslemNo},
                                                 {u"tarih", &tarih},
                                                 {u"trhay", &ay},
                                                 {u"trhyil", &yil},
                                                 {u"tutar", DuzeyHareket::Tutar, &xmlAmount},
                                                 {u"carikod", DuzeyHareket::CariKodu},
                                                 {u"bankahesapno", &bankaHesapKodu},
                                                 {u"satiselemani", DuzeyHareket::SaticiKodu},
                                                 {u"aciklama", DuzeyHareket::Aciklama}}};
    return document;
}

const SlipDocument &kredikartkaydet()
{
    static const SlipDocument document{
        .title = u"Kredi Kartı Xml Dosyası Kaydet"_s,
        .kind = SlipKind::Card,
        .rowClass = u"Kredi Kartı"_s,
        .words = {{u"kartfisno", MetinHareket::MuhBelgeNo, &lastEight},
                  {u"tarih", MetinHareket::IslemTarihi, &tarihcevir},
                  {u"trhay", MetinHareket::IslemTarihi, &fileMonth},
                  {u"trhyil", MetinHareket::IslemTarihi, &fileYear},
                  {u"tutar", MetinHareket::Tutar},
                  {u"carikod", MetinHareket::CariKod},
                  {u"bankahesapno", &bankaHesapKodu}}};
    return document;
}

namespace {

// Notes and cheques differ in the words for their number and date alone.
SlipDocument rollDocument(const QString &title, SlipKind kind, const QString &rowClass,
                          QStringView number, QStringView date)
{
    return {.title = title,
            .kind = kind,
            .rowClass = rowClass,
            .words = {{number, MetinHareket::MuhBelgeNo, &lastEight},
                      {date, MetinHareket::IslemTarihi, &tarihcevir},
                      {u"vadetarih", MetinHareket::VadeTarihi, &tarihcevir},
                      {u"tutar", MetinHareket::Tutar},
                      {u"carikod", MetinHareket::CariKod},
                      {u"portfoy", MetinHareket::MuhBelgeNo, &lastEight},
                      {u"cariadı", MetinHareket::CariKod, &ikiBoslukluKodluCari}}};
}

} // namespace

const SlipDocument &senetkaydet()
{
    static const SlipDocument document = rollDocument(u"Senet Xml Dosyası Kaydet"_s, SlipKind::Note,
                                                      u"Senet"_s, u"senetno", u"senettarih");
    return document;
}

const SlipDocument &cekkaydet()
{
    static const SlipDocument document = rollDocument(u"Çek Xml Dosyası Kaydet"_s, SlipKind::Cheque,
                                                      u"Çek"_s, u"cekno", u"cektarih");
    return document;
}

const SlipDocument &kasanakitkaydet()
{
    static const SlipDocument document{
        .title = u"Kasa Nakit Tahsilat Xml Dosyası Kaydet"_s,
        .kind = SlipKind::Cash,
        .rowClass = u"Nakit Tahsil"_s,
        .words = {{u"yil", MetinHareket::IslemTarihi, &fileYear},
                  {u"ay", MetinHareket::IslemTarihi, &fileMonth},
                  {u"tarih", MetinHareket::IslemTarihi, &tarihcevir},
                  {u"kasakodu", &kasaKodu},
                  {u"kasaislemno", MetinHareket::MuhBelgeNo, &lastEight},
                  {u"cariunvan", MetinHareket::CariKod, &kodluCari},
                  {u"tutar", MetinHareket::Tutar},
                  {u"carikod", MetinHareket::CariKod},
                  {u"islemno", MetinHareket::MuhBelgeNo, &lastEight},
                  {u"makbuzno", &nothing}}};
    return document;
}

const SlipDocument &nakitkaydet()
{
    static const SlipDocument document{.title = u"Nakit Tahsilat Xml Dosyası Kaydet"_s,
                                       .rowClass = u"Nakit Tahsil"_s};
    return document;
}

} // namespace kervan
