// The nearest point of a segment and of a curve.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <optional>

namespace crv {

/// The place of a segment that is nearest to a point.
struct NearestOnSegment {
  double t;         ///< The parameter, in [0, 1].
  Point point;      ///< The point at t.
  double distance;  ///< The distance of the point.
};

/// The place of a curve that is nearest to a point.
struct NearestOnCurve {
  /// The position, normalised. The end of a segment before a gap of more than 16 u S is at 1 -
  /// 2^-53, because the next segment starts behind it.
  Position position;
  Point point;      ///< The point at the position.
  double distance;  ///< The distance of the point.
};

/// The place of the segment that is nearest to p. distance is within 8 u S of the least distance,
/// point lies at t to 64 u S. Of places at exactly equal computed distances the first. A segment
/// that is one point answers t = 0. For unusable input t is 0, the rest NaN. The cost does not
/// depend on the input but for p at a cusp, which takes some ten times as long.
///
/// Method: the derivative of the squared distance as a polynomial of degree 5 in Bernstein form,
/// halved until it has one change of sign or the partial sums of its coefficients, which bound the
/// distance from below, exceed the least distance so far; then Halley's iteration in a bracket.
[[nodiscard]] CRV_API NearestOnSegment nearest(Segment const& segment, Point const& p);

/// The same for a curve, segment by segment; nothing for an empty curve or unusable input. The time
/// is linear in the number of segments; CurveSearch answers many queries in less.
[[nodiscard]] CRV_API std::optional<NearestOnCurve> nearest(Curve const& curve, Point const& p);

}  // namespace crv
