// Joins edges that follow each other along a curve.
#include "crv/accurate/internal/edgeChains.h"

#include <cstddef>

namespace crv::internal {

namespace {

/// By node: the number of edges that end there.
std::vector<int> endsAt(Cutting const& cutting) {
  std::vector<int> ends(cutting.nodes.size(), 0);
  for (Edge const& e : cutting.edges) {
    ++ends[e.from];
    ++ends[e.to];
  }
  return ends;
}

}  // namespace

// The first edge of each chain is not joined to the second. A boundary starts with its first edge;
// if that were the whole chain, a boundary that runs against the chain would start at its far end.
void joinEdges(Cutting& cutting, std::vector<ArrangedSegment> const& segments) {
  std::vector<Edge>& edges = cutting.edges;
  if (edges.empty()) return;
  std::vector<int> const ends = endsAt(cutting);
  auto const runsOn = [&](std::size_t stretch) {
    std::size_t const from = cutting.stretches[stretch].segment;
    std::size_t const to = cutting.stretches[stretch + 1].segment;
    return from == to || segments[from].next == to;
  };
  std::size_t kept = 0, firstOfChain = 0;
  for (std::size_t i = 1; i < edges.size(); ++i) {
    Edge const last = edges[kept], next = edges[i];
    bool const isOneChain = last.to == next.from && ends[next.from] == 2 && last.from != next.to &&
                            last.count == next.count && runsOn(i - 1);
    if (!isOneChain) firstOfChain = kept + 1;
    if (isOneChain && kept > firstOfChain) {
      edges[kept].to = next.to;
      edges[kept].last = i;
    } else {
      edges[++kept] = next;
    }
    cutting.stretches[i].edge = kept;
  }
  edges.resize(kept + 1);
}

}  // namespace crv::internal
