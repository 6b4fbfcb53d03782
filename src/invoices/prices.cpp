#include "invoices/prices.h"

#include "base/failure.h"

namespace kervan {

using namespace Qt::StringLiterals;

QString Prices::satisfiyatibul(const QString &kod)
{
    const auto asked = m_asked.constFind(kod);
    if (asked != m_asked.constEnd())
        return *asked;
    QString price = u"0"_s;
    passOver([&] {
        m_db.query(Statement(u"select * from urun where kod='").value(kod).text(u"'"));
        if (!m_db.atEnd())
            price = m_db.field(u"bfiyat");
    });
    m_asked.insert(kod, price);
    return price;
}

} // namespace kervan
