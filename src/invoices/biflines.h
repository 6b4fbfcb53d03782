#pragma once

#include "base/failure.h"
#include "base/grid.h"
#include "invoices/bif.h"
#include "invoices/prices.h"
#include "store/program.h"

#include <QSet>
#include <QString>

#include <functional>
#include <optional>

namespace kervan {

/// The lines of some invoices of a .bif file, for an export: the file is walked once for the places
/// of all of them, and the database with the prices stays open meanwhile.
class BifLines
{
public:
    /// A file or database that can't be read does not fail here: it is tried anew at each invoice
    /// that is asked for.
    BifLines(Program &program, const QString &path, const QSet<QString> &numbers);

    /// Fills `l3` with the lines of one of these invoices: prices, margin, net unit price, and the
    /// units of `lbrm`. An empty number has none. The first Failure leaves the lines before it.
    void liste3yukle(const QString &faturano, const Grid &lbrm, Grid &l3);

    /// What could not be read at the beginning.
    const std::optional<Failure> &unreadable() const { return m_unreadable; }
    /// Why prices could not be read so far.
    std::optional<Failure> unreadablePrices() const
    {
        return m_prices ? m_prices->unreadable() : std::nullopt;
    }

private:
    std::function<void()> m_open;
    std::optional<Prices> m_prices;
    std::optional<BifIndex> m_file;
    std::optional<Failure> m_unreadable;
};

} // namespace kervan
