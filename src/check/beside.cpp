#include "check/beside.h"

#include "base/leftthread.h"

#include <chrono>
#include <new>
#include <system_error>
#include <utility>

namespace kervan {

namespace {

// So long the end of a job is waited for, which looks at its stop between two pieces of a file.
constexpr auto patience = std::chrono::milliseconds(100);

} // namespace

Beside::Beside(QObject *parent)
    : QObject(parent)
{
    connect(this, &Beside::ended, this, &Beside::finish, Qt::QueuedConnection);
}

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
    const auto work = [running, job = std::move(job)] {
        Done done;
        try {
            done = job(running->stop);
        } catch (const std::bad_alloc &) { // a file beyond the memory stays unread
            done = [] {
            };
        }
        const std::lock_guard lock(running->mutex);
        running->done = std::move(done);
        running->ended = true;
        running->over.notify_all();
        if (running->owner)
            Q_EMIT running->owner->ended();
    };
    try {
        runInLeftThread(work);
    } catch (const std::system_error &) { // what it is beside of is not to end by it
        m_running.reset();
    }
}

// Of a job that was dropped, or one before the last, nothing is left to do.
void Beside::finish()
{
    if (!m_running)
        return;
    Done done;
    {
        const std::lock_guard lock(m_running->mutex);
        if (!m_running->ended)
            return;
        done = std::move(m_running->done);
    }
    m_running.reset();
    done();
}

} // namespace kervan
