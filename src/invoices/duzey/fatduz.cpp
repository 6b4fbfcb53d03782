#include "invoices/duzey/fatduz.h"

#include "invoices/columns.h"
#include "store/sidefiles.h"

#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

const QStringList invoiceKinds{u"10 (Satış Faturaları)"_s, u"20 (Alış Faturaları)"_s,
                               u"30 (Satış İade)"_s, u"40 (Alış İade)"_s};

const QString sheetFile = u"duzeyfaturaexelsayfano.kvz"_s;

} // namespace

Fatduz::Fatduz(Program &program)
    : liste(invoiceColumns(u"Cari Adı"_s, u"Düzey Personel kodu"_s), program.boxes,
            [this] {
                umurlarfaturabaslikoku();
                // Unlike a read by the file button, a list view applies the date filter again.
                if (liste.Check1.isChecked())
                    note(endQuietly([this] { liste.tarihbelirle(); }));
            })
    , l2(lineColumns())
    , l3(QList<GridColumn>(L3::EkVergiTutari + 1))
    , lbrm({{u"birim"_s}, {u"kod"_s}})
    , persl({{u"kod"_s}, {u"per"_s}})
    , link(program)
    , m_program(program)
{
    fatbilgi.setEntries(invoiceKinds);
}

void Fatduz::load()
{
    endWithReport(m_program.boxes, [this] { open(); });
}

void Fatduz::open()
{
    const QDate today = m_program.clock.now().date();
    liste.d1.setDate(today);
    liste.d2.setDate(today);
    fatbilgi.setText(invoiceKinds.first());
    yukle();
    link.sqlyukle();
    kdvmuafiyetyukle(m_program, kdvmuafiyetgenel, kdvmuafiyetsatir);
    sayfanooku();
    kasakodu = readSingleValue(m_program.path(u"kasa.kvz"));
    m_program.aktifform = u"2"_s;
}

void Fatduz::yukle()
{
    endQuietly([this] {
        LocalDb &db = m_program.db;
        OpenDb data(db, m_program.path(u"data.dbs"));
        loadFolders(db, m_program.folders);
        loadVatRate(db, kdyaz);
        loadFirms(db, c3);
        loadUnits(db, lbrm);
        loadStaff(db, pers, persl);
        loadSpecialCodes(m_program, c4);
    });
}

void Fatduz::sayfanooku()
{
    Text1.setText(u"Sheet1"_s);
    endQuietly([this] { Text1.setText(readSingleValue(m_program.path(sheetFile))); });
}

void Fatduz::sayfanokaydet()
{
    note(endQuietly([this] { writeSingleValue(m_program.path(sheetFile), Text1.text()); }));
}

void Fatduz::c3sec()
{
    endQuietly([this] { firmakayit = findFirm(m_program, c3.text()); });
}

void Fatduz::dosyaac()
{
    // The title is meant as it stands.
    const auto name = m_program.dialogs.openName({.title = u"Cari Haraket Dosyası Seçin"_s,
                                                  .filter = u"Exel Dosyaları (xlsx)|*.xlsx;*.xls"_s,
                                                  .start = m_program.folders.ef});
    if (name)
        dosyaac(*name);
}

void Fatduz::dosyaac(const QString &path)
{
    dosyaadi = path;
    baslik.setText(u"DÜZEY FATURA [%1]"_s.arg(QFileInfo(path).fileName()));
    umurlarfaturabaslikoku();
}

void Fatduz::perssec()
{
    if (!dosyaadi.isEmpty())
        umurlarfaturabaslikoku();
}

void Fatduz::tarihdegisti()
{
    if (!liste.Check1.isChecked())
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
    if (failed)
        bilgi.setText(failed->description());
}

} // namespace kervan
