#pragma once

#include <QString>

namespace kervan::fuzz {

using namespace Qt::StringLiterals;

/// That SQL Server reads one of the four statements that there are.
void expectDesigned(const QString &statement);

} // namespace kervan::fuzz
