#pragma once

#include <QFileInfo>
#include <QString>

#include <functional>

namespace kervan {

/// What a killed writer of whole files (wholefile.h) leaves is named as the file that it was to
/// become, a point and six drawn letters. People name copies so too ("fatura.xml.backup",
/// "kasa.kvz.BackUp"), so a name alone tells little.
struct Leftover
{
    QFileInfo file;
    QString whole; ///< the name of the file that it was to become
    /// The letters are as no person chooses them, three or four of them capitals. Of those that
    /// were drawn it is every second.
    bool isDrawn = false;

    /// Whether nobody misses it, as far as its name and its size tell.
    bool isRest() const { return isDrawn || file.size() == 0; }
};

/// Removes the files of a folder that are named like that and of which `isOurs` says that they are
/// to go. Needs no QRegularExpression and no directory filter, so it is fit for threads.
void sweepLeftovers(const QString &folder,
                    const std::function<bool(const Leftover &leftover)> &isOurs);

} // namespace kervan
