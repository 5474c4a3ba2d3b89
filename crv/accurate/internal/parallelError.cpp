#include "crv/accurate/internal/parallelError.h"

#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/tangent.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

namespace {

// The largest number of halvings of an interval between two stations. About ten are needed at ends
// at which the velocity of the source or of its parallel is zero.
constexpr int kMostHalvings = 16;

// Newton steps for the point of the cubic on the source's normal.
constexpr int kFootSteps = 2;

// Curve units: bounds the rounding error of distances between points whose coordinates are of the
// order of 1.
constexpr double kDistanceRounding = 16.0 * kRounding;

// Parameter between two stations: the largest distance of a foot from the parameter at which the
// search starts.
constexpr double kFarthestReach = 0.25;

// Curve units: if the foot of an end of the cubic is farther than this from the end of the source,
// the parallel was extended or shortened to meet the next one at a joint.
constexpr double kShift = 0x1p-46;

// Curve units per unit of t: a source slower than this at its end has no handle there.
constexpr double kLeastSpeed = 0x1p-40;

// An upper bound of 2 sin(x / 2) / sin x for x up to 30 degrees.
constexpr double kChordOverSine = 1.04;

/// Adds a value to a range.
void include(double value, double& least, double& most) {
  least = min(least, value);
  most = max(most, value);
}

/// The difference of a cubic and its source, and the edges of the source, between two stations.
struct Way {
  Point d[4];
  Point e[3];
};

/// The largest magnitude of the Bernstein coefficients of the dot product of D and a quadratic
/// vector.
double largestProduct(Point const (&d)[4], Point const (&e)[3]) {
  double const c[6] = {
      dot(d[0], e[0]),
      (3.0 * dot(d[1], e[0]) + 2.0 * dot(d[0], e[1])) * 0.2,
      (3.0 * dot(d[2], e[0]) + 6.0 * dot(d[1], e[1]) + dot(d[0], e[2])) * 0.1,
      (dot(d[3], e[0]) + 6.0 * dot(d[2], e[1]) + 3.0 * dot(d[1], e[2])) * 0.1,
      (2.0 * dot(d[3], e[1]) + 3.0 * dot(d[2], e[2])) * 0.2,
      dot(d[3], e[2]),
  };
  double largest = 0.0;
  for (double const x : c) largest = max(largest, std::fabs(x));
  return largest;
}

/// A lower bound of 1/18 of the second derivative, along the source, of the squared distance from a
/// point of the cubic. It holds around the same parameter as far as the foot can be away; the
/// distance is at most farthest, and the first derivative at most six times slope. 0 if no positive
/// bound is found.
double leastConvexity(Way const& way, double farthest, double slope) {
  Point const(&d)[4] = way.d;
  Point const(&e)[3] = way.e;
  Point const f0 = e[1] - e[0], f1 = e[2] - e[1];
  double const e0 = dot(e[0], e[0]), e1 = dot(e[1], e[1]), e2 = dot(e[2], e[2]);
  double const atEnds = min(e0 - (2.0 / 3.0) * dot(d[0], f0), e2 - (2.0 / 3.0) * dot(d[3], f1));
  double const between[3] = {
      dot(e[0], e[1]) - (3.0 * dot(d[1], f0) + dot(d[0], f1)) * (1.0 / 6.0),
      (2.0 * e1 + dot(e[0], e[2]) - dot(d[2], f0) - dot(d[1], f1)) * (1.0 / 3.0),
      dot(e[1], e[2]) - (dot(d[3], f0) + 3.0 * dot(d[2], f1)) * (1.0 / 6.0),
  };
  double const least = min(atEnds, min(between[0], min(between[1], between[2])));
  if (!(slope < kFarthestReach * 1.5 * least)) return 0.0;
  double const reach = slope / (1.5 * least);
  // Outside the interval between the stations edges and their differences may be longer.
  double const edge = 1.0 + 4.0 * reach * (1.0 + reach), difference = 1.0 + 2.0 * reach;
  double const longest = max(e0, max(e1, e2)), change = max(dot(f0, f0), dot(f1, f1));
  Point const second = f1 - f0;
  double const convexity =
      least - reach * (6.0 * edge * difference * std::sqrt(longest * change) +
                       (2.0 / 3.0) * farthest * std::sqrt(dot(second, second)));
  return convexity >= 0.5 * least ? convexity : 0.0;
}

/// If the velocity of the source is zero at an end, divides it by the parameter's distance from
/// that end, so that its direction is defined there, too.
void clearVelocity(Point (&e)[3]) {
  auto const isZero = [](Point const& p) { return p.x == 0.0 && p.y == 0.0; };
  if (isZero(e[0])) {
    e[0] = e[1] * 2.0;
    e[1] = e[1] + e[2] * 0.5;
  } else if (isZero(e[2])) {
    e[2] = e[1] * 2.0;
    e[1] = e[1] + e[0] * 0.5;
  }
}

}  // namespace

Station ParallelError::stationAt(double t, double s) const {
  Point const gap = startGap_ + cubic_.place(s) - source_.place(t);
  return {t, s, gap, source_.velocity(t), cubic_.velocity(s)};
}

