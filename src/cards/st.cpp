#include "cards/st.h"

#include "cards/cardfiles.h"
#include "check/readnotes.h"
#include "logoxml/document.h"
#include "transfer/sourcecheck.h"
#include "transfer/target.h"

#include <QScopeGuard>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QList<GridColumn> stockColumns()
{
    return {{u"Depo"_s, 2540},
            {u"Ürün Kodu"_s, 3528},
            {u"Ürün Adı"_s, 6174},
            {u"Statü"_s, 2540},
            {u"Miktar"_s, 2540, Qt::AlignRight},
            {u"Birim Fiyat"_s, 2540, Qt::AlignRight},
            {u"Tutar"_s, 2540, Qt::AlignRight}};
}

constexpr std::array<QStringView, 9> accountColumns{
    u"kdv", u"al", u"sat", u"ali", u"sati", u"alkdv", u"satkdv", u"alikdv", u"satikdv"};
enum Account { Kdv, Al, Sat, Ali, Sati };

constexpr QStringView sheetName = u"cari mey";

// Their order is part of the format: a value is searched by every later step.
QList<QByteArray> placeholders()
{
    return {"urun kodu",        "urun Aciklamasi",  "Malzeme Grup Kod", "kdv orani",
            "birimseti",        "olusturma tarihi", "olusturma saati",  "olusturma dakika",
            "olusturma saniye", "muh al kod",       "muh sat kod",      "muh ali kod",
            "muh sati kod"};
}

} // namespace

St::St(Program &program)
    : l1(stockColumns())
    , m_program(program)
{
}

void St::note(const std::optional<Failure> &failed)
{
    bilgi.add(failed);
}

void St::yukle()
{
    LocalDb &db = m_program.db;
    m_tanimOkunamadi.reset();
    const auto read = [&](auto &&use) {
        const auto failed = passOver([&] {
            OpenDb open(db, m_program.path(u"data.dbs"));
            use();
        });
        note(failed);
        if (failed && !m_tanimOkunamadi)
            m_tanimOkunamadi = failed;
    };
    bilgi.begin();
    read([&] { loadFolders(db, m_program.folders); });
    QStringList entries;
    read(
        [&] { db.forEach(Statement(u"select * from muh"), [&] { entries << db.field(u"kdv"); }); });
    kdvOrani.setEntries(std::exchange(entries, {}));
    read([&] {
        db.forEach(Statement(u"select * from birim"), [&] { entries << db.field(u"frkod"); });
    });
    birimSeti.setEntries(std::exchange(entries, {}));
    QString shown;
    read([&] {
        db.forEach(Statement(u"select * from statu"), [&] {
            entries << db.field(u"statu");
            if (db.field(u"var") == u"1")
                shown = entries.last();
        });
    });
    statu.setEntries(entries << u"Tümü"_s);
    statu.setText(shown);
}

void St::manualac()
{
    const QString &es = m_program.folders.es;
    const auto name =
        m_program.dialogs.openName({.title = {},
                                    .filter = u"Exel Dosyaları (xls)|*.xls"_s,
                                    .start = es.isEmpty() ? m_program.path(u"mey exel") : es});
    if (name)
        kontrol(*name);
}

std::shared_ptr<const Sheet> St::sheet(const QString &path)
{
    const auto work = m_program.busy.reading(path);
    return m_workbooks.sheet(path, sheetName.toString());
}

// One heading that fits is enough; a workbook that can't be read has none.
void St::kontrol(const QString &path)
{
    bilgi.begin();
    const std::array<QString, 3> headings{u"Kodu"_s, u"Adı"_s, u"Ticari Ünvan"_s};
    bool fits = false;
    for (int field = 0; field < 3; ++field) {
        const auto failed = passOver([&] {
            if (sheet(path)->text(0, field) == headings[static_cast<std::size_t>(field)])
                fits = true;
        });
        if (bilgi.text().isEmpty()) // the other fields fail for the same reason
            note(failed);
    }
    if (fits)
        ac(path);
    else
        m_program.boxes.show(
            {u"Açmaya Çalıştığınız Exel Dosyası Mey Cari Exel Dosyası Değil...!"_s, u"Dikkat"_s});
}

void St::ac(const QString &path)
{
    bilgi.begin();
    bilgi.source.setText(path);
    okuma.begin(path);
    const auto report = qScopeGuard([this] { okuma.end(); });
    const Grid::Refill refill(l1);
    l1.clear();
    const auto failed = passOver([&] {
        const auto records = sheet(path);
        // The heading row is a record like the others; fields without a column are passed over.
        const int fields = std::min(int(Columns), records->columns());
        for (int record = 0; record < records->rows(); ++record) {
            const int row = l1.addRow(records->text(record, 0));
            for (int field = 1; field < fields; ++field)
                l1.setCell(row, field, records->text(record, field));
            reportEmpty(*records, record);
        }
        for (int field = Columns; field < records->columns(); ++field)
            okuma.add(1, records->text(0, field), u"Listede bu sütunun yeri yok."_s,
                      sheetName.toString() + u'!' + records->address(0, field));
    });
    note(failed);
    addEnd(okuma, l1.rows() + 1, failed);
    kayitSayisi.setText(QString::number(l1.rows()));
    bilgi.add(lettersLost(l1));
}

