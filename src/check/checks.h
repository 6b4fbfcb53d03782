#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "check/rules.h"

#include <QHash>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace kervan {

/// Holds a transfer's list and choices against its rules, beside the work: in slices of a few
/// milliseconds whenever nothing else is to be done, and from the beginning when the list changes.
/// It says what it finds and touches nothing.
class Checks : public QObject
{
    Q_OBJECT

public:
    /// Looks at this list; `rules` see what they need of the transfer by themselves.
    Checks(Grid &list, QList<Rule> rules, QObject *parent = nullptr);

    void add(std::unique_ptr<Survey> survey);
    void add(Rule rule);
    /// What rules of this name find is not told while the box is checked.
    void silence(const QString &rule, CheckField &box);
    /// The screen's rules are asked again when it changes.
    void watch(TextField &field);
    void watch(CheckField &field);
    /// All is looked at anew when these definitions change, which rows and lines are held against.
    void watch(Grid &definitions);

    /// What was found: first of the screen, then by row. Of a list in hand, none of the rows yet.
    const QList<Finding> &findings() const { return m_findings; }
    const QList<Gap> &gaps() const { return m_gaps; }
    int count(Level level) const;
    /// The findings of a row of a list, by their place in findings().
    QList<int> ofRow(int row, const QString &list = QStringLiteral("l1")) const;
    bool isComplete() const { return m_state == State::Complete; }

    /// Everything anew, after a change that none of what is watched tells.
    void restart();
    /// The screen's rules only.
    void askScreen();
    /// Works to the end at once, for those who have no event loop to come back to.
    void finish();

Q_SIGNALS:
    /// The findings are others.
    void changed();

private:
    enum class State { Begin, Rows, Lists, Surveys, Sorting, Complete };

    void slice();
    bool work();
    void restartWith(Grid &grid);
    void lookAtRow();
    void take(const Rule &rule, int row, const QString &text);
    bool isSilent(const QString &rule) const;
    void sort();
    void publish();

    Grid &m_list;
    QList<Rule> m_rules;
    QHash<QString, const CheckField *> m_silencers;
    std::vector<std::unique_ptr<Survey>> m_surveys;
    QTimer m_timer;
    QTimer m_screenTimer;
    State m_state = State::Begin;
    int m_row = 0;
    qsizetype m_step = 0; // of the rules or the surveys
    QList<Finding> m_ofScreen, m_ofRows;
    QList<Finding> m_findings;
    QList<Gap> m_gaps;
    QHash<QString, QHash<int, QList<int>>> m_byRow; // places in m_ofRows, by list and row
};

} // namespace kervan
