#pragma once

#include <QString>

namespace kervan {

/// What a number format means for the text of a number.
struct CellFormat
{
    bool isDate = false;
    quint8 zeros = 0; ///< digits that the whole part is padded to
};

/// The meaning of a number format: of its own code where it has one, else of its built-in number.
CellFormat cellFormat(int id, QStringView code);

/// Days from the start of the 1900 system to the start of the 1904 system.
inline constexpr double days1904 = 1462;

/// Whether a day number of the 1900 system has a place in the calendar, which ends with 9999.
bool isDay(double serial);
/// A day number of the 1900 system as dd.MM.yyyy, with HH:mm:ss behind a blank if it has a time;
/// below one day there is no date, and it is the time alone.
QString dateText(double serial);

/// The number with all its digits, "," before decimals and its whole part padded to `zeros` digits.
QString numberText(double value, int zeros);

/// The day number of an ISO 8601 date, date and time or time; NaN if the text is none.
double isoSerial(QStringView text);

} // namespace kervan
