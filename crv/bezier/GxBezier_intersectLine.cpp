// Crossings with a straight line. In general they are the roots of the segment's distance from the
// line, which is a cubic in t. For a segment that is itself straight, two lines are crossed, which
// may overlap.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/powerForm.h"
#include "crv/foundation/internal/solvers.h"
#include "crv/foundation/solvers.h"
#include "crv/foundation/tolerance.h"

#include <utility>

using crv::internal::Cubic;
using crv::internal::dot;
using crv::internal::Point;
using crv::internal::PowerForm;
using Vector = GxVector<double>;

namespace {

// Curve units: inner control points no farther from the chord make a straight segment.
constexpr double kStraight = 1e-9;

// Squared curve units: a line or a chord whose squared length is smaller has no direction, and two
// of them whose cross product is smaller are parallel.
constexpr double kNoDirection = 1e-9;
constexpr double kParallel = 1e-9;

// Parameter: values this close to 0 or 1 become 0 or 1.
constexpr double kAtEnd = kZeroTolerance;

// Curve units: a cubic lies on the axis when all four coefficients are smaller.
constexpr double kOnAxis = kZeroTolerance;

// Parameters that lie in [0, 1] once they are snapped.
constexpr crv::internal::Interval kSnappedRange = {-kAtEnd, 1.0 + kAtEnd};

double snapped(double t) {
  if (IS_ZERO(t, kAtEnd)) return 0.0;
  return IS_EQUAL(t, 1.0, kAtEnd) ? 1.0 : t;
}

bool isInRange(double t) { return 0.0 <= t && t <= 1.0; }

double clamped(double t) { return t <= 0.0 ? 0.0 : min(t, 1.0); }

/// The position of p along the line from a to a + v: 0 at a, 1 at a + v.
double positionOn(GxCoord<double> const& a, Vector const& v, GxCoord<double> const& p) {
  return ((p - a) * v) / (v * v);
}

/// The parameter of a straight segment at p, which lies at this position along its chord. Between
/// the ends the nearest point is searched, since the segment need not be parametrised evenly.
double chordToParameter(GxBezier const& s, double position, GxCoord<double> const& p) {
  if (position == 0.0 || position == 1.0) return position;
  double t = position;
  s.findNearestPointTValue(p, t);
  return t;
}

void append(GxList<double>& segmentParams, GxList<double>& lineParams, double t, double position) {
  segmentParams.add(t);
  lineParams.add(position);
}

/// A line segment from a to b, with direction u = b - a.
struct Line {
  GxCoord<double> a;
  GxCoord<double> b;
  Vector u;
};

/// Appends the one crossing of a straight segment, with chord w, and a line.
int crossStraight(GxBezier const& s, Vector const& w, Line const& line,
                  GxList<double>& segmentParams, GxList<double>& lineParams) {
  Vector const lineNormal = line.u.ortho(1);
  Vector const chordNormal = w.ortho(1);
  double const onChord = snapped((lineNormal * (line.a - s[0])) / (lineNormal * w));
  if (!isInRange(onChord)) return 0;
  // Deliberate: the position along the line is not snapped.
  double const onLine = (chordNormal * (s[0] - line.a)) / (chordNormal * line.u);
  if (!isInRange(onLine)) return 0;
  append(segmentParams, lineParams, chordToParameter(s, onChord, line.a + line.u * onLine), onLine);
  return 1;
}

/// Appends the two ends of the overlap of a straight segment, with chord w, and a parallel line.
int overlapStraight(GxBezier const& s, Vector const& w, Line const& line,
                    GxList<double>& segmentParams, GxList<double>& lineParams) {
  if (!IS_ZERO(w.cross(s[0] - line.a), kParallel)) return 0;
  double chordAtA = snapped(positionOn(s[0], w, line.a));
  double chordAtB = snapped(positionOn(s[0], w, line.b));
  double const lineAtStart = positionOn(line.a, line.u, s[0]);
  double const lineAtEnd = positionOn(line.a, line.u, s[3]);
  if (!isInRange(chordAtA) && !isInRange(chordAtB) && !isInRange(lineAtStart) &&
      !isInRange(lineAtEnd)) {
    return 0;
  }
  // Deliberate: the sign of a cross product that is nearly zero decides the order of the ends.
  if (w.cross(line.u) < 0.0) std::swap(chordAtA, chordAtB);
  auto const appendEnd = [&](double onChord, double onLine) {
    double const position = clamped(onLine);
    double const t = chordToParameter(s, clamped(onChord), line.a + line.u * position);
    append(segmentParams, lineParams, t, position);
  };
  appendEnd(chordAtA, lineAtStart);
  appendEnd(chordAtB, lineAtEnd);
  return 1;
}

/// Does the same as linearProcessing with a segment that is known to be a line.
int meetStraight(GxBezier const& s, GxCoord<double> const& a, GxCoord<double> const& b,
                 GxList<double>& segmentParams, GxList<double>& lineParams) {
  if (s.isAPoint(kStraight)) return 0;
  Line const line{a, b, b - a};
  Vector const w = s[3] - s[0];
  if (IS_ZERO(w.squaredLength(), kNoDirection) || IS_ZERO(line.u.squaredLength(), kNoDirection)) {
    return 0;
  }
  return IS_ZERO(w.cross(line.u), kParallel)
             ? overlapStraight(s, w, line, segmentParams, lineParams)
             : crossStraight(s, w, line, segmentParams, lineParams);
}

}  // namespace

