#include "odbc/sidethread.h"

#include "base/leftthread.h"

#include <QtGlobal>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

#ifdef Q_OS_UNIX
#include <locale.h> // NOLINT(modernize-deprecated-headers): newlocale() is not of <clocale>
#endif

namespace kervan {

namespace {

// Thousands of statements come one behind the other, and waking a thread for each takes longer than
// looking out for it.
constexpr auto lookOut = std::chrono::microseconds(100);

// Driver managers compare keywords letter by letter as the C library's locale says, and in Turkish
// a small "i" is none of a capital "I": there they would not know "Driver" for "DRIVER".
void useNeutralLetters()
{
#ifdef Q_OS_UNIX
    static const locale_t neutral = newlocale(LC_ALL_MASK, "C.UTF-8", nullptr);
    if (neutral)
        uselocale(neutral);
#endif
}

} // namespace

struct SideThread::Shared
{
    std::mutex mutex;
    std::condition_variable toDo;
    std::condition_variable done;
    std::function<void()> step; // the next
    std::atomic_bool hasStep = false;
    bool isIdle = true;
    bool isEnding = false;
    bool hasEnded = false;
};

SideThread::SideThread()
    : m_shared(std::make_shared<Shared>())
{
    runInLeftThread([shared = m_shared] { work(*shared); });
}

SideThread::~SideThread()
{
    std::unique_lock lock(m_shared->mutex);
    m_shared->isEnding = true;
    m_shared->toDo.notify_one();
    if (m_shared->isIdle)
        m_shared->done.wait(lock, [this] { return m_shared->hasEnded; });
}

// Who is woken does not have to wait for the mutex: each statement passes here twice.
void SideThread::work(Shared &shared)
{
    useNeutralLetters();
    std::unique_lock lock(shared.mutex);
    while (true) {
        lock.unlock();
        const auto until = std::chrono::steady_clock::now() + lookOut;
        while (!shared.hasStep && std::chrono::steady_clock::now() < until)
            std::this_thread::yield();
        lock.lock();
        shared.toDo.wait(lock, [&] { return shared.step || shared.isEnding; });
        if (!shared.step)
            break;
        auto step = std::exchange(shared.step, nullptr);
        shared.hasStep = false;
        lock.unlock();
        step();
        step = nullptr; // what it owns goes in this thread
        lock.lock();
        shared.isIdle = !shared.step; // unless one came to wait behind it
        lock.unlock();
        shared.done.notify_one();
        lock.lock();
    }
    shared.hasEnded = true;
    shared.done.notify_one();
}

void SideThread::begin(std::function<void()> step)
{
    {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->step = std::move(step);
        m_shared->isIdle = false;
        m_shared->hasStep = true;
    }
    m_shared->toDo.notify_one();
}

bool SideThread::isIdle() const
{
    const std::lock_guard lock(m_shared->mutex);
    return m_shared->isIdle;
}

bool SideThread::isDoneWithin(std::chrono::milliseconds time) const
{
    std::unique_lock lock(m_shared->mutex);
    return m_shared->done.wait_for(lock, time, [this] { return m_shared->isIdle; });
}

void SideThread::wait() const
{
    std::unique_lock lock(m_shared->mutex);
    m_shared->done.wait(lock, [this] { return m_shared->isIdle; });
}

} // namespace kervan
