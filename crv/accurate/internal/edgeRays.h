// Winding numbers beside the edges of an arrangement, by the crossings of rays with its stretches.
#pragma once

#include "crv/accurate/internal/cutting.h"
#include "crv/accurate/internal/planeGraph.h"
#include "crv/curve/internal/boxTree.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace crv::internal {

/// The winding numbers on both sides of an edge.
struct Sides {
  Counts left, right;
};

/// Stretches of an arrangement, with a tree over their boxes. The arrangement must outlive it.
class EdgeRays {
 public:
  EdgeRays(Cutting const& cutting, std::vector<std::size_t> stretches);

  /// The winding number of the stretches around a point.
  Counts windingOf(Point const& p) const;

  /// The winding numbers on both sides of an edge, by rays from either side of it; nothing if they
  /// do not differ by the edge's count because other edges are too near everywhere.
  std::optional<Sides> sidesOf(Edge const& edge) const;

 private:
  std::optional<Sides> sidesOf(Edge const& edge, Cubic const& stretch) const;

  Cutting const* cutting_;
  std::vector<std::size_t> stretches_;
  BoxTree tree_;
};

}  // namespace crv::internal
