#include "support/shapes.h"

#include "support/harness.h"
#include "support/readstatement.h"

#include <QRegularExpression>

namespace kervan::fuzz {

void expectDesigned(const QString &statement)
{
    // A firm is digits, but whatever a firm line begins with stays a part of a name.
    static const QRegularExpression shape(
        u"\\A(?:select \\* from L_CAPIFIRM"
        "|Select \\* from LG_[\\p{L}\\p{N}_]*_CLCARD where CODE=\\?"
        "|Select ITEM\\.CODE as ITEMKOD, UNIT\\.CODE as BIRIMKOD from LG_([\\p{L}\\p{N}_]*)"
        "_UNITBARCODE BAR WITH\\(NOLOCK\\) LEFT OUTER JOIN LG_\\1_ITEMS ITEM WITH\\(NOLOCK\\) "
        "ON \\(BAR\\.ITEMREF  =  ITEM\\.LOGICALREF\\) LEFT OUTER JOIN LG_\\1_UNITSETL UNIT "
        "WITH\\(NOLOCK\\) ON \\(BAR\\.UNITLINEREF = UNIT\\.LOGICALREF\\) where BAR\\.BARCODE=\\?"
        "|UPDATE LG_[\\p{L}\\p{N}_]*_CLCARD SET DEFINITION_=\\? where CODE=\\?)\\z"_s);
    const ReadStatement read(statement);
    expect(read.isOne && shape.match(read.fixed).hasMatch(), "a statement that nobody designed",
           statement, read.fixed);
}

} // namespace kervan::fuzz
