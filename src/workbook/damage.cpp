#include "workbook/damage.h"

#include "base/failure.h"

namespace kervan {

using namespace Qt::StringLiterals;

void failDamaged()
{
    throw Failure(u"dosya yarım kalmış ya da bozuk"_s);
}

} // namespace kervan
