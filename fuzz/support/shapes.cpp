#include "support/shapes.h"

#include "support/harness.h"
#include "support/readstatement.h"

namespace kervan::fuzz {

void expectDesigned(const QString &statement)
{
    expect(isDesigned(statement), "a statement that nobody designed", statement);
}

} // namespace kervan::fuzz
