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
    const auto select = Statement(u"select * from urun where kod='").value(kod).text(u"'");
    const auto failed = passOver([&] {
        m_db.query(select);
        if (!m_db.atEnd())
            price = m_db.field(u"bfiyat");
    });
    if (failed && !m_unreadable && !select.breakingValue()) // no product has such a code
        m_unreadable = failed;
    m_asked.insert(kod, price);
    return price;
}

} // namespace kervan
