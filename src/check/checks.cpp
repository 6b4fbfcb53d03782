#include "check/checks.h"

#include "base/failure.h"

#include <QElapsedTimer>

#include <algorithm>
#include <numeric>

namespace kervan {

namespace {

constexpr int sliceTime = 6; // milliseconds; the last step may take some more
constexpr int rowsAtOnce = 64;

// A rule that can't look, such as at a column that the list has no longer, finds nothing: it is
// asked from a timer, where nobody would catch its failure.
template<class Look>
void ask(Look &&look)
{
    passOver(std::forward<Look>(look));
}

} // namespace

Checks::Checks(Grid &list, QList<Rule> rules, QObject *parent)
    : QObject(parent)
    , m_list(list)
    , m_rules(std::move(rules))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Checks::slice);
    m_screenTimer.setSingleShot(true);
    connect(&m_screenTimer, &QTimer::timeout, this, &Checks::askScreen);
    restartWith(list);
    restart();
}

void Checks::restartWith(Grid &grid)
{
    connect(&grid, &QAbstractItemModel::modelReset, this, &Checks::restart);
    connect(&grid, &QAbstractItemModel::rowsInserted, this, &Checks::restart);
    connect(&grid, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last) {
                if (first.column() > 0 || last.column() > 0) // else it is a tick
                    restart();
            });
}

void Checks::add(std::unique_ptr<Survey> survey)
{
    m_surveys.push_back(std::move(survey));
    restart();
}

void Checks::add(Rule rule)
{
    m_rules << std::move(rule);
    restart();
}

void Checks::silence(const QString &rule, CheckField &box)
{
    m_silencers[rule] = &box;
    connect(&box, &CheckField::changed, this, &Checks::restart);
}

bool Checks::isSilent(const QString &rule) const
{
    const CheckField *box = m_silencers.value(rule);
    return box && box->isChecked();
}

void Checks::watch(TextField &field)
{
    connect(&field, &TextField::changed, &m_screenTimer, qOverload<>(&QTimer::start));
}

void Checks::watch(CheckField &field)
{
    connect(&field, &CheckField::changed, &m_screenTimer, qOverload<>(&QTimer::start));
}

void Checks::watch(Grid &definitions)
{
    restartWith(definitions);
}

int Checks::count(Level level) const
{
    return static_cast<int>(std::ranges::count(m_findings, level, &Finding::level));
}

void Checks::restart()
{
    // A read changes its list cell by cell: no more is done here than to say that it changed.
    m_state = State::Begin;
    if (!m_timer.isActive())
        m_timer.start(0);
}

void Checks::askScreen()
{
    QList<Finding> before = std::exchange(m_ofScreen, {});
    for (const Rule &rule : m_rules) {
        if (rule.ofScreen)
            ask([&] { take(rule, -1, rule.ofScreen()); });
    }
    if (m_ofScreen != before)
        publish();
}

void Checks::finish()
{
    m_timer.stop();
    m_screenTimer.stop();
    askScreen();
    while (work()) {
    }
    publish();
}

void Checks::slice()
{
    QElapsedTimer elapsed;
    elapsed.start();
    if (m_state == State::Begin) {
        work();
        askScreen();
        publish(); // what was said of the rows before no longer holds
    }
    while (work()) {
        // What is left behind the last survey is one step, and has a slice of its own.
        if (elapsed.elapsed() >= sliceTime || m_state == State::Sorting) {
            m_timer.start(0);
            return;
        }
    }
    publish();
}

// A piece of it; false at the end.
bool Checks::work()
{
    switch (m_state) {
    case State::Begin:
        m_row = 0;
        m_step = 0;
        m_ofRows.clear();
        m_byRow.clear();
        m_gaps.clear();
        for (const Rule &rule : std::as_const(m_rules)) {
            if (rule.begin)
                rule.begin();
        }
        for (const auto &survey : m_surveys)
            survey->begin();
        m_state = State::Rows;
        return true;
    case State::Rows:
        for (int i = 0; i < rowsAtOnce && m_row < m_list.rows(); ++i)
            lookAtRow();
        if (m_row >= m_list.rows())
            m_state = State::Lists;
        return true;
    case State::Lists:
        if (m_step < m_rules.size()) {
            const Rule &rule = m_rules[m_step++];
            if (rule.ofRows) {
                ask([&] {
                    for (const RowText &found : rule.ofRows())
                        take(rule, found.row, found.text);
                });
            }
            return true;
        }
        m_step = 0;
        m_state = State::Surveys;
        return true;
    case State::Surveys:
        if (m_step < static_cast<qsizetype>(m_surveys.size())) {
            Survey &survey = *m_surveys[static_cast<std::size_t>(m_step)];
            bool goesOn = false; // not behind a Failure either
            ask([&] {
                goesOn = survey.step();
                if (!goesOn)
                    survey.tell(m_ofRows, m_gaps);
            });
            m_step += goesOn ? 0 : 1;
            return true;
        }
        m_state = State::Sorting;
        return true;
    case State::Sorting:
        sort();
        m_state = State::Complete;
        return false;
    case State::Complete:
        break;
    }
    return false;
}

void Checks::lookAtRow()
{
    for (const Rule &rule : m_rules) {
        if (rule.ofRow)
            ask([&] { take(rule, m_row, rule.ofRow(m_row)); });
    }
    ++m_row;
}

void Checks::take(const Rule &rule, int row, const QString &text)
{
    if (text.isEmpty() || isSilent(rule.name))
        return;
    (row < 0 ? m_ofScreen : m_ofRows) << findingOf(rule, row, text);
}

// By row, and in the order of the rules within one. There may be tens of thousands, which are moved
// once and not at each comparison.
void Checks::sort()
{
    m_ofRows.removeIf([this](const Finding &finding) { return isSilent(finding.rule); });
    QList<qsizetype> order(m_ofRows.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [this](qsizetype i) { return m_ofRows[i].row; });
    QList<Finding> sorted;
    sorted.reserve(m_ofRows.size());
    for (const qsizetype i : std::as_const(order)) {
        const Finding &finding = sorted.emplace_back(std::move(m_ofRows[i]));
        if (finding.row >= 0)
            m_byRow[finding.list][finding.row] << static_cast<int>(sorted.size()) - 1;
    }
    m_ofRows = std::move(sorted);
}

QList<int> Checks::ofRow(int row, const QString &list) const
{
    const auto rows = m_byRow.constFind(list);
    QList<int> places = isComplete() && rows != m_byRow.cend() ? rows->value(row) : QList<int>();
    for (int &place : places)
        place += static_cast<int>(m_ofScreen.size());
    return places;
}

void Checks::publish()
{
    m_findings = m_ofScreen;
    if (isComplete())
        m_findings += m_ofRows;
    Q_EMIT changed();
}

} // namespace kervan
