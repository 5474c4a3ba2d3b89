// A part of a segment as the graph of a function over an axis.
#pragma once

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <utility>

namespace crv::internal {

/// A part of a segment: its control points, and the parameters of the segment at its ends; t0 > t1
/// where the part runs against the segment.
struct Part {
  Cubic c;
  double t0, t1;

  double parameter(double s) const { return s == 1.0 ? t1 : t0 + (t1 - t0) * s; }

  void split(double s, Part& left, Part& right) const {
    c.split(s, left.c, right.c);
    left.t0 = t0;
    right.t1 = t1;
    left.t1 = right.t0 = parameter(s);
  }

  Part reversed() const { return {{{c.p[3], c.p[2], c.p[1], c.p[0]}}, t1, t0}; }

  /// The part seen along the axis, a unit vector: x along it, y to its left.
  Part along(Point const& axis, Point const& origin) const {
    Part seen = *this;
    for (Point& p : seen.c.p) p = {dot(axis, p - origin), cross(axis, p - origin)};
    return seen;
  }
};

/// The s in [0, 1] with x(s) = x, x being monotone up to rounding: Newton's method in a bracket.
inline double whereXIs(Cubic const& c, double x) {
  double const x0 = c.p[0].x, x3 = c.p[3].x;
  if (!(x > x0)) return 0.0;
  if (!(x < x3)) return 1.0;
  double const d0 = c.p[1].x - x0, d1 = c.p[2].x - c.p[1].x, d2 = x3 - c.p[2].x;
  double lo = 0.0, hi = 1.0, s = (x - x0) / (x3 - x0);
  constexpr int kMostSteps = 100;  // exhaust any bracket by bisection; Newton's method takes five
  constexpr double kLastStep = 0x1p-53;
  for (int i = 0; i < kMostSteps; ++i) {
    double const r = 1.0 - s;
    double const along = ((d0 * (r * r + r + 1.0) + d1 * ((r + r + 1.0) * s)) + d2 * (s * s)) * s;
    double const value = along - (x - x0);
    if (value > 0.0) {
      hi = s;
    } else {
      lo = s;
    }
    double const slope = 3.0 * ((d0 * (r * r) + d1 * (2.0 * r * s)) + d2 * (s * s));
    double next = s - value / slope;
    if (!(next >= lo && next <= hi)) next = 0.5 * (lo + hi);
    double const step = std::fabs(next - s);
    s = next;
    if (step <= kLastStep) break;
  }
  return s;
}

/// The part between the places where x is lo and hi.
inline Part trimmed(Part const& part, double lo, double hi) {
  Part before, behindLo = part, result, after;
  double const s = whereXIs(part.c, lo);
  if (s > 0.0) part.split(s, before, behindLo);
  double const end = whereXIs(behindLo.c, hi);
  if (end == 1.0) return behindLo;
  behindLo.split(end, result, after);
  return result;
}

}  // namespace crv::internal
