#pragma once

#include "check/checks.h"
#include "check/readreport.h"

namespace kervan {

/// What the next two give, a line each.
inline QStringList lines(const QString &text)
{
    return text.split(u'\n', Qt::SkipEmptyParts);
}

/// What the checks find, a line each: "hata" or "uyari", where it stands (row and column from 1, or
/// the control), and the rule. Missing definitions stand behind: "eksik", kind, code, lines,
/// screen.
inline QStringList found(Checks &checks)
{
    checks.finish();
    QStringList told;
    for (const Finding &finding : checks.findings()) {
        const QString list = finding.list == QStringLiteral("l1") ? QString() : finding.list + u' ';
        const QString place =
            finding.row < 0
                ? finding.control
                : QStringLiteral("%1%2:%3").arg(list).arg(finding.row + 1).arg(finding.column + 1);
        told << (finding.level == Level::Error ? QStringLiteral("hata %1 %2")
                                               : QStringLiteral("uyari %1 %2"))
                    .arg(place, finding.rule)
                    .simplified();
    }
    for (const Gap &gap : checks.gaps())
        told << QStringLiteral("eksik %1 %2 %3 %4")
                    .arg(gap.kind, gap.code)
                    .arg(gap.lines)
                    .arg(gap.screen)
                    .simplified();
    return told;
}

/// The text of the finding of a rule in a row from 1, or of the screen in row 0.
inline QString textOf(const Checks &checks, int row, const QString &rule)
{
    for (const Finding &finding : checks.findings()) {
        if (finding.row == row - 1 && finding.rule == rule)
            return finding.text;
    }
    return {};
}

/// What a reading left out, a line each: line, cell and reason.
inline QStringList leftOut(const ReadReport &report)
{
    QStringList told;
    for (const ReadReport::Entry &entry : report.entries())
        told << QStringLiteral("%1 %2 %3")
                    .arg(entry.line)
                    .arg(entry.cell, entry.reason)
                    .simplified();
    return told;
}

} // namespace kervan
