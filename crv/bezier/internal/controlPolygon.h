// The steps of the root search on a control polygon: subdivision, and the test whether the chord
// crosses the x axis where the polygon does.
#pragma once

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

/// Deliberate: a coordinate within 1e-9 of zero becomes exactly zero, so that rounding does not
/// change the sign of a signed distance.
inline double snappedToZero(double x) { return IS_ZERO(x, kZeroTolerance) ? 0.0 : x; }

/// Subdivides w[0..degree] at t by de Casteljau's algorithm: w becomes the right part, and left
/// receives the left part.
inline void splitPolygon(Point* w, int degree, double t, Point* left) {
  double const s = 1.0 - t;
  left[0] = w[0];
  for (int i = 1; i <= degree; ++i) {
    for (int j = 0; j <= degree - i; ++j) {
      w[j] = {snappedToZero(s * w[j].x + t * w[j + 1].x),
              snappedToZero(s * w[j].y + t * w[j + 1].y)};
    }
    left[i] = w[0];
  }
}

/// Returns 1 when the chord of w[0..degree] crosses the x axis where the polygon does. Point is any
/// type with xval and yval.
template <class Point>
int isFlatPolygon(Point const* w, int degree) {
  // Squared units of the polygon: keeps a chord without length from dividing by zero.
  constexpr double kNoSquaredLength = 1e-12;
  // Units of the polygon: a chord that rises by less is level.
  constexpr double kLevel = 1e-12;
  // Parameter: half the width of the interval in which the crossing may lie.
  constexpr double kFlat = 0x1p-65;
  // Parameter: an interval of this width is certainly too wide.
  constexpr double kWide = 0x1p-62;
  // Relative to an end of the interval: far more than its rounding error.
  constexpr double kEndRounding = 0x1p-48;

  Point const& first = w[0];
  Point const& last = w[degree];
  auto const same = [](Point const& p, Point const& q) {
    return p.xval() == q.xval() && p.yval() == q.yval();
  };
  if (degree == 3 && same(first, w[1]) && same(w[2], last)) return 1;
  double const a = first.yval() - last.yval();
  double const b = last.xval() - first.xval();
  double const c = first.xval() * last.yval() - first.yval() * last.xval();
  if (std::fabs(a) < kLevel) return 1;
  double const squaredLength = b * b + a * a + kNoSquaredLength;
  // If a squared distance from the chord, times the squared length, exceeds this limit, the
  // interval is wider than twice kFlat and than the rounding errors of its ends. Most polygons are
  // rejected here, without a division.
  double const limit = (std::fabs(c) * kEndRounding + std::fabs(a) * kWide) * squaredLength;
  double farthest = 0.0;
  for (int i = 1; i < degree; ++i) {
    double const e = std::fabs((w[i].yval() * b + w[i].xval() * a) + c);
    if (e * e > limit) return 0;
    farthest = max(farthest, e);
  }
  // Deliberate: squares carry no sign, so that every point counts as above the chord.
  double const above = max(0.0, farthest * farthest / squaredLength);
  return 0.5 * std::fabs((above + c) / -a - c / -a) < kFlat;
}

}  // namespace crv::internal
