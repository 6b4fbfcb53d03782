#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "check/readreport.h"
#include "logoxml/spelling.h"
#include "logoxml/template.h"
#include "store/program.h"
#include "workbook/workbook.h"

#include <QString>

#include <array>
#include <memory>
#include <optional>

namespace kervan {

/// The Mey stock list: the sheet of a Mey workbook into `ITEMS` cards of one tax rate and one unit
/// set.
class St
{
public:
    /// Columns of the list, named by their headings. What a workbook puts there is another matter:
    /// its fields go by position, the code of the sheet to "Depo".
    enum Column { Depo, UrunKodu, UrunAdi, Statu, Miktar, BirimFiyat, Tutar, Columns };

    explicit St(Program &program);

    /// What the opening of the screen does.
    void load() { yukle(); }

    Grid l1;
    ChoiceField kdvOrani;
    ChoiceField birimSeti;
    ChoiceField statu; ///< without effect
    TextField kayitSayisi;
    Notes bilgi;      ///< what the last read or write has to tell without a box
    ReadReport okuma; ///< what the last read left out
    CheckField bekle; ///< the pointer is an hourglass
    ProgressField ilerleme;
    XmlChoice okunurBicim; ///< values are written as XML asks

    // What the user does.
    void manualac();
    void kdvoranisec();
    void birimsetisec();
    void manualkaydet();
    void otomatikkaydet();

    // Procedures.
    void yukle();
    /// Refuses a workbook that is none of Mey's, else reads it.
    void kontrol(const QString &path);
    void ac(const QString &path);
    /// Writes the document; the first step that fails is a Failure.
    void kaydet(const QString &dosya);

    /// The cards as kaydet() fills them.
    Filling kartlar() const;
    /// What the chosen rate and unit set bring along: the accounts of purchases, sales and their
    /// returns by what they are of, and the unit set's number.
    QList<std::pair<QString, QString>> hesaplar() const;
    const QString &birimNo() const { return m_birim; }
    /// Why the definitions could not be read, if they could not.
    const std::optional<Failure> &tanimOkunamadi() const { return m_tanimOkunamadi; }
    const Program &program() const { return m_program; }

private:
    bool isReady();
    QString hedef() const;
    std::shared_ptr<const Sheet> sheet(const QString &path);
    void reportEmpty(const Sheet &records, int record);
    void note(const std::optional<Failure> &failed);

    Program &m_program;
    Workbooks m_workbooks;
    std::array<QString, 9> m_muh; // kdv, al, sat, ali, sati and the accounts of their tax
    std::optional<Failure> m_tanimOkunamadi;
    QString m_birim; // the number of the chosen unit set
};

} // namespace kervan
