#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "base/grid.h"
#include "base/ports.h"
#include "invoices/invoicedefinitions.h"
#include "invoices/invoicedocument.h"

#include <QString>

#include <functional>
#include <optional>

namespace kervan {

// The one road of invoices from a list to a document. What the sources of invoices differ in is an
// InvoiceSource; the loop over the ticked rows knows nothing else of them.

/// Whether there is a target; the user is told if not.
bool hasInvoiceTarget(Boxes &boxes, const QString &dosya);

/// A discount on the whole of an invoice. Without a percentage, since it could not be worked out,
/// its placeholder stays in the document.
struct GeneralDiscount
{
    std::optional<QString> percent;
};

/// Where an export takes its invoices from.
struct InvoiceSource
{
    InvoiceTemplates templates;
    /// Fills the `l3` that the export is given with the lines of an invoice; a Failure leaves those
    /// before it.
    std::function<void(const QString &faturano)> liste3yukle;
    /// The head of a row of `l1`.
    std::function<InvoiceHead(int row)> headOf;
    /// The goods of a row of `l3`.
    std::function<InvoiceGoods(int line)> goodsOf;
    /// The general discount of a row of `l1` whose lines are in `l3`; null where there is none.
    std::function<std::optional<GeneralDiscount>(int row)> discountOf = nullptr;
    Values spelling = Values::AsTheyStand;
    /// Lets go what it reads from, which may be the file that the document replaces.
    std::function<void()> close = nullptr;
};

/// The part of a head that all sources value alike: what the row of `l1` and the firm give.
InvoiceHead commonHead(const Grid &l1, int row, const FirmaKayit &firma, const QDateTime &now);
/// The part of a line that all sources value alike, numbers in XML spelling.
InvoiceGoods commonGoods(const Grid &l3, int line);

/// Counts the invoices of an export whose lines could not all be read.
class IncompleteInvoices
{
public:
    void add(const QString &faturano, const Failure &failed);
    /// A line for the window; empty if all invoices are whole.
    QString note() const;
    /// Whether lines lack because a source could not be read, and not for what it holds.
    bool lackSource() const { return m_lackSource; }

private:
    int m_count = 0;
    QString m_first;
    QString m_last; // number of the one that was added last
    bool m_lackSource = false;
};

/// Writes the document of the ticked rows of `l1` to the file; `faturaTuru` begins with the kind of
/// the invoices. The lines of each invoice pass through `l3`, and each invoice goes to the file at
/// once. An invoice whose lines fail is written with those before the failure, and counted. The bar
/// goes a step for each of them; the caller starts and finishes it. A file that can't be written is
/// a Failure that names it, told behind the last invoice.
void writeInvoices(const QString &dosya, const Grid &l1, const Grid &l3, const QString &faturaTuru,
                   const InvoiceSource &source, ProgressField &progress,
                   IncompleteInvoices &incomplete);

} // namespace kervan
