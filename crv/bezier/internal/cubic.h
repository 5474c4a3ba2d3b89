// Points, boxes and cubics as plain values, for inner loops.
#pragma once

#include "crv/bezier/GxBezier.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

/// A point or a vector, without the overhead of GxCoord and GxVector.
struct Point {
  double x, y;
  double xval() const { return x; }
  double yval() const { return y; }
};

inline Point operator+(Point const& p, Point const& q) { return {p.x + q.x, p.y + q.y}; }
inline Point operator-(Point const& p, Point const& q) { return {p.x - q.x, p.y - q.y}; }
inline Point operator*(Point const& p, double s) { return {p.x * s, p.y * s}; }

inline double dot(Point const& p, Point const& q) { return p.x * q.x + p.y * q.y; }
inline double cross(Point const& p, Point const& q) { return p.x * q.y - p.y * q.x; }

inline double norm(Point const& v) { return std::sqrt(dot(v, v)); }

inline double squaredDistance(Point const& p, Point const& q) { return dot(p - q, p - q); }
inline double distance(Point const& p, Point const& q) { return std::sqrt(squaredDistance(p, q)); }

/// The point at t of the line from p to q. Exact form: p + (q - p)*t, not (1 - t)*p + t*q.
inline Point between(Point const& p, Point const& q, double t) { return p + (q - p) * t; }

inline bool areEqual(Point const& p, Point const& q) { return p.x == q.x && p.y == q.y; }

inline bool isFinite(Point const& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

inline Point plain(GxCoord<double> const& p) { return {p.xval(), p.yval()}; }
inline GxCoord<double> coord(Point const& p) { return {p.x, p.y}; }

struct Box {
  double minX, minY, maxX, maxY;
};

/// Boxes that only touch overlap. The test has no branches because its outcome is unpredictable.
/// Exact form: the last comparison is the other way round than the first three, for NaN.
inline bool overlap(Box const& a, Box const& b) {
  int const isRight = a.minX > b.maxX;
  int const isAbove = a.minY > b.maxY;
  int const isLeft = b.minX > a.maxX;
  int const reachesUp = b.minY <= a.maxY;
  return ((isRight | isAbove | isLeft) == 0) & reachesUp;
}

/// Weights of P0..P3.
struct Weights {
  double w0, w1, w2, w3;
};

// Exact form, here and below: the polynomials in these spellings, and P0 added last.

/// The Bernstein weights at t.
constexpr Weights pointWeights(double t) {
  double const s = t * t;
  return {(3.0 - t) * s - 3.0 * t + 1.0, ((t - 2.0) * s + t) * 3.0, (1.0 - t) * s * 3.0, s * t};
}

/// The derivatives of the weights.
inline Weights derivativeWeights(double t) {
  double const s = t * t;
  return {(2.0 * t - s - 1.0) * 3.0, 9.0 * s - 12.0 * t + 3.0, 6.0 * t - 9.0 * s, 3.0 * s};
}

inline double blended(Weights const& w, double k0, double k1, double k2, double k3) {
  return k1 * w.w1 + k2 * w.w2 + k3 * w.w3 + k0 * w.w0;
}

/// The control points of a segment as values.
struct Cubic {
  Point p[4];

  Point const& start() const { return p[0]; }
  Point const& end() const { return p[3]; }

  /// The same point as GxBezier::bValue.
  Point point(double t) const {
    if (t == 0.0) return p[0];
    if (t == 1.0) return p[3];
    return blend(pointWeights(t));
  }

  /// The same vector as GxBezier::dValue.
  Point derivative(double t) const { return blend(derivativeWeights(t)); }

  Point blend(Weights const& w) const {
    return {blended(w, p[0].x, p[1].x, p[2].x, p[3].x), blended(w, p[0].y, p[1].y, p[2].y, p[3].y)};
  }

  /// The box of the control points.
  Box hull() const {
    return {min(p[0].x, min(p[1].x, min(p[2].x, p[3].x))),
            min(p[0].y, min(p[1].y, min(p[2].y, p[3].y))),
            max(p[0].x, max(p[1].x, max(p[2].x, p[3].x))),
            max(p[0].y, max(p[1].y, max(p[2].y, p[3].y)))};
  }

  /// De Casteljau's triangle at t; the parts share their joint.
  void split(double t, Cubic& left, Cubic& right) const {
    left.p[0] = p[0];
    right.p[3] = p[3];
    Point const middle = between(p[1], p[2], t);
    left.p[1] = between(p[0], p[1], t);
    right.p[2] = between(p[2], p[3], t);
    right.p[1] = between(middle, right.p[2], t);
    left.p[2] = between(left.p[1], middle, t);
    left.p[3] = right.p[0] = between(left.p[2], right.p[1], t);
  }
};

/// The point at t of the polynomial with control points p[0..degree], degree at most 3.
inline Point deCasteljau(Point const* p, double t, int degree) {
  Point w[4] = {};
  for (int i = 0; i <= degree; ++i) w[i] = p[i];
  double const s = 1.0 - t;
  for (int r = degree; r > 0; --r) {
    for (int j = 0; j < r; ++j) w[j] = w[j] * s + w[j + 1] * t;
  }
  return w[0];
}

inline bool isFinite(Cubic const& c) {
  return isFinite(c.p[0]) && isFinite(c.p[1]) && isFinite(c.p[2]) && isFinite(c.p[3]);
}

inline Cubic cubic(GxBezier const& s) {
  return {{plain(s[0]), plain(s[1]), plain(s[2]), plain(s[3])}};
}
inline GxBezier segment(Cubic const& c) {
  return GxBezier(coord(c.p[0]), coord(c.p[1]), coord(c.p[2]), coord(c.p[3]));
}

}  // namespace crv::internal
