#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "check/readreport.h"
#include "logoxml/spelling.h"
#include "slips/columns.h"
#include "slips/movements.h"
#include "slips/slipform.h"
#include "store/program.h"
#include "workbook/workbook.h"

#include <QHash>
#include <QString>

#include <array>
#include <optional>

namespace kervan {

/// A slip transfer: an export of current-account movements into the cash list and, by code, the
/// bank list; ticked rows into slip documents. Which of the four screens it is, its form tells.
class SlipScreen
{
public:
    SlipScreen(Program &program, const SlipForm &form);

    const SlipForm &form() const { return m_form; }
    /// The file that was opened last.
    const QString &dosyayolu() const { return m_dosyayolu; }
    /// Which of the form's files it was; null where it was a text export, or none.
    const SlipFile *sonDosya() const { return m_file; }
    /// The document that was written last, or is being written; null before.
    const SlipDocument *sonBelge() const { return m_document; }

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
    Notes bilgi;      ///< what the last read or write has to tell without a box
    ReadReport okuma; ///< what the last read left out
    ProgressField ilerleme;
    XmlChoice okunurBicim; ///< values are written as XML asks

    // What the list in hand is.
    ReadKind okunan() const { return m_kind; }
    /// It is of a text export, with the columns of one.
    bool metinden() const { return l1.columnCount() > MetinHareket::MuhBelgeNo; }
    /// The staff codes of the source that `persl` has nothing for, by the row that needs them.
    const QHash<int, QString> &eksikPersonel() const { return m_eksikPersonel; }
    /// Amounts of the source that hold a group mark where a decimal mark seems meant, by row.
    const QHash<int, QString> &supheliTutar() const { return m_supheliTutar; }
    /// Why the staff could not be read, if it could not.
    const std::optional<Failure> &personelOkunamadi() const { return m_personelOkunamadi; }
    const SlipSequence &kasaSirasi() const { return m_cash; }
    const SlipSequence &bankaSirasi() const { return m_bank; }
    SlipCodes codes() const { return {kasaKodu.text(), bankaHesapKodu.text()}; }
    const Program &program() const { return m_program; }

    // What the user does.
    void run(const SlipCommand &command);
    /// Reads a file that is picked already.
    void dosyaac(const SlipFile &file, const QString &path);
    /// A file that was dropped: of the kind read last, where there are two. Before the first read
    /// nobody knows which, and it is refused.
    void birakilandosya(const QString &path);
    /// Reads the last source again, as it was read.
    void yenidenoku();
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
    bool hasMore(const SheetLayout &layout, const Reading &reading) const;
    void reportCell(const Reading &reading, int field, const QString &reason);
    void keepOddAmount(const SheetLayout &layout, const Reading &reading, int row);
    void reportEmpty(const SheetLayout &layout, const Reading &reading, int row);
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

    Program &m_program;
    const SlipForm &m_form;
    QString m_dosyayolu;
    const SlipDocument *m_document = nullptr;
    const SlipFile *m_file = nullptr; // that it was read as; a text without one
    ReadKind m_kind = ReadKind::None;
    Workbooks m_workbooks;
    IslemSira m_sira;
    SlipSequence m_cash, m_bank;
    QHash<QString, int> m_bankRows;                         // of `l2`, by code
    std::array<std::optional<Failure>, 2> m_sayacOkunamadi; // as the read in hand began
    int m_passedOver = 0;                                   // steps of the read in hand
    QString m_firstPassedOver;
    QHash<int, QString> m_eksikPersonel;
    QHash<int, QString> m_supheliTutar;
    std::optional<Failure> m_personelOkunamadi;
    std::optional<Failure> m_adsaklanamadi; // the sheet's name, the last time
};

} // namespace kervan
