// Segments, cut at the nodes, which are the points where they meet or end.
#pragma once

#include "crv/accurate/internal/planeGraph.h"
#include "crv/accurate/internal/unitScale.h"
#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// The stretches of segments between the nodes, and the edges that they form.
struct Cutting {
  std::vector<Stretch> stretches;  // ascending in the segment, then in from
  std::vector<Edge> edges;         // ascending in their stretches
  std::vector<Point> nodes;
};

/// Cuts segments, given in unit scale, wherever they meet. Meetings nearer to each other along a
/// segment than the resolution are one node; stretches that do not leave one node are left out.
/// Each stretch is an edge of its own.
Cutting cutAtMeetings(std::vector<ArrangedSegment> const& segments, UnitScale const& scale);

}  // namespace crv::internal
