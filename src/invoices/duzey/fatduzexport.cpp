#include "invoices/duzey/fatduz.h"

#include "invoices/columns.h"
#include "transfer/target.h"

#include <QScopeGuard>

namespace kervan {

using namespace Qt::StringLiterals;

// The three places where the templates of this source differ.
InvoiceTemplates duzeyTemplates()
{
    InvoiceTemplates templates = sapTemplates();
    templates.xl1.replace("<SOURCE_COST_GRP>sube depo kodu</SOURCE_COST_GRP>\r\n"
                          "    <POST_FLAGS>247<",
                          "<SOURCE_COST_GRP></SOURCE_COST_GRP>\r\n"
                          "    <POST_FLAGS>246<");
    templates.xl2.replace("<ADD_TAX_RATE>0.18<", "<ADD_TAX_RATE>0<");
    return templates;
}

// Neither list, firm nor ticks are asked for here: without a tick the document has no invoice.
void Fatduz::logoyaaktar()
{
    if (const auto name = askTarget(m_program, u"Fatura Xml Dosyası Kaydet"_s))
        kaydet(*name);
}

void Fatduz::kaydet(const QString &dosya)
{
    if (!hasInvoiceTarget(m_program.boxes, dosya))
        return;
    bilgi.begin();
    writeDocument(dosya);
    tellDone(m_program.boxes);
}

void Fatduz::writeDocument(const QString &dosya)
{
    bekle.setChecked(true);
    ilerleme.start(l1().tickedCount());
    const auto hide = qScopeGuard([this] { // also where memory runs out
        ilerleme.finish();
        bekle.setChecked(false);
    });
    IncompleteInvoices eksikler;
    const auto failed = passOver(
        [&] { writeInvoices(dosya, l1(), l3, faturaTuru.text(), source(), ilerleme, eksikler); });
    bilgi.addDocument(dosya, u"fatura"_s, l1().tickedCount(), m_program.clock.now().time(), failed);
    bilgi.add(eksikler.note());
    if (eksikler.lackSource())
        bilgi.setFailed();
}

// Amounts are left for Logo to work out, the texts of exemption and general rate stay empty, and so
// do the accounts of a line, since no accounting row is chosen on this screen.
InvoiceSource Fatduz::source()
{
    return {.templates = duzeyTemplates(),
            .liste3yukle = [this](const QString &faturano) { liste3yukle(faturano); },
            .headOf =
                [this](int row) {
                    InvoiceHead head =
                        commonHead(l1(), row, tanimlar.firmakayit, m_program.clock.now());
                    head.odemePlaniKodu = l1().cell(row, L1::OdemeTipi);
                    return head;
                },
            .goodsOf =
                [this](int line) {
                    InvoiceGoods goods = commonGoods(l3, line);
                    goods.ekVergiTutari = u"0"_s;
                    return goods;
                },
            .spelling = okunurBicim.values()};
}

} // namespace kervan
