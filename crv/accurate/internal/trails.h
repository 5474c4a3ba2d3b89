// Kept edges, put together to closed trails.
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

/// The trails that kept edges form: kept[i] is 1 where edge i runs as it does, -1 where it runs the
/// other way, 0 where it is left out. At a node a trail turns to the next kept edge on its left, so
/// that trails do not cross, and what returns to one of its nodes becomes a trail of its own.
/// Trails that end where no kept edge begins are open.
std::vector<Trail> findTrails(std::vector<Edge> const& edges, Turns const& turns,
                              std::vector<signed char> const& kept);

}  // namespace crv::internal
