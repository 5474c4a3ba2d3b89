// Two cubic segments whose meetings are searched, with Newton's methods for single points of them.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cmath>

namespace crv::internal {

/// The point at t in Bernstein form: exact at 0 and 1, and within a few roundings elsewhere.
inline Point pointAt(Cubic const& c, double t) {
  double const s = 1.0 - t;
  double const w0 = s * s * s, w1 = 3.0 * s * s * t, w2 = 3.0 * s * t * t, w3 = t * t * t;
  return {(c.p[0].x * w0 + c.p[1].x * w1) + (c.p[2].x * w2 + c.p[3].x * w3),
          (c.p[0].y * w0 + c.p[1].y * w1) + (c.p[2].y * w2 + c.p[3].y * w3)};
}

inline Point derivativeAt(Cubic const& c, double t) {
  double const s = 1.0 - t;
  double const w0 = 3.0 * s * s, w1 = 6.0 * s * t, w2 = 3.0 * t * t;
  return (c.p[1] - c.p[0]) * w0 + (c.p[2] - c.p[1]) * w1 + (c.p[3] - c.p[2]) * w2;
}

inline Point secondDerivativeAt(Cubic const& c, double t) {
  Point const first = c.p[2] - c.p[1] * 2.0 + c.p[0], last = c.p[3] - c.p[2] * 2.0 + c.p[1];
  return (first * (1.0 - t) + last * t) * 6.0;
}

/// The u in [0, 1] near the given one whose point is nearest to p, by Newton's method.
double footOn(Cubic const& c, Point const& p, double u);

/// A pair of parameters with the distance of its two points.
struct FootPair {
  double t, u, distance;
};

struct SegmentPair {
  Cubic const& a;
  Cubic const& b;

  double distanceAt(double t, double u) const { return distance(pointAt(a, t), pointAt(b, u)); }

  /// Newton's method for A(t) = B(u). Returns false if it does not converge to parameters in or
  /// slightly outside [0, 1], or if the directions are parallel.
  bool findCrossing(double& t, double& u) const;

  /// Newton's method for a tangency: parallel directions, with the gap between the points
  /// perpendicular to them. Returns false as above.
  bool findTangency(double& t, double& u) const;

  /// The u in [0, 1] near the given one whose point is nearest to A(t), by Newton's method.
  FootPair footOnB(double t, double u) const;

  /// The same with the segments exchanged.
  FootPair footOnA(double t, double u) const;
};

}  // namespace crv::internal
