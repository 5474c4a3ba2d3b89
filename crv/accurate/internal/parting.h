// A test that two segments which share an end meet only there.
#pragma once

#include "crv/accurate/internal/blossom.h"
#include "crv/bezier/internal/cubic.h"

#include <cmath>

namespace crv::internal {

// Squared cosine of half the opening angle of two opposite cones. Two segments that leave a joint
// inside such cones come within the resolution of each other only at the joint.
constexpr double kSquaredConeCosine = 0x1p-8;

inline bool isInCone(Cubic const& c, Point const& axis, double reach) {
  for (int i = 1; i < 4; ++i) {
    Point const d = c.p[i] - c.p[0];
    double const along = dot(d, axis), squared = dot(d, d);
    if (squared <= reach * reach) continue;
    if (!(along > 0.0) || along * along < kSquaredConeCosine * squared * dot(axis, axis)) {
      return false;
    }
  }
  return true;
}

/// True if two segments that start at one point certainly meet only there, because they leave it
/// into opposite cones.
inline bool partAtStart(Cubic const& a, Cubic const& b, double reach) {
  Point const p = departure(a), q = departure(b);
  double const squaredP = dot(p, p), squaredQ = dot(q, q);
  if (!(squaredP > 0.0) || !(squaredQ > 0.0)) return false;
  Point const axis = p * (1.0 / std::sqrt(squaredP)) - q * (1.0 / std::sqrt(squaredQ));
  return isInCone(a, axis, reach) && isInCone(b, axis * -1.0, reach);
}

}  // namespace crv::internal
