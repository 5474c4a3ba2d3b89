// Whether two segments that share an end meet there only.
#pragma once

#include "crv/accurate/internal/blossom.h"
#include "crv/bezier/internal/cubic.h"

#include <cmath>

namespace crv::internal {

// Squared cosine: two segments that leave a joint into cones that keep this far from the plane
// between them come within the resolution of each other at the joint only.
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

/// Whether two segments that leave one place in opposite half-planes meet in that place only.
inline bool partAtStart(Cubic const& a, Cubic const& b, double reach) {
  Point const p = departure(a), q = departure(b);
  double const squaredP = dot(p, p), squaredQ = dot(q, q);
  if (!(squaredP > 0.0) || !(squaredQ > 0.0)) return false;
  Point const axis = p * (1.0 / std::sqrt(squaredP)) - q * (1.0 / std::sqrt(squaredQ));
  return isInCone(a, axis, reach) && isInCone(b, axis * -1.0, reach);
}

}  // namespace crv::internal
