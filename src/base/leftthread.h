#pragma once

#include <functional>

namespace kervan {

/// Carries out work() in a thread that is left to end alone; what it throws ends the program. No
/// thread to be had is a std::system_error.
///
/// A detached std::thread isn't fit for this: MinGW clears up behind one that ends just as it is
/// detached twice over, and then another one's work is lost, or freed while it runs.
void runInLeftThread(std::function<void()> work);

} // namespace kervan
