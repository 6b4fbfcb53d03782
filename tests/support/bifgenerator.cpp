#include "support/bifgenerator.h"

#include "base/failure.h"
#include "support/ruler.h"

#include <QFile>
#include <QRandomGenerator>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString productOf(int number)
{
    return u"URN%1"_s.arg(number, 6, 10, QChar(u'0'));
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
    return Ruler(u"@5")
        .put(5, u"202403%1"_s.arg(1 + number % 28, 2, 10, QChar(u'0')))
        .put(20, u"%1"_s.arg(101 + number % 5, 8, 10, QChar(u'0')))
        .put(28, u"120.%1"_s.arg(number % 3000, 5, 10, QChar(u'0')))
        .put(39, titles[number % titles.size()])
        .put(80, u"KRV%1"_s.arg(number, 12, 10, QChar(u'0')))
        .put(96, spelled(total, 12, 4))
        .put(109, spelled(discount, 12, 4))
        .put(122, spelled(vat, 12, 4))
        .put(135, spelled(total - discount + vat, 12, 4))
        .put(148, u"0")
        .line();
}

QByteArray line(QRandomGenerator &random, int products)
{
    const int product = random.bounded(products);
    const double quantity = random.bounded(1, 500) / 10.0;
    const double price = 0.25 + product % 400;
    return Ruler(u"@6")
        .put(31, productOf(product))
        .put(46, u"ÖRNEK ÜRÜN %1"_s.arg(product))
        .put(97, spelled(quantity, 8, 2))
        .put(106, spelled(price, 12, 4))
        .put(124, spelled(quantity * price, 12, 4))
        .line();
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
            file.write(Ruler(u"@8").put(22, u"0").put(24, u"   50.00").line());
    }
}

void writePrices(LocalDb &db, const QString &database, int products)
{
    OpenDb open(db, database);
    for (int product = 0; product < products; ++product) {
        db.query(Statement(u"insert into urun values ('")
                     .value(productOf(product))
                     .text(u"','ÖRNEK','0','")
                     .value(u"%1,20"_s.arg(product % 400))
                     .text(u"')"));
    }
}

} // namespace kervan
