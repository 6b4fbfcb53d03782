#pragma once

#include <QByteArray>

namespace kervan {

/// Makes the records of an .xls stream readable in place, where they are enciphered with the
/// password that programs take when they lock a workbook without asking for one. Any other password
/// is a Failure; a stream that is not enciphered stays as it is.
void decipherXls(QByteArray &stream);

} // namespace kervan
