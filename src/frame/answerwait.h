#pragma once

#include "controls/waitstrip.h"

#include <QList>
#include <QPointer>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace kervan {

class Beside;

/// The wait of a step for an answer from outside that is long in coming. The windows are painted,
/// and the strip's button ends it. Nothing else comes in between, since the step is in the midst of
/// its list: what is typed, clicked, dropped or closed meanwhile is not taken, timers and the ends
/// of readings beside come behind it.
class AnswerWait : public QObject
{
    Q_OBJECT

public:
    /// On the screen whose step it is.
    explicit AnswerWait(QWidget *screen);
    /// Gives back what was held.
    ~AnswerWait() override;

    /// Until the answer has come, which is true, or is no longer wanted. What is asked for it waits
    /// so long at most.
    bool until(const std::function<bool(std::chrono::milliseconds)> &hasCome);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void takeMouse(const QObject *watched, const QEvent &event);
    void takeKey(QEvent &event);
    void hold(QObject *receiver, const QEvent &event);

    struct Held
    {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };

    QWidget *m_screen;
    std::unique_ptr<WaitStrip> m_strip; // once what had been typed before is gone
    bool m_isGivenUp = false;
    std::vector<Held> m_held;
    QList<QPointer<Beside>> m_ended;
};

} // namespace kervan
