#pragma once

#include <QDate>
#include <QString>

namespace kervan {

/// The date that a text spells as day, month and year with ".", "/" or "-" between; a year of one
/// or two digits falls between 1930 and 2029. Anything that is no date is a Failure.
QDate toDate(QStringView text);

/// A date in the machine's short form where its locale is Turkish, else as dd.MM.yyyy.
QString systemDate(QDate date);

} // namespace kervan
