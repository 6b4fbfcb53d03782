#include "invoices/efatura.h"

#include "base/failure.h"
#include "invoices/columns.h"
#include "logolink/statements.h"

namespace kervan {

using namespace Qt::StringLiterals;

int efaturabul(Grid &l1, ScreenLink &link, ProgressField &ilerleme, Boxes &boxes, Notes &bilgi)
{
    int row = 0;
    link.beginReading();
    ilerleme.start(l1.rows());
    const auto failed = passOver([&] {
        const auto work = link.busy().with(u"E-fatura müşterileri Logo'dan soruluyor…"_s);
        for (; row < l1.rows(); ++row) {
            const SqlRows card = link.run(cardSelect(link.firmakod, l1.cell(row, L1::CariKodu)));
            if (!card.isEmpty() && card.value(0, u"ACCEPTEINV") == u"1")
                l1.setCell(row, L1::EFatura, u"Evet"_s);
            ilerleme.setValue(row + 1);
        }
    });
    if (!failed) {
        ilerleme.finish();
        return 0;
    }
    bilgi.add(u"E-Fatura işaretleri %1. satırda kaldı: %2"_s.arg(row + 1).arg(failed->headline()));
    boxes.show(
        {failed->description() + u" E-Fatura Okunurken Hata Oluştu"_s, u"Dikkat"_s, Icon::Stop});
    return l1.rows() - row;
}

} // namespace kervan
