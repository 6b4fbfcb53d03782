#pragma once

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
};

/// How a document's text ends in the file.
enum class Yol {
    bir, ///< printed in one piece, which adds a CR LF at the end
    iki, ///< saved as the text stands
};

/// Writes header, body and footer to the file, replacing it. A Failure names the file and tells
/// why; the old file is then as it was.
void belgeyaz(const Belge &belge, Yol yol, const QString &path);

/// Takes the pieces of a document's body in their order.
using TakePiece = std::function<void(QByteArrayView piece)>;

/// The same for a body that is made while it is written, so that no memory has to hold it:
/// makeBody() hands its pieces over. Its steps run even where the file can't be written.
void belgeyaz(const Belge &frame, Yol yol, const QString &path,
              const std::function<void(const TakePiece &take)> &makeBody);

/// The name that a save dialog gave, with ".xml" added unless its last four characters are exactly
/// that: "a.XML" becomes "a.XML.xml".
QString xmlAdi(const QString &name);

/// What a save dialog for documents starts with: the program's folder "logo xml" while the target
/// of cari documents `xc` is empty, else the target of invoice documents `xf`. That the test looks
/// at the one and the folder comes from the other is meant.
QString ilkKlasor(const QString &programFolder, const QString &xc, const QString &xf);

} // namespace kervan
