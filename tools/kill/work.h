#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace kervan {

/// A document that is written again and again: the word of its transfer, its source in "kaynak",
/// and what is chosen for it.
struct Kind
{
    QString name;
    QString command;
    QString source;
    QStringList choices; ///< "--kdv", "18", ...
};

const QList<Kind> &kinds();

// What the killed program does until it is killed; a word on standard output for each piece of it
// that is done. `place` holds the folders "program",
// "ayar", "kaynak" and "belge"; `first` is the number
// of the first piece, so that those of all lives differ.

/// Writes documents of all kinds as the windows do: "NAME-NUMBER.xml" in "belge".
[[noreturn]] void writeDocuments(const QString &place, int first);
/// Saves definitions, prices and side files. "per N" stands for a record that is there, "urun N"
/// for a table of prices that are all N.
[[noreturn]] void saveSettings(const QString &place, int first);

/// What saveSettings() writes as the Nth value.
constexpr int savedLength = 3000;
constexpr int savedPrices = 300;
QString savedValue(int number);

} // namespace kervan
