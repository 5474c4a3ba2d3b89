// Divides a straight segment where it turns back.
#pragma once

#include "crv/accurate/internal/graph.h"
#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// If a segment is straight within a width, stores its runs, divided where it turns back, and
/// returns their number, 1 to 3. Otherwise stores the whole segment and returns 0.
int straightParts(Cubic const& c, double width, Part parts[3]);

}  // namespace crv::internal
