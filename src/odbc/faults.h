#pragma once

#include <QList>
#include <QString>

namespace kervan {

/// One record of what a driver tells of a failed call.
struct Diagnosis
{
    QString state; ///< SQLSTATE
    int native;    ///< error number of the server or the driver
    QString sentence;
};

/// The description of a failure: what it is, where it is one of the usual faults, and behind it
/// the sentences as they came, each once and on a line of its own.
QString descriptionOf(const QList<Diagnosis> &records);

} // namespace kervan
