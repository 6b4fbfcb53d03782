#pragma once

#include "base/failure.h"
#include "invoices/invoicechecks.h"

namespace kervan {

/// A look at the lines behind a list of invoices: first what is listed, then the source from its
/// beginning to its end, then what came of each invoice. Each in small steps; a Failure ends it.
class LineSurvey : public Survey
{
public:
    void begin() final;
    bool step() final;
    void tell(QList<Finding> &findings, QList<Gap> &gaps) const final;

protected:
    enum class Stage { Begin, Lines, Rest, End };

    virtual void clear() = 0;
    /// Takes in what is listed; leads to the lines, or to the end where there are none.
    virtual Stage prepare() = 0;
    /// A few lines of the source; false behind the last one.
    virtual bool takeSome() = 0;
    /// What came of a few invoices; false behind the last one.
    virtual bool tellSome() = 0;
    /// It has ended: the source is let go.
    virtual void letGo() = 0;
    virtual void giveUp(const Failure &failed) = 0;

    QList<Finding> m_found;
    Gaps m_gaps;

private:
    void go();

    Stage m_stage = Stage::Begin;
};

} // namespace kervan
