#include "slips/slipscreen.h"

#include "check/listrules.h"
#include "check/readnotes.h"
#include "slips/columns.h"
#include "store/sidefiles.h"
#include "text/numbers.h"
#include "text/record.h"
#include "transfer/linewalk.h"
#include "transfer/sourcecheck.h"

#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView takenKind = u"HHSATIS";

constexpr std::array<WantedField, 4> wantedFields{{{MetinHareket::CariKod, 3, u"Cari kodu"},
                                                   {MetinHareket::IslemTarihi, 16, u"Tarih"},
                                                   {MetinHareket::Tutar, 37, u"Tutar"},
                                                   {MetinHareket::MuhBelgeNo, 217, u"Belge no"}}};
constexpr qsizetype shownFields = 5;
constexpr int optionalCell = DuzeyHareket::Aciklama; // of lists that have so many columns

// "1-2.xlsx" gives "1-2x": the first removal leaves nothing for the second, and a staff code from
// there ends in "x".
QString cutTitle(const QString &path)
{
    return QFileInfo(path).fileName().remove(u".xls"_s).remove(u".xlsx"_s);
}

QString dateIn(const QString &title, const NamedDate &place)
{
    return u"%1/%2/%3"_s.arg(cut(title, place.day, 2), cut(title, place.month, 2),
                             cut(title, place.year, 4));
}

// The first fields that hold something.
QString beginningOf(const Reading &reading)
{
    QStringList texts;
    for (int field = 0; field < reading.sheet.columns() && texts.size() < shownFields; ++field) {
        const QString text = reading.text(field);
        if (!text.isEmpty())
            texts << text;
    }
    return texts.join(u" | "_s);
}

} // namespace

void SlipScreen::exeloku(const SheetLayout &layout)
{
    bilgi.begin();
    okuma.begin(m_dosyayolu);
    m_passedOver = 0;
    const Grid::Refill refillCash(l1);
    const Grid::Refill refillBank(l2);
    l1.setColumns(m_form.columns);
    l2.clear();
    m_bankRows.clear();
    m_eksikPersonel.clear();
    m_supheliTutar.clear();
    tumHareketler.setChecked(false); // no new row is ticked
    tumFisler.setChecked(false);
    int record = 0;
    const auto ended = endQuietly([&] { readMovements(layout, record); });
    ilerleme.finish();
    if (!ended || layout.passesOver) // the second also where the workbook itself can't be read
        hareketSayisi.setText(QString::number(l1.rows()));
    noteRead(ended, record);
    if (!ended && m_passedOver == 0 && l1.isEmpty())
        bilgi.add(u"\"%1\" sayfasında bu ekranın okuduğu türden satır yok."_s.arg(sayfaAdi.text()));
    bilgi.add(lettersLost(l1));
    addEnd(okuma, record + 1, ended);
    okuma.end();
}

void SlipScreen::readMovements(const SheetLayout &layout, int &record)
{
    const auto work = m_program.busy.reading(m_dosyayolu);
    const std::shared_ptr<const Sheet> sheet = m_workbooks.sheet(m_dosyayolu, sayfaAdi.text());
    ilerleme.start(sheet->rows());
    m_sayacOkunamadi = {m_cash.load(), m_bank.load()};
    if (sheet->rows() < layout.headings) {
        carryOut(layout, [&] {
            throw Failure(u"%1 sayfasında %2 kayıt var; ilk %3 kayıt başlıktır."_s.arg(
                sayfaAdi.text(), QString::number(sheet->rows()), QString::number(layout.headings)));
        });
    }
    Reading reading{.sheet = *sheet, .persl = StaffCodes(persl), .codes = codes()};
    if (layout.namedDate) {
        const QString title = cutTitle(m_dosyayolu);
        reading.tarih = dateIn(title, *layout.namedDate);
        reading.per = title.section(u'-', 1, 1);
    }
    for (record = layout.headings; record < sheet->rows(); ++record) {
        reading.record = record;
        if (!takeRecord(layout, reading))
            break;
        ilerleme.setValue(l1.rows());
    }
}

