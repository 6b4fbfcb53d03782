#include "base/filegate.h"

namespace kervan {

std::timed_mutex &fileGate()
{
    static std::timed_mutex gate;
    return gate;
}

} // namespace kervan
