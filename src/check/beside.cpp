#include "check/beside.h"

#include <thread>

namespace kervan {

void Beside::stop()
{
    if (!m_running)
        return;
    m_running->stop = true;
    const std::lock_guard lock(m_running->mutex);
    m_running->owner = nullptr;
    m_running.reset();
}

void Beside::run(std::function<Done(const std::atomic_bool &stop)> job)
{
    stop();
    auto running = std::make_shared<Running>();
    running->owner = this;
    m_running = running;
    std::thread([running, job = std::move(job)] {
        const Done done = job(running->stop);
        const std::lock_guard lock(running->mutex);
        if (!running->owner)
            return;
        const auto end = [running, done] {
            // Dropped since, or another was started: only this thread changes the owner.
            if (Beside *owner = running->owner) {
                owner->m_running.reset();
                done();
            }
        };
        QMetaObject::invokeMethod(running->owner, end, Qt::QueuedConnection);
    }).detach();
}

} // namespace kervan
