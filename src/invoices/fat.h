#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "base/grid.h"
#include "invoices/bif.h"
#include "invoices/exporting.h"
#include "invoices/invoicedocument.h"
#include "invoices/invoicelist.h"
#include "invoices/lineamounts.h"
#include "invoices/prices.h"
#include "invoices/screendata.h"
#include "logolink/screenlink.h"
#include "store/program.h"

#include <QString>

#include <array>
#include <optional>

namespace kervan {

/// One row of table `muh`.
struct MuhKayit
{
    QString kdv, al, sat, ali, sati, alkdv, satkdv, alikdv, satikdv, ind;
};

/// The SAP invoice transfer: a .bif file into the invoice list, ticked rows into an invoice
/// document and the cash slips of the small ones. The grids are the only model of the invoices.
class Fat
{
public:
    explicit Fat(Program &program);

    /// What the opening of the screen does.
    void load();

    InvoiceList liste;
    Grid l2;    ///< lines of the row clicked on
    Grid l3;    ///< lines of the invoice in hand during an export
    Grid lbrm;  ///< unit word of the source, Logo unit code
    Grid persl; ///< Logo personnel code, personnel code of the source

    ChoiceField c1, c2, c3, c4, c5, pers, fatbilgi;
    TextField kdyaz, odmplnkod;
    TextField baslik{QStringLiteral("FATURA")}; ///< caption of bar1
    TextField bilgi; ///< what a step that shows no box failed at, for a line in the window
    ProgressField ilerleme;
    ScreenLink link;

    QString kdvmuafiyetgenel;
    QString kdvmuafiyetsatir;

    // What the definition screens tell an open screen.
    void yukle();
    void sqlyukle() { link.sqlyukle(); }

    // What the user does.
    void dosyaac();
    void dosyaac(const QString &path); ///< the same with a file that is picked already
    void otomatikac() { umurlarfaturabaslikoku(); }
    void c1sec();
    void c2sec();
    void c3sec();
    void c5sec();
    void yenidenoku(); ///< a click on `pers` or `fatbilgi`
    void check1sec();
    void tarihdegisti();
    void satirsec(int row);
    void logoyaaktar();
    void otomatikkaydet();

    // Procedures.
    void umurlarfaturabaslikoku();
    void umurlardetaylioku(const QString &faturano);
    std::optional<Failure> liste3yukle(const QString &faturano);
    void kaydet(const QString &dosya);

private:
    // An export walks the file once, and asks for each price once.
    struct Export
    {
        Export(Program &program, const QString &dosyaadi, const QSet<QString> &numbers);
        Prices prices;
        BifIndex file;
    };

    Grid &l1() { return liste.l1; }
    void loadPlansAndRates(LocalDb &db);
    void warn(const QString &text);
    void warnAt(const QString &text, TextField &field);
    void note(const std::optional<Failure> &failed);

    // Reading.
    LineLookups lookupsIn(Prices &prices) const;
    void readHeaders(std::optional<Prices> &prices, QString &fiyatsizlar);
    void takeHeader(QStringView line);
    void takeCollection(QStringView line);
    void showMissingPrices(const QString &fiyatsizlar);
    void faturakasafisnoyaz();

    // Exporting.
    void writeInvoices(InvoiceDocument &document);
    void writeInvoice(InvoiceDocument &document, int row);
    void writeLines(InvoiceDocument &document, float &gross);
    std::array<QString, 14> cashValues(int row) const;
    InvoiceHead headOf(int row) const;
    InvoiceGoods goodsOf(int row) const;
    void kasacariislemnokaydet();
    void exeldenkasanakitkaydet(const QString &dosya);

    Program &m_program;
    FirmaKayit firmakayit;
    MuhKayit muhkayit;
    QString kasakodu;
    QString dosyaadi;
    bool dosyaacik = false; // "Fatura Dosyası Aç" was pressed, or a file dropped
    double kasaislemsayac = 0;
    std::optional<Export> m_export;
    IncompleteInvoices m_eksikler;
};

} // namespace kervan
