// Makes the samples whose faults the checks show: make_denetim FOLDER

#include "support/ruler.h"
#include "support/workbooks.h"
#include "support/xlswriter.h"

#include <QFile>

#include <optional>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s was not written", qPrintable(path));
}

// Invoices.

struct Goods
{
    QString code = u"KHV-100"_s;
    QString name = u"TÜRK KAHVESİ 100 GR"_s;
    double quantity = 4;
    double price = 38.5;
    QString spelled = {};           // the quantity, where it is none
    std::optional<double> odd = {}; // an amount that price and quantity don't make

    double amount() const { return odd.value_or(quantity * price); }
};

struct Invoice
{
    QString title;
    QList<Goods> goods = {Goods()};
    QString date = u"20210316"_s;
    QString person = u"00100101"_s;
    QString customer = u"120.34000"_s;
    QString number = {}; // the next one
    double discount = 0;
    double more = 0; // that no line tells
    QString vat = {};
    QString state = u"0"_s;
};

QString money(double amount)
{
    return QString::number(amount, 'f', 4);
}

class Export
{
public:
    QByteArray lines = ruled(u"@1", 5, u"KERVAN DENETİM FATURALARI");

    void add(const Invoice &invoice)
    {
        double sum = 0;
        for (const Goods &goods : invoice.goods)
            sum += goods.amount();
        sum += invoice.more;
        const double vat = (sum - invoice.discount) * 0.18;
        ++m_number;
        const QString number = invoice.number.isEmpty()
                                   ? u"KRV2021%1"_s.arg(m_number, 8, 10, QChar(u'0'))
                                   : invoice.number;
        lines += ruled(u"@5", 5, invoice.date, 20, invoice.person, 28, invoice.customer, 39,
                       invoice.title, 80, number, 96, money(sum), 109, money(invoice.discount), 122,
                       invoice.vat.isEmpty() ? money(vat) : invoice.vat, 135,
                       money(sum - invoice.discount + vat), 148, invoice.state);
        for (const Goods &goods : invoice.goods) {
            const QString quantity =
                goods.spelled.isEmpty() ? QString::number(goods.quantity, 'f', 2) : goods.spelled;
            lines += ruled(u"@6", 31, goods.code, 46, goods.name, 97, quantity, 106,
                           money(goods.price), 124, money(goods.amount()));
        }
    }

private:
    int m_number = 2000;
};

QByteArray invoices()
{
    const Goods cartons{u"CAY-500"_s, u"SİYAH ÇAY RİZE 500 GR"_s, 24, 61.4};
    Export file;
    file.add({.title = u"DENİZ MARKET"_s, .goods = {Goods(), cartons}});
    file.add({.title = u"IŞIK BAKKALİYESİ"_s, .goods = {cartons}, .customer = u"120.34007"_s});
    file.add({.title = u"GÜNEŞ BÜFE"_s, .person = u"00100199"_s}); // whom no definition knows
    file.add({.title = u"ÜNAL ŞARKÜTERİ"_s, .person = {}});
    file.add({.title = u"KARACA GIDA"_s,
              .goods = {Goods(), {u"LOK-GUL"_s, u"GÜLLÜ LOKUM 400 GR"_s, 6, 48.2}}});
    file.add({.title = u"ÇINAR & OĞULLARI TİCARET"_s});
    file.add({.title = u"AVRO € PAZARI"_s});
    file.add({.title = u"Kolay tutar Market"_s});
    file.add({.title = u"ÖZDEMİR TEKEL"_s, .number = u"KRV202100002002"_s}); // that of the second
    file.add({.title = u"YILDIZ MARKET"_s, .more = 100});
    file.add({.title = u"ŞAHİN MARKET"_s, .date = u"20210317"_s});
    file.add({.title = u"AKIN MARKET"_s, .date = u"20190301"_s});
    file.add({.title = u"İPEK MARKET"_s, .date = u"2021AB16"_s});
    file.add({.title = u"ÖZGÜR GIDA"_s, .goods = {{.quantity = -2}}});
    file.add({.title = u"KENT MARKET"_s, .vat = u"27,72 TL"_s});
    file.add({.title = u"ADA BÜFE"_s, .customer = {}});
    file.add({.title = u"EGE GIDA"_s, .number = u" "_s});
    file.add({.title = u"ÇARŞI TEKEL"_s, .goods = {Goods(), {.spelled = u"1O"_s}}});
    file.add({.title = u"LİMAN MARKET"_s, .goods = {}, .more = 154});
    file.add({.title = u"SAHİL MARKET"_s});
    file.add({.title = u"VADİ MARKET"_s, .goods = {{.code = {}}, {.code = u"A<B"_s}}});
    file.add({.title = u"TEPE MARKET"_s, .goods = {{.quantity = 1, .price = 1, .odd = 100}}});
    file.add({.title = u"OVA MARKET"_s, .discount = 900});
    file.add({.title = u"SAYILMAYAN MARKET"_s, .state = u"1"_s});
    file.lines += "@9 SON\r\n";
    return file.lines;
}

