#include "frame/entries.h"

namespace kervan {

using namespace Qt::StringLiterals;

const QList<Entry> &transferEntries()
{
    static const QList<Entry> entries{
        {u"crtrans"_s, u"Cari Hesap Aktarım   "_s, u"cr"_s},
        {u"crtfisrans"_s, u"Cari Hesap Fiş Aktarım     "_s, u"cafis"_s},
        {u"ftrans"_s, u"Fatura Aktarım     "_s, u"fat"_s},
        {u"stkkart"_s, u"Stok Kart Aktarımı   "_s, u"stoktrf"_s},
    };
    return entries;
}

const QList<Entry> &bigButtons()
{
    static const QList<Entry> entries{
        {u"chameleonButton1"_s, u"Cari Hesap Aktarımı"_s, u"cr"_s, u"cari"_s},
        {u"chameleonButton4"_s, u"Stok Kart Aktarımı"_s, u"stoktrf"_s, u"stok"_s},
        {u"chameleonButton5"_s, u"SAP Fatura Aktarım"_s, u"fat"_s, u"sapfatura"_s},
        {u"lvButtons_H1"_s, u"Düzey Tahsilat Aktarımı"_s, u"carifisduzey"_s, u"duzeytahsilat"_s},
        {u"lvButtons_H2"_s, u"Seyahat - Veresiyeden Tahsilat Aktarımı"_s, u"cafis2"_s,
         u"seyahat"_s},
        {u"lvButtons_H3"_s, u"Pos Analizi"_s, u"cafis3"_s, u"posanaliz"_s},
        {u"lvButtons_H4"_s, u"Sayım Aktarımı"_s, u"sayimform"_s, u"sayim"_s},
        {u"lvButtons_H5"_s, u"Düzey  Fatura Aktarım"_s, u"fatduz"_s, u"duzeyfatura"_s},
    };
    return entries;
}

const QList<Entry> &definitionEntries()
{
    static const QList<Entry> entries{
        {u"urunformu"_s, u"Ürün Bayi Fiyat Eşleştirmesi"_s, u"urunform"_s},
        {u"dosk"_s, u"Dosya Konumları   "_s, u"ayr"_s},
        {u"firtanım"_s, u"Firma Tanımlaması"_s, u"fir"_s},
        {u"muhkod11"_s, u"Muhasebe Hesap Kodları     "_s, u"muhkod"_s},
        {u"odmpl"_s, u"Ödeme Plan Kodu   "_s, u"odmplan"_s},
        {u"brset"_s, u"Birim Setleri"_s, u"birimseti"_s},
        {u"ststatu1"_s, u"Stok Statü Kayıtları"_s, u"ststatu"_s},
        {u"prs"_s, u"Personel Kayıtları     "_s, u"per"_s},
        {u"bankkod"_s, u"Banka Hesap Kodu    "_s, u"bankakodu"_s},
        {u"stbrmset"_s, u"Stok Birim Seti Kodu     "_s, u"brmset"_s},
        {u"kdvmua"_s, u"Kdv Muafiyet Yazısı"_s, u"kdvmu"_s},
        {u"kasakod"_s, u"Kasa Kodu"_s, u"kskod"_s},
        {u"fozkod"_s, u"Fatura Özel Kodları"_s, u"ozkod"_s},
        {u"stozkod"_s, u"Stok özel kodları"_s, u"stokozkod"_s},
        {u"sqbag"_s, u"Sql Server Bağlantı"_s, u"sqlbaglanti"_s},
    };
    return entries;
}

const QList<ListEntry> &invoiceListEntries()
{
    static const QList<ListEntry> entries{
        {u"fattumsec"_s, u"Tümünü Seç"_s, &InvoiceList::fattumsec},
        {u"eolan"_s, u"E-Fatura Olanlar"_s, &InvoiceList::eolan},
        {u"eolmayan"_s, u"E-Fatura Olmayanlar"_s, &InvoiceList::eolmayan},
        {u"tumsecimkaldir"_s, u"Tüm Seçimi Kaldır"_s, &InvoiceList::tumsecimkaldir},
        {u"ytjhyytj"_s, u"-"_s, nullptr},
        {u"efatgoster"_s, u"E-Fatura Olanları Göster"_s, &InvoiceList::efatgoster},
        {u"efatolmgoster"_s, u"E-Fatura Olmayanları Göster"_s, &InvoiceList::efatolmgoster},
        {u"tumgoster"_s, u"Tümünü Göster"_s, &InvoiceList::tumgoster},
    };
    return entries;
}

const QList<Entry> &slipListEntries()
{
    static const QList<Entry> entries{
        {u"sec"_s, u"Seç"_s, {}},
        {u"tumsec"_s, u"Tümün Seç"_s, {}},
        {u"tumkaldir"_s, u"Tüm Seçimi Kaldır"_s, {}},
    };
    return entries;
}

} // namespace kervan
