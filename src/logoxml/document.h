#pragma once

#include "logoxml/template.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <functional>

namespace kervan {

/// A document before it is written, in the bytes of Windows-1254.
struct Belge
{
    QByteArray header;
    QByteArrayList body;  // its records
    QByteArray separator; // what stands between two records
    QByteArray footer;
    Values spelling = Values::AsTheyStand; // as XML its marks are spelled out at the writing
};

/// How the last line of a document ends in the file, which each kind of document tells for itself.
enum class DocumentEnd {
    LineEnd,    ///< a CR LF behind the footer
    AsItStands, ///< nothing behind the footer
};

/// Writes header, body and footer to the file, replacing it. A Failure names the file and tells
/// why; the old file is then as it was.
void belgeyaz(const Belge &belge, DocumentEnd end, const QString &path);

/// Takes the pieces of a document's body in their order.
using TakePiece = std::function<void(QByteArrayView piece)>;

/// The same for a body that is made while it is written, so that no memory has to hold it:
/// makeBody() hands its pieces over. Its steps run even where the file can't be written.
void belgeyaz(const Belge &frame, DocumentEnd end, const QString &path,
              const std::function<void(const TakePiece &take)> &makeBody);

} // namespace kervan
