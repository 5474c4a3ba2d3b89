#include "crv/accurate/internal/edgeRays.h"

#include "crv/accurate/internal/rayCrossings.h"
#include "crv/accurate/internal/segmentPair.h"

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

BoxTree treeOver(Cutting const& cutting, std::vector<std::size_t> const& stretches) {
  std::vector<Box> boxes;
  boxes.reserve(stretches.size());
  for (std::size_t const s : stretches) boxes.push_back(cutting.stretches[s].c.hull());
  return BoxTree(std::move(boxes));
}

}  // namespace

EdgeRays::EdgeRays(Cutting const& cutting, std::vector<std::size_t> stretches)
    : cutting_(&cutting), stretches_(std::move(stretches)), tree_(treeOver(cutting, stretches_)) {}

Counts EdgeRays::windingOf(Point const& p) const {
  Counts winding = {0, 0};
  tree_.visit([&](Box const& box) { return isBeside(box, p); },
              [&](std::size_t i) {
                Stretch const& s = cutting_->stretches[stretches_[i]];
                winding = sum(winding, cutting_->edges[s.edge].count, crossings(s.c, p));
              });
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
