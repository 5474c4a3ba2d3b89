// Crossings of a cubic with a ray, of which winding numbers of points are sums.
#pragma once

#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// Whether the ray from p towards higher x may cross a curve inside a box.
inline bool isBeside(Box const& box, Point const& p) {
  return box.maxX >= p.x && box.minY <= p.y && box.maxY > p.y;
}

/// The signed number of crossings of a cubic with the ray from p towards higher x: 1 for each
/// upward crossing, -1 for each downward one. The sum over a closed curve is its winding number
/// around p, if p is not on it. A point at the height of p counts as below.
int crossings(Cubic const& c, Point const& p);

}  // namespace crv::internal
