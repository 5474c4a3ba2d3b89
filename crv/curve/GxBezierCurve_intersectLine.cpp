// The first crossing with a line on a walk from a position. Each segment is transformed into the
// frame of the line, in which its crossings are the roots of its y coordinate.
#include "crv/curve/GxBezierCurve.h"

#include "crv/foundation/Gx2DMatrix.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace {

// Squared length of a direction: a shorter direction is taken as the x direction.
constexpr double kNoSquaredLength = 1e-9;

// Parameter: how far outside its segment a crossing may lie in the search with the end point check.
constexpr double kEndpointRootTolerance = 1e-8;

// Curve units: the end of a curve this close to the line lies on it.
constexpr double kEndOnLine = 0.001;

/// Heights above the line through p along v, in units of |v|.
struct HeightFrame {
  GxCoord<double> p;
  double a;
  double b;

  HeightFrame(GxCoord<double> const& origin, GxVector<double> const& v) : p(origin) {
    GxVector<double> const w = v.ortho(1);
    double const det = w.yval() * v.xval() - w.xval() * v.yval();
    bool const none = IS_ZERO(det, kNoSquaredLength);
    a = none ? 0.0 : -v.yval() / det;
    b = none ? 1.0 : v.xval() / det;
  }

  GxCoord<double> operator()(GxCoord<double> const& q) const {
    return {0.0, a * (q.xval() - p.xval()) + b * (q.yval() - p.yval())};
  }
};

/// Coordinates along v and across it, relative to p; along x and y if v has no direction.
struct MatrixFrame {
  GxCoord<double> p;
  Gx2DMatrix<double> toLine;

  MatrixFrame(GxCoord<double> const& origin, GxVector<double> const& v) : p(origin) {
    GxVector<double> const w = v.ortho(1);
    Gx2DMatrix<double> fromLine;
    fromLine.set(0, 0, v.xval());
    fromLine.set(1, 0, v.yval());
    fromLine.set(0, 1, w.xval());
    fromLine.set(1, 1, w.yval());
    toLine.set(0, 0, 1.0);
    toLine.set(1, 1, 1.0);
    fromLine.invert(toLine);
  }

  GxCoord<double> operator()(GxCoord<double> const& q) const {
    GxVector<double> const d = q - p;
    return toLine * GxCoord<double>(d.xval(), d.yval());
  }
};

/// The parameters, ascending, at which a segment meets the x axis of a frame.
struct Crossings {
  int count = 0;
  double t[3] = {};

  template <class Frame>
  Crossings(GxBezier const& s, Frame const& frame, double tolerance) {
    intersectBezierWithXAxis(frame(s[0]), frame(s[1]), frame(s[2]), frame(s[3]), count, t[0], t[1],
                             t[2], tolerance);
  }

  /// The first crossing met at or beyond a parameter, or null.
  double const* firstFrom(double start, bool forward) const {
    for (int i = 0; i < count; ++i) {
      double const* const r = &t[forward ? i : count - 1 - i];
      if (forward ? start <= *r : *r <= start) return r;
    }
    return nullptr;
  }
};

/// Walks segment by segment from a position until one crosses the x axis of the frame.
template <class Frame>
int walkToCrossing(GxList<GxBezier> const& segments, Frame const& frame,
                   GxBezierCurvePosition const& from, bool forward, double tolerance,
                   GxBezierCurvePosition& result) {
  long const n = static_cast<long>(segments.length());
  long k = from.getSegmentNumber();
  double start = from.getTValue();
  if (k == n && !forward) {
    start = 1.0;
    --k;
  }
  for (; 0 <= k && k < n; k += forward ? 1 : -1) {
    Crossings const crossings(segments[static_cast<unsigned>(k)], frame, tolerance);
    if (double const* const t = crossings.firstFrom(start, forward)) {
      result = GxBezierCurvePosition(static_cast<int>(k), *t);
      return 0;
    }
    start = forward ? 0.0 : 1.0;
  }
  return -1;
}

}  // namespace

int GxBezierCurve::findFirstGeometricLineIntersection(
    GxCoord<double> const& p, GxVector<double> const& v, GxBezierCurvePosition const& from,
    GxBezierCurvePosition const& towards, GxBezierCurvePosition& result, double tolerance) const {
  return walkToCrossing(segments_, HeightFrame(p, v), from, from < towards, tolerance, result);
}

int GxBezierCurve::findFirstGeometricLineIntersectionEx(
    GxCoord<double> const& p, GxVector<double> const& v, GxBezierCurvePosition const& from,
    GxBezierCurvePosition const& towards, GxBezierCurvePosition& result, double tolerance) const {
  return walkToCrossing(segments_, MatrixFrame(p, v), from, from < towards, tolerance, result);
}

int GxBezierCurve::findFirstGeometricLineIntersectionWithEndpointCheck(
    GxCoord<double> const& p, GxVector<double> const& v, GxBezierCurvePosition const& from,
    GxBezierCurvePosition const& towards, GxBezierCurvePosition& result) const {
  unsigned const n = segments_.length();
  if (n == 0) return -1;
  bool const forward = from < towards;
  if (findFirstGeometricLineIntersection(p, v, from, towards, result, kEndpointRootTolerance) ==
      0) {
    return 0;
  }
  GxCoord<double> const& end = forward ? segments_[n - 1][3] : segments_[0][0];
  if (!(std::fabs(v.cross(end - p)) < kEndOnLine * v.length())) return -1;
  result = forward ? lastPos() : firstPos();
  return 0;
}