// Of the cells that a card is made of; a row has the number of its record.
void St::reportEmpty(const Sheet &records, int record)
{
    for (const int column : {UrunKodu, UrunAdi}) {
        if (l1.cell(record, column).isEmpty())
            okuma.add(record + 1, l1.cell(record, Depo),
                      u"%1 boş."_s.arg(l1.columns()[column].heading),
                      sheetName.toString() + u'!' + records.address(record, column));
    }
}

void St::kdvoranisec()
{
    note(passOver([&] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        db.query(Statement(u"select * from muh where kdv='").value(kdvOrani.text()).text(u"'"));
        for (std::size_t i = 0; i < m_muh.size(); ++i)
            m_muh[i] = db.field(accountColumns[i]);
    }));
}

void St::birimsetisec()
{
    note(passOver([&] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        db.query(
            Statement(u"select * from birim where frkod='").value(birimSeti.text()).text(u"'"));
        m_birim = db.field(u"frno");
    }));
}

bool St::isReady()
{
    const auto warn = [this](const QString &text) {
        m_program.boxes.show({text, u"Dikkat"_s, Icon::Exclamation});
        return false;
    };
    if (l1.isEmpty())
        return warn(u"Stok Listesinde Kayıt Bulunamadı...!"_s);
    for (const auto &[list, text] : {std::pair{&kdvOrani, u"Kdv Oranı Seçiniz...!"_s},
                                     {&birimSeti, u"Birim Seti Seçiniz...!"_s}}) {
        if (!list->text().isEmpty())
            continue;
        warn(text);
        Q_EMIT list->dropWanted();
        return false;
    }
    return true;
}

// The one save that takes the stock target.
QString St::hedef() const
{
    const Folders &folders = m_program.folders;
    return folders.xc.isEmpty() ? m_program.path(u"logo xml") : folders.xs;
}

void St::manualkaydet()
{
    if (!isReady())
        return;
    const auto name = m_program.dialogs.saveName(
        {.title = {}, .filter = u"Xml Dosyaları (xml)|*.xml"_s, .start = hedef()});
    if (!name || name->isEmpty())
        return;
    bilgi.begin();
    note(endQuietly([&] { kaydet(xmlAdi(*name)); }));
}

void St::otomatikkaydet()
{
    if (!isReady())
        return;
    bilgi.begin();
    note(endWithReport(m_program.boxes,
                       [this] { kaydet(fullName(m_program.folder, m_program.folders.xs)); }));
}

Filling St::kartlar() const
{
    return {placeholders(), Sablon(sablon(u"st-xl"_s), placeholders(), okunurBicim.values()),
            [this, an = CreationTime(m_program.clock)](int row) mutable {
                return QStringList{l1.cell(row, UrunKodu),
                                   l1.cell(row, UrunAdi),
                                   QString(),
                                   m_muh[Kdv],
                                   m_birim,
                                   an.tarih(),
                                   an.saat(),
                                   an.dakika(),
                                   an.saniye(),
                                   m_muh[Al],
                                   m_muh[Sat],
                                   m_muh[Ali],
                                   m_muh[Sati]};
            }};
}

QList<std::pair<QString, QString>> St::hesaplar() const
{
    return {{u"alış"_s, m_muh[Al]},
            {u"satış"_s, m_muh[Sat]},
            {u"alış iade"_s, m_muh[Ali]},
            {u"satış iade"_s, m_muh[Sati]}};
}

void St::kaydet(const QString &dosya)
{
    if (dosya.isEmpty()) {
        m_program.boxes.show(
            {u"Dosya Konumu Hatalı...!Ayarlardan Dosya Konumlarını Kontrol Ediniz."_s, u"Dikkat"_s,
             Icon::Stop});
        return;
    }
    {
        bekle.setChecked(true);
        ilerleme.start(l1.rows());
        const auto done = qScopeGuard([this] {
            bekle.setChecked(false);
            ilerleme.finish();
        });
        const Filling cards = kartlar();
        Belge belge{sablon(u"st-baslik"_s), {}, " ", sablon(u"st-sonu"_s), cards.record.spelling()};
        for (int row = 0; row < l1.rows(); ++row) {
            ilerleme.step();
            QByteArray &record = belge.body.emplaceBack();
            cards.record.doldur(cards.values(row), record);
        }
        belgeyaz(belge, DocumentEnd::AsItStands, dosya);
        bilgi.addDocument(dosya, u"kart"_s, l1.rows(), m_program.clock.now().time());
    }
    tellDone(m_program.boxes);
}

} // namespace kervan
