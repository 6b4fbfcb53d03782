#pragma once

#include "logoxml/template.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace kervan {

// What is wrong with a value that goes into a document, as a sentence; empty where nothing is.

/// "&", "<" and characters that no XML may hold: the whole document is refused for one of them.
/// `broken` is what can't be read any more, where that is not all of it: "kasa fişlerinin
/// hiçbirini".
QString faultOfMarkup(const QString &name, const QString &value, const QString &broken = {});
/// Letters that a document holds as "?", and those of its bytes 80 to 9F, which the declared
/// ISO-8859-9 has no letters for.
QString faultOfLetters(const QString &name, const QString &value);
/// A value that the next steps of a filling change, because it holds words of the template; said
/// exactly where the record that comes of it is another. `placeholders` are the template's.
QString faultOfWords(const Sablon &record, const QList<QByteArray> &placeholders,
                     const QStringList &values);

/// The cure of markup, behind what else would help: "Kaynağında düzeltin." becomes "Kaynağında
/// düzeltin ya da ...".
QString orAsXml(QString cure);

/// A value between quotes as sentences show it, long ones cut.
QString quoted(const QString &value);

} // namespace kervan
