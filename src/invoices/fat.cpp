#include "invoices/fat.h"

#include "base/failure.h"
#include "invoices/columns.h"
#include "store/sidefiles.h"

#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QList<GridColumn> invoiceColumns()
{
    return {{u"Cari Kodu"_s, 1764},
            {u"Ünvanı"_s, 4410},
            {u"Fatura Numarası"_s, 2117},
            {u"Belge Numarası"_s, 1764},
            {u"Fatura Tarihi"_s, 1588},
            {u"Logo Personel Kodu"_s, 1940},
            {u"Sap Personel kodu"_s, 1940},
            {u"Ödeme Tipi"_s, 1411},
            {u"Toplam Tutar"_s, 1764, Qt::AlignRight},
            {u"İndirim Toplamı"_s, 1764, Qt::AlignRight},
            {u"Kdv Toplamı"_s, 1764, Qt::AlignRight},
            {u"Genel Toplam"_s, 1764, Qt::AlignRight},
            {u"E-Fatura"_s, 1058},
            {u"TAHSİLAT ORANI"_s, 1764, Qt::AlignRight},
            {u"TAHSİLAT TUTARI"_s, 1764, Qt::AlignRight},
            {u"İŞLEM NO"_s, 1411},
            {u"KASA İŞLEM NO"_s, 1764},
            {u"KASA SATIS ELEMANI"_s, 2117}};
}

QList<GridColumn> lineColumns()
{
    QList<GridColumn> columns{{u"Ürün Kodu"_s, 1940},
                              {u"Ürün Adı"_s, 4410},
                              {u"Miktar"_s, 1235, Qt::AlignRight},
                              {u"Birim Fiyat"_s, 1588, Qt::AlignRight},
                              {u"Kdv %"_s, 882, Qt::AlignRight},
                              {u"Tutar"_s, 2117, Qt::AlignRight},
                              {u"İndirimTutarı"_s, 1588, Qt::AlignRight},
                              {u"Kdv Tutarı"_s, 1411, Qt::AlignRight},
                              {u"Toplam"_s, 1588, Qt::AlignRight}};
    for (int discount = 1; discount <= 9; ++discount) {
        columns << GridColumn{u"ind%1%"_s.arg(discount), 882, Qt::AlignRight}
                << GridColumn{u"ind%1"_s.arg(discount), 882, Qt::AlignRight};
    }
    return columns << GridColumn{u"Bayi Satış Fiyatı"_s, 1764, Qt::AlignRight}
                   << GridColumn{u"Bayi Karı"_s, 1764, Qt::AlignRight}
                   << GridColumn{u"Ek Vergi Tutarı"_s, 1764, Qt::AlignRight};
}

const QStringList invoiceKinds{u"10 (Satış Faturaları)"_s, u"20 (Alış Faturaları)"_s,
                               u"30 (Satış İade)"_s, u"40 (Alış İade)"_s, u"80 (Satış)"_s};

} // namespace

Fat::Fat(Program &program)
    : liste(invoiceColumns(), program.boxes, [this] { umurlarfaturabaslikoku(); })
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
    kdvmuafiyetyukle();
    passOver([this] { kasakodu = readSingleValue(m_program.path(u"kasa.kvz")); });
    m_program.aktifform = u"1"_s;
}

void Fat::yukle()
{
    endQuietly([this] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        db.forEach(Statement(u"select * from yol where id='1'"), [&] {
            m_program.folders = Folders{.ec = db.field(u"ec"),
                                        .es = db.field(u"es"),
                                        .ef = db.field(u"ef"),
                                        .xc = db.field(u"xc"),
                                        .xs = db.field(u"xs"),
                                        .xf = db.field(u"xf")};
        });
        loadChoices(db);
        loadMappings(db);
        db.open(m_program.path(u"fatozkod.dbs"));
        QStringList codes{QString()};
        db.forEach(Statement(u"select * from ozkod"), [&] { codes << db.field(u"ozkod"); });
        c4.setEntries(codes);
    });
}

void Fat::loadChoices(LocalDb &db)
{
    QStringList plans{QString()};
    db.forEach(Statement(u"select * from odm"),
               [&] { plans << db.field(u"frno") + u"<>"_s + db.field(u"frkod"); });
    c5.setEntries(plans);
    db.query(Statement(u"select * from kdv"));
    if (!db.atEnd())
        kdyaz.setText(db.field(u"kdv"));
    QStringList rates;
    db.forEach(Statement(u"select * from muh"), [&] { rates << db.field(u"kdv"); });
    c1.setEntries(rates);
    QStringList firms;
    db.forEach(Statement(u"select * from firma"), [&] { firms << db.field(u"firma"); });
    c3.setEntries(firms);
}

void Fat::loadMappings(LocalDb &db)
{
    lbrm.clear();
    db.forEach(Statement(u"select * from birim"),
               [&] { lbrm.setCell(lbrm.addRow(db.field(u"kaskod")), 1, db.field(u"firma")); });
    persl.clear();
    QStringList staff{QString()};
    db.forEach(Statement(u"select * from per"), [&] {
        staff << db.field(u"per");
        persl.setCell(persl.addRow(db.field(u"kod")), 1, db.field(u"per"));
    });
    pers.setEntries(staff);
}

void Fat::kdvmuafiyetyukle()
{
    const QString path = m_program.path(u"kdvmu.kvz");
    passOver([&] { kdvmuafiyetgenel = readLines(path, 1)[0]; });
    passOver([&] { kdvmuafiyetsatir = readLines(path, 2)[1]; });
}

void Fat::c3sec()
{
    endQuietly([this] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        db.query(Statement(u"select * from firma where firma='").value(c3.text()).text(u"'"));
        firmakayit = FirmaKayit{.frno = db.field(u"frno"),
                                .frkod = db.field(u"frkod"),
                                .firma = db.field(u"firma"),
                                .kaskod = db.field(u"kaskod"),
                                .dkod = db.field(u"dkod"),
                                .crkod = db.field(u"crkod"),
                                .alkod = db.field(u"alkod"),
                                .satkod = db.field(u"satkod")};
    });
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
