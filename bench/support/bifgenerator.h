#pragma once

#include "store/localdb.h"

#include <QString>

namespace kervan {

/// How large a generated invoice file is. The same seed gives the same file.
struct BifSize
{
    int invoices = 40;
    int lines = 5;      ///< "@6" records of each invoice
    int products = 100; ///< different product codes among them
    quint32 seed = 1;
};

/// Writes an invoice file: windows-1254, CR LF, packs and cartons, discounts, and a collection
/// behind every seventh invoice. Every customer's grand total lies on either side of 7000.
void writeBif(const QString &path, const BifSize &size);

/// Inserts a dealer price for each product that such a file holds; `database` is data.dbs.
void writePrices(LocalDb &db, const QString &database, int products);

} // namespace kervan
