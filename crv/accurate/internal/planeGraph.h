// The data of an arrangement: stretches of segments, edges between nodes, and the order of the
// edges around each node.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <array>
#include <cstddef>
#include <vector>

namespace crv::internal {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// Winding numbers, or numbers of stretches, by group.
using Counts = std::array<int, 2>;

/// a + sign * b.
inline Counts sum(Counts const& a, Counts const& b, int sign) {
  return {a[0] + sign * b[0], a[1] + sign * b[1]};
}

/// A segment that is to be arranged.
struct ArrangedSegment {
  Cubic c;
  std::size_t next;  // the number of the next segment on its curve, kNone at an open end
  int group;         // 0 or 1: winding numbers are counted for each group
};

/// The part of a segment between two neighbouring nodes on it.
struct Stretch {
  Cubic c;  // in unit scale, its ends moved onto the nodes
  std::size_t segment;
  double from, to;  // from < to
  std::size_t edge;
  bool isForward;          // it has the direction of its edge
  std::size_t nextOnEdge;  // another stretch of the same edge, or kNone
};

/// A line between two nodes on which one stretch lies, or several that coincide, or several that
/// follow each other.
struct Edge {
  std::size_t from, to;  // nodes
  std::size_t first;     // one of its stretches, which has its direction
  std::size_t last;      // above first if the stretches first..last follow each other
  Counts count;          // stretches in its direction minus those against it
  Counts left, right;    // winding numbers on both sides
};

// An edge e has two half-edges: 2e leaves its first node; 2e + 1 leaves its last node and has the
// opposite direction.
inline std::size_t edgeOf(std::size_t halfEdge) { return halfEdge >> 1; }
inline std::size_t twin(std::size_t halfEdge) { return halfEdge ^ 1; }
inline bool isAlong(std::size_t halfEdge) { return (halfEdge & 1) == 0; }

inline std::size_t startOf(std::vector<Edge> const& edges, std::size_t halfEdge) {
  Edge const& edge = edges[edgeOf(halfEdge)];
  return isAlong(halfEdge) ? edge.from : edge.to;
}

/// The half-edges that leave each node, counter-clockwise.
struct Turns {
  std::vector<std::size_t> begins;     // by node: its first entry in halfEdges; the end behind
  std::vector<std::size_t> halfEdges;  // node by node
  std::vector<std::size_t> entries;    // by half-edge: where it stands in halfEdges
  // Nodes at which edges are so short, or stay so near to each other, that their order may be
  // wrong.
  std::vector<std::size_t> doubtful;

  /// The half-edge that follows, around the face on its left, a half-edge that ends at this node:
  /// the next one clockwise from its twin.
  std::size_t next(std::size_t halfEdge, std::size_t node) const {
    std::size_t const entry = entries[twin(halfEdge)];
    return halfEdges[(entry == begins[node] ? begins[node + 1] : entry) - 1];
  }
};

}  // namespace crv::internal
