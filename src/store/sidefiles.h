#pragma once

#include "base/failure.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace kervan {

// The small text files beside the program. They are Windows-1254, each line ended by CR LF;
// readers also take LF or CR alone and a UTF-8 mark. A file is replaced whole: a write that fails
// is a Failure and leaves the old file as it was.

/// The two counters of slip numbers.
inline constexpr QStringView cashCounterFile = u"kasacariislemno.kvz";
inline constexpr QStringView bankCounterFile = u"bankacariislemno.kvz";

/// Shape "single value": the first line up to its first comma, a pair of double quotes around it
/// dropped. A file that holds nothing gives an empty text; a missing file is a Failure.
QString readSingleValue(const QString &path);
/// Writes the value as the only line.
void writeSingleValue(const QString &path, const QString &value);

/// The value of a file that need not be there, empty then; a Failure if it is and can't be read.
QString readCounter(const QString &path);

/// Why a file that is there can't be read; nothing where it can, or where there is none. Numbers
/// would begin anew behind it.
std::optional<Failure> unreadable(const QString &path);

/// Shape "lines": the first `count` lines, whole. A file with fewer is a Failure.
QStringList readLines(const QString &path, int count);
/// Shape "list of codes": all lines. A missing file is a Failure.
QStringList readAllLines(const QString &path);
/// The first `count` lines, or as many as there are. A missing file is a Failure.
QStringList readFirstLines(const QString &path, qsizetype count);
/// Who may read a side file: everyone whom the folder lets in, or its owner alone.
enum class Readers { All, Owner };
/// Writes each text as one line; one that holds a line end is a Failure.
void writeLines(const QString &path, const QStringList &lines, Readers readers = Readers::All);

} // namespace kervan
