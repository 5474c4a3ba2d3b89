// The nearest point of a segment and of a curve.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <optional>

namespace crv {

/// The point of a segment that is nearest to a given point.
struct NearestOnSegment {
  double t;         ///< The parameter, in [0, 1].
  Point point;      ///< The point at t.
  double distance;  ///< The distance of the point.
};

/// The point of a curve that is nearest to a given point.
struct NearestOnCurve {
  /// The position, normalised. The end of a segment before a gap of more than 16 u S is at 1 -
  /// 2^-53, because the next segment starts behind it.
  Position position;
  Point point;      ///< The point at the position.
  double distance;  ///< The distance of the point.
};

/// The point of the segment nearest to p. distance is within 8 u S of the least distance, and point
/// is within 64 u S of the segment's point at t. If several points have exactly the same computed
/// distance, it is the first. A segment that is one point gives t = 0. For unusable input t is 0,
/// and all else is NaN. The time is about the same for all input, except that p at a cusp takes
/// about eighty times as long.
///
/// Method: the derivative of the squared distance, a polynomial of degree 5 in Bernstein form, is
/// halved until it has one change of sign, or until the partial sums of its coefficients, which
/// bound the squared distance from below, exceed the least one found so far. Halley's iteration in
/// a bracket then finds the root.
[[nodiscard]] CRV_API NearestOnSegment nearest(Segment const& segment, Point const& p);

/// Does the same for a curve, segment by segment; nothing for an empty curve or unusable input.
/// Takes time linear in the number of segments; CurveSearch is faster for many queries.
[[nodiscard]] CRV_API std::optional<NearestOnCurve> nearest(Curve const& curve, Point const& p);

}  // namespace crv
