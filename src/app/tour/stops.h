#pragma once

#include "app/tour/tour.h"
#include "support/tds/tdsstandin.h"

namespace kervan {

/// Takes the tour through every transfer, with the stand-in for Logo's server.
void visitAll(Tour &tour, TdsStandin &logo);

} // namespace kervan
