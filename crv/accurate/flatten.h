// Few straight chords for a curve, within a tolerance.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// Points on a curve in order, and the position of each.
struct Polyline {
  std::vector<Point> points;
  std::vector<Position> positions;
  double worstDistance;
};

/// A polyline with vertices on the curve, among them every joint and both ends, exactly. No place
/// of the curve is farther than worstDistance from the chord between the vertices around it, taken
/// as a segment, and worstDistance is at most the tolerance; it is 0 only where the inner control
/// points of every segment are ends of it. The curve may run back within the tolerance of a chord.
/// The last point of a closed curve is its first, at (n, 0.0). Where segments do not join, both
/// ends are vertices, with the position of the joint.
///
/// A tolerance below 2^-40 S counts as that. Empty, with worstDistance 0, for an empty curve, a
/// tolerance at or below 0 or unusable input. The time is linear in the number of points.
///
/// Method: chords get equal shares of the integral of the square root of half the curvature over
/// four times the tolerance, which levels their errors; each chord is then measured by the second
/// derivative across it, or by the control points of its stretch, and halved if it is too far.
[[nodiscard]] CRV_API Polyline flatten(Curve const& curve, double tolerance);

}  // namespace crv
