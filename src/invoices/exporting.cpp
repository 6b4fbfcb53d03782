#include "invoices/exporting.h"

#include "logoxml/document.h"

namespace kervan {

using namespace Qt::StringLiterals;

std::optional<QString> askInvoiceTarget(Program &program)
{
    const Folders &folders = program.folders;
    const auto name =
        program.dialogs.saveName({.title = u"Fatura Xml Dosyası Kaydet"_s,
                                  .filter = u"Xml Dosyaları (xml)|*.xml"_s,
                                  .start = ilkKlasor(program.folder, folders.xc, folders.xf)});
    return name ? std::optional(xmlAdi(*name)) : std::nullopt;
}

bool hasInvoiceTarget(Boxes &boxes, const QString &dosya)
{
    if (dosya.isEmpty())
        boxes.show({u"Dosya Konumu Hatalı...!Ayarlardan Dosya Konumlarını Kontrol Ediniz."_s,
                    u"Dikkat"_s, Icon::Stop});
    return !dosya.isEmpty();
}

void tellInvoicesDone(Boxes &boxes)
{
    boxes.show({u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
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
