#include "slips/slipdocuments.h"

#include "base/codepage.h"
#include "base/failure.h"
#include "logoxml/accumulated.h"
#include "logoxml/document.h"
#include "slips/columns.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "text/spellings.h"

#include <QScopeGuard>
#include <QTime>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The values of placeholders. A number is the grid's column.

template<int column>
QString asItStands(const SlipRow &row)
{
    return row.cell(column);
}

template<int column>
QString trimmed(const SlipRow &row)
{
    return trimmedBlanks(row.cell(column)).toString();
}

template<int column>
QString amount(const SlipRow &row)
{
    return tutarnoktasil(row.cell(column));
}

template<int column>
QString fileDate(const SlipRow &row)
{
    return tarihcevir(row.cell(column));
}

QString fileYear(const SlipRow &row)
{
    return cut(row.cell(MetinHareket::IslemTarihi), 1, 4).toString();
}

QString fileMonth(const SlipRow &row)
{
    return cut(row.cell(MetinHareket::IslemTarihi), 5, 2).toString();
}

QString tail(const SlipRow &row)
{
    return row.cell(MetinHareket::MuhBelgeNo).right(8);
}

QString tarih(const SlipRow &row)
{
    return row.date().tarih;
}

QString ay(const SlipRow &row)
{
    return row.date().ay;
}

QString ikiHaneliAy(const SlipRow &row)
{
    return row.date().ikiHaneliAy;
}

QString yil(const SlipRow &row)
{
    return row.date().yil;
}

QString kskod(const SlipRow &row)
{
    return row.kskod();
}

QString bankahesapno1(const SlipRow &row)
{
    return row.bankahesapno1();
}

QString nothing(const SlipRow &)
{
    return {};
}

// A workbook's cell of a date with a time spells both.
QDate dayOf(const QString &cell)
{
    const QStringView text = trimmedBlanks(cell);
    const qsizetype blank = text.indexOf(u' ');
    const QString behind = blank > 0 ? text.sliced(blank).trimmed().toString() : QString();
    const bool timed = QTime::fromString(behind, u"H:mm:ss"_s).isValid() ||
                       QTime::fromString(behind, u"H:mm"_s).isValid();
    return toDate(timed ? text.first(blank) : text);
}

struct SlipTexts
{
    QString record;
    QString header;
    QString footer;
};

SlipTexts textsOf(const SlipDocument &document, bool salesman)
{
    const QString form = salesman ? u"carifisduzey-"_s : u"cafis-"_s;
    switch (document.kind) {
    case SlipKind::Note:
        return {u"cafis-sentex"_s, u"cafis-senbastex"_s, u"cafis-sensontex"_s};
    case SlipKind::Cheque:
        return {u"cafis-cektex"_s, u"cafis-senbastex"_s, u"cafis-sensontex"_s};
    case SlipKind::Cash:
        return {form + u"kasatex"_s, u"kasabastex"_s, u"kasasontex"_s};
    case SlipKind::Bank:
        return {u"cafis-bankatex"_s, u"cafis-bankabastex"_s, u"cafis-bankasontex"_s};
    case SlipKind::Card:
        return {form + u"kartex"_s, u"cafis-karbastex"_s, u"cafis-karsontex"_s};
    case SlipKind::None:
        break;
    }
    throw Failure(u"\"%1\" için şablon yok, belge yazılmadı."_s.arg(document.title));
}

QList<QByteArray> placeholdersOf(const SlipDocument &document)
{
    QList<QByteArray> placeholders{"saat", "dakika", "saniye"};
    for (const SlipDocument::Word &word : document.words)
        placeholders << toCodePage(word.placeholder);
    return placeholders;
}

void takeValues(const SlipDocument &document, const SlipRow &row, QTime time, QStringList &values)
{
    values = {QString::number(time.hour()), QString::number(time.minute()),
              QString::number(time.second())};
    for (const SlipDocument::Word &word : document.words)
        values << word.value(row);
}

int rowsTaken(const SlipDocument &document, const Grid &grid)
{
    int count = 0;
    for (int row = 0; row < grid.rows(); ++row)
        count += document.takes(grid, row);
    return count;
}

} // namespace

