#include "base/failure.h"

#include "base/ports.h"

namespace kervan {

void report(Boxes &boxes, const Failure &failure)
{
    boxes.show({.text = failure.description()});
}

} // namespace kervan
