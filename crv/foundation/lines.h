// Crossings, distances, angles and tests of points and straight lines.
#pragma once

#include "crv/export.h"
#include "crv/foundation/GxCoord.h"

#include <cmath>

/// Crosses the line through a1, a2 with the line through b1, b2. Tolerances and distances here and
/// below are in curve units.
///   0  they meet; the crossing is in out
///   1  parallel, degenerate or not a number; out is left as it was
CRV_API int intersect(GxCoord<double>* out, GxCoord<double> const& a1, GxCoord<double> const& a2,
                      GxCoord<double> const& b1, GxCoord<double> const& b2);
/// The same with a reference.
CRV_API int intersect(GxCoord<double>& out, GxCoord<double> const& a1, GxCoord<double> const& a2,
                      GxCoord<double> const& b1, GxCoord<double> const& b2);

/// 1 when p lies on the segment from a to b: no farther from it than tol, tol included.
inline int pointOnLineSegment(GxCoord<double> const& p, GxCoord<double> const& a,
                              GxCoord<double> const& b, double tol);

/// 1 when p lies no farther than tol, tol included, from the unlimited line through a and b, or
/// from a when a and b coincide.
CRV_API int quickCheckPointOnLine(GxCoord<double> const& p, GxCoord<double> const& a,
                                  GxCoord<double> const& b, double tol);

/// 1 when p and q are no farther apart than tol, tol included: equal points are equal at 0.
inline int isEqual(GxCoord<double> const& p, GxCoord<double> const& q, double tol);

/// The point of the segment from a to b nearest to p: the foot of the perpendicular, or the end
/// beyond which it falls.
inline GxCoord<double> closestToLineSegment(GxCoord<double> const& a, GxCoord<double> const& b,
                                            GxCoord<double> const& p);

/// The distance from p to the segment from a to b.
inline double distanceToLineSegment(GxCoord<double> const& a, GxCoord<double> const& b,
                                    GxCoord<double> const& p);

namespace crv {

/// The angle at b from the direction of a to the direction of c, in radians in [-pi, pi],
/// counter-clockwise positive; where a equals b, from the x direction.
CRV_API double angle(GxCoord<double> const& a, GxCoord<double> const& b, GxCoord<double> const& c);

}  // namespace crv

#ifndef CRV_NO_GLOBAL_NAMES
using crv::angle;
#endif

/// The turn at b on the polyline a, b, c: 1 counter-clockwise, -1 clockwise, 0 straight (exactly)
/// or not a number.
CRV_API int Are3PointsCCW(GxCoord<double> const& a, GxCoord<double> const& b,
                          GxCoord<double> const& c);

/// 1 when p lies in the box with these bounds, each widened by tol and included.
CRV_API int isPointInBox(GxCoord<double> const& p, double minX, double minY, double maxX,
                         double maxY, double tol);

/// Moves both points onto their midpoint.
CRV_API void pointsAverage(GxCoord<double>& p, GxCoord<double>& q);

// ---- Inline, because inner loops call them ------------------------------------------------------

inline int isEqual(GxCoord<double> const& p, GxCoord<double> const& q, double tol) {
  // Curve units. Above this, squaring cannot underflow, so the distance is never below |dx| or |dy|
  // and the quick test is exact.
  constexpr double kSquareIsSafe = 1e-150;
  if (tol > kSquareIsSafe) {
    if (std::fabs(p.xval() - q.xval()) > tol || std::fabs(p.yval() - q.yval()) > tol) return 0;
  }
  return p.distance(q) <= tol;
}

inline GxCoord<double> closestToLineSegment(GxCoord<double> const& a, GxCoord<double> const& b,
                                            GxCoord<double> const& p) {
  GxVector<double> const ab = b - a;
  double const squaredLength = ab.squaredLength();
  if (squaredLength == 0.0) return a;
  double const u = (p - a) * ab / squaredLength;
  if (u <= 0.0) return a;
  if (u >= 1.0) return b;
  return a + ab * u;
}

inline double distanceToLineSegment(GxCoord<double> const& a, GxCoord<double> const& b,
                                    GxCoord<double> const& p) {
  return p.distance(closestToLineSegment(a, b, p));
}

inline int pointOnLineSegment(GxCoord<double> const& p, GxCoord<double> const& a,
                              GxCoord<double> const& b, double tol) {
  return isEqual(p, closestToLineSegment(a, b, p), tol);
}
