// The point of one cubic nearest to a query, for nearest.h and curveSearch.h.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cmath>
#include <vector>

namespace crv::internal {

/// A point of a cubic, relative to the query.
struct Foot {
  double t;
  Point offset;  // from the query to the point of the cubic
  double squaredDistance;
};

/// True when the distances as computed differ, not only their squares.
inline bool isNearer(double squaredDistance, double other) {
  return squaredDistance < other && std::sqrt(squaredDistance) < std::sqrt(other);
}

/// The point of a finite cubic nearest to p; the first one of several at equal distances. Points
/// whose squared distance exceeds limit need not be found.
Foot nearestFoot(Cubic const& cubic, Point const& p, double limit);

/// The local minima of the distance inside one cubic, and the slope of the distance at its ends.
struct Minima {
  std::vector<Foot> inside;  // ascending, each once to rounding; not the ends
  int slopeAtStart = 0;      // 1 rising, -1 falling, 0 where the cubic is one point
  int slopeAtEnd = 0;
};

/// The minima whose squared distance is at most limit.
Minima localMinima(Cubic const& cubic, Point const& p, double limit);

/// The point of a foot in the plane; at the ends it is the control point, bit for bit.
inline Point placeOf(Foot const& foot, Cubic const& cubic, Point const& p) {
  if (foot.t == 0.0) return cubic.start();
  if (foot.t == 1.0) return cubic.end();
  return p + foot.offset;
}

}  // namespace crv::internal
