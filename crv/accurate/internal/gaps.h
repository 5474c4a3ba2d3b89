// Where the segments of a curve do not join.
#pragma once

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/tangent.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// The segments, ascending, behind which there is a gap of more than 16 u S, or the end of an open
/// curve.
inline std::vector<std::size_t> gapsOf(Chain const& curve, double magnitude) {
  std::vector<std::size_t> gaps;
  for (std::size_t k = 0; k < curve.size(); ++k) {
    bool const isLast = k + 1 == curve.size();
    Point const gap = curve.segments[k].end() - curve.segments[isLast ? 0 : k + 1].start();
    bool const isWide = largestPart(gap) > 16.0 * kRounding * magnitude;
    if ((isLast && !curve.closed) || isWide) gaps.push_back(k);
  }
  return gaps;
}

}  // namespace crv::internal
