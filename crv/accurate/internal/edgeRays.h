// Winding numbers beside the edges of an arrangement, by the crossings of rays with its stretches.
#pragma once

#include "crv/accurate/internal/cutting.h"
#include "crv/accurate/internal/planeGraph.h"
#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace crv::internal {

/// The winding numbers on both sides of an edge.
struct Sides {
  Counts left, right;
};

/// Stretches of an arrangement, for rays. The arrangement must outlive it.
/// Method: a binary tree over the stretches in their order. Where stretches follow each other and a
/// ray enters their box from outside, the two ends of the chain decide, so that a ray through many
/// teeth of one outline takes logarithmic time.
class EdgeRays {
 public:
  EdgeRays(Cutting const& cutting, std::vector<std::size_t> stretches);

  /// The winding number of the stretches around a point.
  Counts windingOf(Point const& p) const;

  /// The winding numbers on both sides of an edge, by rays from either side of it; nothing if they
  /// do not differ by the edge's count because other edges are too near everywhere.
  std::optional<Sides> sidesOf(Edge const& edge) const;

 private:
  /// Consecutive stretches. The next node is the first half of them, and the second half follows
  /// the nodes of the first.
  struct Node {
    Box box;
    std::size_t begin, end;  // in stretches_
    bool isChain;            // each starts where the one before ends, and all have one count
  };

  void addNode(std::size_t begin, std::size_t end);
  bool areLinked(std::size_t i, std::size_t k) const;
  void addCrossings(std::size_t node, Point const& p, Counts& winding) const;
  Cubic const& shapeOf(std::size_t i) const { return cutting_->stretches[stretches_[i]].c; }
  Counts const& countOf(std::size_t i) const {
    return cutting_->edges[cutting_->stretches[stretches_[i]].edge].count;
  }
  std::optional<Sides> sidesOf(Edge const& edge, Cubic const& stretch) const;

  Cutting const* cutting_;
  std::vector<std::size_t> stretches_;
  std::vector<Node> nodes_;
};

}  // namespace crv::internal
