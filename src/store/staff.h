#pragma once

#include "base/grid.h"
#include "store/localdb.h"

#include <QHash>

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

/// The list as it stood when this was made, by the codes of the source: a reading asks for one at
/// each row.
class StaffCodes
{
public:
    explicit StaffCodes(const Grid &persl)
    {
        m_kod.reserve(persl.rows());
        for (int row = persl.rows() - 1; row >= 0; --row) // the first of a doubled code counts
            m_kod.insert(persl.cell(row, Persl::Per), persl.cell(row, Persl::Kod));
    }
    /// The Logo code of a source's staff code, or an empty text.
    QString perseslestir(const QString &per) const { return m_kod.value(per); }

private:
    QHash<QString, QString> m_kod;
};

} // namespace kervan
