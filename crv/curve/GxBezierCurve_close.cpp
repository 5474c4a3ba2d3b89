// Closing a curve with a straight segment, or trimming the ends first where they overlap or nearly
// meet.
#include "crv/curve/GxBezierCurve.h"

#include "crv/curve/internal/straightSegment.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

using crv::internal::straightSegment;

namespace {

// Curve units: ends farther apart than this get a closing segment.
constexpr double kBridgeDistance = 0.1;

// Curve units: a segment this thin encloses nothing.
constexpr double kThin = 0.05;

// Squared curve units, from an end to the end segment on the other side: up to the first the ends
// overlap, beyond the second they lie apart, and in between both ends must come within the third
// for both to be trimmed.
constexpr double kOverlap = 100.0;
constexpr double kApart = 200.0;
constexpr double kBothNear = 400.0;

/// The point of an end segment nearest to the curve's other end.
struct Approach {
  double t = 0.0;
  GxCoord<double> point;
  double squaredDistance;

  Approach(GxBezier const& segment, GxCoord<double> const& otherEnd) {
    segment.findNearestPointTValue(otherEnd, t);
    point = segment.bValue(t);
    squaredDistance = otherEnd.squaredDistance(point);
  }

  bool isAtStart() const { return IS_ZERO(t, kZeroTolerance); }
  bool isAtEnd() const { return IS_ZERO(1.0 - t, kZeroTolerance); }
  bool isInside() const { return 0.0 < t && t < 1.0; }
};

void bridgeStraight(GxList<GxBezier>& segments) {
  GxCoord<double> const end = segments(segments.length() - 1)[3];
  segments.add(straightSegment(end, segments(0)[0]));
}

void cutBefore(GxBezier& segment, double t) {
  GxBezier left;
  segment.split(left, segment, t);
}

void cutAfter(GxBezier& segment, double t) {
  GxBezier right;
  segment.split(right, t);
}

/// Closes the curve at the nearer contact, where an end nearly touches the segment at the other
/// end.
void trimOneEnd(GxList<GxBezier>& segments, Approach const& toFirst, Approach const& toLast) {
  unsigned const n = segments.length();
  GxCoord<double> const start = segments(0)[0];
  GxCoord<double> const end = segments(n - 1)[3];
  if (toFirst.isAtStart() && toLast.isAtEnd()) {
    bridgeStraight(segments);
  } else if (toFirst.squaredDistance >= toLast.squaredDistance) {
    if (toLast.isAtStart()) {
      segments(n - 1) = straightSegment(segments(n - 2)[3], start);
    } else {
      segments.add(straightSegment(toLast.point, start));
      cutAfter(segments(n - 1), toLast.t);
    }
  } else if (toFirst.isAtEnd()) {
    segments(0) = straightSegment(end, segments(1)[0]);
  } else {
    segments.add(straightSegment(end, toFirst.point));
    cutBefore(segments(0), toFirst.t);
  }
}

/// Trims both ends, which overshoot moderately, and bridges the gap.
void trimBothEnds(GxList<GxBezier>& segments, Approach const& toFirst, Approach const& toLast) {
  unsigned const last = segments.length() - 1;
  segments.add(straightSegment(toLast.point, toFirst.point));
  if (toLast.isInside()) {
    cutAfter(segments(last), toLast.t);
  } else if (toLast.isAtStart()) {
    segments.remove(static_cast<int>(last));
  }
  if (toFirst.isInside()) {
    cutBefore(segments(0), toFirst.t);
  } else if (toFirst.isAtEnd()) {
    segments.remove(0);
  }
}

void bridgeNicely(GxList<GxBezier>& segments) {
  unsigned const n = segments.length();
  Approach const toLast(segments(n - 1), segments(0)[0]);
  Approach const toFirst(segments(0), segments(n - 1)[3]);
  double const nearer = min(toFirst.squaredDistance, toLast.squaredDistance);
  double const farther = max(toFirst.squaredDistance, toLast.squaredDistance);
  if (n == 1 || nearer > kApart) {
    bridgeStraight(segments);
  } else if (nearer <= kOverlap) {
    trimOneEnd(segments, toFirst, toLast);
  } else if (farther > kBothNear) {
    bridgeStraight(segments);
  } else {
    trimBothEnds(segments, toFirst, toLast);
  }
}

/// Sets the closed flag, and calls bridge for ends that lie apart.
int close(GxBezierCurve& curve, void (*bridge)(GxList<GxBezier>&)) {
  if (curve.strictIsClosed()) return 1;
  GxList<GxBezier>& segments = curve.getSegments();
  unsigned const n = segments.length();
  if (n == 0) return 0;
  bool const enclosesNothing =
      n == 1 && (segments(0).isAPoint(kThin) || segments(0).isALine(kThin));
  if (!isEqual(segments(n - 1)[3], segments(0)[0], kBridgeDistance)) bridge(segments);
  // Deliberate: closed even if it encloses nothing.
  curve.setStrictIsClosed(1);
  return !enclosesNothing;
}

}  // namespace

int GxBezierCurve::makeClosedCurve() { return close(*this, bridgeStraight); }

int GxBezierCurve::makeNiceClosedCurve() { return close(*this, bridgeNicely); }
