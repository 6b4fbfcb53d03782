#pragma once

#include <QDateTime>
#include <QString>

namespace kervan {

// A document as an option gives it: its name, or the folder where it goes by the name of its
// source; with words for the source, the day and the time in it.

/// A Failure if it holds other words in braces than there are.
void checkDocumentName(QString given);

/// A Failure if it can be a folder alone, and there is none of that name now: a share that is away
/// for a moment is no name of a document.
void checkFolderIsThere(const QString &given);

/// The full name of the document of a source.
QString documentNameOf(const QString &given, const QString &source, const QDateTime &now);

} // namespace kervan
