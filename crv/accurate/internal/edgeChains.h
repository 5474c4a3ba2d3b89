// Edges that follow each other along a curve, joined to one edge.
#pragma once

#include "crv/accurate/internal/cutting.h"
#include "crv/accurate/internal/planeGraph.h"

#include <vector>

namespace crv::internal {

/// Joins edges of one stretch each where a curve runs on and nothing else meets it, so that all
/// further steps handle few edges. Edges with both ends in common stay separate, because they might
/// coincide.
void joinEdges(Cutting& cutting, std::vector<ArrangedSegment> const& segments);

}  // namespace crv::internal