const SlipRow::Date &SlipRow::date() const
{
    const QString &text = cell(Hareket::Tarih);
    if (text == m_dateText && !m_date.yil.isEmpty())
        return m_date;
    QDate day;
    if (const auto failed = passOver([&] { day = dayOf(text); }))
        throw Failure(u"%1. satır: %2"_s.arg(m_row + 1).arg(failed->description()));
    const QString month = masked(double(day.month()), "00"_mask);
    const QString year = QString::number(day.year());
    m_dateText = text;
    m_date = {.tarih = masked(double(day.day()), "00"_mask) + u'.' + month + u'.' + year,
              .ay = QString::number(day.month()),
              .ikiHaneliAy = month,
              .yil = year};
    return m_date;
}

const SlipDocument &exeldenkasanakitkaydet()
{
    static const SlipDocument document{
        .title = u"Kasa Nakit Tahsilat Xml Dosyası Kaydet"_s,
        .kind = SlipKind::Cash,
        .stores = SlipSequenceKind::Cash,
        .words = {{u"yil", &yil},
                  {u"ay", &ikiHaneliAy},
                  {u"tarih", &tarih},
                  {u"kasakodu", &trimmed<Hareket::KasaKodu>},
                  {u"kasaislemno", &asItStands<Hareket::KasaIslemNo>},
                  {u"cariunvan",
                   [](const SlipRow &row) {
                       return row.cell(Hareket::Unvani) + u" Kodlu Cari"_s;
                   }},
                  {u"tutar", &amount<Hareket::Tutar>},
                  {u"carikod", &asItStands<Hareket::CariKodu>},
                  {u"islemno", &asItStands<Hareket::IslemNo>},
                  {u"makbuzno", &nothing}}};
    return document;
}

const SlipDocument &exeldenbankafisikaydet()
{
    static const SlipDocument document{.title = u"Banka İşlem Fişi Xml Dosyası Kaydet"_s,
                                       .kind = SlipKind::Bank,
                                       .ofBankList = true,
                                       .stores = SlipSequenceKind::Bank,
                                       .words = {{u"tarih", &tarih},
                                                 {u"fisno", &trimmed<BankaFisi::FisNo>},
                                                 {u"personelkodu", &trimmed<BankaFisi::OzelKod>},
                                                 {u"tutar", &amount<BankaFisi::Tutar>},
                                                 {u"bankakodu", &bankahesapno1},
                                                 {u"belgeno", &nothing},
                                                 {u"aciklama", [](const SlipRow &row) {
                                                      return row.cell(BankaFisi::OzelKod) +
                                                             u" Kodlu Personel İşlem Yapmıştır"_s;
                                                  }}}};
    return document;
}

const SlipDocument &exelkasanakitkaydet()
{
    static const SlipDocument document{
        .title = u"Kasa Nakit Tahsilat Xml Dosyası Kaydet"_s,
        .kind = SlipKind::Cash,
        .needs = ReadKind::Cash,
        .barCountsAllRows = true,
        .words = {{u"yil", &yil},
                  {u"ay", &ay},
                  {u"tarih", &tarih},
                  {u"kasakodu", &kskod},
                  {u"kasaislemno", &asItStands<DuzeyHareket::IslemNo>},
                  {u"cariunvan", &asItStands<DuzeyHareket::Aciklama>},
                  {u"tutar", &amount<DuzeyHareket::Tutar>},
                  {u"carikod", &asItStands<DuzeyHareket::CariKodu>},
                  {u"islemno", &asItStands<DuzeyHareket::IslemNo>},
                  {u"makbuzno", &nothing},
                  {u"sateleman", &asItStands<DuzeyHareket::SaticiKodu>}}};
    return document;
}

const SlipDocument &exelkredikartkaydet()
{
    static const SlipDocument document{
        .title = u"Kredi Kartı Tahsilat Xml Dosyası Kaydet"_s,
        .kind = SlipKind::Card,
        .needs = ReadKind::Card,
        .barCountsAllRows = true,
        .words = {{u"kartfisno", &asItStands<DuzeyHareket::IslemNo>},
                  {u"tarih", &tarih},
                  {u"trhay", &ay},
                  {u"trhyil", &yil},
                  {u"tutar", &amount<DuzeyHareket::Tutar>},
                  {u"carikod", &asItStands<DuzeyHareket::CariKodu>},
                  {u"bankahesapno", &bankahesapno1},
                  {u"satiselemani", &asItStands<DuzeyHareket::SaticiKodu>},
                  {u"aciklama", &asItStands<DuzeyHareket::Aciklama>}}};
    return document;
}

