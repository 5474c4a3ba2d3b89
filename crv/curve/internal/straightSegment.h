// The straight segment that closes and bridges.
#pragma once

#include "crv/bezier/GxBezier.h"

namespace crv::internal {

/// From one point to another, the inner control points on the ends.
inline GxBezier straightSegment(GxCoord<double> const& from, GxCoord<double> const& to) {
  return GxBezier(from, from, to, to);
}

}  // namespace crv::internal
