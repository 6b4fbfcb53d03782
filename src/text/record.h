#pragma once

#include "text/spellings.h"

#include <QString>

#include <span>

namespace kervan {

/// One field of a fixed-column record: the cell that it goes to, its place in the line (columns
/// from 1), and how its text becomes the cell's.
struct RecordField
{
    int cell;
    int first;
    int length;
    QString (*treat)(QStringView field);
};

/// True if the fields stand in the line's order and none overlaps the one before it.
constexpr bool inOrder(std::span<const RecordField> fields)
{
    int end = 1;
    for (const RecordField &field : fields) {
        if (field.first < end || field.length < 1)
            return false;
        end = field.first + field.length;
    }
    return true;
}

/// Cuts every field of the record out of the line and hands it over as put(cell, text).
template<class Put>
void cutRecord(QStringView line, std::span<const RecordField> fields, Put &&put)
{
    for (const RecordField &field : fields)
        put(field.cell, field.treat(cut(line, field.first, field.length)));
}

// Treatments of a field.

/// As it stands, blanks and all.
inline QString untouchedField(QStringView field)
{
    return field.toString();
}

/// Blanks removed at both ends.
inline QString trimmedField(QStringView field)
{
    return trimmedBlanks(field).toString();
}

/// Every blank removed.
inline QString fieldWithoutBlanks(QStringView field)
{
    return field.toString().remove(u' ');
}

} // namespace kervan
