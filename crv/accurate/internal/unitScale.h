// Input scaled by a power of two so that its largest coordinate lies in [0.5, 1).
//
// Products of coordinates then neither overflow nor underflow, and scaling the input by a power of
// two scales the results by the same power, bit for bit.
#pragma once

#include "crv/accurate/internal/scale.h"
#include "crv/accurate/internal/segmentPair.h"
#include "crv/accurate/types.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

// Relative to the largest coordinate: a resolution below this would be lost in rounding.
constexpr double kFinestResolution = 0x1p-46;

struct UnitScale {
  double factor;      // a power of two
  double magnitude;   // the largest coordinate after scaling
  double resolution;  // after scaling, clamped to kFinestResolution * magnitude .. magnitude

  UnitScale(double givenMagnitude, double givenResolution) {
    factor = givenMagnitude > 0.0 ? 0.5 * PowerOfTwo::below(givenMagnitude).inverse : 1.0;
    magnitude = givenMagnitude * factor;
    double const wanted = givenResolution > 0.0 ? min(givenResolution, givenMagnitude) * factor
                                                : kDefaultResolution * magnitude;
    resolution = max(wanted, kFinestResolution * magnitude);
  }

  Cubic scaled(Cubic const& c) const { return internal::scaled(c, factor); }
};

/// The point of a contact: the control point if it is at an end of a segment, else the midpoint of
/// the points on both segments.
inline crv::Point placeOf(Cubic const& a, double t, Cubic const& b, double u) {
  Point p = pointAt(a, t);
  if (t != 0.0 && t != 1.0) {
    Point const q = pointAt(b, u);
    bool const isEndB = u == 0.0 || u == 1.0;
    p = isEndB ? q : Point{0.5 * p.x + 0.5 * q.x, 0.5 * p.y + 0.5 * q.y};
  }
  return crv::Point(p.x, p.y);
}

}  // namespace crv::internal
