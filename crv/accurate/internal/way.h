// Ways along two curves, and whether both can be followed side by side.
#pragma once

#include "crv/accurate/internal/segmentPair.h"
#include "crv/bezier/internal/cubic.h"

namespace crv::internal {

/// A way along one segment, or from one segment to the next.
struct Way {
  Cubic pieces[2];
  int count;

  /// The point at a parameter in [0, count].
  Point at(double s) const { return s > 1.0 ? pointAt(pieces[1], s - 1.0) : pointAt(pieces[0], s); }
};

/// Whether two ways can be followed from their starts to their ends so that the points on both stay
/// within reach of each other, given that the starts and the ends are.
/// Method: they can if the Fréchet distance of the ways is at most reach (H. Alt and M. Godau,
/// "Computing the Fréchet distance between two polygonal curves", 1995). The ways are halved at
/// points that are near to each other until their parts turn so little that samples decide.
bool areSideBySide(Way const& a, Way const& b, double reach);

}  // namespace crv::internal
