// Winding numbers of points, which may lie on the curves.
#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/foot.h"
#include "crv/accurate/internal/outlines.h"
#include "crv/accurate/internal/rayCrossings.h"
#include "crv/accurate/internal/scale.h"
#include "crv/accurate/region.h"
#include "crv/foundation/internal/introsort.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace crv {

namespace {

using internal::ArrangedSegment;
using internal::Box;
using internal::Cubic;
using internal::Foot;
using internal::Outlines;

// In units of the resolution: winding numbers next to a point on the curves are computed at this
// distance from the point.
constexpr double kBeside = 8.0;

// Length of the difference of two unit vectors: at kBeside from the point, rounding decides on
// which sides of two such directions a place between them lies.
constexpr double kNarrowSector = 0x1p-13;

bool isNarrow(internal::Point const& v, internal::Point const& w) {
  return squaredDistance(v, w) < kNarrowSector * kNarrowSector;
}

/// Curves and a point, scaled so that the largest coordinate is below 1.
class Surroundings {
 public:
  Surroundings(std::vector<Curve> const& curves, Point const& p) : outlines_(curves, nullptr) {
    internal::Magnitude magnitude;
    magnitude.add(outlines_.magnitude());
    magnitude.add(internal::plain(p));
    isUsable_ = internal::isUsable(magnitude.value());
    int exponent = 0;
    std::frexp(magnitude.value(), &exponent);
    factor_ = std::ldexp(1.0, -exponent);
    resolution_ = internal::kDefaultResolution * magnitude.value() * factor_;
    p_ = internal::plain(p) * factor_;
  }

  bool isUsable() const { return isUsable_ && !outlines_.segments.empty(); }
  bool isOnCurve() const;
  int winding() const;

 private:
  Cubic scaled(ArrangedSegment const& s) const {
    return {{s.c.p[0] * factor_, s.c.p[1] * factor_, s.c.p[2] * factor_, s.c.p[3] * factor_}};
  }
  bool isNear(Cubic const& c, Foot& foot) const;
  std::vector<internal::Point> branches() const;
  int windingAt(internal::Point const& p) const;

  Outlines outlines_;
  bool isUsable_;
  double factor_ = 1.0, resolution_ = 0.0;
  internal::Point p_ = {0.0, 0.0};
};

bool Surroundings::isNear(Cubic const& c, Foot& foot) const {
  Box const b = c.hull();
  double const r = resolution_;
  if (!internal::overlap({b.minX - r, b.minY - r, b.maxX + r, b.maxY + r},
                         {p_.x, p_.y, p_.x, p_.y})) {
    return false;
  }
  // The limit exceeds the resolution, so that its rounding does not matter.
  foot = internal::nearestFoot(c, p_, 4.0 * r * r);
  return foot.squaredDistance <= r * r;
}

bool Surroundings::isOnCurve() const {
  return std::any_of(outlines_.segments.begin(), outlines_.segments.end(),
                     [&](ArrangedSegment const& s) {
                       Foot foot = {};
                       return isNear(scaled(s), foot);
                     });
}

/// The directions in which the curves leave the point, counter-clockwise. One stands for all that
/// are nearly equal.
std::vector<internal::Point> Surroundings::branches() const {
  std::vector<internal::Point> branches;
  // A part that is a point, at an end of a segment, adds none.
  auto const add = [&](Cubic const& c) {
    internal::Point const d = departure(c);
    double const length = std::sqrt(dot(d, d));
    if (length > 0.0) branches.push_back(d * (1.0 / length));
  };
  for (ArrangedSegment const& s : outlines_.segments) {
    Foot foot = {};
    Cubic const c = scaled(s);
    if (!isNear(c, foot)) continue;
    add(internal::part(c, foot.t, 1.0));
    add(reversed(internal::part(c, 0.0, foot.t)));
  }
  internal::introsort(branches, [](auto const& v, auto const& w) {
    bool const isLowV = v.y < 0.0 || (v.y == 0.0 && v.x < 0.0);
    bool const isLowW = w.y < 0.0 || (w.y == 0.0 && w.x < 0.0);
    return isLowV != isLowW ? isLowW : cross(v, w) > 0.0;
  });
  branches.erase(std::unique(branches.begin(), branches.end(), isNarrow), branches.end());
  if (branches.size() > 1 && isNarrow(branches.back(), branches.front())) branches.pop_back();
  return branches;
}

int Surroundings::windingAt(internal::Point const& p) const {
  int winding = 0;
  for (ArrangedSegment const& s : outlines_.segments) {
    Cubic const c = scaled(s);
    winding += internal::crossings(c, p);
    // Closes a gap that is within the resolution.
    internal::Point const next = outlines_.segments[s.next].c.start() * factor_;
    winding += internal::crossings(internal::straight(c.end(), next), p);
  }
  return winding;
}

int Surroundings::winding() const {
  int winding = windingAt(p_);
  if (!isOnCurve()) return winding;
  std::vector<internal::Point> const directions = branches();
  if (!directions.empty()) winding = 0;  // else there are only curves that are points
  for (std::size_t i = 0; i < directions.size(); ++i) {
    internal::Point const v = directions[i], w = directions[(i + 1) % directions.size()];
    // The bisector of the sector from v to w, which is the whole circle if there is one direction.
    internal::Point middle = {w.y - v.y, v.x - w.x};
    double const length = std::sqrt(dot(middle, middle));
    middle = directions.size() > 1 ? middle * (1.0 / length) : v * -1.0;
    int const beside = windingAt(p_ + middle * (kBeside * resolution_));
    if (std::abs(beside) > std::abs(winding)) winding = beside;
  }
  return winding;
}

}  // namespace

int winding(std::vector<Curve> const& curves, Point const& p) {
  Surroundings const surroundings(curves, p);
  return surroundings.isUsable() ? surroundings.winding() : 0;
}

bool contains(std::vector<Curve> const& curves, Point const& p, FillRule rule) {
  Surroundings const surroundings(curves, p);
  if (!surroundings.isUsable()) return false;
  if (surroundings.isOnCurve()) return true;
  int const winding = surroundings.winding();
  return rule == FillRule::nonZero ? winding != 0 : winding % 2 != 0;
}

}  // namespace crv
