#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace kervan {

/// Carries out steps, one at a time, in a thread of its own, where the C library knows no country.
/// It can be left behind in the middle of one, and then ends with that: so a step owns all that it
/// touches. Nor does one use QRegularExpression: that keeps a variable of its thread, which MinGW
/// frees before its destructor runs, and the thread or the program would crash or hang at its end.
class SideThread
{
public:
    /// No thread to be had is a std::system_error.
    SideThread();
    /// Leaves behind the step under way, if there is one. Nor is one waited for at the end of the
    /// program, which closing the frame ends at once.
    ~SideThread();
    SideThread(const SideThread &) = delete;
    SideThread &operator=(const SideThread &) = delete;

    /// Hands a step over, which comes behind the one under way; one at most may wait there. What it
    /// throws ends the program.
    void begin(std::function<void()> step);
    bool isIdle() const;
    /// Waits until the step is done, at most so long.
    bool isDoneWithin(std::chrono::milliseconds time) const;
    void wait() const;

private:
    struct Shared;
    static void work(Shared &shared);

    std::shared_ptr<Shared> m_shared;
};

} // namespace kervan
