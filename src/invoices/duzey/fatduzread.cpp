#include "invoices/duzey/fatduz.h"

#include "invoices/columns.h"
#include "invoices/efatura.h"
#include "text/numbers.h"
#include "transfer/sourcecheck.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostKinds = 5; // that a note names

} // namespace

QString Fatduz::tipAdi() const
{
    const QStringView kind = QStringView(faturaTuru.text()).left(2);
    if (kind == u"20")
        return u"ALIŞ"_s;
    if (kind == u"30")
        return u"SATIŞ İADE"_s;
    if (kind == u"40")
        return u"ALIŞ İADE"_s;
    return u"SATIŞ"_s;
}

std::shared_ptr<const Sheet> Fatduz::openSheet()
{
    if (m_dosyaadi.isEmpty())
        throw Failure(u"Fatura dosyası seçilmedi."_s);
    return m_workbooks.sheet(m_dosyaadi, sayfaAdi.text());
}

void Fatduz::umurlarfaturabaslikoku()
{
    bilgi.begin();
    okuma.begin(m_dosyaadi);
    liste.eFaturaSorulmayan = 0;
    m_okunanSayfa.reset();
    m_okunmayis = {};
    note(endWithReport(m_program.boxes, [this] { readSheet(); }));
    liste.listedolu = !l1().isEmpty();
    okuma.end();
}

// A sheet without rows ends it with the progress bar on, and so does a failure.
void Fatduz::readSheet()
{
    {
        const Grid::Refill refill(l1());
        const Grid::Refill refillLines(l2);
        l1().clear();
        l2.clear();
        liste.tumunuSec.setChecked(false); // no new row is ticked
        m_onceki.clear();
        const auto work = m_program.busy.reading(m_dosyaadi);
        const auto sheet = openSheet();
        m_okunanSayfa = sheet;
        m_okunanSayfaAdi = sayfaAdi.text();
        ilerleme.start(sheet->rows());
        if (sheet->rows() == 0)
            return;
        const QString caption = tipAdi();
        QStringList others;
        const StaffCodes persl(tanimlar.persl);
        int counter = 0;
        for (int record = 0; record < sheet->rows(); ++record) {
            if (fieldOf(*sheet, record, Duzey::CariKodu).isEmpty()) {
                reportRecord(*sheet, record, {});
                continue;
            }
            ++counter;
            const QString kind = fieldOf(*sheet, record, Duzey::FaturaTipi);
            if (kind != caption) {
                if (others.size() < mostKinds && !others.contains(kind))
                    others << kind;
                reportRecord(*sheet, record, kind);
                continue;
            }
            takeRecord(*sheet, record, persl);
            ilerleme.setValue(counter);
        }
        if (l1().isEmpty())
            bilgi.add(u"Bu sayfada \"%1\" türünde fatura satırı yok. O sütunda olanlar: %2"_s.arg(
                caption, others.join(u", "_s)));
        bilgi.add(lettersLost(l1()));
    }
    ilerleme.finish();
    liste.showRowCount();
    liste.eFaturaSorulmayan = efaturabul(l1(), link, ilerleme, m_program.boxes, bilgi);
}

// Records of another kind and records without a customer are no invoices of this list; empty ones
// are no records. There may be as many of them as of the others, so no more of them is looked at
// than what is told.
void Fatduz::reportRecord(const Sheet &sheet, int record, const QString &kind)
{
    const auto text = [&](Duzey::Field field) {
        QString cell;
        passOver([&] { cell = fieldOf(sheet, record, field); });
        return cell;
    };
    if (kind.isEmpty() && text(Duzey::FaturaNumarasi).isEmpty() && text(Duzey::UrunKodu).isEmpty())
        return;
    const bool hasCustomer = !kind.isEmpty() || !text(Duzey::CariKodu).isEmpty();
    if (hasCustomer && (m_okunmayis.reason.isEmpty() || kind != m_okunmayis.kind))
        m_okunmayis = {kind, u"Fatura tipi \"%1\", okunan \"%2\" değil."_s.arg(kind, tipAdi())};
    const QString reason = hasCustomer ? m_okunmayis.reason : u"Cari kodu boş."_s;
    if (!okuma.hasRoom())
        return okuma.add(record + 1, {}, reason);
    const QStringList shown{text(Duzey::CariKodu), text(Duzey::FaturaNumarasi),
                            text(Duzey::UrunKodu)};
    const Duzey::Field field = hasCustomer ? Duzey::FaturaTipi : Duzey::CariKodu;
    okuma.add(record + 1, shown.join(u" | "), reason,
              u"%1!%2"_s.arg(m_okunanSayfaAdi, sheet.address(record, field)));
}

// Only records that follow each other make one invoice.
void Fatduz::takeRecord(const Sheet &sheet, int record, const StaffCodes &persl)
{
    const QString faturano = fieldOf(sheet, record, Duzey::FaturaNumarasi);
    if (faturano != m_onceki) {
        addInvoice(sheet, record, faturano, persl);
        m_onceki = faturano;
        return;
    }
    const int row = l1().rows() - 1;
    const float total = toSingleNumber(l1().cell(row, L1::ToplamTutar));
    l1().setCell(row, L1::ToplamTutar,
                 masked(static_cast<double>(total) + amountOf(sheet, record), "#0.0000"_mask));
}

void Fatduz::addInvoice(const Sheet &sheet, int record, const QString &faturano,
                        const StaffCodes &persl)
{
    const int row = l1().addRow(fieldOf(sheet, record, Duzey::CariKodu));
    l1().setCell(row, L1::FaturaNumarasi, faturano);
    l1().setCell(row, L1::BelgeNumarasi, fieldOf(sheet, record, Duzey::BelgeNumarasi));
    l1().setCell(row, L1::FaturaTarihi, fieldOf(sheet, record, Duzey::FaturaTarihi));
    const QString personel = fieldOf(sheet, record, Duzey::PersonelKodu);
    l1().setCell(row, L1::LogoPersonelKodu, persl.perseslestir(personel));
    l1().setCell(row, L1::SapPersonelKodu, personel);
    l1().setCell(row, L1::OdemeTipi, fieldOf(sheet, record, Duzey::OdemeTipi));
    l1().setCell(row, L1::ToplamTutar, masked(amountOf(sheet, record), "#0.0000"_mask));
}

void Fatduz::umurlardetaylioku(const QString &faturano)
{
    endWithReport(m_program.boxes, [&] {
        const Grid::Refill refill(l2);
        l2.clear();
        const auto sheet = openSheet();
        for (const int record : m_records.of(sheet, faturano))
            addToL2(*sheet, record, l2);
    });
}

void Fatduz::liste3yukle(const QString &faturano)
{
    if (faturano.isEmpty())
        return;
    const Grid::Refill refill(l3);
    l3.clear();
    const auto sheet = openSheet();
    for (const int record : m_records.of(sheet, faturano))
        addToL3(*sheet, record, tanimlar.lbrm, l3);
}

} // namespace kervan
