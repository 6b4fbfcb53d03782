#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "logoxml/spelling.h"
#include "slips/movements.h"
#include "slips/slipform.h"
#include "store/program.h"
#include "workbook/workbook.h"

#include <QHash>
#include <QString>

namespace kervan {

/// A slip transfer: an export of current-account movements into the cash list and, by code, the
/// bank list; ticked rows into slip documents. Which of the four screens it is, its form tells.
class SlipScreen
{
public:
    SlipScreen(Program &program, const SlipForm &form);

    const SlipForm &form() const { return m_form; }

    /// What the opening of the screen does.
    void load();

    Grid l1;
    Grid l2;
    Grid persl;
    Grid l1eski, ListView1; ///< stand on the screen with no code on them
    TextField sayfaAdi;
    CheckField sayfaKaydedilir; ///< the button that stores the sheet's name can be pressed
    TextField bankaHesapKodu;
    TextField kasaKodu;
    CheckField tumHareketler, tumFisler; ///< all rows of `l1`, of `l2`
    TextField baslik;
    TextField hareketSayisi;
    Notes bilgi; ///< what the last read or write has to tell without a box
    ProgressField ilerleme;
    XmlChoice okunurBicim; ///< values are written as XML asks

    // What the user does.
    void run(const SlipCommand &command);
    /// Reads a file that is picked already.
    void dosyaac(const SlipFile &file, const QString &path);
    /// A file that was dropped: of the kind read last, where there are two. Before the first read
    /// nobody knows which, and it is refused.
    void birakilandosya(const QString &path);
    void sayfaadikaydet();
    void tumhareketlerisec() { l1.setAllTicked(tumHareketler.isChecked()); }
    void tumfislerisec() { l2.setAllTicked(tumFisler.isChecked()); }

private:
    // Opening.
    void sayfanooku();
    void personelyukle();

    // Workbooks and text exports.
    void dosyaac(const SlipFile &file);
    void metindosyasiac();
    /// Reads the workbook at the source path. Failures show nothing; the layout tells whether one
    /// ends the read or is passed over.
    void exeloku(const SheetLayout &layout);
    void caridosyasikoku();
    void readMovements(const SheetLayout &layout, int &record);
    bool takeRecord(const SheetLayout &layout, Reading &reading);
    void addToBankList(const SheetLayout &layout, int row);
    /// Adds the amount to the code's row of `l2`, in single precision, and tells whether there is
    /// one.
    bool bankalistebul(const QString &kod, float tutar);
    template<class Step>
    void carryOut(const SheetLayout &layout, Step &&step);
    /// Tells at which record the read ended, or what it passed over.
    void noteRead(const std::optional<Failure> &ended, int record);

    // Documents.
    void kaydet(const SlipDocument &document);
    void write(const SlipDocument &document, const QString &dosya);

    void warn(const QString &text, Icon icon = Icon::Exclamation);
    void note(const std::optional<Failure> &failed);
    SlipCodes codes() const { return {kasaKodu.text(), bankaHesapKodu.text()}; }

    Program &m_program;
    const SlipForm &m_form;
    QString m_dosyayolu;
    ReadKind m_kind = ReadKind::None;
    Workbooks m_workbooks;
    IslemSira m_sira;
    SlipSequence m_cash, m_bank;
    QHash<QString, int> m_bankRows; // of `l2`, by code
    int m_passedOver = 0;           // steps of the read in hand
    QString m_firstPassedOver;
    std::optional<Failure> m_adsaklanamadi; // the sheet's name, the last time
};

} // namespace kervan
