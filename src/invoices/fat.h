#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "check/readreport.h"
#include "invoices/biflines.h"
#include "invoices/exporting.h"
#include "invoices/invoicedefinitions.h"
#include "invoices/invoicelist.h"
#include "logolink/screenlink.h"
#include "logoxml/spelling.h"
#include "store/program.h"
#include "store/staff.h"

#include <QString>

#include <optional>

namespace kervan {

/// One row of table `muh`.
struct MuhKayit
{
    QString kdv, al, sat, ali, sati, alkdv, satkdv, alikdv, satikdv, ind;
};

/// The SAP invoice transfer: a .bif file into the invoice list, ticked rows into an invoice
/// document and the cash slips of the small ones. The grids are the only model of the invoices.
/// The list is read in fatread.cpp and exported in fatexport.cpp.
class Fat
{
public:
    explicit Fat(Program &program);

    /// What the opening of the screen does.
    void load();

    InvoiceList liste;
    InvoiceDefinitions tanimlar;
    Grid l2; ///< lines of the row clicked on
    Grid l3; ///< lines of the invoice in hand during an export

    ChoiceField kdvOrani;     ///< of the accounting row
    ChoiceField birimSeti;    ///< what the user types; asked for before a save and used by nothing
    ChoiceField odemePlani;   ///< code and text of the payment plan
    TextField odemePlaniKodu; ///< its code, which goes into the document
    ChoiceField faturaTuru;   ///< begins with the kind: 10, 20, 30, 40 or 80
    TextField baslik{QStringLiteral("FATURA")}; ///< caption of bar1
    Notes bilgi;               ///< what the last read or write has to tell without a box
    ReadReport okuma;          ///< what of the file gave no row at the last read
    AskedPrices bayiFiyatlari; ///< the dealer prices of the file's products at the last read
    ProgressField ilerleme;
    XmlChoice okunurBicim; ///< values are written as XML asks
    ScreenLink link;

    const Program &program() const { return m_program; }
    const QString &dosyaadi() const { return m_dosyaadi; }  ///< empty before one was picked
    const MuhKayit &muhkayit() const { return m_muhkayit; } ///< of the rate that was chosen

    // What the definition screens tell an open screen.
    void yukle();
    void sqlyukle() { link.sqlyukle(); }

    // What the user does.
    void dosyaac();
    void dosyaac(const QString &path); ///< the same with a file that is picked already
    void otomatikac() { umurlarfaturabaslikoku(); }
    void kdvoranisec();
    void birimsetisec();
    void firmasec() { tanimlar.firmasec(); }
    void odemeplanisec();
    void yenidenoku(); ///< a click on the staff or on the kind of invoices
    void tariharaligisec();
    void tarihdegisti();
    void satirsec(int row);
    void logoyaaktar();
    void otomatikkaydet();

    // Procedures.
    void umurlarfaturabaslikoku();
    void umurlardetaylioku(const QString &faturano);
    void kaydet(const QString &dosya);

private:
    Grid &l1() { return liste.l1; }
    void loadPlansAndRates();
    void warn(const QString &text);
    void warnAt(const QString &text, TextField &field);
    void note(const std::optional<Failure> &failed);

    // Reading.
    void readHeaders(std::optional<Prices> &prices, QString &fiyatsizlar);
    void takeHeader(QStringView line, const StaffCodes &persl);
    QString takeCollection(QStringView line);
    void showMissingPrices(QString fiyatsizlar);

    // Exporting.
    QSet<QString> tickedNumbers() const;
    void writeDocument(const QString &dosya);
    InvoiceSource sourceOf(BifLines &lines);
    InvoiceHead headOf(int row) const;
    InvoiceGoods goodsOf(int line) const;
    std::optional<GeneralDiscount> discountOf(int row) const;

    Program &m_program;
    MuhKayit m_muhkayit; // of the rate that was chosen; empty before
    QString m_dosyaadi;
    bool m_dosyaacik = false; // "Fatura Dosyası Aç" was pressed, or a file dropped
    double m_kasaislemsayac = 0;
};

} // namespace kervan
