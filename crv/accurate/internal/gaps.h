// The gaps between the segments of a curve.
#pragma once

#include "crv/accurate/internal/chain.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// The segments, ascending, behind which there is a gap of more than 16 u S, or the end of an open
/// curve.
inline std::vector<std::size_t> gapsOf(Chain const& curve, double magnitude) {
  std::vector<std::size_t> gaps;
  for (std::size_t k = 0; k < curve.size(); ++k) {
    if (curve.endsBehind(k, magnitude)) gaps.push_back(k);
  }
  return gaps;
}

}  // namespace crv::internal
