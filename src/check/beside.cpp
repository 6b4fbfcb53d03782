#include "check/beside.h"

#include <chrono>
#include <new>
#include <thread>
#include <utility>

namespace kervan {

namespace {

// So long the end of a job is waited for, which looks at its stop between two pieces of a file.
constexpr auto patience = std::chrono::milliseconds(100);

} // namespace

Beside::~Beside()
{
    const auto running = m_running;
    stop();
    if (!running)
        return;
    std::unique_lock lock(running->mutex);
    running->over.wait_for(lock, patience, [&] { return running->ended; });
}

void Beside::stop()
{
    const auto running = std::exchange(m_running, nullptr);
    if (!running)
        return;
    running->stop = true;
    const std::lock_guard lock(running->mutex);
    running->owner = nullptr;
}

void Beside::run(std::function<Done(const std::atomic_bool &stop)> job)
{
    stop();
    auto running = std::make_shared<Running>();
    running->owner = this;
    m_running = running;
    std::thread([running, job = std::move(job)] {
        Done done;
        try {
            done = job(running->stop);
        } catch (const std::bad_alloc &) { // a file beyond the memory stays unread
            done = [] {
            };
        }
        const std::lock_guard lock(running->mutex);
        running->ended = true;
        running->over.notify_all();
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
