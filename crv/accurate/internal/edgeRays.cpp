#include "crv/accurate/internal/edgeRays.h"

#include "crv/accurate/internal/rayCrossings.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/curve/internal/boxTree.h"

#include <cmath>
#include <utility>

namespace crv::internal {

namespace {

// Unit scale: the distance from an edge at which rays start. It exceeds the finest resolution,
// within which edges are one.
constexpr double kBeside = 0x1p-45;

// Parameters of a stretch beside which rays start, tried in order until the winding numbers of both
// sides differ by the edge's count.
constexpr double kAskedAt[] = {0.5, 0.25, 0.75, 0.375, 0.625, 0.125, 0.875};

}  // namespace

EdgeRays::EdgeRays(Cutting const& cutting, std::vector<std::size_t> stretches)
    : cutting_(&cutting), stretches_(std::move(stretches)) {
  if (stretches_.empty()) return;
  nodes_.reserve(2 * stretches_.size() - 1);
  addNode(0, stretches_.size());
}

bool EdgeRays::areLinked(std::size_t i, std::size_t k) const {
  Point const &end = shapeOf(i).p[3], &start = shapeOf(k).p[0];
  return end.x == start.x && end.y == start.y && countOf(i) == countOf(k);
}

void EdgeRays::addNode(std::size_t begin, std::size_t end) {
  std::size_t const node = nodes_.size();
  nodes_.push_back({shapeOf(begin).hull(), begin, end, true});
  if (end - begin == 1) return;
  std::size_t const middle = begin + (end - begin) / 2;
  addNode(begin, middle);
  std::size_t const second = nodes_.size();
  addNode(middle, end);
  nodes_[node].box = united(nodes_[node + 1].box, nodes_[second].box);
  nodes_[node].isChain =
      nodes_[node + 1].isChain && nodes_[second].isChain && areLinked(middle - 1, middle);
}

void EdgeRays::addCrossings(std::size_t number, Point const& p, Counts& winding) const {
  Node const& node = nodes_[number];
  if (!isBeside(node.box, p)) return;
  std::size_t const size = node.end - node.begin;
  if (size == 1) {
    winding = sum(winding, countOf(node.begin), crossings(shapeOf(node.begin), p));
  } else if (node.isChain && node.box.minX > p.x) {
    bool const startsAbove = shapeOf(node.begin).p[0].y > p.y;
    bool const endsAbove = shapeOf(node.end - 1).p[3].y > p.y;
    winding = sum(winding, countOf(node.begin), int(endsAbove) - int(startsAbove));
  } else {
    addCrossings(number + 1, p, winding);
    addCrossings(number + 2 * (size / 2), p, winding);
  }
}

Counts EdgeRays::windingOf(Point const& p) const {
  Counts winding = {0, 0};
  if (!nodes_.empty()) addCrossings(0, p, winding);
  return winding;
}

std::optional<Sides> EdgeRays::sidesOf(Edge const& edge, Cubic const& stretch) const {
  for (double const t : kAskedAt) {
    Point const place = pointAt(stretch, t), d = derivativeAt(stretch, t);
    double const speed = std::sqrt(dot(d, d));
    if (!(speed > 0.0)) continue;
    Point const aside = Point{-d.y, d.x} * (kBeside / speed);
    Sides const sides = {windingOf(place + aside), windingOf(place - aside)};
    if (sum(sides.left, sides.right, -1) == edge.count) return sides;
  }
  return std::nullopt;
}

std::optional<Sides> EdgeRays::sidesOf(Edge const& edge) const {
  for (std::size_t s = edge.first; s <= edge.last; ++s) {
    if (auto const sides = sidesOf(edge, cutting_->stretches[s].c)) return sides;
  }
  return std::nullopt;
}

}  // namespace crv::internal
