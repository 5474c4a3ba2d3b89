// Polylines with few chords, within a tolerance of a curve.
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

/// A polyline whose vertices lie on the curve; every joint and both ends are vertices, exactly. No
/// point of the curve is farther than worstDistance from the chord between the neighbouring
/// vertices, as a line segment. worstDistance is at most the tolerance, and 0 only if the inner
/// control points of every segment are ends of that segment. The curve may run back within the
/// tolerance of a chord. The last point of a closed curve is its first one, at (n, 0.0). At a gap
/// between segments both ends are vertices, with the position of the joint.
///
/// The tolerance is in curve units; one below 2^-40 S counts as 2^-40 S. The result is empty, with
/// worstDistance 0, for an empty curve, a tolerance at or below 0 or unusable input. Takes time
/// linear in the number of points.
///
/// Method: each chord gets an equal share of the integral of the square root of curvature / (8
/// tolerance) along the curve, so that all chords have about the same error. The error of each
/// chord is then bounded by the second derivative across it, or by the control points of its
/// stretch, or by the places where it turns back along the chord. A chord whose bound exceeds the
/// tolerance is divided, where the stretch turns back or else in the middle.
[[nodiscard]] CRV_API Polyline flatten(Curve const& curve, double tolerance);

}  // namespace crv
