// Which segment holds a point, and the point of the curve nearest to one: segment after segment,
// the ends of the curve first.
#include "crv/curve/GxBezierCurve.h"

#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

namespace {

// Squared curve units: a point this near is near enough to look no further.
constexpr double kNearEnough = 0.5;

/// A point of a curve and where it lies.
struct Place {
  GxCoord<double> point;
  double t = 0.0;
  unsigned segment = 0;
};

/// The best of the candidates that nearestOn gives for a segment; returns 1 when segments between
/// the first and the last were looked at, else 0. The list is not empty.
template <class NearestOn>
int searchNearest(GxList<GxBezier> const& segments, GxCoord<double> const& p, NearestOn nearestOn,
                  Place& nearest) {
  unsigned const last = segments.length() - 1;
  double best = 0.0;
  auto const consider = [&](unsigned i, bool always) {
    Place candidate;
    candidate.segment = i;
    nearestOn(segments[i], candidate);
    double const d = p.squaredDistance(candidate.point);
    if (!always && !(d < best)) return;
    best = d;
    nearest = candidate;
  };
  consider(0, true);
  if (last == 0) return 0;
  // Deliberate: the last segment is tried second, and wins over inner ones at the same distance.
  consider(last, false);
  // Deliberate: a squared distance is tested, here and below.
  if (IS_ZERO(best, kNearEnough)) return 0;
  segments.first();
  for (unsigned i = 1; i < last && !IS_ZERO(best, kNearEnough); ++i) consider(i, false);
  return 1;
}

}  // namespace

int GxBezierCurve::whichSegment(GxCoord<double> const& p, double& t, double tolerance) {
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
  segments_.first();
  for (unsigned i = 0; i < n; ++i) {
    if (segments_(i).findTValue(p, t, tolerance)) return static_cast<int>(i);
  }
  return -1;
}

int GxBezierCurve::findNearestPoint(GxCoord<double> const& p, GxCoord<double>& nearest) {
  if (segments_.length() == 0) return -1;
  auto const nearestOn = [&p](GxBezier& segment, Place& place) {
    segment.findNearestPoint(p, place.point);
  };
  Place place;
  int const innerTried = searchNearest(segments_, p, nearestOn, place);
  nearest = place.point;
  return innerTried;
}

int GxBezierCurve::findNearestPointPos(GxCoord<double> const& p, GxBezierCurvePosition& pos) {
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
