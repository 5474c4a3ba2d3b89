#include "crv/positionmap/arrangeBezierCurve.h"

#include "crv/bezier/GxBezier.h"
#include "crv/foundation/GxList.h"
#include "crv/positionmap/PosDiff.h"
#include "crv/positionmap/internal/positionAt.h"

namespace {

// Parameter: a start closer to a joint than this is moved onto it, so that no sliver is split off.
constexpr double kSnapToJointBefore = 0.1;
constexpr double kSnapToJointAfter = 0.9;

void moveFirstToEnd(GxList<GxBezier>& segments) {
  segments.move(0, static_cast<int>(segments.length()) - 1);
}

/// Makes a closed, non-empty curve start at t of segment k or at a joint close by; k counts modulo
/// the number of segments, a negative one as 0.
void rotateCurveStart(GxBezierCurve& curve, long k, double t) {
  GxList<GxBezier>& segments = curve.getSegments();
  long const turns = k > 0 ? k % static_cast<long>(segments.length()) : 0;
  for (long i = 0; i < turns; ++i) moveFirstToEnd(segments);
  if (t <= kSnapToJointBefore) return;
  if (t < kSnapToJointAfter) {
    GxBezier left;
    GxBezier right;
    segments(0).split(left, right, t);
    segments.insert(right, 1);
    segments(0) = left;
  }
  moveFirstToEnd(segments);
}

}  // namespace

void arrangeBezierCurve(GxBezierCurve& curve, GxBezierCurvePosition const& a,
                        GxBezierCurvePosition const& b) {
  if (!curve.isClose()) {
    if (b < a) curve.reverse();
    return;
  }
  rotateCurveStart(curve, b.getSegmentNumber(), b.getTValue());
  // Deliberate: the number of segments after the rotation, the positions as numbered before it.
  int const n = crv::internal::clampedInt(static_cast<long long>(curve.length()));
  if (diff(a, b, 1, n) < diff(b, a, 1, n)) curve.reverse();
}

void arrangeBezierCurve(GxBezierCurve& curve, GxCoord<double> const& pa,
                        GxCoord<double> const& pb) {
  GxBezierCurvePosition a;
  GxBezierCurvePosition b;
  curve.findNearestPointPos(pa, a);
  curve.findNearestPointPos(pb, b);
  arrangeBezierCurve(curve, a, b);
}