const SlipDocument &kredikartkaydet()
{
    static const SlipDocument document{.title = u"Kredi Kartı Xml Dosyası Kaydet"_s,
                                       .kind = SlipKind::Card,
                                       .rowClass = u"Kredi Kartı"_s,
                                       .barCountsAllRows = true,
                                       .words = {{u"kartfisno", &tail},
                                                 {u"tarih", &fileDate<MetinHareket::IslemTarihi>},
                                                 {u"trhay", &fileMonth},
                                                 {u"trhyil", &fileYear},
                                                 {u"tutar", &asItStands<MetinHareket::Tutar>},
                                                 {u"carikod", &asItStands<MetinHareket::CariKod>},
                                                 {u"bankahesapno", &bankahesapno1}}};
    return document;
}

namespace {

// Notes and cheques differ in the words for their number and date alone.
SlipDocument rollDocument(const QString &title, SlipKind kind, const QString &rowClass,
                          QStringView number, QStringView date)
{
    return {.title = title,
            .kind = kind,
            .rowClass = rowClass,
            .barCountsAllRows = true,
            .words = {{number, &tail},
                      {date, &fileDate<MetinHareket::IslemTarihi>},
                      {u"vadetarih", &fileDate<MetinHareket::VadeTarihi>},
                      {u"tutar", &asItStands<MetinHareket::Tutar>},
                      {u"carikod", &asItStands<MetinHareket::CariKod>},
                      {u"portfoy", &tail},
                      {u"cariadı", [](const SlipRow &row) {
                           return row.cell(MetinHareket::CariKod) + u"  Kodlu Cari"_s;
                       }}}};
}

} // namespace

const SlipDocument &senetkaydet()
{
    static const SlipDocument document = rollDocument(u"Senet Xml Dosyası Kaydet"_s, SlipKind::Note,
                                                      u"Senet"_s, u"senetno", u"senettarih");
    return document;
}

const SlipDocument &cekkaydet()
{
    static const SlipDocument document = rollDocument(u"Çek Xml Dosyası Kaydet"_s, SlipKind::Cheque,
                                                      u"Çek"_s, u"cekno", u"cektarih");
    return document;
}

const SlipDocument &kasanakitkaydet()
{
    static const SlipDocument document{.title = u"Kasa Nakit Tahsilat Xml Dosyası Kaydet"_s,
                                       .kind = SlipKind::Cash,
                                       .rowClass = u"Nakit Tahsil"_s,
                                       .barCountsAllRows = true,
                                       .words = {{u"yil", &fileYear},
                                                 {u"ay", &fileMonth},
                                                 {u"tarih", &fileDate<MetinHareket::IslemTarihi>},
                                                 {u"kasakodu", &kskod},
                                                 {u"kasaislemno", &tail},
                                                 {u"cariunvan",
                                                  [](const SlipRow &row) {
                                                      return row.cell(MetinHareket::CariKod) +
                                                             u" Kodlu Cari"_s;
                                                  }},
                                                 {u"tutar", &asItStands<MetinHareket::Tutar>},
                                                 {u"carikod", &asItStands<MetinHareket::CariKod>},
                                                 {u"islemno", &tail},
                                                 {u"makbuzno", &nothing}}};
    return document;
}

const SlipDocument &nakitkaydet()
{
    static const SlipDocument document{.title = u"Nakit Tahsilat Xml Dosyası Kaydet"_s,
                                       .rowClass = u"Nakit Tahsil"_s};
    return document;
}

void writeSlips(const SlipDocument &document, bool salesman, const Grid &grid, SlipRow row,
                const Clock &clock, ProgressField &progress, const QString &path)
{
    const SlipTexts texts = textsOf(document, salesman);
    AccumulatedBody body(sablon(texts.record), placeholdersOf(document));
    progress.start(document.barCountsAllRows ? grid.rows() : rowsTaken(document, grid));
    const auto hide = qScopeGuard([&] { progress.finish(); });
    // The line end in front of the footer belongs to it, not to the last record.
    const Belge frame{sablon(texts.header), {}, {}, "\r\n" + sablon(texts.footer)};
    belgeyaz(frame, DocumentEnd::AsItStands, path, [&](const TakePiece &take) {
        QStringList values;
        for (int i = 0; i < grid.rows(); ++i) {
            const bool taken = document.takes(grid, i);
            if (taken || document.barCountsAllRows)
                progress.step();
            if (!taken)
                continue;
            row.moveTo(i);
            takeValues(document, row, clock.now().time(), values);
            body.add(values);
            body.handOver(take);
        }
        body.handOverAll(take);
    });
}

} // namespace kervan
