#include "invoices/exporting.h"

namespace kervan {

using namespace Qt::StringLiterals;

bool hasInvoiceTarget(Boxes &boxes, const QString &dosya)
{
    if (dosya.isEmpty())
        boxes.show({u"Dosya Konumu Hatalı...!Ayarlardan Dosya Konumlarını Kontrol Ediniz."_s,
                    u"Dikkat"_s, Icon::Stop});
    return !dosya.isEmpty();
}

void IncompleteInvoices::add(const QString &faturano, const Failure &failed)
{
    if (++m_count == 1)
        m_first = u"%1: %2"_s.arg(faturano, failed.description());
}

QString IncompleteInvoices::note() const
{
    if (m_count == 0)
        return {};
    return u"%1 faturanın satırları eksik yazıldı. %2"_s.arg(m_count).arg(m_first);
}

} // namespace kervan
