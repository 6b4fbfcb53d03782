#include "support/places.h"

// Known here alone: an object that knows where the sources lie can't be shared by two checkouts.
namespace kervan {

QString testData(const QString &name)
{
    return QStringLiteral(SOURCES "/tests/data/") + name;
}

QString samplePath(const QString &name)
{
    return QStringLiteral(SOURCES "/samples/") + name;
}

} // namespace kervan
