// Directions of travel at the ends of a cubic, also with retracted handles.
#pragma once

#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

inline double largestPart(Point const& v) { return max(std::fabs(v.x), std::fabs(v.y)); }

/// The unit vector in the direction of v, which is not zero. It is scaled first, so that no square
/// underflows.
inline Point unitVector(Point const& v) {
  double const largest = largestPart(v);
  Point const w = {v.x / largest, v.y / largest};
  double const length = std::sqrt(dot(w, w));
  return {w.x / length, w.y / length};
}

inline bool isPoint(Cubic const& c) {
  return largestPart(c.p[1] - c.p[0]) == 0.0 && largestPart(c.p[2] - c.p[0]) == 0.0 &&
         largestPart(c.p[3] - c.p[0]) == 0.0;
}

/// The direction in which a cubic that is not one point leaves its start: towards the first control
/// point that differs from the start.
inline Point startDirection(Cubic const& c) {
  for (int i = 1; i < 3; ++i) {
    if (largestPart(c.p[i] - c.p[0]) > 0.0) return unitVector(c.p[i] - c.p[0]);
  }
  return unitVector(c.p[3] - c.p[0]);
}

/// The direction in which it arrives at its end.
inline Point endDirection(Cubic const& c) {
  for (int i = 2; i > 0; --i) {
    if (largestPart(c.p[3] - c.p[i]) > 0.0) return unitVector(c.p[3] - c.p[i]);
  }
  return unitVector(c.p[3] - c.p[0]);
}

/// The vector turned by a quarter turn to the left.
inline Point leftOf(Point const& v) { return {-v.y, v.x}; }

}  // namespace crv::internal
