#pragma once

#include <QDate>
#include <QString>

#include <optional>

namespace kervan {

/// The date that a text spells as day, month and year with ".", "/" or "-" between; a year of one
/// or two digits falls between 1930 and 2029. Anything that is no date is a Failure.
QDate toDate(QStringView text);

/// The date that a user means by what is typed or pasted: day, month and year with or without
/// marks between, the year of two or four digits or left out for `year`, a year of four digits
/// first, a time behind. Nothing where no day between 1900 and 2099 is meant.
std::optional<QDate> typedDate(QStringView text, int year);

/// A date in the machine's short form where its locale is Turkish, else as dd.MM.yyyy.
QString systemDate(QDate date);

} // namespace kervan
