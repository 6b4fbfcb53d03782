#include "base/leftthread.h"

#include <QThread>

#include <atomic>
#include <memory>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

namespace kervan {

namespace {

class LeftThread : public QThread
{
public:
    explicit LeftThread(std::function<void()> work)
        : m_work(std::move(work))
    {
    }
    /// Whether no thread was to be had for it: Windows calls such a one finished.
    bool hasFailed() const { return !isRunning() && !m_hasBegun; }

protected:
    // What the work owns goes in this thread.
    void run() override
    {
        m_hasBegun = true;
        std::exchange(m_work, nullptr)();
    }

private:
    std::function<void()> m_work;
    std::atomic_bool m_hasBegun = false;
};

struct Threads
{
    std::mutex mutex;
    std::vector<std::unique_ptr<LeftThread>> left;
};

// It outlives the program's end, where one of them may still be at work.
Threads &threads()
{
    static auto *const all = new Threads;
    return *all;
}

} // namespace

void runInLeftThread(std::function<void()> work)
{
    auto &[mutex, left] = threads();
    const std::lock_guard lock(mutex);
    std::erase_if(left, [](const auto &one) { return one->isFinished(); });
    left.push_back(std::make_unique<LeftThread>(std::move(work)));
    left.back()->start();
    if (!left.back()->hasFailed())
        return;
    left.pop_back();
    throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
}

} // namespace kervan
