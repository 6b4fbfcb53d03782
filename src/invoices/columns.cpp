#include "invoices/columns.h"

namespace kervan {

using namespace Qt::StringLiterals;

QList<GridColumn> invoiceColumns(const QString &title, const QString &person)
{
    return {{u"Cari Kodu"_s, 1764},
            {title, 4410},
            {u"Fatura Numarası"_s, 2117},
            {u"Belge Numarası"_s, 1764},
            {u"Fatura Tarihi"_s, 1588},
            {u"Logo Personel Kodu"_s, 1940},
            {person, 2117},
            {u"Ödeme Tipi"_s, 1411},
            {u"Toplam Tutar"_s, 1764, Qt::AlignRight},
            {u"İndirim Toplamı"_s, 1764, Qt::AlignRight},
            {u"Kdv Toplamı"_s, 1764, Qt::AlignRight},
            {u"Genel Toplam"_s, 1764, Qt::AlignRight},
            {u"E-Fatura"_s, 1058},
            {u"TAHSİLAT ORANI"_s, 1764, Qt::AlignRight},
            {u"TAHSİLAT TUTARI"_s, 1764, Qt::AlignRight},
            {u"İŞLEM NO"_s, 1411},
            {u"KASA İŞLEM NO"_s, 1764},
            {u"KASA SATIS ELEMANI"_s, 2117}};
}

QList<GridColumn> lineColumns()
{
    QList<GridColumn> columns{{u"Ürün Kodu"_s, 1940},
                              {u"Ürün Adı"_s, 4410},
                              {u"Miktar"_s, 1235, Qt::AlignRight},
                              {u"Birim Fiyat"_s, 1588, Qt::AlignRight},
                              {u"Kdv %"_s, 882, Qt::AlignRight},
                              {u"Tutar"_s, 2117, Qt::AlignRight},
                              {u"İndirimTutarı"_s, 1588, Qt::AlignRight},
                              {u"Kdv Tutarı"_s, 1411, Qt::AlignRight},
                              {u"Toplam"_s, 1588, Qt::AlignRight}};
    for (int discount = 1; discount <= 9; ++discount) {
        columns << GridColumn{u"ind%1%"_s.arg(discount), 882, Qt::AlignRight}
                << GridColumn{u"ind%1"_s.arg(discount), 882, Qt::AlignRight};
    }
    return columns << GridColumn{u"Bayi Satış Fiyatı"_s, 1764, Qt::AlignRight}
                   << GridColumn{u"Bayi Karı"_s, 1764, Qt::AlignRight}
                   << GridColumn{u"Ek Vergi Tutarı"_s, 1764, Qt::AlignRight};
}

} // namespace kervan
