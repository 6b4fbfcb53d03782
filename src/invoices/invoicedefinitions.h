#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "base/grid.h"
#include "store/program.h"

#include <QString>

#include <functional>
#include <optional>

namespace kervan {

/// One row of table `firma`.
struct FirmaKayit
{
    QString frno, frkod, firma, kaskod, dkod, crkod, alkod, satkod;
};

/// The definitions that both invoice screens load at their opening and look up later.
class InvoiceDefinitions
{
public:
    explicit InvoiceDefinitions(Program &program);

    ChoiceField firma;
    ChoiceField ozelKod;  ///< no document carries it
    ChoiceField personel; ///< a choice only reads the source again
    TextField genelKdv;   ///< the general VAT rate
    Grid lbrm;            ///< unit word of the source, Logo unit code
    Grid persl;           ///< Logo personnel code, personnel code of the source

    FirmaKayit firmakayit; ///< of the firm that was chosen; empty before
    QString kdvmuafiyetgenel;
    QString kdvmuafiyetsatir;
    QString kasakodu;

    bool okundu = false;               ///< all but the special codes were read at the last time
    std::optional<Failure> okunamayan; ///< why not all of them were

    /// Opens data.dbs and reads what a screen's `tables` read of it; tells what failed, and keeps
    /// it.
    std::optional<Failure> load(const std::function<void()> &tables);
    /// Takes the rate of the table's first row over; the database is open, and a table that can't
    /// be read is a Failure.
    void loadVatRate();
    /// Fills the lists of firms, units, staff and special codes, in this order. The last ones are
    /// in a file of their own, which it opens itself.
    void loadLists();
    /// Takes the first row of the chosen firm over. Without one the earlier row stays.
    void firmasec();
    /// Reads the two exemption texts of kdvmu.kvz; one that is missing keeps its value.
    void kdvmuafiyetyukle();
    /// Reads the cash code of kasa.kvz; a missing file is a Failure.
    void kasakoduoku();

private:
    Program &m_program;
};

/// The Logo unit code of a unit word, or an empty text.
QString birimbul(const Grid &lbrm, const QString &kelime);

} // namespace kervan
