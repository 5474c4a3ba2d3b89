#include "crv/accurate/internal/trails.h"

#include <utility>

namespace crv::internal {

namespace {

class Tracer {
 public:
  Tracer(std::vector<Edge> const& edges, Turns const& turns, std::vector<signed char> const& kept)
      : edges_(edges),
        turns_(turns),
        isWaiting_(turns.entries.size(), 0),
        positions_(turns.begins.size(), kNone) {
    trail_.reserve(edges.size());
    for (std::size_t i = 0; i < kept.size(); ++i) {
      bool const isKept = kept[i] != 0 && edges[i].first != kNone;
      if (isKept) isWaiting_[kept[i] > 0 ? 2 * i : 2 * i + 1] = 1;
    }
  }

  std::vector<Trail> trace();

 private:
  std::size_t endOf(std::size_t halfEdge) const { return startOf(edges_, twin(halfEdge)); }
  std::size_t following(std::size_t halfEdge) const;
  void follow(std::size_t start);
  void close(std::size_t position);
  void takeFrom(std::size_t start);
  std::vector<int> surpluses() const;

  std::vector<Edge> const& edges_;
  Turns const& turns_;
  std::vector<char> isWaiting_;  // by half-edge: kept, and not yet on a trail
  std::vector<std::size_t> trail_;
  std::vector<std::size_t> positions_;  // by node: its position on the trail, or kNone
  std::vector<Trail> trails_;
};

/// The waiting half-edge that continues the boundary of the face on the left; kNone if no waiting
/// half-edge leaves the node.
std::size_t Tracer::following(std::size_t halfEdge) const {
  std::size_t const node = endOf(halfEdge);
  std::size_t const begin = turns_.begins[node], end = turns_.begins[node + 1];
  std::size_t entry = turns_.entries[twin(halfEdge)];
  for (std::size_t i = begin; i < end; ++i) {
    entry = (entry == begin ? end : entry) - 1;
    if (isWaiting_[turns_.halfEdges[entry]]) return turns_.halfEdges[entry];
  }
  return kNone;
}

/// The trail has returned to the node at a position: moves the part after that position to a closed
/// trail of its own.
void Tracer::close(std::size_t position) {
  auto const begin = trail_.begin() + static_cast<std::ptrdiff_t>(position);
  trails_.push_back({{begin, trail_.end()}, true});
  for (auto i = begin; i != trail_.end(); ++i) positions_[startOf(edges_, *i)] = kNone;
  trail_.erase(begin, trail_.end());
}

void Tracer::follow(std::size_t start) {
  for (std::size_t h = start; h != kNone; h = following(h)) {
    isWaiting_[h] = 0;
    positions_[startOf(edges_, h)] = trail_.size();
    trail_.push_back(h);
    std::size_t const position = positions_[endOf(h)];
    if (position == kNone) continue;
    close(position);
    if (trail_.empty()) return;
  }
}

/// Follows a trail until it is closed or no kept edge continues it.
void Tracer::takeFrom(std::size_t start) {
  follow(start);
  if (trail_.empty()) return;
  for (std::size_t const h : trail_) positions_[startOf(edges_, h)] = kNone;
  trails_.push_back({std::move(trail_), false});
  trail_.clear();
}

/// By node: the number of waiting half-edges that begin there minus the number that end there.
std::vector<int> Tracer::surpluses() const {
  std::vector<int> surpluses(positions_.size(), 0);
  for (std::size_t h = 0; h < isWaiting_.size(); ++h) {
    if (!isWaiting_[h]) continue;
    ++surpluses[startOf(edges_, h)];
    --surpluses[endOf(h)];
  }
  return surpluses;
}

std::vector<Trail> Tracer::trace() {
  std::vector<int> const starts = surpluses();
  for (std::size_t const h : turns_.halfEdges) {
    if (isWaiting_[h] && starts[startOf(edges_, h)] > 0) takeFrom(h);
  }
  for (std::size_t h = 0; h < isWaiting_.size(); ++h) {
    if (isWaiting_[h]) takeFrom(h);
  }
  return std::move(trails_);
}

}  // namespace

std::vector<Trail> findTrails(std::vector<Edge> const& edges, Turns const& turns,
                              std::vector<signed char> const& kept) {
  return Tracer(edges, turns, kept).trace();
}

}  // namespace crv::internal