int GxBezier::findYCStrongIntersection(GxCoord<double> a, GxCoord<double> b,
                                       GxList<double>& segmentParams,
                                       GxList<double>& lineParams) const {
  Point const start = crv::internal::plain(a);
  Point const v = crv::internal::plain(b) - start;
  double const squaredLength = dot(v, v);
  if (IS_ZERO(squaredLength, kNoDirection)) return 0;
  if (isALine(kStraight)) return meetStraight(*this, a, b, segmentParams, lineParams);

  Cubic const s = crv::internal::cubic(*this);
  Point const normal = {-v.y, v.x};
  PowerForm const x = crv::internal::powerFormOfX(*this);
  PowerForm const y = crv::internal::powerFormOfY(*this);
  double roots[3];
  int const count = crv::internal::cubicRootsIn(kSnappedRange, dot(normal, {x.a, y.a}),
                                                dot(normal, {x.b, y.b}), dot(normal, {x.c, y.c}),
                                                dot(normal, {x.d - start.x, y.d - start.y}), roots);
  for (int i = 0; i < count; ++i) {
    double const t = snapped(roots[i]);
    if (!isInRange(t)) continue;
    double const position = dot(s.point(t) - start, v) / squaredLength;
    if (isInRange(position)) append(segmentParams, lineParams, t, position);
  }
  return static_cast<int>(lineParams.length());
}

int GxBezier::linearProcessing(GxCoord<double> a, GxCoord<double> b, GxList<double>& segmentParams,
                               GxList<double>& lineParams) const {
  return isALine(kStraight) ? meetStraight(*this, a, b, segmentParams, lineParams) : 0;
}

void intersectBezierWithXAxis(GxCoord<double> const& p0, GxCoord<double> const& p1,
                              GxCoord<double> const& p2, GxCoord<double> const& p3, int& count,
                              double& r1, double& r2, double& r3, double tol) {
  double const y0 = p0.yval();
  double const y1 = p1.yval();
  double const y2 = p2.yval();
  double const y3 = p3.yval();
  // Exact form: not the power form of the other operations.
  double const a = -y0 + 3.0 * y1 - 3.0 * y2 + y3;
  double const b = 3.0 * (y0 - 2.0 * y1 + y2);
  double const c = 3.0 * (y1 - y0);
  double const d = y0;
  auto const isZero = [](double k) { return IS_ZERO(k, kOnAxis); };
  double roots[3];
  int found = cubicRoots(a, b, c, d, roots);
  if (found == 0 && isZero(a) && isZero(b) && isZero(c) && isZero(d)) {
    roots[0] = 0.0;
    roots[1] = 1.0;
    found = 2;
  }
  // The roots are in ascending order, and snapping keeps it.
  double* const outputs[3] = {&r1, &r2, &r3};
  count = 0;
  for (int i = 0; i < found; ++i) {
    double r = roots[i];
    if (-tol < r && r < 0.0) r = 0.0;
    if (1.0 < r && r < 1.0 + tol) r = 1.0;
    if (isInRange(r)) *outputs[count++] = r;
  }
}
