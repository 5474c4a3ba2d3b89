// Evaluation that can be inlined: loops over the points of one segment live on it.
#pragma once

#include "crv/bezier/GxBezier.h"

#include <cmath>

namespace crv::internal {

/// The Bernstein weights of P0..P3 at t.
struct Weights {
  double w0, w1, w2, w3;
};

// Exact form: the polynomials in these spellings, and P0 added last.
inline Weights pointWeights(double t) {
  double const s = t * t;
  return {(3.0 - t) * s - 3.0 * t + 1.0, ((t - 2.0) * s + t) * 3.0, (1.0 - t) * s * 3.0, s * t};
}

inline double blended(Weights const& w, double k0, double k1, double k2, double k3) {
  return k1 * w.w1 + k2 * w.w2 + k3 * w.w3 + k0 * w.w0;
}

/// A point without the overhead of GxCoord.
struct PlainPoint {
  double x, y;
  double xval() const { return x; }
  double yval() const { return y; }
};

inline PlainPoint plain(GxCoord<double> const& p) { return {p.xval(), p.yval()}; }

/// The point at t of the polynomial with control points p[0..degree], degree at most 3.
inline PlainPoint deCasteljau(PlainPoint const* p, double t, int degree) {
  PlainPoint w[4] = {};
  for (int i = 0; i <= degree; ++i) w[i] = p[i];
  double const s = 1.0 - t;
  for (int r = degree; r > 0; --r) {
    for (int j = 0; j < r; ++j) w[j] = {s * w[j].x + t * w[j + 1].x, s * w[j].y + t * w[j + 1].y};
  }
  return w[0];
}

inline double squaredDistance(PlainPoint const& p, PlainPoint const& q) {
  double const dx = p.x - q.x;
  double const dy = p.y - q.y;
  return dx * dx + dy * dy;
}

inline double distance(PlainPoint const& p, PlainPoint const& q) {
  return std::sqrt(squaredDistance(p, q));
}

/// The control points of a segment, ready to be evaluated in a loop.
class PlainSegment {
 public:
  explicit PlainSegment(GxBezier const& s) {
    for (int i = 0; i < 4; ++i) p_[i] = plain(s[i]);
  }

  /// The four control points.
  PlainPoint const* points() const { return p_; }

  PlainPoint const& start() const { return p_[0]; }
  PlainPoint const& end() const { return p_[3]; }

  /// What GxBezier::bValue gives.
  PlainPoint point(double t) const {
    if (t == 0.0) return p_[0];
    if (t == 1.0) return p_[3];
    Weights const w = pointWeights(t);
    return {blended(w, p_[0].x, p_[1].x, p_[2].x, p_[3].x),
            blended(w, p_[0].y, p_[1].y, p_[2].y, p_[3].y)};
  }

 private:
  PlainPoint p_[4];
};

}  // namespace crv::internal
