#include "cards/stoktrf.h"

#include "cards/cardfiles.h"
#include "check/readnotes.h"
#include "store/sidefiles.h"
#include "text/record.h"
#include "transfer/linewalk.h"
#include "transfer/sourcecheck.h"
#include "transfer/target.h"

#include <QFile>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QList<GridColumn> cardColumns()
{
    return {{u"Sıra"_s, 1764},
            {u"Malzeme Kodu"_s, 3528},
            {u"Açıklama"_s, 8819},
            {u"Birim"_s, 2117},
            {u"Birim Çarpanı"_s, 2117, Qt::AlignRight},
            {u"Kdv"_s, 1764, Qt::AlignRight}};
}

// A name keeps the blanks in front of it, a code does not, and the rate keeps all of its own: so
// they stand in the documents.
constexpr std::array<RecordField, 5> cardFields{{
    {Stoktrf::MalzemeKodu, 25, 9, &trimmedField},
    {Stoktrf::Aciklama, 79, 40, &sonbosluksil},
    {Stoktrf::Birim, 119, 6, &sonbosluksil},
    {Stoktrf::BirimCarpani, 125, 7, &fieldWithoutBlanks},
    {Stoktrf::Kdv, 133, 2, &untouchedField},
}};
static_assert(inOrder(cardFields));
constexpr std::array<WantedField, 5> wantedFields{{{Stoktrf::MalzemeKodu, 25, u"Malzeme kodu"},
                                                   {Stoktrf::Aciklama, 79, u"Açıklama"},
                                                   {Stoktrf::Birim, 119, u"Birim"},
                                                   {Stoktrf::BirimCarpani, 125, u"Birim çarpanı"},
                                                   {Stoktrf::Kdv, 133, u"Kdv oranı"}}};

// Their order is part of the format: a value is searched by every later step.
QList<QByteArray> placeholders()
{
    return {"tarih",       "saat",        "dakika",      "saniye",      "stokkod",
            "stokadi",     "birimset",    "kdv",         "birimkod",    "stokozkod",
            "malsnfozko1", "malsnfozko2", "malsnfozko3", "malsnfozko4", "carpan"};
}
constexpr qsizetype firstCode = 9; // of the special codes among the placeholders

// The code of a choice. An empty choice has none: the step fails and its word stays, just as if it
// were filled with itself.
QString codeOf(const ChoiceField &choice, const QByteArray &placeholder)
{
    if (choice.text().isEmpty())
        return QString::fromLatin1(placeholder);
    return choice.text().section(u'-', 0, 0);
}

QString multiplier(const QString &cell)
{
    return cell == u"0.000" ? u"1"_s : cell;
}

} // namespace

Stoktrf::Stoktrf(Program &program)
    : l1(cardColumns())
    , m_program(program)
{
}

void Stoktrf::load()
{
    passOver([this] { brmseti.setText(readSingleValue(m_program.path(u"brmset.kvz"))); });
    ozkodyukle();
}

void Stoktrf::ozkodyukle()
{
    QStringList entries{QString()};
    m_ozkodOkunamadi = endQuietly([&] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"stokozkod.dbs"));
        db.forEach(Statement(u"select * from ozkod"),
                   [&] { entries << db.field(u"ozkod") + u"- "_s + db.field(u"ack"); });
    });
    bilgi.add(m_ozkodOkunamadi);
    for (ChoiceField &list : ozelKodlar)
        list.setEntries(entries);
}

void Stoktrf::dosyaac()
{
    if (const auto name = askSource(m_program, u"Stok Dosyası Seçimi"_s))
        dosyaac(*name);
}

void Stoktrf::dosyaac(const QString &path)
{
    m_dosyayolu = path;
    bilgi.source.setText(path);
    stokdosyasikoku();
}

void Stoktrf::stokdosyasikoku()
{
    bilgi.begin();
    okuma.begin(m_dosyayolu);
    const auto failed = endQuietly([this] {
        const Grid::Refill refill(l1);
        const auto work = m_program.busy.reading(m_dosyayolu);
        l1.clear();
        walkLines(m_dosyayolu, ilerleme, [this](QStringView line) {
            const int row = l1.addRow(QString::number(l1.rows() + 1));
            cutRecord(line, cardFields,
                      [&](int cell, const QString &text) { l1.setCell(row, cell, text); });
            addEmptyCells(okuma, l1, row, line, wantedFields);
        });
        kartSayisi.setText(QString::number(l1.rows()));
        checkSource(bilgi, m_dosyayolu, SourceKind::Stock, l1);
    });
    bilgi.add(failed);
    addEnd(okuma, l1.rows() + 1, failed);
    okuma.end();
}

void Stoktrf::xmlkaydet()
{
    if (l1.isEmpty()) {
        m_program.boxes.show(
            {u"Stok Kart Listesinde Kayıt Bulunamadı...!"_s, u"Dikkat"_s, Icon::Exclamation});
        return;
    }
    if (const auto dosya = askTarget(m_program, u"Stok Xml Dosyası Kaydet"_s))
        kaydet(*dosya);
}

Filling Stoktrf::kartlar() const
{
    const QList<QByteArray> words = placeholders();
    std::array<QString, 5> codes;
    for (std::size_t i = 0; i < codes.size(); ++i)
        codes[i] = codeOf(ozelKodlar[i], words[firstCode + static_cast<qsizetype>(i)]);
    return {words, cardTemplate(u"stok-kartex"_s, words, okunurBicim),
            [this, codes, an = CreationTime(m_program.clock)](int row) mutable {
                return QStringList{an.tarih(),
                                   an.saat(),
                                   an.dakika(),
                                   an.saniye(),
                                   l1.cell(row, MalzemeKodu),
                                   l1.cell(row, Aciklama),
                                   brmseti.text(),
                                   l1.cell(row, Kdv),
                                   l1.cell(row, Birim),
                                   codes[0],
                                   codes[1],
                                   codes[2],
                                   codes[3],
                                   codes[4],
                                   multiplier(l1.cell(row, BirimCarpani))};
            }};
}

void Stoktrf::kaydet(const QString &dosya)
{
    bilgi.begin();
    const QString list = m_program.path(u"stokkontrol.kvz");
    QFile::remove(list);
    const auto failed = passOver([&] {
        const Filling cards = kartlar();
        writeCards(dosya, u"stok"_s, cards.record, l1.rows(), ilerleme, cards.values);
    });
    bilgi.addDocument(dosya, u"stok kartı"_s, l1.rows(), m_program.clock.now().time(), failed);
    bilgi.add(passOver([&] { writeLines(list, columnOf(l1, MalzemeKodu)); }));
    tellDone(m_program.boxes);
}

} // namespace kervan
