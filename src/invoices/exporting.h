#pragma once

#include "base/failure.h"
#include "base/ports.h"

#include <QString>

namespace kervan {

/// Whether there is a target; the user is told if not.
bool hasInvoiceTarget(Boxes &boxes, const QString &dosya);

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
