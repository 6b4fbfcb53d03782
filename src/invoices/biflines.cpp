#include "invoices/biflines.h"

#include "invoices/lineamounts.h"

namespace kervan {

BifLines::BifLines(Program &program, const QString &path, const QSet<QString> &numbers)
    : m_open([this, &program, path, numbers] {
        m_prices.emplace(program.db, program.path(u"data.dbs"));
        m_file.emplace(path, numbers);
    })
{
    m_unreadable = passOver(m_open);
}

void BifLines::liste3yukle(const QString &faturano, const Grid &lbrm, Grid &l3)
{
    const Grid::Refill refill(l3);
    l3.clear();
    if (faturano.isEmpty())
        return;
    if (!m_file) // what was away for a moment may be back
        m_open();
    const LineLookups lookups{*m_prices, lbrm};
    m_file->walkInvoice(faturano, [&](QStringView line) { addToL3(cutLine(line), lookups, l3); });
}

} // namespace kervan
