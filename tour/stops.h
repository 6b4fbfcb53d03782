#pragma once

#include "support/tds/tdsstandin.h"
#include "tour/tour.h"

namespace kervan {

/// Takes the tour through every transfer, with the stand-in for Logo's server.
void visitAll(Tour &tour, TdsStandin &logo);

} // namespace kervan
