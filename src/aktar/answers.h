#pragma once

#include "aktar/transfers.h"

#include <QString>

#include <optional>

namespace kervan {

/// Whether Logo, which is set up here, did not answer what the reading asked it. Whoever has no
/// connection at all works without; one that is away for a moment comes back.
bool lacksAnswers(const OpenScreen &screen, const Program &program);

/// Why no document is written, since it would be without what Logo has to tell.
struct Lack
{
    QString why;
    bool isOfSource; ///< which holds a value that Logo is never asked; else it is for another time
};

/// That of a screen behind its reading, if there is one. Invoices may lack it where the user says
/// so, unless the wait for Logo was cut short by the end that was asked for.
std::optional<Lack> lackOf(const OpenScreen &screen, const Program &program, bool mayLack,
                           bool isEnding);

} // namespace kervan
