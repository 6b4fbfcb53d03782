#pragma once

#include "base/failure.h"
#include "store/program.h"

#include <QString>

#include <optional>

namespace kervan {

// What the exports of both invoice screens begin and end with.

/// Asks for the document's name, which then ends in ".xml"; nothing on cancel.
std::optional<QString> askInvoiceTarget(Program &program);

/// Whether there is a target; the user is told if not.
bool hasInvoiceTarget(Boxes &boxes, const QString &dosya);

void tellInvoicesDone(Boxes &boxes);

/// Counts the invoices of an export whose lines could not all be read.
class IncompleteInvoices
{
public:
    void add(const QString &faturano, const Failure &failed);
    /// A line for the window; empty if all invoices are whole.
    QString note() const;

private:
    int m_count = 0;
    QString m_first;
};

} // namespace kervan
