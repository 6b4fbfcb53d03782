#pragma once

#include "base/grid.h"
#include "base/notes.h"

#include <QString>

namespace kervan {

// Whether a source that was read is what the screen reads, and fit for a document. Each gives a
// sentence for the notes, empty where there is nothing to say. Nothing is refused by it.

/// The kinds of sources, by what stands in their lines.
enum class SourceKind { Unknown, Empty, Invoices, Accounts, Stock, Count, Workbook, Xml };

/// What the beginning of the file looks like; Unknown where it can't be read.
SourceKind looksLike(const QString &path);

/// Tells that the file holds no line of the kind `wanted`, and what it looks like: where nothing
/// was `found` in it or it clearly is of another kind. Invoices that were found have shown by their
/// marks what they are.
QString wrongSource(const QString &path, SourceKind wanted, bool found);

/// Tells of a text whose encoding is read wrongly: UTF-16, and UTF-8 without its mark.
QString wrongEncoding(const QString &path);

/// Tells of letters in the list that a document can't hold and has "?" for.
QString lettersLost(const Grid &grid);

/// Adds what the three above have to say about a text that was read into the list.
void checkSource(Notes &notes, const QString &path, SourceKind wanted, const Grid &grid);

} // namespace kervan
