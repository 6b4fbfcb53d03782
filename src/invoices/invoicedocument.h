#pragma once

#include "logoxml/document.h"
#include "logoxml/template.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <algorithm>

namespace kervan {

/// What goes into the head of an invoice; texts as the cells and fields hold them.
struct InvoiceHead
{
    QString cariKod;
    QString faturaNo;
    QString belgeNo;
    QString belgeTarihi;
    QString personelKodu;
    QString fatOzKod;
    QString odemePlaniKodu;
    QString subeKodu;
    QString subeAlicilarHesabi;
    QString subeDepoKodu;
    QString genelKdv;
    QString kdvMuafiyetGenel;
    bool eFatura = false;
    QDateTime an; ///< the moment of writing
};

/// What goes into a goods line; numbers in XML spelling.
struct InvoiceGoods
{
    QString urunKodu;
    QString miktar;
    QString birimFiyat;
    QString indirim;
    QString kdv;
    QString birim;
    QString satKod;
    QString satKdvKod;
    QString kdvMuafiyetSatir;
    QString ekVergiTutari;
    QString indirimMuhKod;
    bool promosyon = false;
    QStringList yuzdeler; ///< discount percentages above 0, each a discount line behind the goods
};

/// How the templates of head and goods line are filled: the placeholders in the order of their
/// steps, and a value for each of them.
QList<QByteArray> headWords();
QStringList headValues(const InvoiceHead &head);
QList<QByteArray> lineWords();
QStringList lineValues(const InvoiceGoods &goods, const InvoiceHead &head);

/// The templates in which the sources of invoices differ: head and goods line.
struct InvoiceTemplates
{
    QByteArray xl1;
    QByteArray xl2;
};
/// Those of the SAP invoices; other sources replace places of them.
InvoiceTemplates sapTemplates();

/// The document of ticked invoices, put together invoice by invoice and line by line; it holds the
/// invoice in hand and none before it.
class InvoiceDocument
{
public:
    /// An invoice has room for this many lines; one beyond it is lost.
    static constexpr int mostLines = 60000;

    /// `faturaTuru` begins with the invoice kind: 10, 20, 30, 40 or 80.
    InvoiceDocument(const QString &faturaTuru, const InvoiceTemplates &templates,
                    Values spelling = Values::AsTheyStand);

    void beginInvoice(const InvoiceHead &head);
    void addLine(const InvoiceGoods &goods);
    /// Adds the general discount behind the last line. Without a percentage (it could not be
    /// worked out) its placeholder stays in the document.
    void addGeneralDiscount(const std::optional<QString> &percent);
    /// Gives the whole invoice, in the bytes of the document; they stand until the next one begins.
    QByteArrayView endInvoice();
    /// How many lines of the invoice in hand found no room.
    int lostLines() const { return std::max(m_lines - mostLines, 0); }

    /// What stands around the invoices, in front of each of which, and behind the last, a blank
    /// belongs.
    Belge frame() const;

private:
    Sablon m_head;
    Sablon m_line;
    Sablon m_lineDiscount;
    QByteArray m_generalDiscount;
    QByteArray m_kalemson;
    QByteArray m_baslik;
    QByteArray m_sonu;

    InvoiceHead m_current;
    QByteArray m_text; // the invoice in hand
    int m_lines = 0;
};

} // namespace kervan
