// Writes the sample workbooks of the slip screens and of the Mey stock list into the folder that it
// is given.

#include "support/workbooks.h"

#include <QDir>

#include <array>
#include <cstdio>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

struct Account
{
    QString code;
    QString title;
};

const std::array<Account, 8> accounts{{{u"120.01.101"_s, u"DENİZ MARKET"_s},
                                       {u"120.01.102"_s, u"IŞIK BÜFE"_s},
                                       {u"120.01.103"_s, u"ÇINAR GIDA SAN. VE TİC. LTD. ŞTİ."_s},
                                       {u"120.01.104"_s, u"YILDIZ & OĞULLARI"_s},
                                       {u"120.01.105"_s, u"ŞİRİN'İN YERİ"_s},
                                       {u"120.01.106"_s, u"Kolay Market"_s},
                                       {u"120.01.107"_s, u"ÖZGÜR GIDA, toplam tutar"_s},
                                       {u"120.01.108"_s, u"GÜLER ŞARKÜTERİ"_s}}};

// Whole and broken amounts, one below 1 and one beyond seven digits.
constexpr std::array<double, 8> amounts{1250, 347.5, 89.95, 0.75, 12480.4, 620, 1234567.89, 45.1};

BookRow emptyRow(qsizetype fields)
{
    return BookRow(fields);
}

// Dates are texts, of which the screen keeps nine characters; the last one is a true date, whose
// year loses its last digit there.
void writeCollections(const QString &path)
{
    QList<BookRow> rows{{u"TUTAR"_s, u"DÖVİZ"_s, u"KUR"_s, u"KASA"_s, u"FİŞ"_s, u"CARİ KODU"_s,
                         u"CARİ ÜNVANI"_s, u"ŞEHİR"_s, u"BÖLGE"_s, u"TEMSİLCİ"_s, u"NOT"_s,
                         u"TARİH"_s}};
    for (qsizetype i = 0; i < 16; ++i) {
        const auto account = static_cast<std::size_t>(i) % accounts.size();
        BookRow &row = rows.emplaceBack(emptyRow(12));
        row[0] = BookCell(amounts[account], u"#,##0.00"_s);
        row[1] = u"TL"_s;
        row[3] = u"100.01.00%1"_s.arg(i % 3 + 1);
        row[5] = accounts[account].code;
        row[6] = accounts[account].title;
        row[7] = i % 2 == 0 ? u"BURSA"_s : u"ANKARA"_s;
        row[11] = u"%1.3.2021"_s.arg(i + 8);
    }
    rows.last()[11] = BookCell(QDate(2021, 3, 23));
    writeWorkbook(path, u"Sayfa1"_s, rows);
}

void writeTravel(const QString &path)
{
    QList<BookRow> rows{{u"SEYAHAT TAHSİLAT LİSTESİ"_s},
                        {u"Temsilci"_s, {}, u"00100101"_s},
                        {u"Tarih"_s, {}, BookCell(QDate(2021, 3, 15))},
                        {}};
    BookRow &heading = rows.emplaceBack(emptyRow(15));
    heading[0] = u"CARİ KODU"_s;
    heading[2] = u"ÜNVAN"_s;
    heading[14] = u"TAHSİLAT"_s;
    double total = 0;
    for (std::size_t i = 0; i < accounts.size(); ++i) {
        BookRow &row = rows.emplaceBack(emptyRow(15));
        row[0] = accounts[i].code;
        row[2] = accounts[i].title;
        row[14] = BookCell(amounts[i], u"#,##0.00"_s);
        total += amounts[i];
    }
    // The line of the total has no code, and ends the list.
    BookRow &sum = rows.emplaceBack(emptyRow(15));
    sum[2] = u"TOPLAM"_s;
    sum[14] = BookCell(total, u"#,##0.00"_s);
    writeWorkbook(path, u"Sayfa1"_s, rows);
}

