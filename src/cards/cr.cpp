#include "cards/cr.h"

#include "cards/cardfiles.h"
#include "check/readnotes.h"
#include "store/sidefiles.h"
#include "text/ini.h"
#include "text/numbers.h"
#include "text/record.h"
#include "transfer/linewalk.h"
#include "transfer/sourcecheck.h"
#include "transfer/target.h"

#include <QFile>

#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Only the first two are ever filled; the rest are kept for the eye.
QList<GridColumn> cardColumns()
{
    return {
        {u"Cari Kodu"_s, 2117},       {u"Ünvanı"_s, 5292},        {u"Data Referans"_s, 2646},
        {u"Çalışma Dönemi"_s, 2540},  {u"Vergi Dairesi"_s, 3528}, {u"Vergi No"_s, 2540},
        {u"Lisans Numarası"_s, 3528}, {u"İşyeri Tipi"_s, 3528},   {u"Grup"_s, 3528},
        {u"Sınıf"_s, 1764},           {u"Durum"_s, 2117},         {u"Çeşit"_s, 4410},
        {u"Şehir"_s, 3528},           {u"İlçe"_s, 3528},          {u"Fiyat Listesi Tipi"_s, 3528},
        {u"Ödeme Şekli"_s, 2646},     {u"Vade Şekli"_s, 3528}};
}

QString titleField(QStringView field)
{
    return trimmedField(field.toString().replace(u',', u' '));
}

constexpr std::array<RecordField, 2> cardFields{{
    {Cr::CariKodu, 3, 8, &untouchedField},
    {Cr::Unvani, 11, 50, &titleField},
}};
static_assert(inOrder(cardFields));
constexpr std::array<WantedField, 2> wantedFields{
    {{Cr::CariKodu, 3, u"Cari kodu"}, {Cr::Unvani, 11, u"Ünvan"}}};

// Their order is part of the format: a value is searched by every later step.
QList<QByteArray> placeholders()
{
    return {"tarih", "saat", "dakika", "saniye", "carikod", "unvan", "caridataref"};
}

QString referenceOf(IniFile &file, const QString &carino, bool keep)
{
    QString counter = file.value(u"id"_s, u"id"_s);
    if (counter.isEmpty()) {
        counter = u"0"_s;
        if (keep)
            file.set(u"id"_s, u"id"_s, counter);
    }
    QString known = file.value(u"carino"_s, carino);
    if (!known.isEmpty())
        return known;
    QString next = toText(toNumber(counter) + 1);
    if (keep) {
        file.set(u"carino"_s, carino, next);
        file.set(u"id"_s, u"id"_s, next);
    }
    return next;
}

constexpr QStringView dataReference = u"1059"; // of every card that is inserted

} // namespace

Cr::Cr(Program &program)
    : l1(cardColumns())
    , m_program(program)
{
}

void Cr::dosyaac()
{
    if (const auto name = askSource(m_program, u"Cari Dosyası Seçin"_s))
        dosyaac(*name);
}

void Cr::dosyaac(const QString &path)
{
    m_dosyayolu = path;
    bilgi.source.setText(path);
    caridosyasikoku();
}

void Cr::caridosyasikoku()
{
    bilgi.begin();
    okuma.begin(m_dosyayolu);
    {
        const Grid::Refill refill(l1);
        const auto work = m_program.busy.reading(m_dosyayolu);
        l1.clear();
        const auto failed = passOver([this] {
            walkLines(m_dosyayolu, ilerleme, [this](QStringView line) {
                const int row = l1.addRow({});
                cutRecord(line, cardFields,
                          [&](int cell, const QString &text) { l1.setCell(row, cell, text); });
                addEmptyCells(okuma, l1, row, line, wantedFields);
            });
            checkSource(bilgi, m_dosyayolu, SourceKind::Accounts, l1);
        });
        bilgi.add(failed);
        addEnd(okuma, l1.rows() + 1, failed);
    }
    okuma.end();
    kartSayisi.setText(QString::number(l1.rows()));
}

bool Cr::isFilled(const QString &warning)
{
    if (l1.isEmpty())
        m_program.boxes.show({warning, u"Dikkat"_s, Icon::Exclamation});
    return !l1.isEmpty();
}

bool Cr::guncellemekontrol()
{
    return isFilled(u"Cari Listesinde Kayıt Bulunamadı..."_s);
}

std::optional<QString> Cr::hedefsor()
{
    if (!isFilled(u"Cari Kart Listesinde Kayıt Bulunamadı...!"_s))
        return std::nullopt;
    return askTarget(m_program, u"Cari Xml Dosyası Kaydet"_s);
}

void Cr::xmlkaydet()
{
    if (const auto dosya = hedefsor())
        kaydet(*dosya);
}

void Cr::guncellemexmlkaydet()
{
    if (const auto dosya = hedefsor())
        kaydetguncelle(*dosya);
}

Filling Cr::filling(const QString &kart, std::function<QString(int row)> dataref) const
{
    return {
        placeholders(), cardTemplate(kart, placeholders(), okunurBicim),
        [this, dataref = std::move(dataref), an = CreationTime(m_program.clock)](int row) mutable {
            return QStringList{
                an.tarih(),           an.saat(),   an.dakika(), an.saniye(), l1.cell(row, CariKodu),
                l1.cell(row, Unvani), dataref(row)};
        }};
}

Filling Cr::kartlar() const
{
    return filling(u"cr-kartex"_s, [](int) { return dataReference.toString(); });
}

void Cr::write(const QString &dosya, const Filling &cards)
{
    writeCards(dosya, u"cr"_s, cards.record, l1.rows(), ilerleme, cards.values);
}

void Cr::kaydet(const QString &dosya)
{
    bilgi.begin();
    const QString list = m_program.path(u"carikontrol.kvz");
    QFile::remove(list);
    const auto failed = passOver([&] { write(dosya, kartlar()); });
    bilgi.addDocument(dosya, u"cari kart"_s, l1.rows(), m_program.clock.now().time(), failed);
    bilgi.add(passOver([&] { writeLines(list, columnOf(l1, CariKodu)); }));
    tellDone(m_program.boxes);
}

void Cr::kaydetguncelle(const QString &dosya)
{
    bilgi.begin();
    bilgi.add(endQuietly([&] {
        write(dosya, filling(u"cr-kartexguncelle"_s,
                             [this](int row) { return l1.cell(row, DataReferans); }));
        bilgi.addDocument(dosya, u"cari kart"_s, l1.rows(), m_program.clock.now().time());
        tellDone(m_program.boxes);
    }));
}

QString Cr::datarefyap(const QString &carino)
{
    return datarefyap(QStringList{carino}).first();
}

QStringList Cr::datarefyap(const QStringList &carinolar)
{
    const QString path = m_program.path(u"cariref.kvz"_s);
    QStringList references;
    IniFile file(path);
    for (const QString &carino : carinolar)
        references << referenceOf(file, carino, true);
    if (!file.save()) { // a counter that can't be kept gives each new cari the same number
        IniFile kept(path);
        for (qsizetype i = 0; i < references.size(); ++i)
            references[i] = referenceOf(kept, carinolar[i], false);
    }
    return references;
}

} // namespace kervan
