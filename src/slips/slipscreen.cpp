#include "slips/slipscreen.h"

#include "slips/columns.h"
#include "store/sidefiles.h"
#include "store/staff.h"
#include "transfer/target.h"

#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

SlipScreen::SlipScreen(Program &program, const SlipForm &form)
    : l1(form.columns, Grid::Tickable)
    , l2(bankaFisiColumns(), Grid::Tickable)
    , persl(perslColumns())
    , l1eski(metinHareketColumns(), Grid::Tickable)
    , ListView1(metinHareketColumns(), Grid::Tickable)
    , sayfaAdi(form.sheetDefault)
    , baslik(form.heading)
    , m_program(program)
    , m_form(form)
    , m_cash(program.path(cashCounterFile), SlipSequence::Printed)
    , m_bank(program.path(bankCounterFile), SlipSequence::Bare)
{
    sayfaKaydedilir.setChecked(true);
    QObject::connect(&sayfaAdi, &TextField::changed, &sayfaKaydedilir,
                     [this] { sayfaKaydedilir.setChecked(true); });
}

void SlipScreen::load()
{
    if (!m_form.aktifform.isEmpty()) // the invoice list menu then serves another screen
        m_program.aktifform = m_form.aktifform;
    sayfanooku();
    m_cash.look();
    m_bank.look();
    passOver([this] { bankaHesapKodu.setText(readSingleValue(m_program.path(u"bank.kvz"))); });
    passOver([this] { kasaKodu.setText(readSingleValue(m_program.path(u"kasa.kvz"))); });
    if (m_form.usesStaff)
        personelyukle();
}

void SlipScreen::sayfanooku()
{
    endQuietly([this] {
        sayfaAdi.setText(readSingleValue(m_program.path(m_form.sheetFile)));
        if (m_form.sheetButtonRests)
            sayfaKaydedilir.setChecked(false);
    });
}

void SlipScreen::sayfaadikaydet()
{
    bilgi.takeBack(m_adsaklanamadi);
    m_adsaklanamadi = endQuietly([this] {
        writeSingleValue(m_program.path(m_form.sheetFile), sayfaAdi.text());
        if (m_form.sheetButtonRests)
            sayfaKaydedilir.setChecked(false);
    });
    note(m_adsaklanamadi);
}

void SlipScreen::personelyukle()
{
    m_personelOkunamadi = endQuietly([this] {
        const Grid::Refill refill(persl);
        const OpenDb open(m_program.db, m_program.path(u"data.dbs"));
        loadStaff(m_program.db, persl);
    });
    note(m_personelOkunamadi);
}

void SlipScreen::run(const SlipCommand &command)
{
    if (const auto *open = std::get_if<OpenWorkbook>(&command.action))
        dosyaac(m_form.files[open->file]);
    else if (const auto *write = std::get_if<WriteDocument>(&command.action))
        kaydet(write->document());
    else
        metindosyasiac();
}

void SlipScreen::dosyaac(const SlipFile &file)
{
    const auto name = m_program.dialogs.openName(
        {.title = file.title,
         .filter = u"Exel Dosyaları (xlsx)|*.xlsx;*.xls"_s,
         .start = file.startsInTxt ? m_program.path(u"txt") : QString()});
    if (name && !name->isEmpty())
        dosyaac(file, *name);
}

void SlipScreen::dosyaac(const SlipFile &file, const QString &path)
{
    m_dosyayolu = path;
    m_file = &file;
    if (file.kind == ReadKind::None) // else the caption shows it
        bilgi.source.setText(path);
    exeloku(file.layout);
    if (file.kind == ReadKind::None)
        return;
    // A read that failed counts too.
    m_kind = file.kind;
    baslik.setText(m_form.heading + u"  ["_s + QFileInfo(path).fileName() + u']');
}

void SlipScreen::yenidenoku()
{
    if (m_file)
        dosyaac(*m_file, m_dosyayolu);
    else if (!m_dosyayolu.isEmpty())
        caridosyasikoku();
}

void SlipScreen::birakilandosya(const QString &path)
{
    if (m_form.files.size() > 1 && m_kind == ReadKind::None) {
        bilgi.begin();
        bilgi.add(u"Nakit mi kredi kartı mı olduğu bilinmiyor: ilk dosyayı düğmesiyle açın."_s);
        return;
    }
    const bool second = m_kind == ReadKind::Card;
    dosyaac(m_form.files[second ? 1 : 0], path);
}

void SlipScreen::metindosyasiac()
{
    const auto name = m_program.dialogs.openName({.title = u"Cari Haraket Dosyası Seçin"_s,
                                                  .filter = u"Text Dosyaları (txt)|*.txt"_s,
                                                  .start = m_program.path(u"txt")});
    if (!name || name->isEmpty())
        return;
    m_dosyayolu = *name;
    m_file = nullptr;
    bilgi.source.setText(*name);
    caridosyasikoku();
}

void SlipScreen::kaydet(const SlipDocument &document)
{
    const Grid &grid = document.ofBankList ? l2 : l1;
    if (grid.isEmpty())
        return warn(document.ofBankList ? u"Banka Fişi Haraket Listesinde Kayıt Bulunamadı...!"_s
                                        : u"Cari Haraket Listesinde Kayıt Bulunamadı...!"_s);
    if (document.needs == ReadKind::Cash && m_kind != ReadKind::Cash)
        return warn(u"Nakit Dosyası Okutmanız Gerekiyor..."_s);
    if (document.needs == ReadKind::Card && m_kind != ReadKind::Card)
        return warn(u"Kredi Kartı Dosyası Okutmanız Gerekiyor..."_s);
    if (document.takesTicked() && grid.tickedCount() == 0)
        return warn(u"Listeden Seçim Yapınız..."_s, Icon::None);
    if (const auto dosya = askTarget(m_program, document.title))
        write(document, *dosya);
}

void SlipScreen::write(const SlipDocument &document, const QString &dosya)
{
    m_document = &document;
    bilgi.begin();
    note(endQuietly([&] {
        const Grid &grid = document.ofBankList ? l2 : l1;
        const int count =
            writeSlips(document, {grid, codes(), m_form.salesman, okunurBicim.values()},
                       m_program.clock, ilerleme, dosya);
        bilgi.addDocument(dosya, u"fiş"_s, count, m_program.clock.now().time());
        if (document.stores == SlipSequenceKind::Cash)
            m_cash.store();
        else if (document.stores == SlipSequenceKind::Bank)
            m_bank.store();
        tellDone(m_program.boxes);
    }));
}

void SlipScreen::warn(const QString &text, Icon icon)
{
    m_program.boxes.show({text, u"Dikkat"_s, icon});
}

void SlipScreen::note(const std::optional<Failure> &failed)
{
    bilgi.add(failed);
}

} // namespace kervan
