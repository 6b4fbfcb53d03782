#pragma once

#include "logoxml/template.h"

#include <QStringList>

namespace kervan::fuzz {

/// What a document was read back as, by the program's reader and an XML reader alike.
struct ReadDocument
{
    qint64 records = 0;
    QStringList numbers; ///< of its records, or their codes
    QList<qint64> lines; ///< of goods, without discounts
};

/// Reads a document that the program wrote. One whose values are spelled as XML is whole, and both
/// readers find the same in it; of any other only the program's reader is asked, and only that it
/// comes to an end.
ReadDocument readBack(const QString &path, Values spelling);

/// The same of bytes.
void readBoth(QByteArrayView bytes, ReadDocument &found);

/// A value as it comes out of a document that is spelled as XML.
QString asSpelled(const QString &value);

} // namespace kervan::fuzz
