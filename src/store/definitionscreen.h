#pragma once

#include "base/failure.h"
#include "base/fields.h"
#include "base/grid.h"
#include "store/definition.h"
#include "store/program.h"

#include <optional>
#include <vector>

namespace kervan {

/// A definition screen: a list of a table's rows, and one record of it at a time. No step shows its
/// failure; a row that could not be written is simply not there after the list is loaded again.
class DefinitionScreen
{
public:
    DefinitionScreen(Program &program, const Definition &definition);

    const Definition &definition() const { return m_definition; }
    Grid l1;                          ///< a row's tag is the `id` of its record
    std::optional<Failure> okunamadi; ///< why the list does not hold all records
    /// The fields of the record by their place in the definition: a text's, and a box's.
    TextField &text(int field) { return at(field).text; }
    CheckField &check(int field) { return at(field).check; }
    TextField sideValue;
    CheckField kayitta; ///< the record frame is showing, not the list frame

    void yukle();
    void yeni();
    /// Takes the fields from the list's row, not from the table; without a row they stay empty.
    void degistir(int row);
    /// Writes the record: a new one, or the one of the selected row.
    void kaydet(int row);
    void iptal();
    void sil(int row);
    /// The user typed in the value beside the records, which is written at once.
    void sidevaluetyped();

private:
    enum class Durum { None, New, Existing };
    struct Field
    {
        TextField text;
        CheckField check;
    };

    Field &at(int field) { return m_fields[static_cast<std::size_t>(field)]; }
    QString valueOf(const QString &column);
    void emptyRecord();
    QString path() const { return m_program.path(m_definition.database); }

    Program &m_program;
    const Definition &m_definition;
    std::vector<Field> m_fields;
    Durum m_durum = Durum::None; // what kind of record is edited, or was the last time
};

} // namespace kervan
