// The angle of a vector without an arcus tangens.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cmath>

namespace crv::internal {

/// The key of a full turn.
constexpr double kFullTurn = 4.0;

/// A number that grows with the angle of a vector, from 0 along x to 4 for a full turn; its slope
/// is between half the angle's and the angle's in radians. 0 for a vector that is zero.
inline double angleKey(Point const& v) {
  double const sum = std::fabs(v.x) + std::fabs(v.y);
  if (!(sum > 0.0)) return 0.0;
  double const x = v.x / sum;
  return v.y >= 0.0 ? 1.0 - x : 3.0 + x;
}

}  // namespace crv::internal
