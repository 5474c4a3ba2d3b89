// Sums of segment numbers that cannot overflow, and the positions made of them.
#pragma once

#include "crv/curve/GxBezierCurvePosition.h"

#include <algorithm>
#include <limits>

namespace crv::internal {

/// n, clamped to the range of int.
inline int clampedInt(long long n) {
  constexpr long long kLowest = std::numeric_limits<int>::min();
  constexpr long long kHighest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(n, kLowest, kHighest));
}

/// A segment number, clamped so that sums and differences of two of them and a few ints do not
/// overflow.
inline long long clampedSegment(GxBezierCurvePosition const& p) {
  constexpr long long kFar = 1LL << 61;
  return std::clamp(static_cast<long long>(p.getSegmentNumber()), -kFar, kFar);
}

/// The normalised position of a segment number that was computed.
inline GxBezierCurvePosition positionAt(long long segment, double t) {
  return GxBezierCurvePosition(clampedInt(segment), t);
}

}  // namespace crv::internal
