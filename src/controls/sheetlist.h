#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QLineEdit;

namespace kervan {

class TextField;

/// Puts a sign into the box of a sheet's name that lists the sheets of the file in hand; the one
/// that is picked stands in the box then, and nothing is read by it. `file` gives the file, empty
/// where there is none yet, and `sheetsOf` its sheets or a Failure.
void addSheetList(QLineEdit *box, TextField &name, std::function<QString()> file,
                  std::function<QStringList(const QString &path)> sheetsOf);

} // namespace kervan
