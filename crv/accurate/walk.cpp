#include "crv/accurate/walk.h"

#include "crv/accurate/arcLength.h"
#include "crv/accurate/internal/chain.h"

#include <algorithm>
#include <cmath>

namespace crv {
namespace {

using internal::Chain;
using internal::Cubic;
using internal::Place;
using P = internal::Point;

// Relative to the largest coordinate: bounds the rounding error of a distance.
constexpr double kChordNoise = 8 * internal::kRounding;

// Relative to the length of a lap: the finest accuracy of a length.
constexpr double kLeastAccuracy = 64 * internal::kRounding;

// Halvings after which a stretch is below rounding.
constexpr int kMaxDepth = 60;

std::optional<Position> walkLength(Curve const& curve, Position const& from, double distance,
                                   double accuracy) {
  // Each end of the walk takes a quarter of the accuracy; the other half is the tolerance for walks
  // that end just beyond the curve.
  CurveLengths const lengths(curve, 0.25 * accuracy);
  double const total = lengths.total();
  double const start = lengths.lengthAt(from);
  double const target = start + distance;
  if (!(std::fabs(target) >= 0.0) || !std::isfinite(target)) return std::nullopt;
  if (curve.strictIsClosed() != 0) {
    if (!(total > 0.0)) return std::nullopt;
    return lengths.positionAt(target);
  }
  double const allowed = max(0.5 * accuracy, kLeastAccuracy * total);
  if (target < -allowed || target > total + allowed) return std::nullopt;
  return lengths.positionAt(target);
}

/// A stretch of a segment, relative to the point where the walk began.
struct Stretch {
  Cubic cubic;
  double t0, t1;
};

/// Finds the first point of a stretch at a distance from the origin.
class ChordSearch {
 public:
  ChordSearch(double distance, double noise) : distance_(distance), noise_(noise) {}

  /// The parameter, or nothing. The stretch must begin nearer than the distance.
  std::optional<double> first(Stretch const& stretch, int depth = 0) const {
    P const* p = stretch.cubic.p;
    double const end = norm(p[3]);
    double const farthest = max(max(norm(p[1]), norm(p[2])), end);
    if (farthest < distance_ - noise_) return std::nullopt;
    double const size = max(norm(p[1] - p[0]), max(norm(p[2] - p[0]), norm(p[3] - p[0])));
    if (depth >= kMaxDepth || size < noise_) return stretch.t0;
    if (end >= distance_ && recedes(stretch.cubic)) return crossing(stretch);
    Stretch left = {{}, stretch.t0, 0.5 * (stretch.t0 + stretch.t1)};
    Stretch right = {{}, left.t1, stretch.t1};
    stretch.cubic.split(0.5, left.cubic, right.cubic);
    auto const found = first(left, depth + 1);
    return found ? found : first(right, depth + 1);
  }

 private:
  /// True if the distance certainly increases along the whole cubic.
  static bool recedes(Cubic const& c) {
    P const e0 = c.p[1] - c.p[0];
    P const e1 = c.p[2] - c.p[1];
    P const e2 = c.p[3] - c.p[2];
    return dot(c.p[0], e0) >= 0.0 && 2.0 * dot(c.p[0], e1) + 3.0 * dot(c.p[1], e0) >= 0.0 &&
           dot(c.p[0], e2) + 6.0 * dot(c.p[1], e1) + 3.0 * dot(c.p[2], e0) >= 0.0 &&
           3.0 * dot(c.p[1], e2) + 6.0 * dot(c.p[2], e1) + dot(c.p[3], e0) >= 0.0 &&
           3.0 * dot(c.p[2], e2) + 2.0 * dot(c.p[3], e1) >= 0.0 && dot(c.p[3], e2) >= 0.0;
  }

  /// The only point at the distance, by false position, with bisection at every third step.
  double crossing(Stretch const& stretch) const {
    double low = 0.0;
    double high = 1.0;
    double atLow = norm(stretch.cubic.start()) - distance_;
    double atHigh = norm(stretch.cubic.end()) - distance_;
    if (atHigh <= 0.0) return stretch.t1;
    for (int step = 0; step < 2 * kMaxDepth; ++step) {
      bool const isSecant = step % 3 != 2 && atLow < 0.0;
      double const u =
          isSecant ? low - atLow * ((high - low) / (atHigh - atLow)) : 0.5 * (low + high);
      if (!(u > low && u < high)) break;
      double const at = norm(stretch.cubic.point(u)) - distance_;
      (at < 0.0 ? low : high) = u;
      (at < 0.0 ? atLow : atHigh) = at;
      if (at == 0.0) break;
    }
    double const u = -atLow < atHigh ? low : high;
    return stretch.t0 + (stretch.t1 - stretch.t0) * u;
  }

  double distance_;
  double noise_;
};

/// The stretch of a segment from t0 to t1, in either direction, relative to a point.
Stretch stretchOf(Cubic const& cubic, double t0, double t1, P const& origin) {
  Stretch stretch = {cubic, t0, t1};
  Cubic rest;
  Cubic& c = stretch.cubic;
  double const low = min(t0, t1);
  double const high = max(t0, t1);
  if (high < 1.0) Cubic(c).split(high, c, rest);
  if (low > 0.0) Cubic(c).split(low / high, rest, c);
  if (t0 > t1) {
    std::swap(c.p[0], c.p[3]);
    std::swap(c.p[1], c.p[2]);
  }
  for (P& p : c.p) p = p - origin;
  return stretch;
}

std::optional<Position> walkChord(Chain const& chain, Place const& from, double distance) {
  long const n = static_cast<long>(chain.size());
  P const origin = chain.segments[from.segment].point(from.t);
  internal::Magnitude magnitude;
  magnitude.add(chain.magnitude());
  bool const isForward = distance > 0.0;
  ChordSearch const search(std::fabs(distance), kChordNoise * magnitude.value());
  double const end = isForward ? 1.0 : 0.0;
  long k = static_cast<long>(from.segment);
  double t = from.t;
  // One lap; on a closed curve it ends with the part of the first segment before the start.
  for (long count = 0; count <= n; ++count) {
    bool const isBack = count == n;
    if (isBack && !chain.closed) break;
    double const last = isBack ? from.t : end;
    if (t != last) {
      Stretch const stretch =
          stretchOf(chain.segments[static_cast<std::size_t>(k)], t, last, origin);
      bool const isBeyond = norm(stretch.cubic.start()) >= std::fabs(distance) && count > 0;
      auto const found = isBeyond ? std::optional<double>(t) : search.first(stretch);
      if (found) return chain.positionOf(static_cast<std::size_t>(k), *found);
    }
    k += isForward ? 1 : -1;
    if (!chain.closed && (k < 0 || k >= n)) break;
    k = (k + n) % n;
    t = isForward ? 0.0 : 1.0;
  }
  return std::nullopt;
}

}  // namespace

std::optional<Position> walk(Curve const& curve, Position const& from, double distance,
                             Measure measure, double accuracy) {
  bool const isFinite = distance - distance == 0.0 && accuracy == accuracy;
  Chain const chain(curve);
  auto const place = chain.placeOf(from);
  if (!place || !isFinite || !internal::isUsable(chain.magnitude())) return std::nullopt;
  if (measure == Measure::chord) {
    return distance != 0.0 ? walkChord(chain, *place, distance) : std::nullopt;
  }
  if (distance == 0.0) return chain.positionOf(place->segment, place->t);
  return walkLength(curve, from, distance, accuracy);
}

}  // namespace crv
