#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "check/readreport.h"
#include "invoices/duzey/duzeysheet.h"
#include "invoices/exporting.h"
#include "invoices/invoicedefinitions.h"
#include "invoices/invoicelist.h"
#include "logolink/screenlink.h"
#include "logoxml/spelling.h"
#include "store/program.h"
#include "store/staff.h"
#include "workbook/workbook.h"

#include <QString>

#include <memory>
#include <optional>

namespace kervan {

/// What a document of this screen is filled from.
InvoiceTemplates duzeyTemplates();

/// The Düzey invoice transfer: a sheet of a workbook into the invoice list, ticked rows into an
/// invoice document. The list is read in fatduzread.cpp and exported in fatduzexport.cpp.
class Fatduz
{
public:
    explicit Fatduz(Program &program);

    /// What the opening of the screen does. A failure at it is told in a plain box and ends it; the
    /// screen works on with what it has.
    void load();

    InvoiceList liste;
    InvoiceDefinitions tanimlar; ///< its exemption texts and cash code go into no document here
    Grid l2;                     ///< lines of the row clicked on
    Grid l3;                     ///< lines of the invoice in hand during an export

    ChoiceField faturaTuru;                           ///< begins with the kind: 10, 20, 30 or 40
    TextField sayfaAdi{QStringLiteral("Sheet1")};     ///< name of the sheet
    TextField baslik{QStringLiteral("DÜZEY FATURA")}; ///< caption of bar1
    Notes bilgi;      ///< what the last read or write has to tell without a box
    ReadReport okuma; ///< what of the sheet gave no row at the last read
    ProgressField ilerleme;
    XmlChoice okunurBicim; ///< values are written as XML asks
    CheckField bekle;      ///< an export is on: the pointer is an hourglass
    ScreenLink link;

    const Program &program() const { return m_program; }
    const QString &dosyaadi() const { return m_dosyaadi; } ///< empty before one was picked
    /// The sheet that the list was read from, under this name; none before a read and after one
    /// that failed.
    const std::shared_ptr<const Sheet> &okunanSayfa() const { return m_okunanSayfa; }
    const QString &okunanSayfaAdi() const { return m_okunanSayfaAdi; }
    /// What the sheet calls the invoices of the kind that is chosen.
    QString tipAdi() const;

    // What the user does.
    void dosyaac();
    void dosyaac(const QString &path);              ///< the same with a file that is picked already
    void yenidenoku() { umurlarfaturabaslikoku(); } ///< another kind of invoices was chosen
    void personelsec();                             ///< a click on the staff
    void firmasec() { tanimlar.firmasec(); }
    void tarihdegisti();
    void listesec(); ///< "Fatura Liste Seçim": its menu is to serve this screen
    void sayfanokaydet();
    void satirsec(int row);
    void logoyaaktar();

    // Procedures.
    void yukle();
    void umurlarfaturabaslikoku();
    void umurlardetaylioku(const QString &faturano);
    /// Fills `l3`. A Failure leaves the lines before it; an empty number does nothing at all.
    void liste3yukle(const QString &faturano);
    void kaydet(const QString &dosya);

private:
    Grid &l1() { return liste.l1; }
    void open();
    void sayfanooku();
    void note(const std::optional<Failure> &failed);

    std::shared_ptr<const Sheet> openSheet();
    void readSheet();
    void reportRecord(const Sheet &sheet, int record, const QString &kind);
    void takeRecord(const Sheet &sheet, int record, const StaffCodes &persl);
    void addInvoice(const Sheet &sheet, int record, const QString &faturano,
                    const StaffCodes &persl);

    void writeDocument(const QString &dosya);
    InvoiceSource source();

    Program &m_program;
    QString m_dosyaadi;
    QString m_onceki; // invoice number of the record before
    Workbooks m_workbooks;
    InvoiceRecords m_records;
    std::shared_ptr<const Sheet> m_okunanSayfa;
    QString m_okunanSayfaAdi;
    struct
    {
        QString kind, reason;
    } m_okunmayis; // of the last record of another kind
};

} // namespace kervan
