#include "stocktake/sayimform.h"

#include "logolink/statements.h"
#include "logoxml/document.h"
#include "logoxml/template.h"
#include "text/spellings.h"
#include "transfer/linewalk.h"
#include "transfer/sourcecheck.h"
#include "transfer/target.h"

#include <QScopeGuard>

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

QByteArray Sayimform::head() const
{
    const QDateTime now = m_program.clock.now();
    const QTime time = now.time();
    QByteArray text;
    Sablon(sablon(u"sayim-xml1"_s), {"+FISNO+", "+TARIH+", "+SAAT+", "+DAKIKA+", "+SANIYE+"},
           okunurBicim.values())
        .doldur(QStringList{fisno.text(), now.date().toString(u"dd.MM.yyyy"_s),
                            QString::number(time.hour()), QString::number(time.minute()),
                            QString::number(time.second())},
                text);
    return text + "\r\n";
}

void Sayimform::kaydet(const QString &dosya)
{
    bilgi.begin();
    const Sablon line(sablon(u"sayim-xml2"_s) + "\r\n",
                      {"+STOKKODU+", "+SIRANO+", "+MIKTAR+", "+BIRIM+"}, okunurBicim.values());
    int sirano = 0;
    const auto failed = passOver([&] {
        ilerleme.start(l1.rows());
        const auto hide = qScopeGuard([this] { ilerleme.finish(); });
        QByteArray lines;
        for (int row = 0; row < l1.rows(); ++row) {
            if (l1.cell(row, StokKodu).isEmpty())
                continue;
            ilerleme.setValue(row + 1);
            line.doldur(QStringList{l1.cell(row, StokKodu), QString::number(++sirano),
                                    tutarnoktasil(l1.cell(row, Miktar)), l1.cell(row, Birim)},
                        lines);
        }
        belgeyaz({head(), {lines}, {}, sablon(u"sayim-xml3"_s), line.spelling()},
                 DocumentEnd::LineEnd, dosya);
    });
    bilgi.addDocument(dosya, u"sayım satırı"_s, sirano, m_program.clock.now().time(), failed);
    tellDone(m_program.boxes);
}

} // namespace kervan