// Whether there is a record behind that would be read if none had ended the read.
bool SlipScreen::hasMore(const SheetLayout &layout, const Reading &reading) const
{
    const auto trimmed = [&](int record, int field) {
        QString text;
        passOver([&] { text = trimmedField(reading.sheet.text(record, field)); });
        return text;
    };
    for (int record = reading.record + 1; record < reading.sheet.rows(); ++record) {
        if (!trimmed(record, *layout.endField).isEmpty() &&
            (!layout.kindField || trimmed(record, *layout.kindField) == takenKind))
            return true;
    }
    return false;
}

// False when the record ends the read.
bool SlipScreen::takeRecord(const SheetLayout &layout, Reading &reading)
{
    const auto trimmed = [&](int field) { // empty where the field's failure is passed over
        QString text;
        carryOut(layout, [&] { text = trimmedField(reading.text(field)); });
        return text;
    };
    if (layout.kindField) {
        const QString kind = trimmed(*layout.kindField);
        if (kind != takenKind) {
            reportCell(reading, *layout.kindField,
                       u"Türü \"%1\" değil: alınmadı."_s.arg(takenKind));
            return true;
        }
    }
    if (layout.endField && trimmed(*layout.endField).isEmpty()) {
        const int behind = reading.sheet.rows() - reading.record - 1;
        if (hasMore(layout, reading))
            okuma.cutShort();
        const QString reason = u"Boş cari kodu okumayı bitirdi"_s;
        reportCell(reading, *layout.endField,
                   behind > 0 ? u"%1, arkasındaki %2 kayıt okunmadı."_s.arg(reason).arg(behind)
                              : reason + u'.');
        return false;
    }
    reading.sira = m_cash.next();
    const int row = l1.addRow(QString::number(l1.rows() + 1));
    for (const CellRule &rule : layout.cells)
        carryOut(layout, [&] { l1.setCell(row, rule.cell(), rule.text(reading)); });
    reportEmpty(layout, reading, row);
    keepOddAmount(layout, reading, row);
    if (m_form.hasBankList())
        addToBankList(layout, row);
    return true;
}

// Only of texts: a number of the workbook knows its decimals.
void SlipScreen::keepOddAmount(const SheetLayout &layout, const Reading &reading, int row)
{
    static_assert(int(Hareket::Tutar) == int(DuzeyHareket::Tutar));
    const auto rule = std::ranges::find(layout.cells, int(Hareket::Tutar), &CellRule::cell);
    passOver([&] {
        if (reading.sheet.kind(reading.record, rule->field()) != Sheet::Kind::Text)
            return;
        const QString text = reading.text(rule->field());
        if (isOddlyGrouped(text, layout.groupMark, layout.groupMark == u'.' ? u',' : u'.'))
            m_supheliTutar.insert(row, text);
    });
}

void SlipScreen::reportCell(const Reading &reading, int field, const QString &reason)
{
    okuma.add(reading.record + 1, beginningOf(reading), reason,
              sayfaAdi.text() + u'!' + reading.sheet.address(reading.record, field));
}

// The cells that stayed empty, and why: nothing is in their field, or no definition fits it.
void SlipScreen::reportEmpty(const SheetLayout &layout, const Reading &reading, int row)
{
    for (const CellRule &rule : layout.cells) {
        if (!l1.cell(row, rule.cell()).isEmpty() || rule.field() < 0 || rule.cell() == optionalCell)
            continue;
        const QString &heading = l1.columns()[rule.cell()].heading;
        QString text;
        if (passOver([&] { text = trimmedField(reading.text(rule.field())); }))
            reportCell(reading, rule.field(), u"%1: sayfada bu sütun yok."_s.arg(heading));
        else if (text.isEmpty())
            reportCell(reading, rule.field(), u"%1 boş."_s.arg(heading));
        else
            reportCell(reading, rule.field(),
                       u"%1: %2 kodunun tanımı yok."_s.arg(heading, text.left(60)));
    }
    if (layout.staff && l1.cell(row, layout.staff->cell).isEmpty()) {
        QString &code = m_eksikPersonel[row];
        const int field = layout.staff->field;
        passOver([&] { code = trimmedField(field < 0 ? reading.per : reading.text(field)); });
    }
}