/// A bound for the interval between two stations as a whole.
double ParallelError::boundOf(Station const& from, Station const& to) const {
  double const width = to.t - from.t;
  double const dt = width * (1.0 / 3.0), ds = (to.s - from.s) * (1.0 / 3.0);
  Way way;
  Point const first = from.sourceVelocity * dt, last = to.sourceVelocity * dt;
  way.e[0] = first;
  // The polar form of the velocity keeps its direction where the stations are near to each other;
  // the difference of their places would lose it.
  way.e[1] =
      ((from.sourceVelocity + to.sourceVelocity) * 0.5 - source_.c3 * (1.5 * width * width)) * dt;
  way.e[2] = last;
  Point(&d)[4] = way.d;
  d[0] = from.gap;
  d[1] = from.gap + from.velocity * ds - first;
  d[2] = to.gap - to.velocity * ds + last;
  d[3] = to.gap;
  double least = dot(d[0], d[0]), most = least;
  include(dot(d[0], d[1]), least, most);
  include((2.0 * dot(d[0], d[2]) + 3.0 * dot(d[1], d[1])) * 0.2, least, most);
  include((dot(d[0], d[3]) + 9.0 * dot(d[1], d[2])) * 0.1, least, most);
  include((2.0 * dot(d[1], d[3]) + 3.0 * dot(d[2], d[2])) * 0.2, least, most);
  include(dot(d[2], d[3]), least, most);
  include(dot(d[3], d[3]), least, most);
  double const farthest = std::sqrt(most);
  double const beyond = farthest - distance_ + kDistanceRounding;
  if (beyond > tolerance_) return max(beyond, distance_);
  double const nearest = std::sqrt(max(0.0, least));
  // If both stations lie at one point of the source, the parallel there is an arc or part of a
  // join.
  if (from.t == to.t) return max(beyond, distance_ - nearest + kDistanceRounding);
  double slope = largestProduct(d, way.e);
  double const convexity = leastConvexity(way, farthest, slope);
  if (convexity > 0.0) {
    double const lowest = least - slope * slope / convexity;
    double const within = distance_ - std::sqrt(max(0.0, lowest)) + kDistanceRounding;
    if (within <= tolerance_) return max(beyond, within);
  }
  Point(&e)[3] = way.e;
  double const length =
      3.0 * (std::sqrt(dot(e[0], e[0])) + std::sqrt(dot(e[1], e[1])) + std::sqrt(dot(e[2], e[2])));
  double const fromAnywhere = distance_ - nearest + length + kDistanceRounding;
  if (fromAnywhere <= tolerance_) return max(beyond, fromAnywhere);
  // Otherwise the bound also has to cover the deviation of the direction from source to cubic from
  // the normal.
  clearVelocity(e);
  slope = largestProduct(d, e);
  Point const chord = e[0] + e[1] + e[2];
  double const slowest = min(dot(e[0], chord), min(dot(e[1], chord), dot(e[2], chord)));
  double const aside = slope * std::sqrt(dot(chord, chord)) / slowest;
  if (!(slowest > 0.0) || aside > 0.5 * nearest) return max(beyond, distance_);
  double const within = distance_ - nearest + kDistanceRounding;
  return max(beyond, within) + kChordOverSine * aside;
}

/// The parameter of the cubic's point on the source's normal at t; the search starts at s.
double ParallelError::footAt(double t, double s) const {
  Point const velocity = source_.velocity(t), place = source_.place(t) - startGap_;
  for (int i = 0; i < kFootSteps; ++i) {
    double const speed = dot(cubic_.velocity(s), velocity);
    if (speed > 0.0) s += dot(place - cubic_.place(s), velocity) / speed;
  }
  return min(1.0, max(0.0, s));
}

/// The parameter of the foot of the cubic's point minus the parameter of the station, to first
/// order.
double ParallelError::shiftAt(Station const& station) const {
  Point const velocity = station.sourceVelocity;
  double const along = dot(station.gap, velocity), squaredSpeed = dot(velocity, velocity);
  bool const isAtEnd = station.t == 0.0 || station.t == 1.0;
  if (!isAtEnd || squaredSpeed < kLeastSpeed * kLeastSpeed) return 0.0;
  if (!(along * along > kShift * kShift * squaredSpeed)) return 0.0;
  double const convexity = squaredSpeed - dot(station.gap, source_.acceleration(station.t));
  return convexity > 0.0 ? along / convexity : 0.0;
}

double ParallelError::bound(double t0, double t1, std::initializer_list<Station> stations) const {
  Station last = stationAt(t0, 0.0);
  double bound = 0.0;
  auto const goTo = [&](Station const& next) {
    bound = max(bound, between(last, next, kMostHalvings));
    last = next;
  };
  double const shift = shiftAt(last);
  if (shift > 0.0) last = stationAt(t0 + shift, 0.0);
  if (shift < 0.0) goTo(stationAt(t0, footAt(t0, 0.0)));
  for (Station const& station : stations) goTo(station);
  Station const end = stationAt(t1, 1.0);
  double const endShift = shiftAt(end);
  if (endShift > 0.0) goTo(stationAt(t1, footAt(t1, 1.0)));
  goTo(endShift < 0.0 ? stationAt(t1 + endShift, 1.0) : end);
  return bound;
}

double ParallelError::between(Station const& from, Station const& to, int halvings) const {
  double const bound = boundOf(from, to);
  if (bound <= tolerance_ || halvings == 0 || intervalsLeft_ == 0) return bound;
  --intervalsLeft_;
  double const t = 0.5 * (from.t + to.t);
  Station const middle = stationAt(t, min(to.s, max(from.s, footAt(t, 0.5 * (from.s + to.s)))));
  double const squared = dot(middle.gap, middle.gap);
  double const error = std::fabs(std::sqrt(squared) - distance_);
  if (error > tolerance_) return bound;
  double const before = between(from, middle, halvings - 1);
  if (before > tolerance_) return bound;
  return max(before, between(middle, to, halvings - 1));
}

}  // namespace crv::internal
