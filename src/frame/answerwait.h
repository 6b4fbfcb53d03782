#pragma once

#include "controls/waitstrip.h"

#include <QElapsedTimer>
#include <QList>
#include <QPointer>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace kervan {

class Beside;

/// The waits of a step for answers from outside. Once a step has waited for two seconds in all, a
/// strip stands on its screen until the step is over, and its button ends the wait under way, and
/// with it the step. Meanwhile the windows are painted. Nothing else comes in between, since the
/// step is in the midst of its list: what is typed, clicked, dropped or closed is not taken, timers
/// and the ends of readings beside come behind it.
///
/// A step is over when the event loop is reached again, be it that of a box.
class AnswerWait : public QObject
{
    Q_OBJECT

public:
    /// `screen` gives the one whose step waits, or null where there is no place to tell it: the
    /// answer is waited for in any case then.
    explicit AnswerWait(std::function<QWidget *()> screen,
                        std::chrono::milliseconds silence = std::chrono::seconds(2));
    ~AnswerWait() override;

    /// Until the answer has come, which is true, or is no longer wanted. What is asked for it waits
    /// so long at most.
    bool until(const std::function<bool(std::chrono::milliseconds)> &hasCome);

Q_SIGNALS:
    /// A step was over; its strip goes next.
    void over();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isShortEnough(const std::function<bool(std::chrono::milliseconds)> &hasCome);
    void begin(QWidget *screen);
    void look();
    void letEventsIn();
    void reachLoop();
    void end();
    void takeMouse(const QObject *watched, const QEvent &event);
    void takeKey(QEvent &event);
    void hold(QObject *receiver, const QEvent &event);

    struct Held
    {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };
    /// What is to be seen of the step's waits.
    enum class State {
        Unseen,
        Seen,
        Over, ///< the strip goes next; what was meant for it still comes
    };

    std::function<QWidget *()> m_screen;
    std::chrono::milliseconds m_silence;
    std::chrono::nanoseconds m_waited{0}; // unseen, by this step
    State m_state = State::Unseen;
    QPointer<WaitStrip> m_strip; // goes with its screen
    QElapsedTimer m_seen;
    QElapsedTimer m_looked; // since events were let in
    std::chrono::milliseconds m_untilNext{0};
    bool m_isLooking = false;
    bool m_isGivenUp = false;
    std::vector<Held> m_held;
    QList<QPointer<Beside>> m_ended;
};

} // namespace kervan
