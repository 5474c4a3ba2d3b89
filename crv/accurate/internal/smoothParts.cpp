#include "crv/accurate/internal/smoothParts.h"

#include "crv/accurate/internal/controlEdges.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/internal/tangent.h"

#include <algorithm>
#include <cmath>

namespace crv::internal {

namespace {

// Relative to the largest coordinate of the curve: a segment whose control points are this near to
// a line is straight.
constexpr double kStraight = 0x1p-48;

// Relative to the longest edge of the control polygon: a velocity below this counts as zero.
constexpr double kStill = 0x1p-26;

// Parameter: cusps nearer to each other than this are one cusp, and cusps nearer to an end are
// ignored.
constexpr double kOne = 0x1p-20;

/// A unit vector along a segment, in either direction, if its control points are no farther than a
/// limit from a line.
std::optional<Point> axisOf(Cubic const& c, double limit) {
  int farthest = 1;
  for (int i = 2; i < 4; ++i) {
    if (squaredDistance(c.p[0], c.p[i]) > squaredDistance(c.p[0], c.p[farthest])) farthest = i;
  }
  Point const axis = unitVector(c.p[farthest] - c.p[0]);
  for (Point const& p : c.p) {
    if (std::fabs(cross(axis, p - c.p[0])) > limit) return std::nullopt;
  }
  return axis;
}

/// The parameters of the cusps, ascending, given the axis of a straight segment.
std::vector<double> cuspsOf(Cubic const& c, std::optional<Point> const& axis) {
  std::vector<double> cusps;
  Edges const edges(c);
  if (edges.leastAlong(c.end() - c.start()) > 0.0) return cusps;
  double const still = kStill * edges.largest();
  // Both coordinates of the velocity are zero at a cusp, and at least one of them changes its sign.
  for (Point const& direction : {Point{0.0, 1.0}, Point{1.0, 0.0}}) {
    double t[2];
    int const count = edges.across(axis ? leftOf(*axis) * -1.0 : direction).roots(t);
    for (int i = 0; i < count; ++i) {
      bool const isStill = axis || largestPart(derivativeAt(c, t[i])) <= 3.0 * still;
      bool const isInside = t[i] > kOne && t[i] < 1.0 - kOne;
      if (isStill && isInside) cusps.push_back(t[i]);
    }
  }
  std::sort(cusps.begin(), cusps.end());
  auto const areOne = [](double s, double t) { return t - s <= kOne; };
  cusps.erase(std::unique(cusps.begin(), cusps.end(), areOne), cusps.end());
  return cusps;
}

SmoothPart withDirections(SmoothPart part) {
  part.in = startDirection(part.c);
  part.out = endDirection(part.c);
  return part;
}

}  // namespace

void appendSmoothParts(Cubic const& c, std::size_t segment, double magnitude,
                       std::vector<SmoothPart>& parts) {
  auto const axis = axisOf(c, kStraight * magnitude);
  SmoothPart rest = {c, segment, 0.0, 1.0, {}, {}, axis};
  for (double const cusp : cuspsOf(c, axis)) {
    SmoothPart part = rest;
    rest.c.split((cusp - rest.t0) / (1.0 - rest.t0), part.c, rest.c);
    part.c.p[2] = part.c.p[3];
    rest.c.p[1] = rest.c.p[0];
    part.t1 = rest.t0 = cusp;
    parts.push_back(withDirections(part));
  }
  parts.push_back(withDirections(rest));
}

}  // namespace crv::internal
