#pragma once

#include "base/failure.h"
#include "base/grid.h"
#include "store/program.h"

#include <optional>

namespace kervan {

/// The price that a user means, as it is stored: "1.234,50" is 1234,50 since a comma stands behind
/// digits in threes, and in "12.5" the point is the comma. An empty text is an empty price.
/// Nothing where neither is meant, nor where both may be: "1.234"; nor of more digits than any
/// number has here.
std::optional<QString> fiyatoku(const QString &typed);

/// The dealer price table `urun`: all of it read into a grid, and all of it written back.
class Urunform
{
public:
    enum Column { Sira, Kod, Ack, Fiyat, Bfiyat };
    static constexpr int emptyRows = 10;

    explicit Urunform(Program &program);

    Grid l1;

    /// Fills the grid from the table, and ten empty rows behind it. A table that can't be read
    /// shows the failure; the grid then stays empty, and saving only shows it again.
    void yukle();
    /// The row of a product: where it has none, an empty one that gets its code.
    int satirbul(const QString &kod);
    /// The down arrow was pressed on this row: on the last one it adds an empty row.
    void satirekle(int currentRow);
    /// Puts a block of a spreadsheet, lines of cells parted by tabs, into the grid from this cell
    /// on, and adds the rows that it needs. Tells why nothing of it was taken, where a price is
    /// none or the block is wider than the grid; else nothing.
    QString yapistir(int row, int column, const QString &block);
    /// Rewrites the table from the rows that have a code, all at once: killed in its midst, it
    /// leaves the old table. A row that fails shows the failure, and the table then holds the rows
    /// before it. True if all went well.
    bool kaydet();

private:
    void addEmptyRow();
    void readRows();

    Program &m_program;
    std::optional<Failure> m_unread; // why the table could not be read
};

} // namespace kervan
