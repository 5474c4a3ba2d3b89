// The segment on which a point lies, the point of the curve nearest to a given one, and the least
// distance to another curve. The first and the last segment are tried first, then those inner ones
// whose boxes come near enough.
#include "crv/curve/GxBezierCurve.h"

#include "crv/curve/internal/segmentTree.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <limits>

using crv::internal::Box;
using crv::internal::BoxTree;
using crv::internal::Point;
using Segments = crv::internal::SegmentTree<GxBezier const>;

namespace {

// Squared curve units: the search ends at a point this near.
constexpr double kNearEnough = 0.5;

// Parameter: each segment is sampled at eleven parameters; because of rounding the last one may
// differ slightly from 1.
constexpr double kSampleStep = 0.1;
constexpr double kSampleLimit = 1.05;

// Generous bounds on the rounding errors of a segment's points: relative to its coordinates and,
// for subnormal ones, in curve units.
constexpr double kRounding = 0x1p-45;
constexpr double kTiny = 1e-300;

// Curve units: from this size on squares may overflow, and distances may be NaN.
constexpr double kHuge = 1e150;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A point of a curve with its segment and parameter.
struct Place {
  GxCoord<double> point;
  double t = 0.0;
  std::size_t segment = 0;
};

/// Finds the nearest point of several segments; nearestOn(segment, place) finds the nearest point
/// of one segment.
template <class NearestOn>
class NearestSearch {
 public:
  NearestSearch(GxCoord<double> const& p, NearestOn const& nearestOn)
      : p_(p), nearestOn_(nearestOn) {}

  Place const& nearest() const { return nearest_; }
  double squaredDistance() const { return best_; }
  bool isNearEnough() const { return IS_ZERO(best_, kNearEnough); }

  /// Tries segment i; it replaces the best point so far only if it is nearer.
  void consider(GxBezier const& segment, std::size_t i) {
    Place const place = nearestPlace(segment, i);
    double const d = p_.squaredDistance(place.point);
    if (!isFirst_ && !(d < best_)) return;
    isFirst_ = false;
    best_ = d;
    nearest_ = place;
  }

  /// Tries the segments between the first and the last in order, until one is near enough. Skips
  /// those that cannot be nearer than the best point, and those at a squared distance of limit or
  /// more; limit must not be below kNearEnough.
  void considerInner(Segments const& segments, double limit) {
    std::size_t const last = segments.boxes().size() - 1;
    Point const p = crv::internal::plain(p_);
    // No segment farther away than one that is nearby can be the nearest or near enough.
    segments.boxes().visitNear(p, limit, [&](std::size_t i, double /*bound*/) {
      if (i == 0 || i == last) return limit;
      double const d = p_.squaredDistance(nearestPlace(segments[i], i).point);
      if (d < limit) limit = max(d, kNearEnough);
      return 0.0;
    });
    auto const canWin = [&](Box const& box) {
      double const bound = crv::internal::squaredDistance(box, p);
      return bound <= limit && bound < best_ && !isNearEnough();
    };
    segments.boxes().visit(canWin, [&](std::size_t i) {
      if (i != 0 && i != last) consider(segments[i], i);
    });
  }

 private:
  Place nearestPlace(GxBezier const& segment, std::size_t i) const {
    Place place;
    place.segment = i;
    nearestOn_(segment, place);
    return place;
  }

