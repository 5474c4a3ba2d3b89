// Roots of which only those in an interval are wanted.
#pragma once

namespace crv::internal {

struct Interval {
  double lo, hi;
};

/// Does what cubicRoots does, with the same bits, but may leave out roots outside an interval: what
/// lies there need not be refined.
int cubicRootsIn(Interval const& wanted, double a, double b, double c, double d, double* roots);

}  // namespace crv::internal