void SlipScreen::addToBankList(const SheetLayout &layout, int row)
{
    const QString &kod = l1.cell(row, Hareket::KasaKodu);
    bool found = false; // an amount that is no number counts as a code that was not found
    carryOut(layout,
             [&] { found = bankalistebul(kod, toSingleNumber(l1.cell(row, Hareket::Tutar))); });
    if (found)
        return;
    const int added = l2.addRow(QString::number(l2.rows() + 1));
    l2.setCell(added, BankaFisi::FisTarihi, l1.cell(row, Hareket::Tarih));
    l2.setCell(added, BankaFisi::Tutar, l1.cell(row, Hareket::Tutar));
    l2.setCell(added, BankaFisi::FisNo, slipNumber(u"BT", m_bank.next()));
    l2.setCell(added, BankaFisi::OzelKod, kod);
    if (!m_bankRows.contains(kod))
        m_bankRows.insert(kod, added);
}

bool SlipScreen::bankalistebul(const QString &kod, float tutar)
{
    const auto found = m_bankRows.constFind(kod);
    if (found == m_bankRows.cend())
        return false;
    // In single precision, deliberately: a sum beyond seven digits loses its cents, in the
    // document too.
    const float sum = toSingleNumber(l2.cell(*found, BankaFisi::Tutar)) + tutar;
    l2.setCell(*found, BankaFisi::Tutar, masked(sum, "#,###.00"_mask));
    return true;
}

template<class Step>
void SlipScreen::carryOut(const SheetLayout &layout, Step &&step)
{
    if (!layout.passesOver) {
        step();
    } else if (const auto failed = passOver(step)) {
        if (m_passedOver++ == 0)
            m_firstPassedOver = failed->description();
    }
}

void SlipScreen::noteRead(const std::optional<Failure> &ended, int record)
{
    // The count in the status bar then stays that of the read before.
    if (ended && record > 0)
        bilgi.add(u"Okuma %1. kayıtta bitti, listede %2 hareket var: %3"_s.arg(record + 1)
                      .arg(l1.rows())
                      .arg(ended->headline()));
    else if (ended)
        note(ended);
    else if (m_passedOver > 0)
        bilgi.add(u"%1 adım atlandı. İlki: %2"_s.arg(m_passedOver).arg(m_firstPassedOver));
    for (const auto &failed : std::exchange(m_sayacOkunamadi, {}))
        note(failed);
    for (const QStringView counter : {cashCounterFile, bankCounterFile})
        note(unreadable(m_program.path(counter)));
}

void SlipScreen::caridosyasikoku()
{
    bilgi.begin();
    okuma.begin(m_dosyayolu);
    m_eksikPersonel.clear();
    m_supheliTutar.clear();
    const Grid::Refill refill(l1);
    l1.setColumns(metinHareketColumns());
    tumHareketler.setChecked(false);
    const auto failed = passOver([this] {
        const auto work = m_program.busy.reading(m_dosyayolu);
        walkLines(m_dosyayolu, ilerleme, [this](QStringView line) {
            addMovementLine(l1, line, m_sira);
            const int row = l1.rows() - 1;
            addEmptyCells(okuma, l1, row, line, wantedFields);
            if (l1.cell(row, MetinHareket::IslemTipi).isEmpty() && !trimmedBlanks(line).isEmpty())
                okuma.add(row + 1, line, u"İşlem tipi tanınmıyor: satırı hiçbir belge almaz."_s);
        });
    });
    note(failed);
    addEnd(okuma, l1.rows() + 1, failed);
    okuma.end();
    hareketSayisi.setText(QString::number(l1.rows()));
}

} // namespace kervan
