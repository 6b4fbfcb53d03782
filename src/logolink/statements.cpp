#include "logolink/statements.h"

#include "text/numbers.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString numberOf(const QString &firma)
{
    return masked(firma.section(u'-', 0, 0), "000"_mask);
}

} // namespace

Statement firmSelect()
{
    return Statement(u"select * from L_CAPIFIRM");
}

Statement cardSelect(const QString &firma, const QString &code)
{
    return Statement(u"Select * from LG_")
        .name(numberOf(firma))
        .text(u"_CLCARD where CODE='")
        .value(code)
        .text(u"'");
}

Statement barcodeSelect(const QString &firma, const QString &barcode)
{
    const QString number = numberOf(firma);
    return Statement(u"Select ITEM.CODE as ITEMKOD, UNIT.CODE as BIRIMKOD from LG_")
        .name(number)
        .text(u"_UNITBARCODE BAR WITH(NOLOCK) LEFT OUTER JOIN LG_")
        .name(number)
        .text(u"_ITEMS ITEM WITH(NOLOCK) ON (BAR.ITEMREF  =  ITEM.LOGICALREF) "
              "LEFT OUTER JOIN LG_")
        .name(number)
        .text(u"_UNITSETL UNIT WITH(NOLOCK) ON (BAR.UNITLINEREF = UNIT.LOGICALREF) "
              "where BAR.BARCODE='")
        .value(barcode)
        .text(u"'");
}

Statement titleUpdate(const QString &firma, const QString &code, const QString &title)
{
    return Statement(u"UPDATE LG_")
        .name(numberOf(firma))
        .text(u"_CLCARD SET DEFINITION_='")
        .value(title)
        .text(u"' where CODE='")
        .value(code)
        .text(u"'");
}

} // namespace kervan
