// Parts of a cubic, reversed cubics and straight ones. The blossom gives each control point of a
// part independently of the others.
#pragma once

#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

inline Point mixed(Point const& p, Point const& q, double t) { return p * (1.0 - t) + q * t; }

/// The blossom of a cubic: symmetric in r, s and t, and the point at t where they are equal.
inline Point blossom(Cubic const& c, double r, double s, double t) {
  Point const middle = mixed(c.p[1], c.p[2], r);
  Point const left = mixed(mixed(c.p[0], c.p[1], r), middle, s);
  Point const right = mixed(middle, mixed(c.p[2], c.p[3], r), s);
  return mixed(left, right, t);
}

inline Point blossomPoint(Cubic const& c, double t) {
  if (t == 0.0) return c.start();
  if (t == 1.0) return c.end();
  return blossom(c, t, t, t);
}

/// The part of a cubic between two parameters; an end of the part that is an end of the cubic has
/// the same bits.
inline Cubic part(Cubic const& c, double from, double to) {
  if (from == 0.0 && to == 1.0) return c;
  return {{blossomPoint(c, from), blossom(c, from, from, to), blossom(c, from, to, to),
           blossomPoint(c, to)}};
}

/// The cubic with its ends moved to points nearby; each handle moves with its end.
inline Cubic withEnds(Cubic const& c, Point const& start, Point const& end) {
  return {{start, c.p[1] + (start - c.p[0]), c.p[2] + (end - c.p[3]), end}};
}

/// A straight cubic whose arc length is proportional to the parameter.
inline Cubic straight(Point const& p, Point const& q) {
  Point const third = q * (1.0 / 3.0) - p * (1.0 / 3.0);
  return {{p, p + third, q - third, q}};
}

/// The direction in which a cubic leaves its start: to the first control point off it.
inline Point departure(Cubic const& c) {
  for (int i = 1; i < 3; ++i) {
    Point const d = c.p[i] - c.p[0];
    if (dot(d, d) > 0.0) return d;
  }
  return c.p[3] - c.p[0];
}

inline Cubic reversed(Cubic const& c) { return {{c.p[3], c.p[2], c.p[1], c.p[0]}}; }

}  // namespace crv::internal
