#include "support/bifgenerator.h"

#include "base/failure.h"
#include "support/ruler.h"

#include <QFile>
#include <QRandomGenerator>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// With so many digits, as the source spells codes and dates.
QString digits(int number, int width)
{
    return u"%1"_s.arg(number, width, 10, QChar(u'0'));
}

// Right-aligned with so many decimals and a point, as the source spells numbers.
QString spelled(double value, int width, int decimals)
{
    return QString::number(value, 'f', decimals).rightJustified(width);
}

QByteArray header(QRandomGenerator &random, int number)
{
    static const QStringList titles{u"ÖZGÜR GIDA LTD. ŞTİ."_s, u"IŞIK & OĞULLARI"_s,
                                    u"HACI BABA'NIN YERİ"_s, u"ÇINAR MARKET"_s};
    const double total = 100.0 + random.bounded(9000.0);
    const double discount = number % 4 == 0 ? total / 20 : 0;
    const double vat = (total - discount) * 0.18;
    return ruled(u"@5", 5, u"202403"_s + digits(1 + number % 28, 2), 20,
                 digits(101 + number % 5, 8), 28, u"120."_s + digits(number % 3000, 5), 39,
                 titles[number % titles.size()], 80, u"KRV"_s + digits(number, 12), 96,
                 spelled(total, 12, 4), 109, spelled(discount, 12, 4), 122, spelled(vat, 12, 4),
                 135, spelled(total - discount + vat, 12, 4), 148, u"0");
}

QByteArray line(QRandomGenerator &random, int products)
{
    const int product = random.bounded(products);
    const double quantity = random.bounded(1, 500) / 10.0;
    const double price = 0.25 + product % 400;
    return ruled(u"@6", 31, u"URN"_s + digits(product, 6), 46, u"ÖRNEK ÜRÜN %1"_s.arg(product), 97,
                 spelled(quantity, 8, 2), 106, spelled(price, 12, 4), 124,
                 spelled(quantity * price, 12, 4));
}

} // namespace

void writeBif(const QString &path, const BifSize &size)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw Failure(u"%1 yazılamadı."_s.arg(path));
    QRandomGenerator random(size.seed);
    for (int invoice = 1; invoice <= size.invoices; ++invoice) {
        file.write(header(random, invoice));
        for (int i = 0; i < size.lines; ++i)
            file.write(line(random, size.products));
        if (invoice % 7 == 0)
            file.write(ruled(u"@8", 22, u"0", 24, u"   50.00"));
    }
}

void writePrices(LocalDb &db, const QString &database, int products)
{
    OpenDb open(db, database);
    for (int product = 0; product < products; ++product)
        db.query(Statement(u"insert into urun values ('URN%1','ÖRNEK','0','%2,20')"_s.arg(
            digits(product, 6), QString::number(product % 400))));
}

} // namespace kervan