void writeSales(const QString &path)
{
    QList<BookRow> rows{{u"KASA"_s, u"FİŞ"_s, u"CARİ KODU"_s, u"ÜNVAN"_s, u"SAAT"_s, u"ADET"_s,
                         u"İSKONTO"_s, u"TUTAR"_s, u"TÜR"_s}};
    const std::array<QString, 3> kinds{u"HHSATIS"_s, u"HHIADE"_s, u"HHSATIS"_s};
    for (qsizetype i = 0; i < 18; ++i) {
        const auto account = static_cast<std::size_t>(i) % accounts.size();
        BookRow &row = rows.emplaceBack(emptyRow(9));
        row[0] = u"POS0%1"_s.arg(i % 2 + 1);
        row[1] = BookCell(4100 + i);
        row[2] = accounts[account].code;
        row[3] = accounts[account].title;
        row[5] = BookCell(i % 5 + 1);
        row[7] = BookCell(amounts[account], u"#,##0.00"_s);
        row[8] = kinds[static_cast<std::size_t>(i) % kinds.size()];
    }
    writeWorkbook(path, u"Sayfa1"_s, rows);
}

// What differs between the two exports of collections is where their fields stand.
struct CollectionFields
{
    qsizetype date, code, title, amount, staff, description, voucher;
};

void writeDuzey(const QString &path, const CollectionFields &fields, const QString &description)
{
    // Amounts are texts with a point before the decimals; the last one is a true number.
    const std::array<QString, 5> texts{u"1,250.00"_s, u"347.5"_s, u".75"_s, u"12,480.40"_s, {}};
    QList<BookRow> rows{emptyRow(8)};
    rows[0][fields.date] = u"Tarih"_s;
    rows[0][fields.code] = u"Müşteri"_s;
    rows[0][fields.title] = u"Müşteri Adı"_s;
    rows[0][fields.amount] = u"Tutar"_s;
    rows[0][fields.staff] = u"Satıcı"_s;
    rows[0][fields.description] = u"Açıklama"_s;
    rows[0][fields.voucher] = u"Belge"_s;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        BookRow &row = rows.emplaceBack(emptyRow(8));
        row[fields.date] = BookCell(QDate(2021, 3, 15));
        row[fields.code] = accounts[i].code;
        row[fields.title] = accounts[i].title;
        row[fields.amount] = texts[i].isEmpty() ? BookCell(1234.5) : BookCell(texts[i]);
        row[fields.staff] = i == 2 ? u"00100999"_s : u"0010010%1"_s.arg(i % 4 + 1);
        row[fields.description] = description.arg(i + 1);
        row[fields.voucher] = BookCell(7301 + i);
    }
    writeWorkbook(path, u"Sheet1"_s, rows);
}

void writeMey(const QString &path)
{
    const QStringList names{u"RAKI 35 CL"_s,  u"RAKI 70 CL"_s,          u"ŞARAP KIRMIZI 75 CL"_s,
                            u"VOTKA 50 CL"_s, u"LİKÖR & KAHVE 50 CL"_s, u"CİN 70 CL"_s};
    QList<BookRow> rows{{u"Kodu"_s, u"Adı"_s, u"Ticari Ünvan"_s, u"Statü"_s, u"Miktar"_s,
                         u"Birim Fiyat"_s, u"Tutar"_s, u"Bölge"_s}};
    for (int i = 0; i < names.size(); ++i) {
        const double price = 84.5 + 61.25 * i;
        rows << BookRow{u"D0%1"_s.arg(i % 2 + 1),
                        u"MEY-%1"_s.arg(1001 + i),
                        names[i],
                        u"Bar"_s,
                        12 + i,
                        price,
                        (12 + i) * price,
                        u"Marmara"_s};
    }
    writeWorkbook(path, u"cari mey"_s, rows);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: make-samples FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    writeCollections(folder.filePath(u"tahsilatlar.xlsx"_s));
    writeTravel(folder.filePath(u"15032021-00100101.xlsx"_s));
    writeSales(folder.filePath(u"POSANALIZ-20210315.xlsx"_s));
    writeDuzey(folder.filePath(u"duzey-nakit.xlsx"_s), {0, 1, 2, 6, 4, 3, 5},
               u"Nakit tahsilat %1"_s);
    writeDuzey(folder.filePath(u"duzey-kredikarti.xlsx"_s), {5, 3, 4, 7, 1, 2, 0},
               u"Kredi kartı %1"_s);
    writeMey(folder.filePath(u"mey-stok.xlsx"_s));
    return 0;
}
