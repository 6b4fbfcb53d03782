#include "invoices/fat.h"

#include "base/failure.h"
#include "invoices/columns.h"
#include "store/sidefiles.h"

#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

const QStringList invoiceKinds{u"10 (Satış Faturaları)"_s, u"20 (Alış Faturaları)"_s,
                               u"30 (Satış İade)"_s, u"40 (Alış İade)"_s, u"80 (Satış)"_s};

} // namespace

Fat::Fat(Program &program)
    : liste(invoiceColumns(u"Ünvanı"_s, u"Sap Personel kodu"_s), program.boxes,
            [this] { umurlarfaturabaslikoku(); })
    , l2(lineColumns())
    , l3(QList<GridColumn>(L3::EkVergiTutari + 1))
    , lbrm({{u"birim"_s}, {u"kod"_s}})
    , persl({{u"kod"_s}, {u"per"_s}})
    , link(program)
    , m_program(program)
{
    fatbilgi.setEntries(invoiceKinds);
}

void Fat::load()
{
    const QDate today = m_program.clock.now().date();
    liste.d1.setDate(today);
    liste.d2.setDate(today);
    fatbilgi.setText(invoiceKinds.first());
    yukle();
    sqlyukle();
    kdvmuafiyetyukle(m_program, kdvmuafiyetgenel, kdvmuafiyetsatir);
    passOver([this] { kasakodu = readSingleValue(m_program.path(u"kasa.kvz")); });
    m_program.aktifform = u"1"_s;
}

void Fat::yukle()
{
    endQuietly([this] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        loadFolders(db, m_program.folders);
        loadPlansAndRates(db);
        loadFirms(db, c3);
        loadUnits(db, lbrm);
        loadStaff(db, pers, persl);
        loadSpecialCodes(m_program, c4);
    });
}

void Fat::loadPlansAndRates(LocalDb &db)
{
    QStringList plans{QString()};
    db.forEach(Statement(u"select * from odm"),
               [&] { plans << db.field(u"frno") + u"<>"_s + db.field(u"frkod"); });
    c5.setEntries(plans);
    loadVatRate(db, kdyaz);
    QStringList rates;
    db.forEach(Statement(u"select * from muh"), [&] { rates << db.field(u"kdv"); });
    c1.setEntries(rates);
}

void Fat::c3sec()
{
    endQuietly([this] { firmakayit = findFirm(m_program, c3.text()); });
}

void Fat::c1sec()
{
    endQuietly([this] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        db.query(Statement(u"select * from muh where kdv='").value(c1.text()).text(u"'"));
        muhkayit = MuhKayit{.kdv = db.field(u"kdv"),
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

// Nothing takes what is found here; the unit of a line comes from `lbrm`.
void Fat::c2sec()
{
    endQuietly([this] {
        OpenDb open(m_program.db, m_program.path(u"data.dbs"));
        m_program.db.query(
            Statement(u"select * from birim where kaskod='").value(c2.text()).text(u"'"));
    });
}

void Fat::c5sec()
{
    odmplnkod.setText(c5.text().section(u"<>"_s, 0, 0));
}

void Fat::dosyaac()
{
    dosyaacik = true;
    const auto name = m_program.dialogs.openName({.title = u"Fatura Dosyası Seçin"_s,
                                                  .filter = u"Bif Dosyaları (bif)|*.bif"_s,
                                                  .start = m_program.folders.ef});
    if (name)
        dosyaac(*name);
}

void Fat::dosyaac(const QString &path)
{
    dosyaacik = true;
    dosyaadi = path;
    baslik.setText(u"FATURA [%1]"_s.arg(QFileInfo(path).fileName()));
    umurlarfaturabaslikoku();
}

void Fat::yenidenoku()
{
    if (dosyaacik)
        umurlarfaturabaslikoku();
}

void Fat::check1sec()
{
    if (!dosyaacik)
        return;
    if (liste.Check1.isChecked())
        note(endQuietly([this] { liste.tarihbelirle(); }));
    else
        umurlarfaturabaslikoku();
}

void Fat::tarihdegisti()
{
    if (!liste.Check1.isChecked())
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
    if (failed)
        bilgi.setText(failed->description());
}

} // namespace kervan
