#include "stocktake/sayimform.h"

#include "check/readnotes.h"
#include "logolink/statements.h"
#include "logoxml/document.h"
#include "text/spellings.h"
#include "transfer/linewalk.h"
#include "transfer/sourcecheck.h"
#include "transfer/target.h"

#include <QScopeGuard>

#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QList<GridColumn> countColumns()
{
    return {{u"Sırano"_s, 1200, Qt::AlignRight},
            {u"Barkod"_s, 2800},
            {u"Stok Kodu"_s, 2800},
            {u"Miktar"_s, 1500, Qt::AlignRight},
            {u"BIRIM"_s, 1500}};
}

constexpr std::array<WantedField, 2> wantedFields{
    {{Sayimform::Barkod, 1, u"Barkod"}, {Sayimform::Miktar, 15, u"Miktar"}}};

} // namespace

Sayimform::Sayimform(Program &program)
    : l1(countColumns())
    , link(program)
    , m_program(program)
{
}

void Sayimform::dosyaac()
{
    const auto name = m_program.dialogs.openName({.title = u"Cari Dosyası Seçin"_s,
                                                  .filter = u"Text Dosyaları (txt)|*.txt"_s,
                                                  .start = m_program.path(u"txt")});
    if (name)
        dosyaac(*name);
}

void Sayimform::dosyaac(const QString &path)
{
    m_dosyayolu = path;
    bilgi.source.setText(path);
    sayimdosyasikoku();
}

void Sayimform::sayimdosyasikoku()
{
    bilgi.begin();
    link.beginReading();
    okuma.begin(m_dosyayolu);
    const auto report = qScopeGuard([this] { okuma.end(); });
    bilgi.add(endWithReport(m_program.boxes, [this] {
        const Grid::Refill refill(l1);
        const auto count = qScopeGuard([this] { sayimSayisi.setText(QString::number(l1.rows())); });
        l1.clear();
        const auto failed = passOver([this] {
            const auto work = m_program.busy.reading(m_dosyayolu);
            walkLines(m_dosyayolu, ilerleme, [this](QStringView line) { takeLine(line); });
        });
        if (!failed)
            return checkSource(bilgi, m_dosyayolu, SourceKind::Count, l1);
        if (!l1.isEmpty())
            bilgi.add(u"Okuma %1. satırda durdu (dosyada %2 satır var), liste boşaltıldı."_s
                          .arg(l1.rows())
                          .arg(ilerleme.maximum()));
        addEnd(okuma, l1.rows(), failed);
        l1.clear(); // half a count must not be written as if it were whole
        throw *failed;
    }));
}

// The look-up is sent twice a line: Logo's unit code may be another by the second time.
void Sayimform::takeLine(QStringView line)
{
    const QString barkod = trimmedBlanks(cut(line, 1, 14)).toString();
    const int row = l1.addRow(QString::number(l1.rows() + 1));
    l1.setCell(row, Barkod, barkod);
    l1.setCell(row, StokKodu, stokkodbul(barkod).value(0));
    l1.setCell(row, Miktar, trimmedBlanks(cut(line, 15, 6)).toString());
    l1.setCell(row, Birim, stokkodbul(barkod).value(1));
    addEmptyCells(okuma, l1, row, line, wantedFields);
    if (!barkod.isEmpty() && l1.cell(row, StokKodu).isEmpty())
        okuma.add(row + 1, line, u"Logo bu barkodu tanımıyor: satır fişe girmez."_s);
}

// Stock code and unit code of the first row that the server gives; both empty for an unknown one.
// The two travel in one text, so a stock code that holds the mark between them is cut there.
QStringList Sayimform::stokkodbul(const QString &barkod)
{
    const SqlRows found = link.run(barcodeSelect(link.firmakod, barkod));
    if (found.isEmpty())
        return {};
    return (found.value(0, u"ITEMKOD") + u"<>"_s + found.value(0, u"BIRIMKOD")).split(u"<>"_s);
}

void Sayimform::xmlkaydet()
{
    if (l1.isEmpty()) {
        m_program.boxes.show(
            {u"Sayım Listesinde Kayıt Bulunamadı...!"_s, u"Dikkat"_s, Icon::Exclamation});
        return;
    }
    if (const auto dosya = askTarget(m_program, u"Sayım Xml Dosyası Kaydet"_s))
        kaydet(*dosya);
}

Filling Sayimform::bas() const
{
    const QList<QByteArray> words{"+FISNO+", "+TARIH+", "+SAAT+", "+DAKIKA+", "+SANIYE+"};
    return {words, Sablon(sablon(u"sayim-xml1"_s), words, okunurBicim.values()), [this](int) {
                const QDateTime now = m_program.clock.now();
                const QTime time = now.time();
                return QStringList{fisno.text(), now.date().toString(u"dd.MM.yyyy"_s),
                                   QString::number(time.hour()), QString::number(time.minute()),
                                   QString::number(time.second())};
            }};
}

// Rows count from 1 among those that are written.
Filling Sayimform::satirlar() const
{
    const QList<QByteArray> words{"+STOKKODU+", "+SIRANO+", "+MIKTAR+", "+BIRIM+"};
    return {words, Sablon(sablon(u"sayim-xml2"_s) + "\r\n", words, okunurBicim.values()),
            [this, sirano = 0](int row) mutable {
                sirano += l1.cell(row, StokKodu).isEmpty() ? 0 : 1;
                return QStringList{l1.cell(row, StokKodu), QString::number(sirano),
                                   tutarnoktasil(l1.cell(row, Miktar)), l1.cell(row, Birim)};
            }};
}

QByteArray Sayimform::head() const
{
    const Filling filling = bas();
    QByteArray text;
    filling.record.doldur(filling.values(0), text);
    return text + "\r\n";
}

void Sayimform::kaydet(const QString &dosya)
{
    bilgi.begin();
    const Filling line = satirlar();
    int sirano = 0;
    const auto failed = passOver([&] {
        ilerleme.start(l1.rows());
        const auto hide = qScopeGuard([this] { ilerleme.finish(); });
        QByteArray lines;
        for (int row = 0; row < l1.rows(); ++row) {
            if (l1.cell(row, StokKodu).isEmpty())
                continue;
            ilerleme.setValue(row + 1);
            ++sirano;
            line.record.doldur(line.values(row), lines);
        }
        belgeyaz({head(), {lines}, {}, sablon(u"sayim-xml3"_s), line.record.spelling()},
                 DocumentEnd::LineEnd, dosya);
    });
    bilgi.addDocument(dosya, u"sayım satırı"_s, sirano, m_program.clock.now().time(), failed);
    tellDone(m_program.boxes);
}

} // namespace kervan
