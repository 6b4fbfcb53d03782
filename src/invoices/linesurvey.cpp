#include "invoices/linesurvey.h"

#include <QElapsedTimer>

namespace kervan {

namespace {

constexpr qint64 stepTime = 2'000'000; // nanoseconds

} // namespace

void LineSurvey::begin()
{
    m_found.clear();
    m_gaps.clear();
    clear();
    m_stage = Stage::Begin;
}

bool LineSurvey::step()
{
    if (const auto failed = passOver([this] { go(); })) {
        giveUp(*failed);
        m_stage = Stage::End;
    }
    if (m_stage == Stage::End)
        letGo();
    return m_stage != Stage::End;
}

void LineSurvey::go()
{
    QElapsedTimer elapsed;
    elapsed.start();
    switch (m_stage) {
    case Stage::Begin:
        m_stage = prepare();
        return;
    case Stage::Lines:
        while (m_stage == Stage::Lines && elapsed.nsecsElapsed() < stepTime) {
            if (!takeSome())
                m_stage = Stage::Rest;
        }
        return;
    case Stage::Rest:
        if (!tellSome())
            m_stage = Stage::End;
        return;
    case Stage::End:
        return;
    }
}

void LineSurvey::tell(QList<Finding> &findings, QList<Gap> &gaps) const
{
    findings += m_found;
    gaps += m_gaps.all();
}

} // namespace kervan
