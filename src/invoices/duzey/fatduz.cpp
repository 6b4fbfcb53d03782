#include "invoices/duzey/fatduz.h"

#include "invoices/columns.h"
#include "store/sidefiles.h"

#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView sheetFile = u"duzeyfaturaexelsayfano.kvz";

} // namespace

Fatduz::Fatduz(Program &program)
    : liste(invoiceColumns(u"Cari Adı"_s, u"Düzey Personel kodu"_s), program.boxes,
            [this] {
                umurlarfaturabaslikoku();
                // Unlike a read by the file button, a list view applies the date filter again.
                if (liste.tarihAraligi.isChecked())
                    note(endQuietly([this] { liste.tarihbelirle(); }));
            })
    , tanimlar(program)
    , l2(lineColumns())
    , l3(QList<GridColumn>(L3::EkVergiTutari + 1))
    , link(program)
    , m_program(program)
{
    faturaTuru.setEntries({u"10 (Satış Faturaları)"_s, u"20 (Alış Faturaları)"_s,
                           u"30 (Satış İade)"_s, u"40 (Alış İade)"_s});
}

void Fatduz::load()
{
    endWithReport(m_program.boxes, [this] { open(); });
}

void Fatduz::open()
{
    const QDate today = m_program.clock.now().date();
    liste.ilkTarih.setDate(today);
    liste.sonTarih.setDate(today);
    faturaTuru.setText(faturaTuru.entries().first());
    yukle();
    link.sqlyukle();
    tanimlar.kdvmuafiyetyukle();
    sayfanooku();
    tanimlar.kasakoduoku();
    m_program.aktifform = u"2"_s;
}

void Fatduz::yukle()
{
    note(tanimlar.load([this] {
        loadFolders(m_program.db, m_program.folders);
        tanimlar.loadVatRate();
        tanimlar.loadLists();
    }));
}

void Fatduz::sayfanooku()
{
    sayfaAdi.setText(u"Sheet1"_s);
    endQuietly([this] { sayfaAdi.setText(readSingleValue(m_program.path(sheetFile))); });
}

void Fatduz::sayfanokaydet()
{
    note(endQuietly([this] { writeSingleValue(m_program.path(sheetFile), sayfaAdi.text()); }));
}

void Fatduz::dosyaac()
{
    const auto name = m_program.dialogs.openName({.title = u"Cari Haraket Dosyası Seçin"_s,
                                                  .filter = u"Exel Dosyaları (xlsx)|*.xlsx;*.xls"_s,
                                                  .start = m_program.folders.ef});
    if (name)
        dosyaac(*name);
}

void Fatduz::dosyaac(const QString &path)
{
    m_dosyaadi = path;
    baslik.setText(u"DÜZEY FATURA [%1]"_s.arg(QFileInfo(path).fileName()));
    umurlarfaturabaslikoku();
}

void Fatduz::personelsec()
{
    if (!m_dosyaadi.isEmpty())
        umurlarfaturabaslikoku();
}

void Fatduz::tarihdegisti()
{
    if (!liste.tarihAraligi.isChecked())
        return;
    umurlarfaturabaslikoku();
    note(endQuietly([this] { liste.tarihbelirle(); }));
}

void Fatduz::listesec()
{
    m_program.aktifform = u"2"_s;
}

void Fatduz::satirsec(int row)
{
    if (row >= 0 && row < l1().rows())
        umurlardetaylioku(l1().cell(row, L1::FaturaNumarasi));
}

void Fatduz::note(const std::optional<Failure> &failed)
{
    bilgi.add(failed);
}

} // namespace kervan
