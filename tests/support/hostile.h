#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace kervan {

/// What becomes of a text that is put between the quotes of a statement.
enum class Fate {
    Kept,    ///< the engine sees it as it is
    Halved,  ///< apostrophes in pairs stand for one each; the local engine's language has no pairs
    Refused, ///< it would leave its quotes, or end the statement: nothing reaches the engine
};

/// Texts of one kind that ends one way.
struct HostileTexts
{
    const char *kind;
    Fate fate;
    QStringList texts;
};

/// Two hundred texts that try to be more than a value.
const QList<HostileTexts> &hostileTexts();

/// The value that an engine sees of one; null where it sees none.
QString meant(const QString &text, Fate fate);

} // namespace kervan
