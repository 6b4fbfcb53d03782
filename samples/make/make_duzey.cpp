// Makes samples/duzey-fatura.xlsx: make_duzey FILE

#include "support/workbooks.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

struct Head
{
    QDate date;
    QString cari, title, paper, number, kind, person, payment;
};

struct Goods
{
    QString code;
    BookCell quantity;
    QString unit;
    BookCell price;
    QList<BookCell> rates = {};
    double vat = 20;
    BookCell money = {};
};

class Export
{
public:
    Export()
    {
        m_rows << BookRow{u"Fatura Tarihi"_s, u"Cari Kodu"_s,   u"Cari Unvanı"_s,   u"Belge No"_s,
                          u"Fatura No"_s,     u"Fatura Tipi"_s, u"Ürün Kodu"_s,     u"Miktar"_s,
                          u"Birim"_s,         u"Birim Fiyat"_s, u"İnd 1 %"_s,       u"İnd 2 %"_s,
                          u"İnd 3 %"_s,       u"İnd 4 %"_s,     u"İnd 5 %"_s,       u"İnd 6 %"_s,
                          u"Kdv %"_s,         u"Personel"_s,    u"Ödeme Tipi"_s,    u"Rota"_s,
                          u"Bölge"_s,         u"Araç"_s,        u"İndirim Tutarı"_s};
    }

    void add(const Head &head, const QList<Goods> &lines)
    {
        for (const Goods &line : lines) {
            BookRow row{head.date, head.cari, head.title,    head.paper, head.number,
                        head.kind, line.code, line.quantity, line.unit,  line.price};
            row << line.rates;
            row.resize(16);
            row << line.vat << head.person << head.payment << u"R07"_s << u"EGE"_s
                << u"35 ABC 071"_s << line.money;
            m_rows << row;
        }
    }
    const QList<BookRow> &rows() const { return m_rows; }

private:
    QList<BookRow> m_rows;
};

const QString satis = u"SATIŞ"_s;

void addSales(Export &file)
{
    const Goods coffee{u"KHV-100"_s, 12, u"ADET"_s, 38.5, {10.0, 5.0}, 10};
    const Goods tea{u"CAY-1000"_s, u"6.000"_s, u"ADET"_s, 118.9, {10.0}, 10};
    const Head split{QDate(2024, 3, 5), u"120.01.003"_s,   u"ÇAMLICA GIDA & TİC."_s,
                     u"IRS-2213"_s,     u"DZ2024000303"_s, satis,
                     u"DZ02"_s,         u"30GUN"_s};
    file.add({QDate(2024, 3, 4), u"120.01.001"_s, u"YILDIZ MARKET"_s, u"IRS-2201"_s,
              u"DZ2024000301"_s, satis, u"DZ01"_s, u"PESIN"_s},
             {coffee,
              tea,
              {u"BSK-PTB"_s, 2.5, u"KOLİ"_s, 582, {8.0, 8.0, 4.0, 3.0, 2.0, 1.0}, 10},
              {u"SKZ-NAN"_s, u"1.250"_s, u"KOLİ"_s, u"85.00"_s, {}, 20}});
    file.add(split, {tea, {u"SKR-KUP"_s, 24, u"ADET"_s, 32.1, {}, 1, 50}});
    file.add({QDate(2024, 3, 5), u"120.01.002"_s, u"ÖZGÜR BÜFE"_s, u"IRS-2214"_s, u"DZ2024000304"_s,
              satis, u"DZ77"_s, u"PESIN"_s},
             {{u"CKL-SUT"_s, 36, u"ADET"_s, 18.9, {0.0, 12.5}, 10}});
    file.add(split, {coffee}); // the same invoice again, behind another one
    file.add({QDate(2024, 3, 6), u"120.02.010"_s, u"ŞAHİN'İN YERİ"_s, u"IRS-2230"_s,
              u"DZ2024000310"_s, satis, u"DZ02"_s, u"60GUN"_s},
             {{u"UN-1KG"_s, 100, u"ADET"_s, 22.3, {}, 1}, {u"YAG-1LT"_s, 40, u"ADET"_s, 74.95}});
}

void addTheRest(Export &file)
{
    file.add({QDate(2024, 3, 4), u"320.01.001"_s, u"DÜZEY DEPO"_s, u"SEVK-118"_s, u"DA2024000041"_s,
              u"ALIŞ"_s, u"DZ01"_s, u"60GUN"_s},
             {{u"KHV-250"_s, 120, u"ADET"_s, 83.1, {15.0}, 10},
              {u"CAY-500"_s, 20, u"KOLİ"_s, 1100, {15.0, 3.0}, 10}});
    file.add({QDate(2024, 3, 6), u"120.01.001"_s, u"YILDIZ MARKET"_s, u"IAD-0077"_s,
              u"DI2024000012"_s, u"SATIŞ İADE"_s, u"DZ01"_s, u"PESIN"_s},
             {{u"BSK-KRM"_s, 48, u"ADET"_s, 6.75, {8.0}, 10}});
    file.add({QDate(2024, 3, 7), u"320.01.001"_s, u"DÜZEY DEPO"_s, u"IAD-0078"_s, u"DI2024000013"_s,
              u"ALIŞ İADE"_s, u"DZ02"_s, u"60GUN"_s},
             {{u"DMT-700"_s, 5, u"KOLİ"_s, u"517,80"_s, {15.0}, 10, 25.5}});
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 1;
    Export file;
    addSales(file);
    addTheRest(file);
    writeWorkbook(QString::fromLocal8Bit(argv[1]), u"Sheet1"_s, file.rows());
    return 0;
}