  GxCoord<double> p_;
  NearestOn const& nearestOn_;
  Place nearest_;
  double best_ = kInfinity;
  bool isFirst_ = true;
};

/// Whether squared distances from here cannot overflow.
bool isModerate(double x) { return std::fabs(x) < kHuge; }

/// A box that holds every point of a segment as computed.
Box boxOfPoints(GxBezier const& segment) {
  Box const hull = crv::internal::cubic(segment).hull();
  double const size = max(max(std::fabs(hull.minX), std::fabs(hull.maxX)),
                          max(std::fabs(hull.minY), std::fabs(hull.maxY)));
  if (!isModerate(size)) return {-kInfinity, -kInfinity, kInfinity, kInfinity};
  double const slack = size * kRounding + kTiny;
  return {hull.minX - slack, hull.minY - slack, hull.maxX + slack, hull.maxY + slack};
}

/// Stores the nearest point of a non-empty curve. Returns 1 if segments between the first and the
/// last were tried, else 0.
template <class NearestOn>
int searchNearest(GxList<GxBezier> const& segments, GxCoord<double> const& p,
                  NearestOn const& nearestOn, Place& nearest) {
  unsigned const last = segments.length() - 1;
  NearestSearch<NearestOn> search(p, nearestOn);
  search.consider(segments[0], 0);
  // Deliberate: the last segment is tried second, and wins over inner ones at the same distance.
  if (last != 0) search.consider(segments[last], last);
  // Deliberate: a squared distance is tested.
  bool const isOver = last == 0 || search.isNearEnough();
  if (!isOver) search.considerInner(Segments(segments, boxOfPoints), kInfinity);
  nearest = search.nearest();
  return !isOver;
}

/// The squared distance of the point that findNearestPoint returns; it is exact only if it is below
/// limit, which is at least kNearEnough, and infinite for a p that is not moderate.
double squaredDistance(Segments const& segments, GxCoord<double> const& p, double limit) {
  std::size_t const last = segments.boxes().size() - 1;
  auto const nearestOn = [&p](GxBezier const& segment, Place& place) {
    segment.findNearestPoint(p, place.point);
  };
  auto const isInReach = [&](std::size_t i) {
    return !(crv::internal::squaredDistance(segments.boxes().leaf(i), crv::internal::plain(p)) >=
             limit);
  };
  NearestSearch search(p, nearestOn);
  if (isInReach(0)) search.consider(segments[0], 0);
  if (last != 0 && isInReach(last)) search.consider(segments[last], last);
  if (last > 1 && !search.isNearEnough()) search.considerInner(segments, limit);
  return search.squaredDistance();
}

}  // namespace

int GxBezierCurve::whichSegment(GxCoord<double> const& p, double& t, double tolerance) const {
  unsigned const n = segments_.length();
  if (n == 0) return -1;
  if (isEqual(p, segments_(0)[0], tolerance)) {
    t = 0.0;
    return 0;
  }
  if (isEqual(p, segments_(n - 1)[3], tolerance)) {
    t = 0.0;
    return static_cast<int>(n);
  }
  int i = 0;
  for (GxBezier const& segment : segments_) {
    if (segment.findTValue(p, t, tolerance)) return i;
    ++i;
  }
  return -1;
}

int GxBezierCurve::findNearestPoint(GxCoord<double> const& p, GxCoord<double>& nearest) const {
  if (segments_.length() == 0) return -1;
  auto const nearestOn = [&p](GxBezier const& segment, Place& place) {
    segment.findNearestPoint(p, place.point);
  };
  Place place;
  int const innerTried = searchNearest(segments_, p, nearestOn, place);
  nearest = place.point;
  return innerTried;
}

int GxBezierCurve::findNearestPointPos(GxCoord<double> const& p, GxBezierCurvePosition& pos) const {
  if (segments_.length() == 0) return -1;
  auto const nearestOn = [&p](GxBezier const& segment, Place& place) {
    segment.findNearestPointTValue(p, place.t);
    place.point = segment.bValue(place.t);
  };
  Place place;
  int const innerTried = searchNearest(segments_, p, nearestOn, place);
  pos = GxBezierCurvePosition(static_cast<int>(place.segment), place.t);
  return innerTried;
}

double GxBezierCurve::getMinSqDistance(GxBezierCurve const& other) const {
  if (segments_.length() == 0 || other.segments_.length() == 0) return 0.0;
  double best = segments_[0][0].squaredDistance(other.segments_(0)[0]);
  Segments const segments(other.segments_, boxOfPoints);
  for (GxBezier const& segment : segments_) {
    for (double t = 0.0; t < kSampleLimit; t += kSampleStep) {
      GxCoord<double> const sample = segment.bValue(t);
      bool const isBounded = isModerate(sample.xval()) && isModerate(sample.yval());
      double const limit = isBounded ? max(kNearEnough, best) : kInfinity;
      best = min(best, squaredDistance(segments, sample, limit));
    }
  }
  return best;
}
