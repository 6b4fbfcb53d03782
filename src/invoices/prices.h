#pragma once

#include "store/localdb.h"

#include <QHash>
#include <QString>

#include <optional>

namespace kervan {

/// Products that were asked for, each with its price as it is stored.
using AskedPrices = QHash<QString, QString>;

/// The dealer prices of table `urun`, with the database open for the length of one read or one
/// export. Each product is asked for once.
class Prices
{
public:
    /// Opens the database; that it can't be opened is a Failure.
    Prices(LocalDb &db, const QString &path)
        : m_db(db)
        , m_open(db, path)
    {
    }

    /// Field `bfiyat` of the product's first row as it is stored, an empty one included; "0" if
    /// there is no row or the query fails.
    QString satisfiyatibul(const QString &kod);
    const AskedPrices &asked() const { return m_asked; }
    /// Why the table could not be read, at the first product for which it could not; its price is
    /// "0" then, like that of one without a price.
    const std::optional<Failure> &unreadable() const { return m_unreadable; }

private:
    LocalDb &m_db;
    OpenDb m_open;
    AskedPrices m_asked;
    std::optional<Failure> m_unreadable;
};

} // namespace kervan