QList<BookRow> sheetInvoices()
{
    return bookRows(
        uR"(Fatura Tarihi|Cari Kodu|Cari Unvanı|Belge No|Fatura No|Fatura Tipi|Ürün Kodu|Miktar|Birim|Birim Fiyat|İnd 1 %|İnd 2 %|İnd 3 %|İnd 4 %|İnd 5 %|İnd 6 %|Kdv %|Personel|Ödeme Tipi|Rota|Bölge|Araç|İndirim Tutarı
@2021-03-16|120.01.001|DENİZ MARKET|IRS-3101|DZ2021000401|SATIŞ|KHV-250|#12|ADET|#92.75|#5||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.001|DENİZ MARKET|IRS-3101|DZ2021000401|SATIŞ|CAY-500|#6|KOLİ|#61.4|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.002|IŞIK BAKKALİYESİ|IRS-3102|DZ2021000402|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ77|30GUN||||
@2021-03-16|120.01.003|GÜNEŞ BÜFE|IRS-3103|DZ2021000403|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|||||
@2021-03-17|120.01.004|ŞAHİN MARKET|IRS-3104|DZ2021000404|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
Mart|120.01.005|İPEK MARKET|IRS-3105|DZ2021000405|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01&06|ÇINAR & OĞULLARI|IRS-3106|DZ2021000406|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.007|KARACA GIDA|belge tarihi|DZ2021000407|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.008|YILDIZ MARKET|IRS-3108|DZ2021000408|SATIŞ|KHV-100|1.000.000|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.009|ÖZGÜR GIDA|IRS-3109|DZ2021000409|SATIŞ|KHV-100|#-2|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.010|ADA BÜFE|IRS-3110|DZ2021000410|SATIŞ|KHV-100|#4|SANDIK|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.011|EGE GIDA|IRS-3111|DZ2021000411|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.012|LİMAN MARKET|IRS-3111|DZ2021000411|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.013|VADİ MARKET|IRS-3113|DZ2021000413|SATIŞ|KHV“100”|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.014|OVA MARKET|IRS-3114|DZ2021000414|SATIŞ|KHV-100|#4|ADET|#38.5|#60|#60|||||#8|DZ01|PESIN||||
@2021-03-16|120.01.015|TEPE MARKET|IRS-3115|DZ2021000415|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.016|KENT MARKET|IRS-3116|DZ2021000416|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.015|TEPE MARKET|IRS-3115|DZ2021000415|SATIŞ|CAY-500|#6|ADET|#61.4|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.017|AKIN MARKET|IRS-3117||SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16||NUMARASIZ|IRS-3118|DZ2021000418|SATIŞ|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||
@2021-03-16|120.01.018|ÜNAL ŞARKÜTERİ|IRS-3119|DZ2021000419|TAKAS|KHV-100|#4|ADET|#38.5|||||||#8|DZ01|PESIN||||)"_s);
}

// Cards.

QByteArray accounts()
{
    QByteArray lines;
    for (const auto &[code, title] : std::initializer_list<std::pair<QStringView, QStringView>>{
             {u"12034001", u"DENİZ MARKET"},
             {u"12034002", u"ÇINAR & OĞULLARI"},
             {u"12034003", u"AVRO € PAZARI"},
             {u"12034004", u"GÜNEŞ BÜFE"},
             {u"12034005", u"eski caridataref"},
             {u"12034004", u"GÜNEŞ BÜFE 2"},
             {u"", u"KODSUZ MARKET"},
             {u"12034008", u""},
             {u"12<34009", u"İPEK MARKET"}})
        lines += ruled(u"", 3, code, 11, title);
    return lines + "\r\n";
}

QByteArray materials()
{
    const auto line = [](QStringView code, QStringView name, QStringView unit = u"ADET",
                         QStringView multiplier = u"0.000", QStringView rate = u"8") {
        return ruled(u"000001", 25, code, 79, name, 119, unit, 125, multiplier, 133, rate);
    };
    return line(u"KHV-100", u" TÜRK KAHVESİ 100 GR") + line(u"SKL-MIX", u" ŞEKER & LOKUM") +
           line(u"CIK-EUR", u" ÇİKOLATA 1 €") + line(u"ADS-001", u"") +
           line(u"BRM-001", u" BİRİMSİZ ÜRÜN", u"") +
           line(u"CRP-001", u" VİRGÜLLÜ ÇARPAN", u"KOLİ", u"24,000") +
           line(u"KDV-001", u" ORANSIZ ÜRÜN", u"ADET", u"0.000", u"") +
           line(u"KCK-001", u" kdv dahil paket") + line(u"KHV-100", u" TÜRK KAHVESİ 100 GR") +
           line(u"", u" KODSUZ ÜRÜN");
}

QList<BookRow> meyCards()
{
    return bookRows(uR"(Kodu|Adı|Ticari Ünvan
34001|RAKI-70|RAKI 70 CL
34001|VTK-50|VOTKA & LİMON 50 CL
34001|GIN-50|GİN 50 CL € 
34001|RAKI-70|RAKI 70 CL
34001|SRP-75|kdv orani yok
34001||KODSUZ ÜRÜN
34001|LIK-35|)"_s);
}

QByteArray counts()
{
    return ruled(u"8690000001001", 15, u"12") + ruled(u"8690000001002", 15, u"1.5") +
           ruled(u"8690000001001", 15, u"3") + ruled(u"8690000009999", 15, u"7") +
           ruled(u"8690000001003", 15, u"-2") + ruled(u"8690000001004", 15, u"4x") +
           ruled(u"8690000001005") + ruled(u"", 15, u"6") + "\r\n" +
           ruled(u"8690000001006", 15, u"24");
}

// Slips.

QList<BookRow> movements()
{
    return bookRows(uR"(TUTAR|||KASA KODU||CARİ KODU|UNVANI|||||TARİH
#1250|||100.01.001||120.01.101|DENİZ MARKET|||||15.3.21
#1234567.89|||100.01.001||120.01.102|IŞIK BÜFE|||||15.3.21
#89.95|||100.01.002||120.01.103|ÇINAR & OĞULLARI|||||15.3.21
#347.5|||100.01.002||120.01.104|AVRO € PAZARI|||||15.3.21
#75|||100.01.002||120.01.105|Kolay Market|||||15.3.21
#45.1|||100.01.003||120.01.106|ŞAHİN MARKET|||||17.3.2021
#45.1|||100.01.003||120.01.107|AKIN MARKET|||||1.3.2019
#45.1|||100.01.003||120.01.108|İPEK MARKET|||||@2021-03-15
#-20|||100.01.003||120.01.109|ÖZGÜR GIDA|||||15.3.21
#0|||100.01.003||120.01.110|KENT MARKET|||||15.3.21
12.50|||100.01.003||120.01.111|ADA BÜFE|||||15.3.21
#60|||100.01.003|||EGE GIDA|||||15.3.21
#60|||100.01.003||120.01.113||||||15.3.21
#60|||||120.01.114|LİMAN MARKET|||||15.3.21
1,2,3|||100.01.003||120.01.115|SAHİL MARKET|||||15.3.21)"_s);
}

QList<BookRow> trips()
{
    return bookRows(uR"(|||||||||||||TAHSİLATLAR
2
3
4
CARİ||ÜNVAN||||||||||||TUTAR
120.01.101||DENİZ MARKET||||||||||||#1250
120.01.102||ÇINAR & OĞULLARI||||||||||||#89.95
120.01.103||AVRO € PAZARI||||||||||||#347.5
120.01.104||saat tamircisi||||||||||||#75
120.01.105||||||||||||||#45.1
120.01.106||ŞAHİN MARKET||||||||||||#-20
120.01.107||AKIN MARKET||||||||||||#0
120.01.108||İPEK MARKET||||||||||||12.50
120.01.109||ÖZGÜR GIDA||||||||||||yok
|TOPLAM
120.01.110||KENT MARKET||||||||||||#10)"_s);
}

QList<BookRow> sales()
{
    return bookRows(uR"(KASA||CARİ|ÜNVAN||||TUTAR|TÜR
100.01.001||120.01.101|DENİZ MARKET||||#1250|HHSATIS
100.01.001||120.01.102|ÇINAR & OĞULLARI||||#89.95|HHSATIS
100.01.001||120.01.103|AVRO € PAZARI||||#347.5|HHSATIS
100.01.002||120.01.104|saat tamircisi||||#75|HHSATIS
100.01.002||120.01.105|||||#45.1|HHSATIS
100.01.002||120.01.106|ŞAHİN MARKET||||#-20|HHSATIS
100.01.002||120.01.107|AKIN MARKET||||#0|HHSATIS
||120.01.108|İPEK MARKET||||#15|HHSATIS
100.01.002||120.01.109|ÖZGÜR GIDA||||12.50|HHSATIS
100.01.002||120.01.110|İADE MARKET||||#10|HHIADE)"_s);
}

QList<BookRow> collections()
{
    return bookRows(uR"(TARİH|CARİ KODU|ÜNVAN|AÇIKLAMA|PERSONEL||TUTAR
16.03.2021|120.01.101|DENİZ MARKET|MAKBUZ 1|DZ01||1,250.00
16.03.2021|120.01.102|ÇINAR|MAKBUZ & DEKONT|DZ01||89.95
16.03.2021|120.01.103|AVRO PAZARI|5 € ÜSTÜ|DZ01||347.50
16.03.2021|120.01.104|GÜNEŞ BÜFE|sateleman|DZ77||75.00
17.03.2021|120.01.105|ŞAHİN MARKET|MAKBUZ 5|DZ01||45.10
16/Mart|120.01.106|İPEK MARKET|MAKBUZ 6|DZ01||45.10
16.03.2021|120.01.107|ÖZGÜR GIDA|MAKBUZ 7|DZ01||-20.00
16.03.2021|120.01.108|KENT MARKET|MAKBUZ 8|DZ01||0
16.03.2021||EGE GIDA|MAKBUZ 9|DZ01||60.00
16.03.2021|120.01.110|LİMAN MARKET|MAKBUZ 10|DZ01||1.234,50
16.03.2021|120.01.111|SAHİL MARKET|MAKBUZ 11|DZ01||1.2.3)"_s);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    const QString folder = QString::fromLocal8Bit(argv[1]) + u'/';
    write(folder + u"denetim-fatura.bif"_s, invoices());
    write(folder + u"denetim-cariler.txt"_s, accounts());
    write(folder + u"denetim-stoklar.txt"_s, materials());
    write(folder + u"denetim-sayim.txt"_s, counts());
    writeWorkbook(folder + u"denetim-duzey-fatura.xlsx"_s, u"Sheet1"_s, sheetInvoices());
    writeWorkbook(folder + u"denetim-tahsilatlar.xlsx"_s, u"Sayfa1"_s, movements());
    writeXls(folder + u"16032021-00100199.xls"_s, u"Sayfa1"_s, trips());
    writeWorkbook(folder + u"POSANALIZ-20210316.xlsx"_s, u"Sayfa1"_s, sales());
    writeWorkbook(folder + u"denetim-duzey-nakit.xlsx"_s, u"Sheet1"_s, collections());
    writeXls(folder + u"mey-denetim.xls"_s, u"cari mey"_s, meyCards());
    return 0;
}
