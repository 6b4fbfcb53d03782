#pragma once

#include "base/failure.h"

namespace kervan {

/// Gives a file another name, at once and whole, in the place of one that is there only where it
/// `replaces`. Only to another disk it is copied. One that another program has open for a moment is
/// waited for. A Failure is a moveFailure().
void moveFile(const QString &from, const QString &to, bool replaces = false);

/// Names both files and why the one could not become the other.
Failure moveFailure(const QString &from, const QString &to, const QString &why);

} // namespace kervan
