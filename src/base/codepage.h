#pragma once

#include <QByteArray>
#include <QString>

namespace kervan {

/// Windows-1254 (Turkish) to text: one byte, one character. The seven bytes that the code page
/// leaves undefined stand for themselves.
QString fromCodePage(QByteArrayView bytes);

/// Appends the same to `text`, for readers that keep one buffer for all lines.
void appendFromCodePage(QString &text, QByteArrayView bytes);

/// Text to Windows-1254: a character that has no place is written as "?".
QByteArray toCodePage(QStringView text);

/// Whether each character has its place, so that none becomes a "?".
bool isOfCodePage(QStringView text);

/// Appends the text in Windows-1254 to `bytes`.
void appendToCodePage(QByteArray &bytes, QStringView text);

/// Writes the text in Windows-1254 to `out`, which has room for a byte of each character; gives the
/// place behind the last one.
char *writeInCodePage(char *out, QStringView text);

/// The bytes of a whole text file to text: UTF-8 if they begin with its mark (which is dropped),
/// Windows-1254 otherwise.
QString fromTextFile(QByteArrayView bytes);

/// The mark that tells a UTF-8 file.
inline constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF", 3);

} // namespace kervan
