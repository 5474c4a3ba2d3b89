// Walks along a curve, and the order of branches around a point where two curves meet.
#include "crv/accurate/internal/route.h"

#include "crv/accurate/internal/graph.h"

#include <cmath>
#include <utility>

namespace crv::internal {

namespace {

// Halvings after which the exit from a circle is known to the precision of double.
constexpr int kMostHalvings = 50;

// Share of the unit scale: branches are followed no farther than this.
constexpr double kFarthest = 0x1p-6;

// In units of the resolution. Branches are compared on circles: the first one, of radius
// kFirstRadius, contains the places on both curves, and each further one is kGrowth times as large.
// Branches are followed at least to the radius kLeastFarthest. They have separated when they are
// farther apart than kApart, which exceeds 1 to allow for rounding.
constexpr double kFirstRadius = 2.0;
constexpr double kLeastFarthest = 64.0;
constexpr double kApart = 1.0625;
constexpr double kGrowth = 4.0;

// Parameter: Newton's method ends with a step this short.
constexpr double kLastStep = 0x1p-50;

// Units of the largest coordinate: rounding of differences of places.
constexpr double kNoise = 0x1p-50;

// Guard: segments that are points and follow each other.
constexpr int kMostPoints = 8;

bool isNear(Cubic const& c, Point const& centre, double reach) {
  for (Point const& p : c.p) {
    if (!(squaredDistance(p, centre) <= reach * reach)) return false;
  }
  return true;
}

/// The stretch of c from t0 to t1, turned where t0 > t1.
Cubic stretchOf(Cubic const& c, double t0, double t1) {
  Part const whole = {c, 0.0, 1.0};
  double const lo = t0 < t1 ? t0 : t1, hi = t0 < t1 ? t1 : t0;
  Part before, kept, behind;
  whole.split(hi, kept, behind);
  Part result = kept;
  if (lo > 0.0) kept.split(hi > 0.0 ? lo / hi : 0.0, before, result);
  return t0 < t1 ? result.c : result.reversed().c;
}

/// Whether the distance from a point never decreases along a cubic, except by rounding.
bool movesAway(Cubic const& c, Point const& centre) {
  for (int i = 0; i < 3; ++i) {
    Point const edge = c.p[i + 1] - c.p[i];
    double const slack = kNoise * (std::fabs(edge.x) + std::fabs(edge.y));
    for (Point const& p : c.p) {
      if (!(dot(edge, p - centre) >= -slack)) return false;
    }
  }
  return true;
}

/// The point at which a cubic that moves away from the centre of a circle leaves it, if it does.
/// Method: Newton's method in a bracket.
std::optional<Point> onlyExitOf(Cubic const& c, Point const& centre, double radius) {
  double const squaredRadius = radius * radius;
  if (squaredDistance(c.p[3], centre) <= squaredRadius) return std::nullopt;
  double const speed = norm(derivativeAt(c, 0.0));
  double lo = 0.0, hi = 1.0, t = radius < 0.5 * speed ? radius / speed : 0.5;
  for (int i = 0; i < kMostHalvings; ++i) {
    Point const offset = pointAt(c, t) - centre;
    double const value = dot(offset, offset) - squaredRadius;
    if (value > 0.0) {
      hi = t;
    } else {
      lo = t;
    }
    double next = t - value / (2.0 * dot(offset, derivativeAt(c, t)));
    if (!(next > lo && next < hi)) next = 0.5 * (lo + hi);
    double const step = std::fabs(next - t);
    t = next;
    if (step <= kLastStep) break;
  }
  return pointAt(c, t);
}

/// The point at which a cubic first leaves a circle, if it does.
std::optional<Point> exitOf(Cubic const& c, Point const& centre, double radius, int halvings) {
  if (isNear(c, centre, radius)) return std::nullopt;
  bool const isOutside = !(squaredDistance(c.p[0], centre) <= radius * radius);
  if (halvings == 0 || isOutside) return c.p[0];
  if (movesAway(c, centre)) return onlyExitOf(c, centre, radius);
  Cubic left, right;
  c.split(0.5, left, right);
  auto const exit = exitOf(left, centre, radius, halvings - 1);
  return exit ? exit : exitOf(right, centre, radius, halvings - 1);
}

}  // namespace

std::optional<Point> exitOf(Cubic const& c, Point const& centre, double radius) {
  return exitOf(c, centre, radius, kMostHalvings);
}

bool Route::staysNearForwards(Point const& centre, double reach, Place const& p,
                              Place const& q) const {
  std::size_t segment = p.segment;
  double from = p.t;
  for (std::size_t passed = 0; passed <= size(); ++passed) {
    bool const isHere = segment == q.segment && from <= q.t;
    if (!isNear(stretchOf((*this)[segment], from, isHere ? q.t : 1.0), centre, reach)) return false;
    if (isHere) return true;
    if (isLast(segment)) return false;
    segment = next(segment);
    from = 0.0;
  }
  return false;
}

bool Route::staysNear(Point const& centre, double reach, Place const& p, Place const& q) const {
  if (p.segment == q.segment && p.t == q.t) return true;
  return staysNearForwards(centre, reach, p, q) || staysNearForwards(centre, reach, q, p);
}

std::size_t Route::skipPoints(std::size_t segment, bool forward) const {
  for (int i = 0; i < kMostPoints; ++i) {
    Cubic const c = (*this)[segment];
    if (!isNear(c, c.p[0], scale_.resolution)) break;
    segment = forward ? next(segment) : previous(segment);
  }
  return segment;
}

std::optional<Point> Route::exit(Point const& centre, double radius, Place const& from,
                                 bool forward) const {
  std::size_t segment = from.segment;
  double t = from.t;
  for (std::size_t passed = 0; passed <= size(); ++passed) {
    bool const isPassed = forward ? t == 1.0 : t == 0.0;
    if (!isPassed) {
      Cubic const rest = stretchOf((*this)[segment], t, forward ? 1.0 : 0.0);
      if (auto const exit = exitOf(rest, centre, radius)) return exit;
    }
    std::size_t const neighbour = forward ? next(segment) : previous(segment);
    std::size_t const first = forward ? segment : neighbour;
    if (isLast(first) || isGapBehind(first)) return std::nullopt;
    segment = neighbour;
    t = forward ? 0.0 : 1.0;
  }
  return std::nullopt;
}

namespace {

/// Whether v lies in the sector that is swept counter-clockwise from `from` to `to`.
bool isInSector(Point const& from, Point const& to, Point const& v) {
  bool const isReflex = cross(from, to) < 0.0 || (cross(from, to) == 0.0 && dot(from, to) < 0.0);
  bool const isLeftOfFrom = cross(from, v) > 0.0, isRightOfTo = cross(v, to) > 0.0;
  return isReflex ? isLeftOfFrom || isRightOfTo : isLeftOfFrom && isRightOfTo;
}

/// The distance of two exits on a circle of the given radius; the radius itself if they lie more
/// than 90 degrees apart.
double gapOnCircle(Point const& v, Point const& w, double radius) {
  return dot(v, w) > 0.0 ? std::fabs(cross(v, w)) / radius : radius;
}

/// Whether the branches in and out of a second curve leave a place to different sides of the first.
/// `exit(i, radius)` is where a branch leaves the circle of a radius about the place, if it does: 0
/// and 1 are in and out of the first curve, 2 and 3 of the second.
template <class Exit>
bool branchesCross(Point const& centre, double resolution, Exit const& exit) {
  bool doCross = false;
  double const farthest = max(kFarthest, kLeastFarthest * resolution);
  for (double radius = kFirstRadius * resolution; radius <= farthest; radius *= kGrowth) {
    Point branches[4];
    for (int i = 0; i < 4; ++i) {
      auto const place = exit(i, radius);
      if (!place) return doCross;
      branches[i] = *place - centre;
    }
    bool const isInLeft = isInSector(branches[1], branches[0], branches[2]);
    bool const isOutLeft = isInSector(branches[1], branches[0], branches[3]);
    doCross = isInLeft != isOutLeft;
    double gap = radius;
    for (int i = 0; i < 2; ++i) {
      for (int k = 2; k < 4; ++k) gap = min(gap, gapOnCircle(branches[i], branches[k], radius));
    }
    if (gap > kApart * resolution) return doCross;
  }
  return doCross;
}

}  // namespace

bool routesCross(Route const& a, Place const& atA, Route const& b, Place const& atB,
                 double resolution) {
  Point const centre = a.at(atA);
  return branchesCross(centre, resolution, [&](int i, double radius) {
    return i < 2 ? a.exit(centre, radius, atA, i == 1) : b.exit(centre, radius, atB, i == 3);
  });
}

bool segmentsCross(SegmentPair const& pair, double t, double u, double resolution) {
  Point const centre = pointAt(pair.a, t);
  Cubic const branches[] = {stretchOf(pair.a, t, 0.0), stretchOf(pair.a, t, 1.0),
                            stretchOf(pair.b, u, 0.0), stretchOf(pair.b, u, 1.0)};
  return branchesCross(centre, resolution, [&](int i, double radius) {
    return exitOf(branches[i], centre, radius, kMostHalvings);
  });
}

}  // namespace crv::internal
