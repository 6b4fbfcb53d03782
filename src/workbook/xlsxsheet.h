#pragma once

#include "workbook/sheetbuilder.h"
#include "workbook/xmlscanner.h"

namespace kervan {

/// Keeps the texts of a part of shared strings in the builder, in their order.
QList<SheetBuilder::Text> readSharedStrings(XmlScanner &xml, SheetBuilder &builder);

/// Adds the filled cells of a worksheet part.
void readWorksheet(XmlScanner &xml, const QList<SheetBuilder::Text> &sharedStrings,
                   SheetBuilder &builder);

} // namespace kervan
