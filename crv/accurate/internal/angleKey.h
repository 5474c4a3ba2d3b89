// A measure of the angle of a vector that needs no arctangent.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cmath>

namespace crv::internal {

/// The key of 360 degrees.
constexpr double kFullTurn = 4.0;

/// A number that grows with the angle of a vector, from 0 along the x axis to 4 at 360 degrees. A
/// change of the angle by one radian changes it by 0.5 to 1. The key of the zero vector is 0.
inline double angleKey(Point const& v) {
  double const sum = std::fabs(v.x) + std::fabs(v.y);
  if (!(sum > 0.0)) return 0.0;
  double const x = v.x / sum;
  return v.y >= 0.0 ? 1.0 - x : 3.0 + x;
}

}  // namespace crv::internal
