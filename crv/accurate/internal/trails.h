// Joins kept edges to closed trails.
#pragma once

#include "crv/accurate/internal/planeGraph.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// Half-edges, each of which begins where the one before it ends.
struct Trail {
  std::vector<std::size_t> halfEdges;
  bool isClosed;
};

/// The trails that kept edges form: kept[i] is 1 to keep edge i in its direction, -1 to keep it
/// reversed, 0 to drop it. At a node a trail takes the leftmost kept edge, so that trails do not
/// cross; a part of a trail that returns to one of its nodes becomes a trail of its own. Trails
/// that end where no kept edge begins are open.
std::vector<Trail> findTrails(std::vector<Edge> const& edges, Turns const& turns,
                              std::vector<signed char> const& kept);

}  // namespace crv::internal
