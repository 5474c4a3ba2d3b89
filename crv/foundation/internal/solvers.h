// The roots of a cubic in an interval.
#pragma once

namespace crv::internal {

struct Interval {
  double lo, hi;
};

/// Does the same as cubicRoots, with the same bits, but may leave out roots outside an interval, so
/// that they need not be refined.
int cubicRootsIn(Interval const& wanted, double a, double b, double c, double d, double* roots);

}  // namespace crv::internal
