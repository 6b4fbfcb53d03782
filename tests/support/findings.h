#pragma once

#include "base/failure.h"
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

/// Which rules of a screen's table its plants have set off, each rule asked by itself: one that is
/// added without a plant is told by its name and place.
class RulesSetOff
{
public:
    /// After each plant; the table is always put together in the same order.
    void ask(const QList<Rule> &rules, const Grid &list)
    {
        m_places.resize(rules.size());
        m_setOff.resize(rules.size());
        for (qsizetype i = 0; i < rules.size(); ++i) {
            const Rule &rule = rules[i];
            m_places[i] = QStringLiteral("%1 %2 %3 %4")
                              .arg(rule.name, rule.list, rule.control,
                                   rule.column < 0 ? QString() : QString::number(rule.column + 1))
                              .simplified();
            passOver([&] { m_setOff[i] = m_setOff[i] || finds(rule, list); });
        }
    }
    QStringList missing() const
    {
        QStringList places;
        for (qsizetype i = 0; i < m_places.size(); ++i) {
            if (!m_setOff[i])
                places << m_places[i];
        }
        return places;
    }

private:
    static bool finds(const Rule &rule, const Grid &list)
    {
        if (rule.ofScreen && !rule.ofScreen().isEmpty())
            return true;
        for (int row = 0; rule.ofRow && row < list.rows(); ++row) {
            if (!rule.ofRow(row).isEmpty())
                return true;
        }
        return rule.ofRows && !rule.ofRows().isEmpty();
    }

    QStringList m_places;
    QList<bool> m_setOff;
};

} // namespace kervan
