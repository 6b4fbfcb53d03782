#pragma once

#include <mutex>

namespace kervan {

/// Held for the moment in which a file is looked at beside the user's work, and while a written one
/// takes another's place: Windows refuses to replace a file that somebody has open.
std::timed_mutex &fileGate();

} // namespace kervan
