#include "slips/slipscreen.h"

#include "slips/columns.h"
#include "text/numbers.h"
#include "text/record.h"
#include "transfer/linewalk.h"
#include "transfer/sourcecheck.h"

#include <QFileInfo>
#include <QScopeGuard>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView takenKind = u"HHSATIS";

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

} // namespace

void SlipScreen::exeloku(const SheetLayout &layout)
{
    bilgi.begin();
    m_passedOver = 0;
    const Grid::Refill refillCash(l1);
    const Grid::Refill refillBank(l2);
    l1.setColumns(m_form.columns);
    l2.clear();
    m_bankRows.clear();
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
}

void SlipScreen::readMovements(const SheetLayout &layout, int &record)
{
    const auto work = m_program.busy.reading(m_dosyayolu);
    const std::shared_ptr<const Sheet> sheet = m_workbooks.sheet(m_dosyayolu, sayfaAdi.text());
    ilerleme.start(sheet->rows());
    m_cash.load();
    m_bank.load();
    if (sheet->rows() < layout.headings) {
        carryOut(layout, [&] {
            throw Failure(
                u"%1 sayfasında %2 kayıt var; ilk %3 kayıt başlıktır."_s.arg(sayfaAdi.text())
                    .arg(sheet->rows())
                    .arg(layout.headings));
        });
    }
    Reading reading{.sheet = *sheet, .persl = persl, .codes = codes()};
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

// False when the record ends the read.
bool SlipScreen::takeRecord(const SheetLayout &layout, Reading &reading)
{
    const auto trimmed = [&](int field) { // empty where the field's failure is passed over
        QString text;
        carryOut(layout, [&] { text = trimmedField(reading.text(field)); });
        return text;
    };
    if (layout.kindField && trimmed(*layout.kindField) != takenKind)
        return true;
    if (layout.endField && trimmed(*layout.endField).isEmpty())
        return false;
    reading.sira = m_cash.next();
    const int row = l1.addRow(QString::number(l1.rows() + 1));
    for (const CellRule &rule : layout.cells)
        carryOut(layout, [&] { l1.setCell(row, rule.cell(), rule.text(reading)); });
    if (m_form.hasBankList())
        addToBankList(layout, row);
    return true;
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
}

void SlipScreen::caridosyasikoku()
{
    bilgi.begin();
    const Grid::Refill refill(l1);
    l1.setColumns(metinHareketColumns());
    tumHareketler.setChecked(false);
    note(passOver([this] {
        const auto work = m_program.busy.reading(m_dosyayolu);
        walkLines(m_dosyayolu, ilerleme,
                  [this](QStringView line) { addMovementLine(l1, line, m_sira); });
    }));
    hareketSayisi.setText(QString::number(l1.rows()));
}

} // namespace kervan
