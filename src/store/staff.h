#pragma once

#include "base/grid.h"
#include "store/localdb.h"

namespace kervan {

// The staff codes of table `per` in the list persl.

namespace Persl {
enum Column { Kod, Per }; // what Logo calls a member of staff, and what the source does
}

inline QList<GridColumn> perslColumns()
{
    return {{QStringLiteral("kod")}, {QStringLiteral("per")}};
}

/// Fills the list from the open database; a table that can't be read is a Failure.
inline void loadStaff(LocalDb &db, Grid &persl)
{
    persl.clear();
    db.forEach(Statement(u"select * from per"), [&] {
        persl.setCell(persl.addRow(db.field(u"kod")), Persl::Per, db.field(u"per"));
    });
}

/// The Logo code of a source's staff code, or an empty text.
inline QString perseslestir(const Grid &persl, const QString &per)
{
    for (int row = 0; row < persl.rows(); ++row) {
        if (persl.cell(row, Persl::Per) == per)
            return persl.cell(row, Persl::Kod);
    }
    return {};
}

} // namespace kervan
