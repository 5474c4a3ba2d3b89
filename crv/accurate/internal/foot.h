// The place of one cubic that is nearest to a point: the engine of nearest.h and curveSearch.h.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cmath>
#include <vector>

namespace crv::internal {

/// A place of a cubic, seen from the point that asks.
struct Foot {
  double t;
  Point offset;  // from the point that asks to the place
  double squaredDistance;
};

/// True when the distances as computed differ, not only their squares.
inline bool isNearer(double squaredDistance, double other) {
  return squaredDistance < other && std::sqrt(squaredDistance) < std::sqrt(other);
}

/// The nearest place of a finite cubic; of equal distances the first. Places that are farther than
/// a limit, a squared distance, need not be found.
Foot nearestFoot(Cubic const& cubic, Point const& p, double limit);

/// The local minima of the distance inside one cubic, and how the distance runs at its ends.
struct Minima {
  std::vector<Foot> inside;  // ascending, each once to rounding; not the ends
  int slopeAtStart = 0;      // 1 rising, -1 falling, 0 where the cubic is one point
  int slopeAtEnd = 0;
};

/// Those up to a limit, a squared distance.
Minima localMinima(Cubic const& cubic, Point const& p, double limit);

/// The place of a foot in the plane, the ends to the bit.
inline Point placeOf(Foot const& foot, Cubic const& cubic, Point const& p) {
  if (foot.t == 0.0) return cubic.start();
  if (foot.t == 1.0) return cubic.end();
  return p + foot.offset;
}

}  // namespace crv::internal
