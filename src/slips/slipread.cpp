#include "slips/slipscreen.h"

#include "slips/columns.h"
#include "text/numbers.h"
#include "text/spellings.h"
#include "transfer/linewalk.h"

#include <QFileInfo>
#include <QScopeGuard>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

const QString takenKind = u"HHSATIS"_s;

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
    bilgi.setText({});
    m_passedOver = 0;
    const Grid::Refill refillCash(l1);
    const Grid::Refill refillBank(l2);
    l1.setColumns(m_form.columns);
    l2.clear();
    m_bankRows.clear();
    Check1.setChecked(false); // as the ticks are
    Check2.setChecked(false);
    int record = 0;
    const auto ended = endQuietly([&] { readMovements(layout, record); });
    ilerleme.finish();
    if (layout.passesOver) // also where the workbook itself could not be read
        hareketSayisi.setText(QString::number(l1.rows()));
    notePassedOver(ended, record);
}

void SlipScreen::readMovements(const SheetLayout &layout, int &record)
{
    const std::shared_ptr<const Sheet> sheet = m_workbooks.sheet(dosyayolu, Text1.text());
    ilerleme.start(sheet->rows());
    m_cash.load();
    m_bank.load();
    if (sheet->rows() < layout.headings) {
        carryOut(layout, [&] {
            throw Failure(u"%1 sayfasında %2 kayıt var; ilk %3 kayıt başlıktır."_s.arg(Text1.text())
                              .arg(sheet->rows())
                              .arg(layout.headings));
        });
    }
    Reading reading{.screen = *this, .sheet = *sheet, .date = {}, .per = {}};
    if (layout.namedDate) {
        const QString title = cutTitle(dosyayolu);
        reading.date = dateIn(title, *layout.namedDate);
        reading.per = title.section(u'-', 1, 1);
    }
    for (record = layout.headings; record < sheet->rows(); ++record) {
        reading.record = record;
        if (!takeRecord(layout, reading))
            break;
        ilerleme.setValue(l1.rows());
    }
    hareketSayisi.setText(QString::number(l1.rows()));
}

// False when the record ends the read.
bool SlipScreen::takeRecord(const SheetLayout &layout, Reading &reading)
{
    QString kind = layout.kindField ? QString() : takenKind;
    QString code = layout.endField ? QString() : u"-"_s;
    if (layout.kindField)
        carryOut(layout, [&] { kind = reading.text(*layout.kindField); });
    if (trimmedBlanks(kind) != takenKind)
        return true;
    if (layout.endField)
        carryOut(layout, [&] { code = reading.text(*layout.endField); });
    if (trimmedBlanks(code).isEmpty())
        return false;
    reading.number = m_cash.next();
    const int row = l1.addRow(QString::number(l1.rows() + 1));
    for (const CellRule &rule : layout.cells) {
        carryOut(layout, [&] { l1.setCell(row, rule.cell, rule.value(reading, rule.field)); });
    }
    if (!m_form.hasBankList())
        return true;
    bool found = false; // an amount that is no number counts as a code that was not found
    carryOut(layout, [&] {
        found = bankalistebul(l1.cell(row, Hareket::KasaKodu),
                              toSingleNumber(l1.cell(row, Hareket::Tutar)));
    });
    if (!found)
        addBankRow(row);
    return true;
}

bool SlipScreen::bankalistebul(const QString &kod, float tutar)
{
    const auto found = m_bankRows.constFind(kod);
    if (found == m_bankRows.cend())
        return false;
    // Beyond seven digits the sum loses its cents, up to the document: that is meant.
    const float sum = toSingleNumber(l2.cell(*found, BankaFisi::Tutar)) + tutar;
    l2.setCell(*found, BankaFisi::Tutar, masked(sum, "#,###.00"_mask));
    return true;
}

void SlipScreen::addBankRow(int row)
{
    const QString &kod = l1.cell(row, Hareket::KasaKodu);
    const int added = l2.addRow(QString::number(l2.rows() + 1));
    l2.setCell(added, BankaFisi::FisTarihi, l1.cell(row, Hareket::Tarih));
    l2.setCell(added, BankaFisi::Tutar, l1.cell(row, Hareket::Tutar));
    l2.setCell(added, BankaFisi::FisNo, slipNumber(u"BT", m_bank.next()));
    l2.setCell(added, BankaFisi::OzelKod, kod);
    if (!m_bankRows.contains(kod))
        m_bankRows.insert(kod, added);
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

void SlipScreen::notePassedOver(const std::optional<Failure> &ended, int record)
{
    if (ended && record > 0)
        bilgi.setText(u"Okuma %1. kayıtta bitti: %2"_s.arg(record + 1).arg(ended->description()));
    else if (ended)
        note(ended);
    else if (m_passedOver > 0)
        bilgi.setText(u"%1 adım atlandı. İlki: %2"_s.arg(m_passedOver).arg(m_firstPassedOver));
}

void SlipScreen::caridosyasikoku()
{
    bilgi.setText({});
    const Grid::Refill refill(l1);
    l1.setColumns(metinHareketColumns());
    Check1.setChecked(false);
    note(passOver([this] {
        walkLines(dosyayolu, ilerleme,
                  [this](QStringView line) { addMovementLine(l1, line, m_sira); });
    }));
    hareketSayisi.setText(QString::number(l1.rows()));
}

} // namespace kervan
