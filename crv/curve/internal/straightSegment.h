// The straight segment that closes a curve or bridges a gap.
#pragma once

#include "crv/bezier/GxBezier.h"

namespace crv::internal {

/// The straight segment from one point to another, with its inner control points on the ends.
inline GxBezier straightSegment(GxCoord<double> const& from, GxCoord<double> const& to) {
  return GxBezier(from, from, to, to);
}

}  // namespace crv::internal
