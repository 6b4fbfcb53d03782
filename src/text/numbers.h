#pragma once

#include "text/masks.h"

#include <QString>

#include <optional>

namespace kervan {

// Numbers under the Turkish marks: "," before the decimals, "." between groups. They are fixed
// here, whatever the machine's locale says.

/// The number that a text spells, or nothing if it spells none. Blanks around it and group marks
/// in its whole part are allowed; exponents are not.
std::optional<double> number(QStringView text);
/// The same; a text that spells none is a Failure.
double toNumber(QStringView text);
/// The same in single precision; beyond its range is a Failure.
float toSingleNumber(QStringView text);

/// A result of arithmetic in single precision; not finite or beyond its range is a Failure.
float toSingle(double value);
/// The quotient; a division by zero is a Failure.
double divided(double dividend, double divisor);

/// The shortest spelling of up to 15 (double) or 7 (single) significant digits, with a decimal
/// mark only where there are decimals, no group marks and never an exponent.
QString toText(double value);
QString toText(float value);

/// The number under a mask, rounded half away from zero on its 15 (double) or 7 (single)
/// significant digits.
QString masked(double value, Mask mask);
QString masked(float value, Mask mask);
/// The number that a text spells under a mask; a text that spells none comes back unchanged.
QString masked(const QString &text, Mask mask);

} // namespace kervan
