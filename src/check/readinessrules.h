#pragma once

#include "base/failure.h"
#include "check/rules.h"
#include "store/program.h"

#include <QString>

#include <functional>
#include <optional>

namespace kervan {

// What a machine needs before a document can be written: folders, databases, definitions, counters.

/// What a document holds, as notes count it: "120 fatura"; empty where that is not known.
using ContentOf = std::function<QString(const QString &path)>;

/// A folder that documents go to, as the target settings and dialogs name it: it or, where the
/// value names a file, the folder of that file. Names of other machines are not asked for, since
/// one that is switched off would hold the program for long.
Rule folderRule(std::function<QString()> target);
/// The one that the save dialogs begin in.
Rule targetRule(const Program &program);
/// The file that a save without a dialog writes to, where there is one already.
Rule existingFileRule(std::function<QString()> target, ContentOf contentOf = nullptr);
/// A database of the program folder that isn't there; without a file there is nothing to read.
Rule databaseRule(const QString &path);
/// Definitions that could not be read when the screen was loaded; `unread` says why.
Rule definitionsRule(std::function<std::optional<Failure>()> unread);
/// A side file that keeps a counter and held something that is no number when it was read: counting
/// then begins anew. A missing or empty file is in order. `stored` gives what it held.
Rule counterRule(const QString &file, std::function<QString()> stored);
/// A counter whose next number stands in a document already; `warnings` tells which.
Rule counterBehindRule(std::function<QStringList()> warnings);
/// The program folder doesn't let its side files be written.
Rule programFolderRule(const QString &folder);

} // namespace kervan
