#pragma once

#include <QString>

namespace kervan {

/// Comparison key of a date: year, month and day joined. A month or day of one character gets a
/// leading "0", the year is not padded.
QString tarihanahtari(const QString &year, const QString &month, const QString &day);

/// File date (YYYYMMDD) to display date (DD.MM.YYYY), by position alone: a short input gives a
/// short result with its dots.
QString tarihcevir(QStringView fileDate);

/// Cell or display spelling (1.234,56) to XML spelling (1234.56). A text that is in XML spelling
/// already loses its point.
QString tutarnoktasil(QString amount);

/// Removes blanks (code 32 only) from the end of the text.
QString sonbosluksil(QStringView text);

/// Removes blanks (code 32 only) from both ends.
QStringView trimmedBlanks(QStringView text);

/// Cuts by position: characters `first` (from 1) to `first + length - 1`, as far as the text has
/// them.
QStringView cut(QStringView text, int first, int length);

/// Source spelling (1234.56) to cell spelling (1234,56), and back.
QString pointToComma(QStringView text);
QString commaToPoint(QStringView text);

} // namespace kervan
