#pragma once

#include <QString>
#include <QStringList>

namespace kervan::fuzz {

using namespace Qt::StringLiterals;

/// A statement as SQL Server reads it: what stands outside of its texts, each of which is a "?"
/// there, and the texts with "''" for "'".
struct ReadStatement
{
    explicit ReadStatement(const QString &statement);

    QString fixed;
    QStringList texts;
    bool isWhole = true; ///< no text is open at the end, nor does a NUL cut it
};

/// That SQL Server reads one of the four statements that there are.
void expectDesigned(const QString &statement);

} // namespace kervan::fuzz
