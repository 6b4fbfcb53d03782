#pragma once

#include "check/finding.h"

#include <QList>
#include <QString>

#include <functional>

namespace kervan {

/// A finding of a rule that walks a list by itself.
struct RowText
{
    int row;
    QString text;
};

/// One line of a transfer's table of rules: what is looked at, how grave it is and what to do. Of
/// the three looks one is given; each tells its sentence, empty where nothing is wrong.
struct Rule
{
    QString name;
    Level level = Level::Warning;
    QString cure = {};
    QString control = {}; ///< where a finding of the screen leads
    int column = -1;      ///< where a finding of a row leads
    QString list = QStringLiteral("l1");

    /// Of the screen as it stands; asked again whenever a field changes.
    std::function<QString()> ofScreen = nullptr;
    /// In front of a walk through the rows, for what ofRow looks up at each of them.
    std::function<void()> begin = nullptr;
    /// Of one row, by itself.
    std::function<QString(int row)> ofRow = nullptr;
    /// Of rows that only show beside each other, such as doubled numbers; in one walk.
    std::function<QList<RowText>()> ofRows = nullptr;
};

/// What a rule has to say of a row; -1 is the screen.
inline Finding findingOf(const Rule &rule, int row, const QString &text)
{
    return {.rule = rule.name,
            .level = rule.level,
            .text = text,
            .cure = rule.cure,
            .row = row,
            .column = rule.column,
            .control = rule.control,
            .list = rule.list};
}

/// A look at more than the list, such as the lines behind it, in steps of a few milliseconds.
class Survey
{
public:
    virtual ~Survey() = default;
    /// From the beginning: the list is another.
    virtual void begin() = 0;
    /// Goes on for a while; false when there is nothing left.
    virtual bool step() = 0;
    /// What was found, once it is through.
    virtual void tell(QList<Finding> &findings, QList<Gap> &gaps) const = 0;
};

} // namespace kervan
