// The runs of a straight segment between the places where it turns back.
#pragma once

#include "crv/accurate/internal/graph.h"
#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// The parts that a segment is searched in: one that is straight within the resolution is cut where
/// it turns back. No parts if it is not straight.
int straightParts(Cubic const& c, double resolution, Part parts[3]);

}  // namespace crv::internal
