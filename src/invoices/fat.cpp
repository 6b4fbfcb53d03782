#include "invoices/fat.h"

#include "base/failure.h"
#include "invoices/columns.h"

#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

Fat::Fat(Program &program)
    : liste(invoiceColumns(u"Ünvanı"_s, u"Sap Personel kodu"_s), program.boxes,
            [this] { umurlarfaturabaslikoku(); })
    , tanimlar(program)
    , l2(lineColumns())
    , l3(QList<GridColumn>(L3::EkVergiTutari + 1))
    , link(program)
    , m_program(program)
{
    faturaTuru.setEntries({u"10 (Satış Faturaları)"_s, u"20 (Alış Faturaları)"_s,
                           u"30 (Satış İade)"_s, u"40 (Alış İade)"_s, u"80 (Satış)"_s});
}

void Fat::load()
{
    const QDate today = m_program.clock.now().date();
    liste.ilkTarih.setDate(today);
    liste.sonTarih.setDate(today);
    faturaTuru.setText(faturaTuru.entries().first());
    yukle();
    sqlyukle();
    tanimlar.kdvmuafiyetyukle();
    passOver([this] { tanimlar.kasakoduoku(); });
    m_program.aktifform = u"1"_s;
}

void Fat::yukle()
{
    note(tanimlar.load([this] {
        loadFolders(m_program.db, m_program.folders);
        loadPlansAndRates();
        tanimlar.loadLists();
    }));
}

void Fat::loadPlansAndRates()
{
    LocalDb &db = m_program.db;
    QStringList plans{QString()};
    db.forEach(Statement(u"select * from odm"),
               [&] { plans << db.field(u"frno") + u"<>"_s + db.field(u"frkod"); });
    odemePlani.setEntries(plans);
    tanimlar.loadVatRate();
    QStringList rates;
    db.forEach(Statement(u"select * from muh"), [&] { rates << db.field(u"kdv"); });
    kdvOrani.setEntries(rates);
}

void Fat::kdvoranisec()
{
    endQuietly([this] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        db.query(Statement(u"select * from muh where kdv='").value(kdvOrani.text()).text(u"'"));
        m_muhkayit = MuhKayit{.kdv = db.field(u"kdv"),
                              .al = db.field(u"al"),
                              .sat = db.field(u"sat"),
                              .ali = db.field(u"ali"),
                              .sati = db.field(u"sati"),
                              .alkdv = db.field(u"alkdv"),
                              .satkdv = db.field(u"satkdv"),
                              .alikdv = db.field(u"alikdv"),
                              .satikdv = db.field(u"satikdv"),
                              .ind = db.field(u"ind")};
    });
}

// The unit set is looked up and nothing of what is found is taken: the unit of a line comes from
// `lbrm`.
void Fat::birimsetisec()
{
    endQuietly([this] {
        OpenDb open(m_program.db, m_program.path(u"data.dbs"));
        m_program.db.query(
            Statement(u"select * from birim where kaskod='").value(birimSeti.text()).text(u"'"));
    });
}

void Fat::odemeplanisec()
{
    odemePlaniKodu.setText(odemePlani.text().section(u"<>"_s, 0, 0));
}

void Fat::dosyaac()
{
    m_dosyaacik = true;
    const auto name = m_program.dialogs.openName({.title = u"Fatura Dosyası Seçin"_s,
                                                  .filter = u"Bif Dosyaları (bif)|*.bif"_s,
                                                  .start = m_program.folders.ef});
    if (name)
        dosyaac(*name);
}

void Fat::dosyaac(const QString &path)
{
    m_dosyaacik = true;
    m_dosyaadi = path;
    baslik.setText(u"FATURA [%1]"_s.arg(QFileInfo(path).fileName()));
    umurlarfaturabaslikoku();
}

void Fat::yenidenoku()
{
    if (m_dosyaacik)
        umurlarfaturabaslikoku();
}

void Fat::tariharaligisec()
{
    if (!m_dosyaacik)
        return;
    if (liste.tarihAraligi.isChecked())
        note(endQuietly([this] { liste.tarihbelirle(); }));
    else
        umurlarfaturabaslikoku();
}

void Fat::tarihdegisti()
{
    if (!liste.tarihAraligi.isChecked())
        return;
    umurlarfaturabaslikoku();
    note(endQuietly([this] { liste.tarihbelirle(); }));
}

void Fat::satirsec(int row)
{
    if (row >= 0 && row < l1().rows())
        umurlardetaylioku(l1().cell(row, L1::FaturaNumarasi));
}

void Fat::warn(const QString &text)
{
    m_program.boxes.show({text, u"Dikkat"_s, Icon::Exclamation});
}

void Fat::warnAt(const QString &text, TextField &field)
{
    warn(text);
    Q_EMIT field.focusWanted();
}

void Fat::note(const std::optional<Failure> &failed)
{
    bilgi.add(failed);
}

} // namespace kervan
