#include "invoices/fat.h"

#include "base/failure.h"
#include "invoices/cashslips.h"
#include "invoices/columns.h"
#include "invoices/efatura.h"
#include "invoices/lineamounts.h"
#include "store/sidefiles.h"
#include "text/numbers.h"
#include "transfer/sourcecheck.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView missingPrices =
    u"Ürünlerde Bayi Fiyatı Olmayan Faturalar Var...\r\n"
    "Aşagıdaki Ürünlerin Bayi Fiyatlarını Giriniz. Faturayı Yeniden Okutunuz...\r\n";

void addMissingPrice(QString &text, const QString &kod)
{
    if (text.isEmpty())
        text = missingPrices.toString();
    text += u"  "_s;
    text += kod;
}

QString stateFault(const QString &record, QStringView state, int column)
{
    if (state.isEmpty())
        return u"%1 sayılmadı: satır kısa, %2. sütuna ulaşmıyor."_s.arg(record).arg(column);
    return u"%1 sayılmadı: %2. sütunda \"0\" değil \"%3\" var."_s.arg(record).arg(column).arg(
        state);
}

} // namespace

void Fat::umurlarfaturabaslikoku()
{
    QString fiyatsizlar; // the whole text of its box
    bilgi.begin();
    std::optional<Failure> unreadable;
    m_kasaislemsayac = kasacariislemno(m_program, unreadable);
    note(unreadable);
    {
        const Grid::Refill refill(l1());
        l1().clear();
        okuma.begin(m_dosyaadi);
        bayiFiyatlari.clear();
        liste.tumunuSec.setChecked(false); // no new row is ticked
        std::optional<Prices> prices;
        note(passOver([&] { prices.emplace(m_program.db, m_program.path(u"data.dbs")); }));
        if (!m_dosyaadi.isEmpty()) {
            note(passOver([&] {
                readHeaders(prices, fiyatsizlar);
                checkSource(bilgi, m_dosyaadi, SourceKind::Invoices, l1());
            }));
        }
        if (prices) {
            bayiFiyatlari = prices->asked();
            note(prices->unreadable());
        }
    }
    showMissingPrices(std::move(fiyatsizlar));
    liste.listedolu = !l1().isEmpty();
    liste.showRowCount();
    if (m_dosyaacik && liste.tarihAraligi.isChecked())
        note(endQuietly([this] { liste.tarihbelirle(); }));
    liste.eFaturaSorulmayan = efaturabul(l1(), link, ilerleme, m_program.boxes, bilgi);
    note(faturakasafisnoyaz(m_program, l1()));
    l1().forgetSteps(); // what the filter took out has no marks and numbers
    okuma.end();
}

void Fat::readHeaders(std::optional<Prices> &prices, QString &fiyatsizlar)
{
    const auto work = m_program.busy.reading(m_dosyaadi);
    const StaffCodes persl(tanimlar.persl);
    LineReader reader(m_dosyaadi);
    for (qint64 place = 1; reader.next(); ++place) {
        const QStringView line = reader.line();
        if (isLine(line)) {
            const QString kod = productCode(line).toString();
            const QString price = prices ? prices->satisfiyatibul(kod) : u"0"_s;
            if (number(price).value_or(0) <= 0)
                addMissingPrice(fiyatsizlar, kod);
        } else if (isHeader(line)) {
            if (countsAsHeader(line))
                takeHeader(line, persl);
            else
                okuma.add(place, line, stateFault(u"Fatura başlığı"_s, cut(line, 148, 1), 148));
        } else if (isCollection(line)) {
            const QString fault = countsAsCollection(line)
                                      ? takeCollection(line)
                                      : stateFault(u"Tahsilat"_s, cut(line, 22, 1), 22);
            if (!fault.isEmpty())
                okuma.add(place, line, fault);
        } else if (!trimmedBlanks(line).isEmpty() && !(place == 1 && line.startsWith(u"@1"))) {
            okuma.add(place, line, u"Tanınmayan kayıt: \"%1\"."_s.arg(line.left(2)));
        }
    }
}

// The row before is only now known to be whole: its collection becomes the default, whatever a
// collection record gave it.
void Fat::takeHeader(QStringView line, const StaffCodes &persl)
{
    ++m_kasaislemsayac;
    const int previous = l1().rows() - 1;
    if (previous >= 0) {
        l1().setCell(previous, L1::TahsilatOrani, u"100"_s);
        l1().setCell(previous, L1::KasaSatisElemani, l1().cell(previous, L1::LogoPersonelKodu));
        l1().setCell(previous, L1::TahsilatTutari, l1().cell(previous, L1::ToplamTutar));
    }
    const int row = l1().addRow({});
    cutHeader(line, l1(), row);
    const QString personel = persl.perseslestir(l1().cell(row, L1::SapPersonelKodu));
    l1().setCell(row, L1::BelgeNumarasi, personel);
    l1().setCell(row, L1::LogoPersonelKodu, personel);
}

// Gives why it gave no row a collection, if it did not.
QString Fat::takeCollection(QStringView line)
{
    const auto read = number(pointToComma(collectionRate(line)));
    if (read.value_or(0) <= 0)
        return u"Tahsilat alınmadı: oranı sıfırdan büyük bir sayı değil."_s;
    ++m_kasaislemsayac;
    const int row = l1().rows() - 1;
    const auto failed = passOver([&] {
        const float rate = toSingleNumber(masked(*read, "#0.0000"_mask));
        l1().setCell(row, L1::TahsilatOrani, toText(rate));
        l1().setCell(row, L1::KasaSatisElemani, l1().cell(row, L1::LogoPersonelKodu));
        const double total = toNumber(l1().cell(row, L1::ToplamTutar));
        l1().setCell(row, L1::TahsilatTutari,
                     toText(toSingle(total * static_cast<double>(rate) / 100)));
    });
    if (row < 0)
        return u"Tahsilat alınmadı: önünde sayılan bir fatura yok."_s;
    return failed ? u"Tahsilatın tutarı hesaplanamadı: "_s + failed->headline() : QString();
}

// A product is named for each of its lines, so the text may be as long as the file: it is held
// once.
void Fat::showMissingPrices(QString fiyatsizlar)
{
    if (fiyatsizlar.isEmpty())
        return;
    while (fiyatsizlar.endsWith(u' '))
        fiyatsizlar.chop(1);
    m_program.boxes.show({.text = std::move(fiyatsizlar)});
}

void Fat::umurlardetaylioku(const QString &faturano)
{
    const Grid::Refill refill(l2);
    l2.clear();
    if (faturano.isEmpty())
        return;
    note(endQuietly([&] {
        Prices prices(m_program.db, m_program.path(u"data.dbs"));
        const LineLookups lookups{prices, tanimlar.lbrm};
        walkInvoice(m_dosyaadi, faturano,
                    [&](QStringView line) { addToL2(cutLine(line), lookups, l2); });
    }));
}

} // namespace kervan
